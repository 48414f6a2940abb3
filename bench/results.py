"""What report.py and plot.py share: the results of a run and the goals."""
import json

PARSE_GOAL = 4.0  # % of the XML library's own parse
WRITE_GOAL = 1.10  # times the bare cost of building and linking the same tree
FILTER_GOAL = 8.0  # times as fast as a pass per element


def load(path):
    """The best time of each entry over all repetitions, in nanoseconds a call (or what was counted)."""
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    times = {}
    for run in runs:
        if run.get("run_type") == "iteration" and not run.get("error_occurred"):
            name = run["run_name"].removesuffix("/manual_time")
            times[name] = min(times.get(name, float("inf")), run["real_time"] / run["calls"])
    return times


READ_BY_TEXT_GOALS = 12.0, 7.0  # times as fast as parsing, reading and releasing the tree: median, least
WRITE_BY_TEXT_GOALS = 7.0, 4.0  # times as fast as writing, printing and releasing the tree
HOSTILE_GOAL = 40.0  # ns a byte
PUGIXML_GOALS = 1.5, 2.5  # times pugixml's parse alone: median, most


def messages(times):
    """The messages in the order of bench/messages.inc, which is that of the run's file only by chance."""
    return sorted({name.split("/")[1] for name in times if name.startswith(("x2s/", "text_read/"))})


def ratio(times, above, below):
    """One time divided by another; None unless both are there."""
    if above not in times or below not in times:
        return None
    return times[above] / times[below]


def parse_share(times, message):
    share = ratio(times, "x2s/" + message, "tinyxml/" + message)
    return None if share is None else 100 * share


def write_multiple(times, message):
    return ratio(times, "s2x/" + message, "link/" + message)
