#!/usr/bin/env python3
"""Compares what the message tables accept with limits that were typed apart from them.

    limits.py LIMITS TABLES

LIMITS says in its head how it is written. TABLES is the golden file of the tables. Every limited row of the tables
needs its line, and every line its row.
"""
import re
import sys
from pathlib import Path

NUMBER = r"-?(?:0x[0-9A-Fa-f]+|\d+)"
WORD = rf"({NUMBER}) ( ?[^\s,;]+)(?: \(only (\w+)\))?"


def words_of(text):
    """(code, word, the only direction it is known in) of the list of words in the text."""
    listed = re.search(rf"(?:^|: )({WORD}(?:, {WORD})*)", text)
    return frozenset((int(code, 0), word.lower(), only) for code, word, only in re.findall(WORD, listed[1]))


def typed_limits(path):
    """(table, key) -> limit; the limit as a tuple of its kind and what the kind needs."""
    limits, tables = {}, []
    for line in path.read_text().splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        if not line.startswith(" "):
            tables = line.split()
            continue
        keys, _, limit = line.strip().partition(": ")
        kind, _, rest = limit.partition(" ")
        if kind == "as":
            value = limits[tuple(rest.split())]
        elif kind == "words":
            longest = re.match(r"(\d+): ", rest)
            value = (kind, longest and int(longest[1]), words_of(rest.split(": ")[-1]))
        elif kind == "numbers":
            value = (kind, *map(int, rest.split(" in ")))
        elif kind in ("text", "list"):
            value = (kind, *map(int, rest.split(" or ")))
        elif kind == "flag":
            value = (kind,)
        else:
            value = ("range", *(int(end) if end else None for end in kind.split("..")))
        for table in tables:
            for key in keys.split():
                if limits.setdefault((table, key), value) != value:
                    sys.exit(f"{table}/{key} stands twice")
    return limits


def described_limit(kind, accepted):
    """The limit of a row of the tables, as above; None without."""
    text = re.sub(r" -> \S+.*", "", accepted.split("; ")[0])
    if kind in ("place", "group", "wire", "named", "preset", "constant"):
        return None
    if kind in ("word", "mask", "events") or text.startswith("a word"):
        longest = re.search(r"at most (\d+) characters", text)
        return "words", longest and int(longest[1]), words_of(accepted)
    if kind == "flag":
        return ("flag",)
    if numbers := re.search(r"at most (\d+) of them in (\d+) characters", text):
        return "numbers", int(numbers[1]), int(numbers[2])
    if kind in ("list", "wires", "items"):
        most = re.search(r"(?:at most|exactly) (\d+)", text)
        return most and ("list", int(most[1]))
    if ends := re.search(rf"({NUMBER}) to ({NUMBER})", text):
        return "range", int(ends[1]), int(ends[2])
    if low := re.match(rf"a whole number from ({NUMBER})", text):
        return "range", int(low[1]), None
    if high := re.match(rf"a whole number up to ({NUMBER})", text):
        return "range", None, int(high[1])
    longest = re.match(r"a text of at most (\d+) characters", text)
    return longest and ("text", int(longest[1]))


def described_limits(path):
    """(table, key) -> limits: a table may know a key twice, and several records may share a path."""
    limits, table = {}, ""
    for line in path.read_text().splitlines()[3:]:
        cells = line.split(" | ")
        if not line.startswith(" "):
            table = line.split(": ")[0]
        elif len(cells) >= 4 and "(payload)" not in table:
            if limit := described_limit(cells[1], cells[3]):
                limits.setdefault((table, cells[0].strip()), []).append(limit)
    return limits


def main():
    typed, described = typed_limits(Path(sys.argv[1])), described_limits(Path(sys.argv[2]))
    faults = [f"{'/'.join(place)}: {found} is nowhere typed" for place, found in described.items()
              if place not in typed]
    faults += [f"{'/'.join(place)}: {limit} has no row" for place, limit in typed.items() if place not in described]
    for place, limit in typed.items():
        for found in described.get(place, []):
            if found != limit and found not in {(limit[0], each) for each in limit[1:]}:
                faults.append(f"{'/'.join(place)}: typed {limit}, in the table {found}")
    print("\n".join(faults) or f"{len(typed)} limits, words and capacities")
    return bool(faults)


if __name__ == "__main__":
    sys.exit(main())
