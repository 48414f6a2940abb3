#!/usr/bin/env python3
"""Compares what the shared library exports with what the public headers declare.

    exports.py LIBRARY INCLUDE_DIR            compares; the differences are printed
    exports.py --list LIBRARY                 prints the exported symbols, for the golden list
"""
import collections
import re
import subprocess
import sys

NODE = "NETPUBLIC_1"
MARK = '__attribute__((visibility("default")))'


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exported(library):
    """Demangled names with parameters; the version node itself is left out."""
    symbols, wrong_node = [], []
    for line in run("nm", "-D", "-C", "--defined-only", "--with-symbol-versions", library).splitlines():
        _, kind, symbol = line.split(None, 2)
        if kind == "A":
            continue
        name, _, node = symbol.rpartition("@@")
        if node != NODE:
            wrong_node.append(symbol)
        symbols.append(name)
    return sorted(symbols), wrong_node


def declared(include_dir):
    """How often each name is declared with the export mark."""
    text = run("g++", "-std=c++17", "-E", "-P", "-I", include_dir, "-x", "c++", include_dir + "/net_public.h")
    names = collections.Counter()
    for part in text.split(MARK)[1:]:
        declaration = re.split(r"[({;=]", part, maxsplit=1)[0]
        names[re.findall(r"\w+", declaration)[-1]] += 1
    return names


def main():
    if sys.argv[1] == "--list":
        print("\n".join(exported(sys.argv[2])[0]))
        return 0
    symbols, wrong_node = exported(sys.argv[1])
    names = collections.Counter(re.split(r"[(\[]", symbol)[0] for symbol in symbols)
    wanted = declared(sys.argv[2])
    for name in sorted((wanted - names).elements()):
        print("declared but not exported:", name)
    for name in sorted((names - wanted).elements()):
        print("exported but not declared:", name)
    for name in wrong_node:
        print("not in the version node:", name)
    print(len(symbols), "symbols exported")
    return 0 if names == wanted and not wrong_node else 1


if __name__ == "__main__":
    sys.exit(main())
