#!/usr/bin/env python3
"""Prints a run's results as tables of ratios.

usage: report.py benchmarks.json

All ratios are between entries of one run on one machine. "!" marks what misses its goal.
"""
import math
import statistics
import sys

import results


def number(value, form, goal=None):
    if value is None:
        return ""
    return form.format(value) + (" !" if goal is not None and value > goal else "  " if goal is not None else "")


def print_table(title, head, rows):
    rows = [row for row in rows if any(row[1:])]
    if not rows:
        return
    widths = [max(len(row[i]) for row in [head] + rows) for i in range(len(head))]
    print(f"\n{title}\n")
    for row in [head] + rows:
        print("  ".join(cell.ljust(width) if i == 0 else cell.rjust(width)
                        for i, (cell, width) in enumerate(zip(row, widths))).rstrip())


def message_rows(times):
    for name in results.messages(times):
        yield [name,
               number(times.get("tinyxml/" + name, 0) / 1000, "{:.1f}"),
               number(results.parse_share(times, name), "{:.1f} %", results.PARSE_GOAL),
               number(results.ratio(times, "tinyxml/" + name, "pugixml/" + name), "{:.1f}"),
               number(results.ratio(times, "tinyxml/" + name, "libxml2/" + name), "{:.1f}"),
               number(results.write_multiple(times, name), "{:.2f}", results.WRITE_GOAL),
               number(results.ratio(times, "copy/" + name, "s2x/" + name), "{:.1f}")]


def nanopb_rows(times):
    for name in results.messages(times):
        yield [name,
               number(results.ratio(times, "nanopb_decode/" + name, "x2s/" + name), "{:.1f}"),
               number(results.ratio(times, "nanopb_encode/" + name, "s2x/" + name), "{:.2f}")]


def text_rows(times):
    """The text route, message by message, then the medians and the worst."""
    columns = [("tree_read/", "text_read/"), ("text_read/", "pugixml_inplace/"), ("text_read/", "pugixml/"),
               ("text_scan/", "pugixml_inplace/"), ("nanopb_decode/", "text_read/"), ("tree_write/", "text_write/"),
               ("nanopb_encode/", "text_write/")]
    found = [[] for _ in columns]
    for name in results.messages(times):
        ratios = [results.ratio(times, above + name, below + name) for above, below in columns]
        for values, ratio in zip(found, ratios):
            values += [] if ratio is None else [ratio]
        yield ([name, number(times.get("text_read/" + name, 0) / 1000, "{:.2f}")] +
               [number(ratio, "{:.2f}") for ratio in ratios[:5]] +
               [number(times["text_write/" + name] / 1000 if "text_write/" + name in times else None, "{:.2f}")] +
               [number(ratio, "{:.2f}") for ratio in ratios[5:]])
    for what, function in ("median", statistics.median), ("least", min), ("most", max):
        values = [number(function(values), "{:.2f}") if values else "" for values in found]
        yield [what, ""] + values[:5] + [""] + values[5:]


def hostile_rows(times):
    for name, time in sorted(times.items()):
        if name.startswith("text_hostile/"):
            _, what, size = name.split("/")
            yield [what, size, number(time / int(size), "{:.2f}", results.HOSTILE_GOAL)]


def other_rows(times):
    for what, peer, goal in (("grid_decode", "openssl", 0), ("grid_encode", "openssl", 0),
                             ("filter", "pass_per_element", results.FILTER_GOAL), ("filter", "memcpy", 0)):
        value = results.ratio(times, f"{what}/{peer}", f"{what}/netpublic")
        missed = value is not None and value < goal
        yield [f"{what}: {peer} / netpublic", number(value, "{:.3f}" if peer == "memcpy" else "{:.1f}") +
               (" !" if missed else "")]


def exponent(points):
    """The slope of the straight line through the logarithms of (size, time)."""
    logs = [(math.log(size), math.log(time)) for size, time in points]
    middle = [sum(axis) / len(logs) for axis in zip(*logs)]
    return (sum((x - middle[0]) * (y - middle[1]) for x, y in logs) /
            sum((x - middle[0]) ** 2 for x, _ in logs))


def growth_rows(times):
    series = {}
    for name, time in times.items():
        if name.startswith("growth/"):
            _, what, factor = name.split("/")
            series.setdefault(what, []).append((int(factor), time))
    for what, points in sorted(series.items()):
        points.sort()
        if len(points) > 1:
            yield [what, f"{exponent(points):.2f}", f"{exponent(points[-2:]):.2f}"]


def main(path):
    times = results.load(path)
    print_table(f"Messages; goals: read at most {results.PARSE_GOAL:.0f} %, write at most {results.WRITE_GOAL:.2f}",
                ["", "TinyXML us", "read/TinyXML", "TinyXML/pugixml", "TinyXML/libxml2", "write/link", "copy/write"],
                list(message_rows(times)))
    print_table("Text route; goals: tree/read {:.0f} and {:.0f}, read/pugixml {:.1f} and {:.1f}, tree/write {:.0f} and {:.0f} "
                "(median, worst)".format(*results.READ_BY_TEXT_GOALS, *results.PUGIXML_GOALS, *results.WRITE_BY_TEXT_GOALS),
                ["", "read us", "tree/read", "read/pugi in place", "read/pugi", "scan/pugi in place", "nanopb/read", "write us",
                 "tree/write", "nanopb/write"], list(text_rows(times)))
    print_table(f"Hostile texts; goal: {results.HOSTILE_GOAL:.0f} ns a byte", ["", "bytes", "ns a byte"],
                list(hostile_rows(times)))
    print_table("nanopb, the same record (above 1: netpublic is faster)", ["", "decode/read", "encode/write"],
                list(nanopb_rows(times)))
    print_table(f"Codecs and log filter; goal: {results.FILTER_GOAL:.0f} times a pass per element", ["", "ratio"],
                list(other_rows(times)))
    print_table("Growth: exponent over 1, 10, 100, 1000 times the size, and of the last step",
                ["", "exponent", "last"], list(growth_rows(times)))


if __name__ == "__main__":
    main(sys.argv[1])
