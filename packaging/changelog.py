#!/usr/bin/env python3
"""Writes a Debian changelog from the project's: one entry a released version.   changelog.py CHANGELOG.md MAINTAINER"""
import datetime
import pathlib
import re
import sys
import textwrap

text, maintainer = pathlib.Path(sys.argv[1]).read_text(), sys.argv[2]
entries = []
for version, date, body in re.findall(r"^## \[([\d.]+)\] - (\S+)\n(.*?)(?=^## |\Z)", text, re.M | re.S):
    changes = []
    for kind, items in re.findall(r"^### (\w+)\n(.*?)(?=^### |\Z)", body, re.M | re.S):
        for item in re.findall(r"^- (.*?)(?=^- |\Z)", items, re.M | re.S):
            words = f"{kind}: {' '.join(item.split())}"
            changes.append(textwrap.fill(words, 78, initial_indent="  * ", subsequent_indent="    ",
                                         break_long_words=False, break_on_hyphens=False))
    day = datetime.date.fromisoformat(date)
    entries.append(f"netpublic ({version}-0upstream1) unstable; urgency=medium\n\n" + "\n".join(changes) +
                   f"\n\n -- {maintainer}  {day:%a, %d %b %Y} 00:00:00 +0000\n")
if not entries:
    sys.exit(f"{sys.argv[1]}: no released version")
print("\n".join(entries), end="")
