#!/usr/bin/env python3
"""Checks that every promise of docs/security.md is named by a test and by a fuzz source, and no other is.

    promises.py SECURITY_PAGE TESTS_DIR FUZZ_DIR
"""
import pathlib
import re
import sys

page, *directories = (pathlib.Path(argument) for argument in sys.argv[1:])
promised = set(re.findall(r"\*\*(P\d+) ", page.read_text()))
faults = [] if promised else [f"no promises in {page}"]
for directory in directories:
    named = set()
    for path in directory.rglob("*"):
        if path.suffix in (".cpp", ".h", ".py") and path.name != "promises.py":
            named |= set(re.findall(r"\bP\d+\b", path.read_text()))
    faults += [f"{directory}: {number} is not named" for number in sorted(promised - named)]
    faults += [f"{directory}: {number} is no promise" for number in sorted(named - promised)]
print("\n".join(faults) or f"{len(promised)} promises")
sys.exit(bool(faults))
