#!/usr/bin/env python3
"""Breaks each promise of docs/security.md in turn and sees whether its check notices.

    promise_mutants.py --work DIR [--only TEXT...] [--list]

Works on a copy of the tree in DIR. A mutant is a pattern that stands once in the library's sources, and what takes its
place. Exit status 1 when one is not noticed, does not compile or finds its pattern no more, or when a promise has none.
"""
import argparse
import re
import sys
from collections import namedtuple
from pathlib import Path

import mutation

Mutant = namedtuple("Mutant", "promise what pattern replacement check", defaults=["tests"])

MUTANTS = [
    Mutant("P1", "a null argument is not looked at", r"set == nullptr \|\| (code > alarm_type_last)", r"\1"),
    Mutant("P2", "an item behind a full list", r"index >= capacity\b", "index > capacity"),
    Mutant("P3", "a count that passes its capacity", r"if \(count < capacity\)\n\s*\+\+count;", "++count;"),
    Mutant("P4", "a text that fills its field", r"(int read_text\(.*?)length >= size", r"\1length > size"),
    Mutant("P5", "an index that was never set", r"unsigned expected = 0;\n    int result", "unsigned expected;\n    int result",
           "memcheck"),
    Mutant("P6", "a block that is kept", r"net_free\(&copy\);\n", "\n"),
    Mutant("P7", "a writer that changes its payload", r"(int write_message\(.*?\n\{\n)",
           r"\1    if (param != nullptr && param->data != nullptr)\n        *static_cast<char *>(param->data) ^= 1;\n"),
    Mutant("P8", "a failed element that is linked", r"(root\(\), version\)\) != 0 \? )remove_since\(parent, mark\)",
           r"\1-1"),
    Mutant("P9", "a text without a terminator is read on", r"std::memchr\(text, '\\0', longest\) != nullptr \?",
           "longest != 0 ?"),
    Mutant("P10", "2 KiB on the stack", r"(int read_text\(.*?)\n\{\n",
           r"\1\n{\n    volatile char many[2048];\n    many[size % 2048] = 0;\n", "stack"),
    Mutant("P11", "the elder siblings of each child", r"(int read_record\(.*?child = child\.next_sibling\(\)\) \{\n)",
           r"\1        for (const TiXmlNode *elder = child.tree(); elder != nullptr; elder = elder->PreviousSibling())\n"
           r"            asm volatile(\"\" : : \"r\"(elder));\n".replace('\\"', '"'), "growth"),
    Mutant("P11", "the header's length for each character", r"while \(at != nullptr\) \{",
           "while (at != nullptr && std::strlen(at) < 1000000) {", "growth"),
    Mutant("P11", "a search for each tag of the header", r"(char \*Scanner::read_element\(char \*at\)\n\{\n)",
           r'\1    if (std::strstr(at, "\\1\\2") != nullptr)' "\n        return nullptr;\n", "growth"),
    Mutant("P12", "the first character of a secret", r"memset\(text \+ content, '\*', at - content\)",
           "memset(text + content + 1, '*', at - content > 0 ? at - content - 1 : 0)"),
    Mutant("P12", "the first characters of a password in a line",
           r"return parse_message\(param, node, login_message\);",
           'const int result = parse_message(param, node, login_message);\n    if (result == 0)\n'
           '        log_error(NET_HERE, "login %.4s\\\\n", static_cast<net_login_info_v20_t *>(param->data)->password);\n'
           '    return result;'),
    Mutant("P13", "memory that is not there", r"if \(copy == nullptr\)\n\s*return -1;\n", ""),
    Mutant("P14", "a buffer for all threads", r"char text\[32\]", "static char text[32]", "writable"),
    Mutant("P15", "comments end early", r'"-->"', '"->"'),
    Mutant("P15", "sections end early", r'"\]\]>"', '">"'),
    Mutant("P15", "sections are not seen", r'begins\(at, "!\[CDATA\["\)', "false"),
    Mutant("P15", "standalone is not known", r' \|\| begins_folded\(at, "standalone"\)', ""),
    Mutant("P15", "a declaration's first character is skipped", r"read_declaration\(at \+ 5\)", "read_declaration(at + 6)"),
    Mutant("P15", "a reference over markup", r"\(digit != mark \|\| mark \+ 1 == end\)", "mark + 1 == end"),
    Mutant("P16", "a terminator behind the buffer", r"length_ < size_ \? length_ : size_ - 1", "length_ <= size_ ? length_ : size_ - 1"),
    Mutant("P15", "more levels", r"64 \* 1024, 64, 64", "64 * 1024, 65, 64"),
]

STACK_LIMIT = "1024"  # bytes, as test.sh has it


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
        places = [(path, path.read_text()) for path in self.sources("*.cpp", "*.h", "*.inc")]
        found = [(path, text, len(re.findall(mutant.pattern, text, re.S))) for path, text in places]
        found = [item for item in found if item[2]]
        if len(found) != 1 or found[0][2] != 1:
            return f"stands at {sum(item[2] for item in found)} places"
        path, text, _ = found[0]
        with mutation.replaced(path, re.sub(mutant.pattern, mutant.replacement, text, flags=re.S)):
            if not self.builds(mutant.check):
                return "does not compile"
            return "survived" if self.passes(mutant.check) else "noticed"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--work", type=Path, required=True, help="directory for the copy and its builds")
    parser.add_argument("--only", nargs="*", help="promises, or parts of what the mutants do")
    parser.add_argument("--jobs", type=int, default=2, help="compilers at a time")
    parser.add_argument("--list", action="store_true", help="only list the mutants")
    options = parser.parse_args()

    promised = set(re.findall(r"\*\*(P\d+) ", (mutation.TOP / "docs/security.md").read_text()))
    faults = [f"no mutant breaks {promise}" for promise in sorted(promised ^ {m.promise for m in MUTANTS})]
    chosen = [mutant for mutant in MUTANTS
              if not options.only or any(part == mutant.promise or part in mutant.what for part in options.only)]
    if options.list:
        print("\n".join(f"{mutant.promise:4} {mutant.check:9} {mutant.what}" for mutant in chosen))
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
