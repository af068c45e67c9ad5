#!/usr/bin/env python3
"""natives_table.py OS.java...: the natives that the classes declare, as rows of a C++ table: the
name, the result's type, and each parameter's type and name."""
import re
import sys

DECLARATION = re.compile(r"public static native ([\w\[\]]+) (\w+)\(([^)]*)\);")


def parameters(text):
    return [tuple(parameter.split()) for parameter in text.split(",") if parameter.strip()]


for path in sys.argv[1:]:
    with open(path, encoding="utf-8") as source:
        for result, name, declared in DECLARATION.findall(source.read()):
            row = ", ".join('{"%s", "%s"}' % pair for pair in parameters(declared))
            print('{"%s", "%s", {%s}},' % (name, result, row))
