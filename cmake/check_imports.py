#!/usr/bin/env python3
"""check_imports.py --device EXPORTS.txt [LIBRARY.dll...] [--exporter DLL]... [--lists DEF...]

What the libraries import, and what the import lists name, is exported by the device's own DLLs, in
every version that the library is for, and by those that are to serve it on the desk. A missing
export is no error when the library is loaded there: the program ends at the call. So every name of
the lists is checked, whether a library calls it already or not.
"""
import argparse
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../device"))

# pylint: disable=wrong-import-position
import definition  # noqa: E402
import pe  # noqa: E402

# Real libraries of the desk's system.
SYSTEM = {"ole32.dll"}
OLDEST_VERSION = (4, 20)


def exports_of_device(path):
    """What each DLL of the device exports, by its name."""
    exports, library = {}, None
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            name, *version = line.split("#")[0].split() or [None]
            if name == "LIBRARY":
                library = exports.setdefault(version[0], set())
            elif name and (not version or tuple(map(int, version[0].split("."))) <= OLDEST_VERSION):
                library.add(int(name) if name.isdigit() else name)
    return exports


def listed(path):
    """(DLL, name or ordinal) of what an import list names."""
    module = definition.read(path)
    return [(module.library, entry.ordinal or entry.name) for entry in module.entries]


def imported(path):
    """(DLL, name or ordinal) of what a library imports."""
    return [(library.lower(), name) for library, name, _ in pe.Pe(path).imports()]


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("libraries", nargs="*")
    parser.add_argument("--device", required=True)
    parser.add_argument("--exporter", action="append", default=[])
    parser.add_argument("--lists", nargs="+", default=[])
    arguments = parser.parse_args()

    on_device = exports_of_device(arguments.device)
    on_desk = {os.path.basename(path).lower(): pe.Pe(path).exported()
               for path in arguments.exporter}
    try:
        sources = {path: listed(path) for path in arguments.lists}
    except definition.DefinitionError as problem:
        sys.exit(str(problem))
    sources |= {path: imported(path) for path in arguments.libraries}

    problems = [f"{source} names nothing" for source, wanted in sources.items() if not wanted]
    for source, wanted in sources.items():
        for module, name in wanted:
            if name not in on_device.get(module, ()):
                problems.append(f"the device's {module} does not export {name}, which {source} wants")
            if on_desk and module not in SYSTEM and name not in on_desk.get(module, ()):
                problems.append(f"the desk's {module} does not export {name}, which {source} wants")
    if not sources:
        problems.append("there is nothing to check")
    if problems:
        sys.exit("\n".join(problems))
    print(f"{sum(map(len, sources.values()))} imports, all exported by the device")


if __name__ == "__main__":
    main()
