#!/usr/bin/env python3
"""What of a statically linked program is the library's, from the linker's map: bytes of code, constants and data.

    static_size.py MAP MOST WANTED

Objects that link-time optimisation makes (ltrans) are the library's; the program itself must be compiled without.
More than MOST fails. The XML library's own bytes, where it is linked statically, are told apart.
"""
import collections
import re
import sys

LOADED = re.compile(r"\.(text|rodata|data|bss|init_array|got|eh_frame|gcc_except_table|ARM\.ex)")
PART = re.compile(r" (?:\S+)?\s+0x[0-9a-f]+\s+0x([0-9a-f]+)\s+(\S.*)")


def owner(file):
    if "ltrans" in file or "libnetpublic.a(" in file:
        return "netpublic"
    return "TinyXML" if "libtinyxml.a(" in file else None


def parts(lines):
    """(output section, bytes, file); a long name of an input section stands on a line of its own."""
    section = None
    for line in lines:
        if line[:1] not in ("", " "):
            section = line.split()[0]
        elif section and LOADED.match(section) and (found := PART.fullmatch(line)):
            yield section, int(found[1], 16), found[2]


def main():
    path, most, wanted = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
    with open(path, encoding="utf-8") as file:
        lines = file.read().split("Linker script and memory map", 1)[1].splitlines()
    sizes = collections.defaultdict(collections.Counter)
    for section, size, file in parts(lines):
        if size and owner(file):
            sizes[owner(file)][section] += size
    for name, sections in sizes.items():
        print(f"{name}: {sum(sections.values())} bytes: " + ", ".join(f"{section} {size}" for section, size in sections.items()))
    total = sum(sizes["netpublic"].values())
    print(f"{most} allowed, {wanted} wanted")
    sys.exit(not 0 < total <= most)


if __name__ == "__main__":
    main()
