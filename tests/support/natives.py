#!/usr/bin/env python3
"""natives.py header|table OS.java...: the natives that the classes declare, for tests.

header: as typed functions, called as in Java: OS::Shell_New.
table: as rows of a C++ table: the name, the export, the result's type, and each parameter's type and
name."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "java"))
from declarations import layer_of, natives_of  # noqa: E402

TYPES = {
    "void": "void",
    "boolean": "jboolean",
    "char": "jchar",
    "int": "jint",
    "String": "jstring",
    "Object": "jobject",
    "int[]": "jintArray",
    "byte[]": "jbyteArray",
    "String[]": "jobjectArray",
}


def export_of(layer, name):
    return f"Java_com_nuvik_wyx_{layer}_OS_" + name.replace("_", "_1")


def header(layer, source):
    yield f"namespace OS::inline {layer} {{"
    for result, name, parameters in natives_of(source):
        typed = ", ".join(f"{TYPES[kind]} {word}" for kind, word in parameters)
        native = f"inline const Native<{TYPES[result]}({typed})> {name}"
        yield f'{native}("{name}", "{export_of(layer, name)}");'
    yield "}"


def table(layer, source):
    for result, name, parameters in natives_of(source):
        row = ", ".join('{"%s", "%s"}' % pair for pair in parameters)
        yield '{"%s", "%s", "%s", {%s}},' % (name, export_of(layer, name), result, row)


def main():
    form = {"header": header, "table": table}[sys.argv[1]]
    if form is header:
        print('#pragma once\n// Made by natives.py from the Java classes.\n\n#include "native.h"\n')
    for path in sys.argv[2:]:
        with open(path, encoding="utf-8") as file:
            source = file.read()
        print("\n".join(form(layer_of(source), source)))


main()
