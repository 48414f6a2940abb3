#!/usr/bin/env python3
"""Breaks one operator, constant, condition or table row of the library at a time and sees who notices.

    mutants.py --work DIR [--limit N] [--seed N] [--files FILE...] [--only ID...] [--list]
    mutants.py --work DIR --matrix FILE   every test that notices, not only the first; kept as JSON
    mutants.py --work DIR --again FILE    the mutants of such a file: was one noticed before that is not now?
    mutants.py --report FILE              what such a file says: which tests are needed, which never are

Works on a copy of the tree in DIR, so that the tree itself may change meanwhile. The sample depends on the
sources and the seed alone. A mutant that does not compile is not counted. What may notice: each test of the runner,
the golden file of the examples and that of the tables. Exit status 1 when fewer than --least percent of the mutants
are noticed, or one is lost that was noticed before.
"""
import argparse
import json
import random
import re
import subprocess
import sys
import time
from collections import Counter
from pathlib import Path

import mutation

SOURCES = ["ground/*.cpp", "values/*.cpp", "engine/*.cpp", "toolkit/*.cpp", "text/*.cpp", "net_*.cpp"]

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
TABLE = re.compile(r"(?:Field fields|Word \w+)\[\] = \{.*?\};", re.S)
FOR_READERS = re.compile(r"\.(?:title|accepts|shown|named)$")  # what only the inspector shows


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


def in_code(code, text):
    for pattern, replacements in OPERATORS:
        for match in re.finditer(pattern, code):
            value = match.group()
            for replacement in replacements or [str(int(value) + 1)] + ([str(int(value) - 1)] if int(value) else []):
                yield match.start(), match.end(), replacement
    for match in re.finditer(r"\b(?:if|while) \(", code):
        end = condition_end(code, match.end() - 1)
        condition = text[match.end():end]
        if end > 0 and ";" not in condition and not re.search(r"(?<![=!<>])=(?!=)|\w \*\w+ =", condition):
            yield match.end(), end, f"!({' '.join(condition.split())})"


def in_tables(text):
    """A word or key misspelt, a row with the next row's member, a property of a row left out."""
    for table in TABLE.finditer(text):
        start, rows = table.start(), table.group()
        for match in re.finditer(r'"(\w+)(\w)"', rows):
            yield start + match.start(2), start + match.end(2), "y" if match.group(2) == "x" else "x"
        members = list(re.finditer(r"AT\(([\w.]+)\)", rows))
        for one, other in zip(members, members[1:]):
            if one.group() != other.group():
                yield start + one.start(1), start + one.end(1), other.group(1)
        for match in re.finditer(r"\.\w+(?=\()", rows):
            end = condition_end(rows, match.end())
            if end > 0 and not FOR_READERS.match(match.group()):
                yield start + match.start(), start + end + 1, ""


def mutants_of(path):
    """(id, start, end, replacement) of every mutant of a file."""
    text = path.read_text()
    code = blank(text)
    found = {}
    for start, end, replacement in [*in_code(code, text), *in_tables(text)]:
        line = text.count("\n", 0, start) + 1
        begin = text.rfind("\n", 0, start) + 1
        if not SKIPPED.match(code[begin:code.find("\n", start)]):
            was = " ".join(text[start:end].split())
            name = f"{path.name}:{line}:{start - begin + 1} {was} -> {replacement or 'nothing'}"
            found[name] = (name, start, end, replacement)
    return list(found.values())


class Tree(mutation.Copy):
    """The copy that is broken and built."""

    def __init__(self, options):
        work = options.work.resolve()
        super().__init__(work)
        self.jobs, self.filter, self.every = options.jobs, options.tests, bool(options.matrix or options.again)
        self.build = work / "build"
        self.runner, self.netparam = self.build / "tests/netpublic_tests", self.build / "tools/netparam/netparam"
        if not mutation.configure(self.top, self.build, f"-DCMAKE_CXX_FLAGS={options.flags}") or not self.builds():
            sys.exit("The unbroken tree does not build.")
        self.timeout = 900
        start = time.monotonic()
        noticed = self.noticed_by()
        if noticed:
            sys.exit(f"The unbroken tree fails: {', '.join(noticed)}")
        self.timeout = 60 + 4 * (time.monotonic() - start)

    def builds(self):
        return mutation.build(self.build, self.jobs, "netpublic_tests", "netparam")

    def differs(self, golden, *command):
        try:
            done = subprocess.run(command, capture_output=True, check=False, timeout=self.timeout,
                                  preexec_fn=mutation.limits)
        except subprocess.TimeoutExpired:
            return True
        return done.stdout != (self.top / "tests/golden" / golden).read_bytes()

    def failed_tests(self):
        """The tests that fail. One that kills or hangs the runner has failed; the others get another run."""
        failed = []
        while len(failed) < 12:
            left_out = self.filter + ("" if "-" in self.filter else "-") + "".join(":" + name for name in failed)
            command = [self.runner, f"--gtest_filter={left_out}"] + ["--gtest_fail_fast"] * (not self.every)
            try:
                done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False,
                                      timeout=self.timeout, preexec_fn=mutation.limits)
                output, status = done.stdout, done.returncode
            except subprocess.TimeoutExpired as hung:
                output, status = hung.stdout or b"", 1
            output = output.decode(errors="replace")
            begun = re.findall(r"\[ RUN      \] (\S+)", output)
            ended = set(re.findall(r"\[(?:       OK |  FAILED  |  SKIPPED )\] ([\w./]+) \(\d+ ms\)", output))
            failed += re.findall(r"\[  FAILED  \] ([\w./]+)(?:, where .*)? \(\d+ ms\)", output)
            dead = [name for name in begun if name not in ended]
            failed += dead
            if not dead or status == 0 or not self.every:
                break
        return sorted(set(failed))

    def noticed_by(self):
        noticed = self.failed_tests()
        if (self.every or not noticed) and self.differs("tables.txt", self.netparam, "describe", "--all", "--rows"):
            noticed.append("golden tables")
        if (self.every or not noticed) and self.differs("examples.txt", sys.executable,
                                                        self.top / "tests/gates/examples.py", self.netparam,
                                                        self.top / "examples"):
            noticed.append("golden examples")
        return noticed

    def judge(self, path, mutant):
        """Who notices; None when it does not compile."""
        _, start, end, replacement = mutant
        text = path.read_text()
        with mutation.replaced(path, text[:start] + replacement + text[end:]):
            return self.noticed_by() if self.builds() else None


def report(results):
    compiled = {name: noticed for name, noticed in results.items() if noticed is not None}
    noticed = sum(bool(who) for who in compiled.values())
    files = Counter((name.split(":")[0], bool(who)) for name, who in compiled.items())
    for file in sorted({file for file, _ in files}):
        print(f"{file}: {files[file, True]} noticed, {files[file, False]} survived")
    print(f"{len(compiled)} mutants compiled: {100 * noticed / max(1, len(compiled)):.1f} % noticed")
    return 100 * noticed / max(1, len(compiled))


def report_matrix(results):
    every = Counter(who for noticed in results.values() for who in noticed or [])
    alone = {}
    for name, noticed in results.items():
        if noticed and len(noticed) == 1:
            alone.setdefault(noticed[0], []).append(name)
    print("The only one to notice:")
    for who, names in sorted(alone.items(), key=lambda item: -len(item[1])):
        print(f"  {who}: {len(names)}\n" + "\n".join(f"      {name}" for name in names))
    print("Notice something, and are never the only one:")
    print("\n".join(f"  {who}: {count}" for who, count in every.most_common() if who not in alone))


def choose(options, paths):
    every = [(path, mutant) for path in paths for mutant in mutants_of(path)]
    wanted = options.only or (options.again and [*json.loads(options.again.read_text())])
    if wanted:
        found = [item for item in every if item[1][0] in wanted]
        print(f"{len(found)} of {len(wanted)} mutants are in the sources", file=sys.stderr)
        return found
    return sorted(random.Random(options.seed).sample(every, min(options.limit, len(every))),
                  key=lambda item: (item[0], item[1][1]))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--work", type=Path, help="directory for the copy and its build")
    parser.add_argument("--limit", type=int, default=200, help="size of the sample")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--files", nargs="*", default=SOURCES, help="names or patterns in netpublic/src")
    parser.add_argument("--only", nargs="*", help="identifications as they are printed, instead of a sample")
    parser.add_argument("--matrix", type=Path, help="file for all that notice each mutant")
    parser.add_argument("--again", type=Path, help="such a file: its mutants once more")
    parser.add_argument("--report", type=Path, help="such a file: say what it means, try nothing")
    parser.add_argument("--flags", default="-O1", help="compiler flags")
    parser.add_argument("--jobs", type=int, default=2, help="compilers at a time")
    parser.add_argument("--tests", default="*", help="filter for the test runner")
    parser.add_argument("--least", type=float, default=0, help="percent of mutants that must be noticed")
    parser.add_argument("--list", action="store_true", help="only list the sample")
    options = parser.parse_args()

    if options.report:
        results = json.loads(options.report.read_text())
        report_matrix(results)
        report(results)
        return 0
    if options.list:
        sample = choose(options, mutation.sources(mutation.TOP, *options.files))
        print("\n".join(mutant[0] for _, mutant in sample))
        return 0
    if not options.work:
        parser.error("--work is missing")
    options.work.mkdir(parents=True, exist_ok=True)
    tree = Tree(options)
    before = json.loads(options.again.read_text()) if options.again else {}
    lost, results = [], {}
    for path, mutant in choose(options, tree.sources(*options.files)):
        noticed = results[mutant[0]] = tree.judge(path, mutant)
        verdict = "stillborn" if noticed is None else "noticed" if noticed else "survived"
        if before.get(mutant[0]) and not noticed:
            verdict = "LOST"
            lost.append(mutant[0])
        print(f"{verdict:9} {mutant[0]}", flush=True)
        if options.matrix:
            options.matrix.write_text(json.dumps(results, indent=1))
    tree.builds()  # the unbroken tree again
    return report(results) < options.least or bool(lost)


if __name__ == "__main__":
    sys.exit(main())
