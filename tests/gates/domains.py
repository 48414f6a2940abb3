#!/usr/bin/env python3
"""No message walks the XML itself: in the domain files, types of the XML library and of its wrappers occur only in
the parameters of functions, and what they name is only handed on. Every parser's message has a table. A function
that needs more is an exception with its reason on the architecture page, at most three of them.

    domains.py ARCHITECTURE_PAGE [DIRECTORY]
"""
import pathlib
import re
import sys

MOST_EXCEPTIONS = 3
XML_TYPE = r"\b(?:TiXml\w+|Node|Element)\b"


def without_comments(text):
    """The code with comments and literals replaced by blanks; lines stay where they are."""
    pattern = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"'
    return re.sub(pattern, lambda found: re.sub(r"[^\n]", " ", found.group()), text, flags=re.S)


def walks_in(path):
    """(line, function, what) of each use of XML that is no handing on."""
    code = without_comments(path.read_text())
    line = lambda at: code.count("\n", 0, at) + 1
    signature = re.compile(r"^(?:static )?\w[\w:<> ]*?[ *&]*(\w+)\(([^;{}]*)\)(?: const)?\n\{\n(.*?)^\}", re.M | re.S)
    signatures = []
    for function in signature.finditer(code):
        name, parameters, body = function.groups()
        signatures.append((function.start(2), function.end(2)))
        for use in re.finditer(XML_TYPE, body):
            yield line(function.start(3) + use.start()), name, f"names {use.group()}"
        for parameter in re.findall(rf"{XML_TYPE}[ *&]*(\w+)", parameters):
            for use in re.finditer(rf"\b{parameter}(?:->|\.)\w+|\*{parameter}\b", body):
                yield line(function.start(3) + use.start()), name, f"looks into {parameter}"
        if not re.search(XML_TYPE, parameters):
            continue
        for use in re.finditer(r"\b(?:FirstChild\w*|NextSibling\w*|first_child|next_sibling|GetText)\b", body):
            yield line(function.start(3) + use.start()), name, f"calls {use.group()}"
    for use in re.finditer(XML_TYPE, code):
        if not any(start <= use.start() < end for start, end in signatures) and not any(
                found.start() <= use.start() < found.end() for found in signature.finditer(code)):
            yield line(use.start()), "-", f"names {use.group()} outside of a function's parameters"


def unread(path):
    """Messages with a parser and without a table for it."""
    text = path.read_text()
    for found in re.finditer(r'MESSAGE\("([^"]+)",\s*\w+,\s*(\w+),\s*\w+,\s*(\w+)', text):
        if found[2] != "nullptr" and found[3] == "nullptr":
            yield found[1]


def main():
    page = pathlib.Path(sys.argv[1]).read_text()
    directory = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else "netpublic/src")
    exceptions = set(re.findall(r"^- `(\w+)\(\)` looks at XML itself: \S", page, re.M))
    faults, used = [], set()
    if len(exceptions) > MOST_EXCEPTIONS:
        faults.append(f"{len(exceptions)} exceptions, at most {MOST_EXCEPTIONS}")
    domains = sorted(directory.glob("net_xml_*.cpp"))
    functions = 0
    for path in domains:
        functions += len(re.findall(r"^int \w+\([^;{}]*TiXml", path.read_text(), re.M))
        for line, function, what in walks_in(path):
            used.add(function)
            if function not in exceptions:
                faults.append(f"{path}:{line}: {function} {what}")
        faults += [f"{path}: {message} has a parser and no table" for message in unread(path)]
    faults += [f"the exception {name} is not needed" for name in sorted(exceptions - used)]
    if not domains or not functions:
        faults.append("no domain files")
    print("\n".join(faults) or f"{functions} functions of {len(domains)} domain files hand their XML on")
    return bool(faults)


sys.exit(main())
