#!/usr/bin/env python3
"""How much of the code are tests?

    share.py [--most PERCENT]

Code is what a hand wrote in C++, C, Python and shell and what git tracks: lines that are not blank, comments and data
files that are included (.inc) among them. Golden files and what the inspector generates (completions, manual) are not
code; neither are CMake files, packaging data, pages, example messages and typed data: tables (tests/limits.txt), cases
(tests/cases), seeds (fuzz/seeds) and transcripts of commands and what they print (tests/transcripts).
Tests are tests/ with its gates, tables and consumer projects, fuzz/, and the scripts test.sh, packaging/test_*.sh.
Everything else counts as what is tested: the library, the host's stand-in, the inspector, benchmarks, the examples
of how to call it, and packaging.
Exit status 1 when tests are more than --most percent.
"""
import argparse
import re
import subprocess
import sys
from collections import Counter
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
LEFT_OUT = re.compile(r"(^|/)(golden|generated|regressions)/")
TESTS = re.compile(r"^(tests/|fuzz/|test\.sh$|packaging/test_)")
SUFFIXES = {".cpp", ".h", ".inc", ".c", ".py", ".sh"}


def is_code(path):
    if LEFT_OUT.search(path):
        return False
    return Path(path).suffix in SUFFIXES or (TOP / path).read_bytes().startswith(b"#!")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--most", type=float, help="percent of the code that tests may be")
    options = parser.parse_args()

    tracked = subprocess.run(["git", "ls-files"], cwd=TOP, check=True, capture_output=True, text=True).stdout.split("\n")
    tests, others = Counter(), Counter()
    for path in filter(None, tracked):
        if (TOP / path).is_file() and is_code(path):
            lines = sum(bool(line.strip()) for line in (TOP / path).read_text().splitlines())
            (tests if TESTS.match(path) else others)["/".join(path.split("/")[:-1][:2]) or path] += lines
    for title, counted in (("tests", tests), ("what they test", others)):
        print(f"{sum(counted.values()):6} lines: {title}")
        for place, lines in sorted(counted.items()):
            print(f"    {lines:6} {place}")
    share = 100 * sum(tests.values()) / (sum(tests.values()) + sum(others.values()))
    print(f"{share:.1f} % of the code are tests" + (f", at most {options.most:g} % allowed" if options.most else ""))
    return options.most is not None and share > options.most


if __name__ == "__main__":
    sys.exit(main())
