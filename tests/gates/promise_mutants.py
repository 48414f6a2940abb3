#!/usr/bin/env python3
"""Breaks each promise of docs/security.md in turn and sees whether its check notices.

    promise_mutants.py --work DIR [--only TEXT...]
    promise_mutants.py --list [--only TEXT...]

Works on a copy of the tree in DIR. The mutants are listed in promise_mutants.txt. Exit status 1 when one is not
noticed, does not compile or finds its pattern no more, or when a promise has none. With --list, the mutants are only
listed, and looked for in the sources.
"""
import argparse
import re
import sys
from collections import namedtuple
from pathlib import Path

import mutation

Mutant = namedtuple("Mutant", "promise check what pattern replacement")
MUTANTS = [Mutant(*found) for found in re.findall(r"^(P\d+) (\w+): (.*)\n- (.*)\n\+ (.*)$",
                                                  Path(__file__).with_suffix(".txt").read_text(), re.M)]

STACK_LIMIT = "1024"  # bytes, as test.sh has it


def places(mutant, top):
    """(path, text) for each place of the sources where the mutant's pattern stands."""
    texts = ((path, path.read_text()) for path in mutation.sources(top, "*.cpp", "*.h", "*.inc"))
    return [place for place in texts for _ in re.finditer(mutant.pattern, place[1], re.S)]


class Tree(mutation.Copy):
    """The copy that is broken and built."""

    def __init__(self, work, jobs):
        super().__init__(work)
        self.jobs = jobs
        self.native = work / "native"
        self.armhf = work / "armhf"
        self.gates = self.top / "tests/gates"

    def configure(self, checks):
        done = mutation.configure(self.top, self.native, "-DCMAKE_CXX_FLAGS=-O1 -g", "-DNETPUBLIC_BUILD_TOOLS=OFF")
        if {"stack", "writable"} & checks:
            done = done and mutation.run("cmake", "--preset", "armhf", "-B", self.armhf, "-DNETPUBLIC_BUILD_TOOLS=OFF",
                                         "-DCMAKE_COMPILE_WARNING_AS_ERROR=OFF", cwd=self.top)
        return done

    def builds(self, check):
        directory, target = {"growth": (self.native, "netpublic_growth"), "stack": (self.armhf, "netpublic"),
                             "writable": (self.armhf, "netpublic")}.get(check, (self.native, "netpublic_tests"))
        return mutation.build(directory, self.jobs, target)

    def passes(self, check):
        tests = self.native / "tests/netpublic_tests"
        objects = self.armhf / "CMakeFiles/netpublic.dir"
        commands = {
            "tests": [tests, "--gtest_brief=1", "--gtest_fail_fast"],
            "memcheck": ["valgrind", "-q", "--error-exitcode=9", "--exit-on-first-error=yes", tests, "--gtest_brief=1",
                         "--gtest_filter=*Replay*"],
            "growth": ["python3", self.gates / "growth.py", self.native / "tests/netpublic_growth"],
            "stack": ["python3", self.gates / "stack.py", "arm-linux-gnueabihf-readelf", objects,
                      self.gates / "stack_rules.txt", STACK_LIMIT],
            "writable": ["python3", self.gates / "writable.py", "arm-linux-gnueabihf-objdump",
                         self.armhf / "libnetpublic.so", objects],
        }
        return mutation.run(*commands[check], timeout=900)

    def judge(self, mutant):
        found = places(mutant, self.top)
        if len(found) != 1:
            return f"stands at {len(found)} places"
        path, text = found[0]
        with mutation.replaced(path, re.sub(mutant.pattern, mutant.replacement, text, flags=re.S)):
            if not self.builds(mutant.check):
                return "does not compile"
            return "survived" if self.passes(mutant.check) else "noticed"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--work", type=Path, help="directory for the copy and its builds")
    parser.add_argument("--only", nargs="*", help="promises, or parts of what the mutants do")
    parser.add_argument("--jobs", type=int, default=2, help="compilers at a time")
    parser.add_argument("--list", action="store_true", help="only list the mutants and look for their patterns")
    options = parser.parse_args()
    if options.work is None and not options.list:
        parser.error("--work or --list is wanted")

    promised = set(re.findall(r"\*\*(P\d+) ", (mutation.TOP / "docs/security.md").read_text()))
    faults = [f"no mutant breaks {promise}" for promise in sorted(promised ^ {m.promise for m in MUTANTS})]
    chosen = [mutant for mutant in MUTANTS
              if not options.only or any(part == mutant.promise or part in mutant.what for part in options.only)]
    if options.list:
        for mutant in chosen:
            print(f"{mutant.promise:4} {mutant.check:9} {mutant.what}")
            if (found := len(places(mutant, mutation.TOP))) != 1:
                faults.append(f"{mutant.promise}, {mutant.what}: stands at {found} places")
        print("\n".join(faults), end="\n" if faults else "")
        return bool(faults)

    checks = {mutant.check for mutant in chosen}
    options.work.mkdir(parents=True, exist_ok=True)
    tree = Tree(options.work.resolve(), options.jobs)
    if not tree.configure(checks):
        sys.exit("The unbroken tree cannot be configured.")
    for check in sorted(checks):
        if not tree.builds(check) or not tree.passes(check):
            sys.exit(f"The unbroken tree fails: {check}")
    for mutant in chosen:
        verdict = tree.judge(mutant)
        print(f"{verdict:8} {mutant.promise:4} {mutant.check:9} {mutant.what}", flush=True)
        if verdict != "noticed":
            faults.append(f"{mutant.promise}, {mutant.what}: {verdict}")
    print("\n".join(faults) or f"{len(chosen)} mutants, all noticed")
    return bool(faults)


if __name__ == "__main__":
    sys.exit(main())
