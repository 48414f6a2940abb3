#!/usr/bin/env python3
"""Runs netpublic_count under callgrind and writes the counts as if they were a run's times.

usage: count.py NETPUBLIC_COUNT OUTPUT.json [PART OF A NAME]
"""
import glob
import json
import os
import re
import subprocess
import sys
import tempfile


def main(program, output, *part):
    runs = []
    with tempfile.TemporaryDirectory() as directory:
        subprocess.run(["valgrind", "-q", "--tool=callgrind", "--instr-atstart=no",
                        "--callgrind-out-file=" + os.path.join(directory, "out"), program, *part], check=True)
        for name in glob.glob(os.path.join(directory, "out.*")):
            with open(name, encoding="utf-8", errors="replace") as file:
                text = file.read()
            entry = re.search(r"^desc: Trigger: Client Request: (\S+) (\d+)$", text, re.MULTILINE)
            total = re.search(r"^(?:summary|totals): (\d+)$", text, re.MULTILINE)
            if entry and total:
                runs.append({"run_type": "iteration", "run_name": entry.group(1), "calls": int(entry.group(2)),
                             "real_time": int(total.group(1))})
    with open(output, "w", encoding="utf-8") as file:
        json.dump({"benchmarks": runs}, file, indent=1)


if __name__ == "__main__":
    main(*sys.argv[1:])
