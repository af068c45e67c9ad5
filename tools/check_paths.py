#!/usr/bin/env python3
"""check_paths.py FILE.md...: the paths that the documents name exist. A path is what stands in
backquotes and begins with a folder of this checkout, or links to a file; what is built is not looked
for."""
import os
import re
import sys

NAMED = re.compile(r"`([\w.+-]+(?:/[\w.+-]+)+/?)`")
LINKED = re.compile(r"\]\(([^)#:]+)\)")


def missing(document):
    folder = os.path.dirname(document)
    with open(document, encoding="utf-8") as file:
        text = file.read()
    for path in NAMED.findall(text):
        top = path.split("/")[0]
        if top != "build" and os.path.isdir(top) and not os.path.exists(path):
            yield path
    for path in LINKED.findall(text):
        if not os.path.exists(os.path.join(folder, path)):
            yield path


wrong = [f"{document}: there is no {path}" for document in sys.argv[1:] for path in missing(document)]
print("\n".join(wrong) if wrong else f"paths: {len(sys.argv) - 1} documents")
sys.exit(1 if wrong else 0)
