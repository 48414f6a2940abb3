#!/usr/bin/env python3
"""Where the bytes of the 32-bit library go: a row per object, then the sections of the stripped library.

    footprint.py STRIP LIBRARY OBJECT_DIR

Behind the table: the texts and limits that several tables keep by themselves, which cost less in common.h.
"""
import collections
import pathlib
import struct
import subprocess
import sys
import tempfile

import stack

NAMES = (".gnu.hash", ".dynsym", ".dynstr", ".gnu.version")  # of the exported functions
COLUMNS = ("code", "tables", "constants", "texts", "pointers")


def terminated(data, at):
    return data[at:data.index(b"\0", at)].decode()


class Common:
    """What common.h holds, as one of the objects has it."""

    def __init__(self, objects):
        self.texts = self.limits = 0
        for path in objects:
            for name, contents in stack.sections(path):
                if name.endswith("common_textsE"):
                    self.texts, = struct.unpack_from("<H", contents)
                elif name.endswith("common_limitsE"):
                    self.limits = len(contents) // 8


def own_parts(contents, common):
    """The texts and limits that a table keeps by itself."""
    table = stack.Table(contents, {})
    limits_start = stack.TABLE_HEAD + 8 * (len(table.rows) - common.limits)
    texts_start = table.texts - common.texts
    texts, limits = set(), set()
    for row in table.rows:
        if not row.flags & stack.COMPLAINS:  # behind such a key stands the row's own line
            texts.add(row.key)
        if row.kind not in ("condition", "hook"):  # their columns are no numbers of limits
            limits.add(row.limits)
        if row.kind in ("int_list", "grid"):  # the longest text
            limits.add(row.ref)
    if table.source is not None:
        texts |= set(struct.unpack_from("<3H", contents, table.source + 4))
    return ({terminated(contents, texts_start + text) for text in texts if text >= common.texts},
            {struct.unpack_from("<ii", contents, limits_start + 8 * number)
             for number in limits if common.limits <= number < stack.NO_COLUMN})


def measure(path, common, seen, repeated):
    sizes = collections.Counter()
    for name, contents in stack.sections(path):
        shared = "_ZN9netpublic" in name and "_GLOBAL__N_" not in name
        if shared and name in seen:  # the linker keeps one of them
            continue
        seen.add(name)
        if name.startswith(".rel.data.rel.ro"):
            sizes["pointers"] += len(contents) // 8
        elif name.startswith(".text"):
            sizes["code"] += len(contents)
        elif ".str1." in name:
            sizes["texts"] += len(contents)
        elif name.startswith((".rodata", ".data.rel.ro")):
            is_table = "_ZN" in name and stack.is_message_table(contents)
            sizes["tables" if is_table else "constants"] += len(contents)
            if is_table:
                for part in set().union(*own_parts(contents, common)):
                    repeated[part] += 1
    return sizes


def library_sections(strip, library):
    with tempfile.NamedTemporaryFile() as stripped:
        subprocess.run([strip, "--strip-unneeded", "-o", stripped.name, library], check=True)
        path = pathlib.Path(stripped.name)
        return path.read_bytes(), [(name, len(contents)) for name, contents in stack.sections(path) if name != ".bss"]


def main():
    strip, library, directory = sys.argv[1:]
    objects = sorted(pathlib.Path(directory).rglob("*.o"))
    common, seen, repeated, total = Common(objects), set(), collections.Counter(), collections.Counter()
    print(f"| {'object':24} |" + "".join(f" {column:>9} |" for column in COLUMNS))
    print(f"|{'-' * 26}|" + "----------:|" * len(COLUMNS))
    for path in objects:
        sizes = measure(path, common, seen, repeated)
        total += sizes
        print(f"| {path.name[:-6]:24} |" + "".join(f" {sizes[column]:9} |" for column in COLUMNS))
    print(f"| {'all':24} |" + "".join(f" {total[column]:9} |" for column in COLUMNS))
    file, parts = library_sections(strip, library)
    print("\n" + ", ".join(f"{name} {length}" for name, length in parts if length >= 256))
    lengths = collections.Counter(dict(parts))
    names = sum(lengths[name] for name in NAMES)
    headers = 52 + 32 * struct.unpack_from("<H", file, 44)[0] + 40 * struct.unpack_from("<H", file, 48)[0]
    print(f"{len(file)} bytes stripped; names {names}; {lengths['.rel.dyn'] // 8} relocations; "
          f"padding {len(file) - lengths.total() - headers}")
    for part, tables in repeated.most_common():
        if tables > 1:
            print(f"not in common.h: {part!r}, kept by {tables} tables")


if __name__ == "__main__":
    main()
