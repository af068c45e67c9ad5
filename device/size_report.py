#!/usr/bin/env python3
"""size_report.py LIBRARY.dll LINK_MAP: where the bytes of the DLL come from: its sections, the
folders of the sources, and the functions that are largest."""
import collections
import os
import re
import sys

import pe

SHOWN_FUNCTIONS = 40
# Address, address, size, alignment, and what it is: an input section at 9 columns, its symbols at 17.
# What is not loaded has address 0.
LINE = re.compile(r"\s*[1-9a-f][0-9a-f]*\s+[0-9a-f]+\s+([0-9a-f]+)\s+\d+ (\s*)(.*)")
INPUT_INDENT, SYMBOL_INDENT = 8, 16


def owner_of(path):
    """The folder of a source; other inputs by what they are."""
    if match := re.search(r"_objects\.dir/(?:\./)?([\w/]+)/[^/]+\.obj?", path):
        return match[1]
    if "libgcc.a" in path:
        return "arithmetic helpers"
    if "_stubs.o" in path:
        return "imports"
    if path.startswith("<internal>"):
        return "merged texts and constants"
    return "other"


def read_link_map(path):
    owners, functions = collections.Counter(), []
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            match = LINE.match(line)
            if not match:
                continue
            size, indent, text = int(match[1], 16), len(match[2]), match[3]
            if indent == INPUT_INDENT and ":(" in text:
                if ":(.rel" in text:  # kept for the converter, and not loaded
                    continue
                owners[owner_of(text)] += size
                in_code = ":(.text" in text
            elif indent == SYMBOL_INDENT and in_code and size:
                functions.append((size, text))
    if not owners or not functions:
        sys.exit(f"{path} is no link map that I can read")
    return owners, functions


def main():
    library, link_map = sys.argv[1:]
    owners, functions = read_link_map(link_map)
    image = pe.Pe(library)
    print(f"{os.path.getsize(library):8} bytes in {os.path.basename(library)}\n")
    print("sections, as loaded")
    for section in image.sections:
        print(f"{section.size:8} {section.name}")
    print("\ncode and data, by folder")
    for owner, size in owners.most_common():
        print(f"{size:8} {owner}")
    print(f"\nthe largest {SHOWN_FUNCTIONS} of {len(functions)} functions")
    for size, name in sorted(functions, key=lambda entry: (-entry[0], entry[1]))[:SHOWN_FUNCTIONS]:
        print(f"{size:8} {name}")


main()
