#!/usr/bin/env python3
"""check_doors.py SRC EDGES: the doors between the library's folders lead one way. Each folder includes
only what the edges allow it, no files include each other in a circle, and what a folder's header
declares is defined in that folder."""
import os
import re
import sys
from pathlib import Path

INCLUDE = re.compile(r'^#include "([\w/]+\.h)"', re.M)
COMMENT = re.compile(r"//.*")
PARAMETERS = r"\([^;{}()]*(?:\([^;{}()]*\)[^;{}()]*)*\)\s*(?:const)?\s*"
RETURNS = r'^(?!static|using|return|else)(?:extern "C" )?\w[\w\s*&<>:,]*?[\s*&]'
DECLARED = re.compile(RETURNS + r"(\w+)" + PARAMETERS + ";", re.M)
DEFINED = re.compile(RETURNS + r"(\w+)" + PARAMETERS + r"\{", re.M)


def read_edges(path):
    lines = [line.split(":") for line in open(path, encoding="utf-8") if not line.startswith("#")]
    return {folder.strip(): set(allowed.split()) for folder, allowed in lines}


def wrong_edges(includes, edges):
    for file, included in includes.items():
        folder = os.path.dirname(file)
        for header in included:
            target = os.path.dirname(header)
            if target != folder and target not in edges.get(folder, set()):
                yield f"{file} includes {header}: {folder} may not include {target}"


def circles(includes):
    state = {}

    def visit(file, path):
        if state.get(file) == "left":
            return
        if file in path:
            yield " includes ".join(path[path.index(file):] + [file])
            return
        for header in includes.get(file, ()):
            yield from visit(header, path + [file])
        state[file] = "left"

    for file in includes:
        yield from visit(file, [])


def foreign_definitions(texts):
    declared, defined = {}, {}
    for file, text in texts.items():
        pattern, found = (DECLARED, declared) if file.endswith(".h") else (DEFINED, defined)
        for name in pattern.findall(text):
            found.setdefault(name, set()).add(file)
    for name, headers in declared.items():
        for header in headers:
            for source in defined.get(name, ()):
                if os.path.dirname(header) != os.path.dirname(source):
                    yield f"{name} is declared in {header} and defined in {source}"


source, edges = Path(sys.argv[1]), read_edges(sys.argv[2])
texts = {
    str(file.relative_to(source)): COMMENT.sub("", file.read_text(encoding="utf-8"))
    for file in sorted(source.rglob("*")) if file.suffix in (".cpp", ".h")
}
includes = {
    file: [header for header in INCLUDE.findall(text) if header in texts]
    for file, text in texts.items()
}
wrong = [*wrong_edges(includes, edges), *circles(includes), *foreign_definitions(texts)]
print("\n".join(wrong) if wrong else f"doors: {len(texts)} files of {len(edges)} folders")
sys.exit(1 if wrong else 0)
