#!/usr/bin/env python3
"""check_imports.py LIBRARY EXPORTER... : every import of the library is exported by the emulated
device. Wine does not refuse a library whose imports are missing; it aborts when one is called."""
import os
import re
import subprocess
import sys

# Real libraries of the desk's system.
SYSTEM = {"ole32.dll"}


def describe(path):
    return subprocess.run(["i686-w64-mingw32-objdump", "-p", path], check=True,
                          capture_output=True, text=True).stdout


def exports_of(path):
    """Names and ordinals; an export without a name has an ordinal only."""
    listing = describe(path)
    start = listing.index("Export Address Table -- Ordinal Base")
    base = int(re.search(r"Ordinal Base (\d+)", listing[start:])[1])
    addresses, _, names = listing[start:].partition("[Ordinal/Name Pointer] Table")
    ordinals = {int(index) + base
                for index in re.findall(r"^\s*\[\s*(\d+)\] \+base", addresses, re.M)}
    return set(re.findall(r"^\s*\[\s*\d+\].*\s(\S+)$", names.split("\n\n")[0], re.M)), ordinals


def imports_of(path):
    """Pairs of library and name, or library and ordinal."""
    current = None
    for line in describe(path).splitlines():
        library = re.match(r"\s*DLL Name: (\S+)", line)
        if library:
            current = library[1].lower()
            continue
        if not line.strip():
            current = None
        entry = current and re.match(r"\s*[0-9a-f]+\s+(<none>|\d+)\s+(?:[0-9a-f]{4}\s+)?(\S+)\s*$",
                                     line)
        if not entry or line.strip().startswith("vma"):
            continue
        yield current, entry[2] if entry[2] != "<none>" else int(entry[1])


def main():
    exporters = {os.path.basename(path).lower(): exports_of(path) for path in sys.argv[2:]}
    missing = []
    count = 0
    for library, wanted in imports_of(sys.argv[1]):
        count += 1
        if library in SYSTEM:
            continue
        names, ordinals = exporters.get(library, (set(), set()))
        if wanted not in (ordinals if isinstance(wanted, int) else names):
            missing.append(f"{library} does not export {wanted}")
    if not count:
        missing.append("no imports were found")
    print("\n".join(missing) or f"{count} imports, all exported by the emulated device")
    sys.exit(bool(missing))


main()
