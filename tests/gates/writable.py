#!/usr/bin/env python3
"""Checks that the library has no static constructors and no writable data but what is allowed.

    writable.py OBJDUMP LIBRARY OBJECT_DIR
"""
import pathlib
import re
import subprocess
import sys

ALLOWED = [
    # The two results that callers get a pointer to.
    r"\(anonymous namespace\)::printf_result(_room)?",
    r"net_get_streanm_type_string\(.*\)::streamType",
    # The compiler's start files.
    r"__dso_handle|__TMC_END__|completed\.\d+",
]


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def main():
    objdump, library, objects = sys.argv[1:]
    faults = []
    total = 0
    for line in run(objdump, "-tC", library).splitlines():
        found = re.match(r"[0-9a-f]+ .{6}[O ] (\.(?:data|bss|tdata|tbss)(?!\.rel\.ro)\S*)\s+([0-9a-f]+)\s+(?:\.hidden )?(.+)", line)
        if not found or found[3] == found[1]:
            continue
        size = int(found[2], 16)
        total += size
        if size and not any(re.fullmatch(pattern, found[3]) for pattern in ALLOWED):
            faults.append(f"writable: {found[3]} ({size} bytes in {found[1]})")
    object_files = sorted(pathlib.Path(objects).rglob("*.o"))
    if not object_files:
        faults.append(f"no objects in {objects}")
    for path in object_files:
        if re.search(r"\s\.(init_array|ctors|preinit_array)", run(objdump, "-h", str(path))):
            faults.append(f"static constructor in {path.name}")
    print("\n".join(faults + [f"{total} bytes of writable data"]))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
