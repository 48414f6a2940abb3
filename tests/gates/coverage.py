#!/usr/bin/env python3
"""How much of the library the tests run: gcovr's figures, without the exceptions that are listed one by one.

    coverage.py BUILD_DIR EXCEPTIONS LINES BRANCHES

The build has been made with --coverage and its tests have been run. An exception is a line

    file | the code of the line, as it stands | why no test reaches it

A line that begins with "~" speaks of the line's branches only; " +1" behind the code takes in the next line.
Branches that the compiler makes for exceptions and for code that cannot be reached are gcovr's to leave
out. Prints what is not run when a figure is missed, and the exceptions that are not needed.
"""
import json
import pathlib
import subprocess
import sys

TOP = pathlib.Path(__file__).resolve().parents[2]


def read_exceptions(path):
    found = {}
    for line in pathlib.Path(path).read_text().splitlines():
        if line.strip() and not line.startswith("#"):
            name, code, why = (part.strip() for part in line.split(" | "))
            assert why, line
            code, _, more = code.partition(" +")
            found[(name.lstrip("~ "), code)] = (name.startswith("~"), int(more or 0))
    return found


def find_exception(exceptions, name, text, number):
    """The key of the exception that a line belongs to, and whether it is about branches alone."""
    for back in range(3):
        key = (name, text[number - 1 - back].strip())
        if key in exceptions and exceptions[key][1] >= back:
            return key, exceptions[key][0]
    return None, False


def main():
    build, exceptions_path, least_lines, least_branches = sys.argv[1:]
    report = subprocess.run(
        ["gcovr", "--root", str(TOP), "--object-directory", build, "--filter", "netpublic/src/", "--json", "-",
         "--exclude-throw-branches", "--exclude-unreachable-branches", "--gcov-ignore-parse-errors", build],
        check=True, capture_output=True, text=True).stdout
    exceptions = read_exceptions(exceptions_path)
    used = set()
    lines = run = branches = taken = 0
    missed = []
    for file in json.loads(report)["files"]:
        path = TOP / file["file"]
        text = path.read_text().splitlines()
        # A line of a template or an inline function counts once, run if any of its copies is.
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            code = text[line["line_number"] - 1].strip()
            key, branches_only = find_exception(exceptions, path.name, text, line["line_number"])
            ways = line["branches"]
            left = [branch for branch in ways if branch["count"] == 0]
            if key is not None and (left or line["count"] == 0):
                used.add(key)
                if not branches_only:
                    continue
                ways = []
            lines += 1
            run += line["count"] > 0
            branches += len(ways)
            taken += sum(branch["count"] > 0 for branch in ways)
            if line["count"] == 0:
                missed.append(f"line      {path.name}:{line['line_number']}: {code}")
            elif ways and left:
                missed.append(f"{len(left)} of {len(ways)}    {path.name}:{line['line_number']}: {code}")
    line_share, branch_share = 100 * run / max(1, lines), 100 * taken / max(1, branches)
    unused = [f"exception without need: {name} | {code}" for name, code in exceptions if (name, code) not in used]
    bad = line_share < float(least_lines) or branch_share < float(least_branches)
    print("\n".join((missed if bad else []) + unused))
    print(f"lines {run} of {lines}: {line_share:.1f} %; branches {taken} of {branches}: {branch_share:.1f} %; "
          f"{len(used)} exceptions")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
