#!/usr/bin/env python3
"""Draws a run's ratios with their goals.

usage: plot.py benchmarks.json OUTPUT.svg
"""
import sys

import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt  # noqa: E402  (the backend must be chosen first)

import results  # noqa: E402

MET, MISSED, GOAL = "#4477aa", "#cc6677", "#333333"
PLATE = {"facecolor": "white", "linewidth": 0, "pad": 0.3}  # keeps the goal's line out of the figures


def draw(axes, names, values, goal, title, form):
    """One bar a message; `values` may lack some."""
    most = max(value for value in values if value is not None)
    for place, value in enumerate(values):
        if value is None:
            continue
        axes.barh(place, value, color=MET if goal is None or value <= goal else MISSED, height=0.7)
        axes.text(value + most * 0.01, place, form.format(value), va="center", fontsize=7, bbox=PLATE)
    if goal is not None:
        axes.axvline(goal, color=GOAL, linestyle="--", linewidth=1)
        axes.text(goal, len(names) - 0.2, "goal " + form.format(goal), fontsize=8, ha="center", va="bottom",
                  bbox=PLATE)
    axes.set_xlim(0, most * 1.15)
    axes.set_title(title, fontsize=9, pad=16)
    axes.tick_params(labelsize=8)
    axes.spines[["top", "right"]].set_visible(False)
    axes.grid(axis="x", linewidth=0.3)
    axes.set_axisbelow(True)


def main(path, output):
    times = results.load(path)
    names = results.messages(times)[::-1]  # the first one on top
    plt.rcParams.update({"svg.fonttype": "none", "svg.hashsalt": "netpublic", "font.family": "sans-serif"})
    figure, panels = plt.subplots(1, 3, figsize=(13, 0.21 * len(names) + 1.2), sharey=True, layout="constrained")
    draw(panels[0], names, [results.parse_share(times, name) for name in names], results.PARSE_GOAL,
         "Reading a parsed message,\n% of TinyXML's own parse of the text", "{:.1f}")
    draw(panels[1], names, [results.write_multiple(times, name) for name in names], results.WRITE_GOAL,
         "Writing, times the bare cost of\nbuilding and linking the same tree", "{:.2f}")
    draw(panels[2], names, [results.ratio(times, "copy/" + name, "s2x/" + name) for name in names], None,
         "Level-by-level copying,\ntimes the writer's time", "{:.1f}")
    panels[0].set_yticks(range(len(names)), [name.replace("_", " ") for name in names])
    panels[0].set_ylim(-0.6, len(names) + 0.4)
    figure.savefig(output, metadata={"Date": None}, facecolor="white")


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
