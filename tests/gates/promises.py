#!/usr/bin/env python3
"""Checks that every promise of docs/security.md is named by a test, and by a fuzz source where a fuzzer's own
code can tell; and that no other is named.

    promises.py SECURITY_PAGE TESTS_DIR FUZZ_DIR
"""
import pathlib
import re
import sys

# What sees these while the fuzzers run, or instead of them.
NOT_FUZZED = {
    "P5": "the address sanitizer and memcheck",
    "P10": "the stack gate, and the tests on a small stack",
    "P11": "the fuzzers' time limit, and counted instructions",
    "P14": "the thread sanitizer, and the gate of writable data",
}

page, *directories = (pathlib.Path(argument) for argument in sys.argv[1:])
promised = set(re.findall(r"\*\*(P\d+) ", page.read_text()))
faults = [] if promised else [f"no promises in {page}"]
for directory in directories:
    named = set()
    for path in directory.rglob("*"):
        if path.suffix in (".cpp", ".h", ".py") and path.name != "promises.py":
            named |= set(re.findall(r"\bP\d+\b", path.read_text()))
    wanted = promised - set(NOT_FUZZED) if directory.name == "fuzz" else promised
    faults += [f"{directory}: {number} is not named" for number in sorted(wanted - named)]
    faults += [f"{directory}: {number} is no promise" for number in sorted(named - promised)]
print("\n".join(faults) or f"{len(promised)} promises")
sys.exit(bool(faults))
