#!/usr/bin/env python3
"""The guide quotes the examples: every code block introduced by a line that
names example files (`examples/hello/main.cpp`) must be found, line for
line, in one of them (an excerpt of a form file may be indented less), so
the guide cannot drift from the code it shows.

usage: guide_quotes.py SOURCE_DIR"""

import pathlib
import re
import sys

root = pathlib.Path(sys.argv[1])
lines = (root / "docs/guide.md").read_text().splitlines()
named = re.compile(r"`(examples/[\w./-]+\.\w+)`")
failures = checked = 0


def contains(path, block):
    text = [l.strip() for l in path.read_text().splitlines()]
    return any(text[k:k + len(block)] == block for k in range(len(text) - len(block) + 1))


i = 0
while i < len(lines):
    if not lines[i].startswith("```"):
        i += 1
        continue
    end = lines.index("```", i + 1)
    block = [l.strip() for l in lines[i + 1:end]]
    intro = next((l for l in reversed(lines[:i]) if l.strip()), "")
    sources = [root / name for name in named.findall(intro)]
    if sources:
        checked += 1
        if not any(p.exists() and contains(p, block) for p in sources):
            failures += 1
            print("docs/guide.md:%d: the block is not in %s" % (i + 1, ", ".join(map(str, sources))))
    i = end + 1
print("%d quoted blocks checked, %d out of date" % (checked, failures))
sys.exit(1 if failures or not checked else 0)
