#!/usr/bin/env python3
"""Checks that the work on an input of four times a size is four times the work, in instructions.

    growth.py NETPUBLIC_GROWTH

Callgrind counts, so that a busy machine changes nothing. What the growth from the first to the second size costs,
the one from the second to the fourth should cost twice; at four times it is quadratic. What lies between is left to
lists that are full, or refused, at one size and not at another.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

MOST = 3
SLACK = 3000  # instructions: blocks of the allocator, lines of a log


def counts(program):
    found = {}
    with tempfile.TemporaryDirectory() as directory:
        subprocess.run(["valgrind", "-q", "--tool=callgrind", "--instr-atstart=no", "--dump-line=no",
                        f"--callgrind-out-file={directory}/out", program], check=True, stderr=subprocess.DEVNULL)
        for path in pathlib.Path(directory).glob("out.*"):
            text = path.read_text(errors="replace")
            label = re.search(r"^desc: Trigger: Client Request: (.+) (\d)$", text, re.MULTILINE)
            total = re.search(r"^(?:summary|totals): (\d+)$", text, re.MULTILINE)
            if label and total:
                found.setdefault(label[1], {})[int(label[2])] = int(total[1])
    return found


def main():
    found = counts(sys.argv[1])
    faults = []
    for what, of in sorted(found.items()):
        if set(of) != {1, 2, 4}:
            faults.append(f"{what}: counted for {sorted(of)} only")
        elif of[4] - of[2] > MOST * (of[2] - of[1]) + SLACK:
            faults.append(f"{what}: {of[1]}, {of[2]}, {of[4]} instructions")
    growing = sum(1 for of in found.values() if of[4] > 1.5 * of[1])
    if growing < len(found) / 2:
        faults.append(f"only {growing} of {len(found)} inputs make more work at all")
    print("\n".join(faults) or f"{len(found)} kinds of input, {growing} of them make more work when they grow")
    return bool(faults)


if __name__ == "__main__":
    sys.exit(main())
