#!/usr/bin/env python3
"""check_exports.py LIBRARY JAVA_FOLDER ENTRY_POINTS.def: compares the library's export table with the
natives that the two OS classes declare, and with the entry points for companion libraries."""
import os
import re
import subprocess
import sys

NATIVES, ENTRY_POINTS = 210, 32


def exports_of(library):
    listing = subprocess.run(["i686-w64-mingw32-objdump", "-p", library], check=True,
                             capture_output=True, text=True).stdout
    table = listing[listing.index("[Ordinal/Name Pointer] Table"):]
    return set(re.findall(r"^\s*\[\s*\d+\].*\s(\S+)$", table.split("\n\n")[0], re.M))


def natives_of(folder):
    natives = set()
    for package in ("k4tr", "dovr"):
        path = os.path.join(folder, "com/nuvik/wyx", package, "OS.java")
        with open(path, encoding="utf-8") as source:
            for name in re.findall(r"\bnative\s+[\w\[\]]+\s+(\w+)\(", source.read()):
                natives.add(f"Java_com_nuvik_wyx_{package}_OS_" + name.replace("_", "_1"))
    return natives


def entry_points_of(definition):
    with open(definition, encoding="utf-8") as lines:
        return set(re.findall(r"^ (\w+)(?:@\d+)?$", lines.read(), re.M))


def main():
    exports = exports_of(sys.argv[1])
    natives, entry_points = natives_of(sys.argv[2]), entry_points_of(sys.argv[3])
    expected = natives | entry_points
    for name in sorted(expected - exports):
        print(f"not exported: {name}")
    for name in sorted(exports - expected):
        print(f"exported, but not declared: {name}")
    counts = (len(natives), len(entry_points))
    print(f"{len(exports)} exports; declared are {counts[0]} natives and {counts[1]} entry points")
    sys.exit(exports != expected or counts != (NATIVES, ENTRY_POINTS))


main()
