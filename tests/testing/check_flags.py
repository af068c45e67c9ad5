#!/usr/bin/env python3
"""check_flags.py SNAPSHOT.h PART.java: the flags of a part of the screen have the same names and values
where they are written and where they are read."""
import re
import sys


def flags(path, pattern):
    with open(path, encoding="utf-8") as file:
        return {name.upper().replace("_", ""): int(value) for name, value in re.findall(pattern, file.read())}


written = flags(sys.argv[1], r"constexpr unsigned snapshot(\w+) = (\d+);")
read = flags(sys.argv[2], r"private static final int (\w+) = (\d+);")
wrong = [name for name in sorted({*written, *read}) if written.get(name) != read.get(name)]
for flag in wrong:
    print(f"{flag}: written as {written.get(flag)}, read as {read.get(flag)}")
sys.exit(1 if wrong or not written else 0)
