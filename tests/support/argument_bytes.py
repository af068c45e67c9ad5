#!/usr/bin/env python3
"""Prints {"name", "ordinal", bytes}, for each stdcall function of the import lists."""
import re
import sys

for path in sys.argv[1:]:
    with open(path, encoding="utf-8") as definition:
        for line in definition:
            match = re.match(r" (\w+)@(\d+)(?: @(\d+) NONAME)?$", line.rstrip())
            if match:
                print(f'{{"{match[1]}", "{match[3] or ""}", {match[2]}}},')
