#!/usr/bin/env python3
"""Compares the library's includes with the floors that the architecture page names: every source file
stands on one floor, and no include points up.   floors.py docs/architecture.md"""
import pathlib
import re
import sys

source = pathlib.Path("netpublic/src")
public = pathlib.Path("netpublic/include")


def includes(path):
    return re.findall(r'^\s*#include [<"]([\w./]+)[">]', path.read_text(), re.M)


def floors_of(page):
    """File name without extension -> floor, 0 the lowest, from the rows of the page's table."""
    rows = re.findall(r"^\| (\d+) \| [^|]* \| ([^|]*) \|", page.read_text(), re.M)
    return {name: int(number) for number, files in rows for name in re.findall(r"`([\w]+)`", files)}


faults = []
floor = floors_of(pathlib.Path(sys.argv[1]))
paths = sorted(path for path in source.rglob("*") if path.is_file())
present = {path.stem for path in paths}
faults += [f"{name} is on no floor of {sys.argv[1]}" for name in sorted(present - floor.keys())]
faults += [f"{name} of {sys.argv[1]} is no source file" for name in sorted(floor.keys() - present)]

for path in paths:
    for name in includes(path):
        if (source / name).exists():
            lower = floor.get(pathlib.Path(name).stem, 0)
            if lower > floor.get(path.stem, lower):
                faults.append(f"{path} (floor {floor[path.stem]}) includes {name} (floor {lower})")

# The interface knows itself only, without circles; the stand-in knows the host interface only.
depends = {path.name: includes(path) for path in public.iterdir()}
for name, used in depends.items():
    faults += [f"{name} includes {inner}" for inner in used if (source / inner).exists()]


def reaches(start, goal, seen):
    return any(
        name == goal or (name in depends and name not in seen and reaches(name, goal, seen | {name}))
        for name in depends[start]
    )


faults += [f"{name} includes itself" for name in depends if reaches(name, name, frozenset())]
for path in pathlib.Path("host").glob("*.[hc]*"):
    faults += [f"{path} includes {name}" for name in includes(path) if (source / name).exists()]

# The inspector's folders stand on the page in their order.
tool = pathlib.Path("tools/netparam")
folders = re.findall(r"^- `(\w+)`: ", pathlib.Path(sys.argv[1]).read_text(), re.M)
for path in sorted(tool.glob("*/*.[hc]*")):
    if path.parent.name in ("generated", "page"):
        continue
    if path.parent.name not in folders:
        faults.append(f"{path.parent} is no folder of {sys.argv[1]}")
        continue
    for name in includes(path):
        above = folders[folders.index(path.parent.name) + 1 :]
        if name.split("/")[0] in above and (tool / name).exists():
            faults.append(f"{path} includes {name}")
        if "/" not in name and (path.parent / name).exists():
            faults.append(f"{path} includes {name} without its folder")

print("\n".join(faults) or f"{len(present)} sources on {len(set(floor.values()))} floors")
sys.exit(bool(faults))
