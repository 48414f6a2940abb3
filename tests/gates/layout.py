#!/usr/bin/env python3
"""Prints offset, type and name of every field of every public structure on a target, for the golden lists.

    layout.py TARGET_TRIPLE INCLUDE_DIR
"""
import pathlib
import re
import subprocess
import sys


def public_names(include_dir):
    text = "".join(path.read_text() for path in sorted(pathlib.Path(include_dir).glob("*.h")))
    return set(re.findall(r"\b(?:struct|union)\s+(\w+)\s*\{", text))


def dump(triple, include_dir, names):
    # The compiler prints the layouts that something asks for.
    source = "#include <net_public.h>\n" + "".join(f"static_assert(sizeof({name}) != 0);\n" for name in sorted(names))
    command = ["clang++-14", f"--target={triple}", "-std=c++17", "-fsyntax-only", "-I", include_dir,
               "-Xclang", "-fdump-record-layouts", "-x", "c++", "-"]
    return subprocess.run(command, input=source, check=True, stdout=subprocess.PIPE, text=True).stdout


def main():
    triple, include_dir = sys.argv[1:]
    public = public_names(include_dir)
    records = {}
    for block in dump(triple, include_dir, public).split("*** Dumping AST Record Layout\n")[1:]:
        # Types without a name of their own are called after where they stand; places change.
        lines = re.sub(r"(unnamed|anonymous)[^()]* at [^()]*", r"\1", block).splitlines()
        name = re.match(r"\s*0 \| (?:(?:struct|union|class) )?(.+?)(?: \(empty\))?$", lines[0])[1]
        if name.split("::")[0] not in public:
            continue
        # One level: the fields of a field's type are listed with that type.
        fields = [f"{found[1]:>8}  {found[2]}" for found in (re.match(r"\s*(\d+) \|   (\S.*)", line) for line in lines)
                  if found]
        size, align = re.search(r"sizeof=(\d+), dsize=\d+, align=(\d+)", block).groups()
        records[name] = "\n".join([f"{name}: {size} bytes, aligned to {align}"] + fields)
    print("\n\n".join(records[name] for name in sorted(records)))


if __name__ == "__main__":
    main()
