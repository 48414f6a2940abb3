#!/usr/bin/env python3
"""Turns examples into what nanopb needs: records.proto, records.options, records.inc and NAME.pb.

usage: nanopb.py PROTOC EXAMPLES_DIRECTORY OUTPUT_DIRECTORY NAME...

Each element becomes a field: a number, a text, bytes for base64, a list for numbers joined by commas.
"""
import base64
import os
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

INTEGER = re.compile(r"-?\d{1,18}$")
INTEGERS = re.compile(r"-?\d{1,9}(,-?\d{1,9})+$")
REAL = re.compile(r"-?\d+\.\d+$")
BASE64 = re.compile(r"[A-Za-z0-9+/]{40,}={0,2}$")
SHORTEST_TEXT = 32  # bytes of a text member; texts of a record have room to spare


class Field:
    """An element name below one kind of parent: all its occurrences taken together."""

    def __init__(self, path):
        self.path = path
        self.values = []
        self.children = {}
        self.most = 1  # occurrences in one parent
        self.always = True

    def kind(self):
        def all_match(*patterns):
            return all(any(p.match(v) for p in patterns) for v in self.values)
        if self.children:
            return self.path
        if all_match(INTEGER):
            return "int32" if all(-2**31 <= int(v) < 2**31 for v in self.values) else "int64"
        if all_match(INTEGER, REAL):
            return "float"
        if all_match(INTEGER, INTEGERS) and self.most == 1:
            return "list"
        if all_match(BASE64):
            return "bytes"
        return "string"


def collect(field, elements):
    """Adds a field for each kind of child of some elements of one kind."""
    for element in elements:
        for name in dict.fromkeys(child.tag for child in element):
            if name not in field.children:
                field.children[name] = Field(field.path + "_" + name)
    for name, child in field.children.items():
        groups = [element.findall(name) for element in elements]
        child.most = max(len(group) for group in groups)
        child.always = all(groups)
        found = [each for group in groups for each in group]
        child.values = [(each.text or "").strip() for each in found]
        collect(child, found)


def describe(field, proto, options):
    lines = []
    for number, (name, child) in enumerate(field.children.items(), 1):
        kind, member = child.kind(), "v_" + name
        if child.children:
            describe(child, proto, options)
        rule = "repeated" if child.most > 1 or kind == "list" else "required" if child.always else "optional"
        packed = " [packed = true]" if kind == "list" else ""
        lines.append(f"  {rule} {'int32' if kind == 'list' else kind} {member} = {number}{packed};")
        limits = []
        if kind == "string":
            limits.append(f"max_size:{max(SHORTEST_TEXT, max(map(len, child.values)) + 1)}")
        if kind == "bytes":
            limits.append(f"max_size:{max(len(base64.b64decode(v)) for v in child.values)}")
        if rule == "repeated":
            count = max(v.count(",") + 1 for v in child.values) if kind == "list" else child.most
            limits.append(f"max_count:{count}")
        if limits:
            options.append(f"{field.path}.{member} {' '.join(limits)}")
    proto.append("message %s {\n%s\n}" % (field.path, "\n".join(lines)))


def quoted(data):
    return '"' + "".join(f"\\x{byte:02x}" for byte in data) + '"'


def values(field, element, indent=""):
    for name, child in field.children.items():
        for found in element.findall(name):
            text, kind, member = (found.text or "").strip(), child.kind(), "v_" + name
            if child.children:
                yield f"{indent}{member} {{"
                yield from values(child, found, indent + " ")
                yield indent + "}"
            elif kind == "list":
                yield from (f"{indent}{member}: {number}" for number in text.split(","))
            elif kind == "bytes":
                yield f"{indent}{member}: {quoted(base64.b64decode(text))}"
            elif kind == "string":
                yield f"{indent}{member}: {quoted(text.encode())}"
            else:
                yield f"{indent}{member}: {text}"


def main(protoc, examples, output, names):
    proto, options, texts = ['syntax = "proto2";'], [], {}
    for name in names:
        root = ElementTree.parse(os.path.join(examples, name + ".xml")).getroot()
        message = root[0] if root.tag == "body" else root
        field = Field(name)
        collect(field, [message])
        describe(field, proto, options)
        texts[name] = "\n".join(values(field, message))
    for file, lines in (("records.proto", proto), ("records.options", options),
                        ("records.inc", [f"RECORD({name})" for name in names])):
        with open(os.path.join(output, file), "w", encoding="utf-8") as out:
            out.write("\n".join(lines) + "\n")
    for name, text in texts.items():
        encoded = subprocess.run([protoc, "--encode=" + name, "-I", output, os.path.join(output, "records.proto")],
                                 input=text.encode(), stdout=subprocess.PIPE, check=True).stdout
        with open(os.path.join(output, name + ".pb"), "wb") as out:
            out.write(encoded)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], sys.argv[3], sys.argv[4:])
