#!/usr/bin/env python3
"""Breaks one operator, constant or condition of the library at a time and sees whether the tests notice.

    mutants.py --work DIR [--limit N] [--seed N] [--files FILE...] [--only ID...] [--list]

Works on a copy of the tree in DIR, so that the tree itself may change meanwhile. The sample depends on the
sources and the seed alone. A mutant that does not compile is not counted. Exit status 1 when fewer than
--least percent of the mutants are noticed.
"""
import argparse
import random
import re
import resource
import shutil
import subprocess
import sys
import time
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
SOURCES = ["reading.cpp", "writing.cpp", "matching.cpp", "values.cpp", "words.cpp", "grid.cpp", "log.cpp", "tree.cpp",
           "scanner.cpp", "element.cpp", "node.cpp",
           "log_filter.cpp", "net_public.cpp", "net_param_init.cpp", "net_xml_public*.cpp"]

# Pattern in the code (comments and literals blanked out) and what takes its place.
OPERATORS = [
    (r"(?<= )==(?= )", ["!="]), (r"(?<= )!=(?= )", ["=="]),
    (r"(?<= )<(?= )", ["<=", ">"]), (r"(?<= )<=(?= )", ["<"]),
    (r"(?<= )>(?= )", [">=", "<"]), (r"(?<= )>=(?= )", [">"]),
    (r"(?<= )&&(?= )", ["||"]), (r"(?<= )\|\|(?= )", ["&&"]),
    (r"(?<= )\+(?= )", ["-"]), (r"(?<= )-(?= )", ["+"]),
    (r"(?<= )\*(?= )", ["+"]), (r"(?<= )/(?= )", ["*"]), (r"(?<= )%(?= )", ["+"]),
    (r"(?<= )&(?= )", ["|"]), (r"(?<= )\|(?= )", ["&"]), (r"(?<= )<<(?= )", [">>"]), (r"(?<= )>>(?= )", ["<<"]),
    (r"(?<= )\+=(?= )", ["-=", "="]), (r"(?<= )-=(?= )", ["+="]), (r"(?<= )\|=(?= )", ["&=", "="]),
    (r"\+\+", ["--"]), (r"--", ["++"]),
    (r"(?<![\w.'])\d+(?![\w.'])", None),  # a number: one more, and one less
    (r"\btrue\b", ["false"]), (r"\bfalse\b", ["true"]),
    (r"(?<=return )-1(?=;)", ["0"]), (r"(?<=return )0(?=;)", ["-1"]),
    (r"\bbreak(?=;)", [""]), (r"\bcontinue(?=;)", [""]),
    (r"(?m)^ +[a-z][\w:]*\([^;{}]*\);$", [";"]),  # a call whose result nobody wants
]
SKIPPED = re.compile(r"^\s*(#|static_assert|template|using|namespace|case \d|//)")


def blank(text):
    """The code with comments and literals replaced by blanks of the same length."""
    pattern = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\''
    return re.sub(pattern, lambda found: re.sub(r"[^\n]", "\0", found.group()), text, flags=re.S)


def condition_end(code, start):
    depth = 0
    for at in range(start, len(code)):
        depth += (code[at] == "(") - (code[at] == ")")
        if depth == 0:
            return at
    return -1


def mutants_of(path):
    """(id, offset, length, replacement) of every mutant of a file."""
    text = path.read_text()
    code = blank(text)
    found = []

    def add(start, end, replacement):
        line = text.count("\n", 0, start) + 1
        begin = text.rfind("\n", 0, start) + 1
        if SKIPPED.match(code[begin:code.find("\n", start)]):
            return
        was = " ".join(text[start:end].split())
        found.append((f"{path.name}:{line}:{start - begin + 1} {was} -> {replacement or 'nothing'}", start, end,
                      replacement))

    for pattern, replacements in OPERATORS:
        for match in re.finditer(pattern, code):
            value = match.group()
            for replacement in replacements or [str(int(value) + 1)] + ([str(int(value) - 1)] if int(value) else []):
                add(match.start(), match.end(), replacement)
    for match in re.finditer(r"\b(?:if|while) \(", code):
        end = condition_end(code, match.end() - 1)
        condition = text[match.end():end]
        if end > 0 and ";" not in condition and not re.search(r"(?<![=!<>])=(?!=)|\w \*\w+ =", condition):
            add(match.end(), end, f"!({' '.join(condition.split())})")
    return found


def quiet(command, **options):
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL,
                          check=False, **options)


def limits():
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 32, 1 << 32))


class Tree:
    """The copy that is broken and built."""

    def __init__(self, work, flags, tests):
        self.tests = tests
        self.top = work / "tree"
        self.build = work / "build"
        if not self.top.exists():
            shutil.copytree(TOP, self.top, ignore=shutil.ignore_patterns("build", ".git", "__pycache__"))
        configured = quiet(["cmake", "-S", self.top, "-B", self.build, "-G", "Ninja", f"-DCMAKE_CXX_FLAGS={flags}",
                            "-DCMAKE_BUILD_TYPE=None", "-DNETPUBLIC_BUILD_TOOLS=OFF", "-DNETPUBLIC_BUILD_BENCH=OFF"])
        if configured.returncode != 0 or not self.builds():
            sys.exit("The unbroken tree does not build.")
        start = time.monotonic()
        self.timeout = 600
        if not self.passes():
            sys.exit("The unbroken tree fails its tests.")
        self.timeout = 10 + 4 * (time.monotonic() - start)

    def builds(self):
        return quiet(["cmake", "--build", self.build, "-j2", "--target", "netpublic_tests"]).returncode == 0

    def passes(self):
        try:
            return quiet([self.build / "tests/netpublic_tests", "--gtest_brief=1", "--gtest_fail_fast",
                          f"--gtest_filter={self.tests}"],
                         timeout=self.timeout, preexec_fn=limits).returncode == 0
        except subprocess.TimeoutExpired:
            return False

    def judge(self, path, mutant):
        """'noticed', 'survived' or 'stillborn'."""
        _, start, end, replacement = mutant
        text = path.read_text()
        try:
            path.write_text(text[:start] + replacement + text[end:])
            if not self.builds():
                return "stillborn"
            return "survived" if self.passes() else "noticed"
        finally:
            path.write_text(text)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--work", type=Path, required=True, help="directory for the copy and its build")
    parser.add_argument("--limit", type=int, default=200, help="size of the sample")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--files", nargs="*", default=SOURCES, help="names or patterns in netpublic/src")
    parser.add_argument("--only", nargs="*", help="identifications as they are printed, instead of a sample")
    parser.add_argument("--flags", default="-O0", help="compiler flags")
    parser.add_argument("--tests", default="*", help="filter for the test runner")
    parser.add_argument("--least", type=float, default=0, help="percent of mutants that must be noticed")
    parser.add_argument("--list", action="store_true", help="only list the sample")
    options = parser.parse_args()

    options.work.mkdir(parents=True, exist_ok=True)
    tree = None if options.list else Tree(options.work, options.flags, options.tests)
    top = TOP if options.list else tree.top
    paths = sorted({path for name in options.files for path in (top / "netpublic/src").rglob(name)})
    every = [(path, mutant) for path in paths for mutant in mutants_of(path)]
    if options.only:
        sample = [item for item in every if item[1][0] in options.only]
    else:
        sample = sorted(random.Random(options.seed).sample(every, min(options.limit, len(every))),
                        key=lambda item: (item[0], item[1][1]))
    if options.list:
        print("\n".join(mutant[0] for _, mutant in sample))
        return 0

    results = {}
    for path, mutant in sample:
        verdict = tree.judge(path, mutant)
        results.setdefault(path.name, []).append(verdict)
        print(f"{verdict:9} {mutant[0]}", flush=True)
    tree.builds()  # the unbroken tree again
    total = [verdict for verdicts in results.values() for verdict in verdicts if verdict != "stillborn"]
    for name, verdicts in results.items():
        print(f"{name}: {verdicts.count('noticed')} noticed, {verdicts.count('survived')} survived, "
              f"{verdicts.count('stillborn')} did not compile")
    share = 100 * total.count("noticed") / max(1, len(total))
    print(f"{len(every)} mutants possible, {len(total)} tried: {share:.1f} % noticed")
    return 0 if share >= options.least else 1


if __name__ == "__main__":
    sys.exit(main())
