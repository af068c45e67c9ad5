#!/usr/bin/env python3
"""check_imports.py [LIBRARY] [EXPORTER...] [--exporter DLL]... [--lists DEF...]

What a library imports is exported by the DLLs that are to serve it. A missing export is no error when the library is loaded: the program ends at the call. So every name of the
import lists is checked as well, whether a library calls it already or not.
"""
import argparse
import os
import re
import struct
import sys

# Real libraries of the desk's system.
SYSTEM = {"ole32.dll"}


class Pe:
    """The import and export tables of a 32-bit PE file."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self.data = file.read()
        header = self.word32(0x3C)
        if self.data[header:header + 4] != b"PE\0\0":
            raise ValueError(f"{path} is no PE file")
        section_count = self.word16(header + 6)
        optional = header + 24
        if self.word16(optional) != 0x10B:
            raise ValueError(f"{path} is no 32-bit PE file")
        sections = optional + self.word16(header + 20)
        self.sections = [struct.unpack_from("<IIII", self.data, sections + 40 * i + 8)
                         for i in range(section_count)]
        self.export_table = self.word32(optional + 96)
        self.import_table = self.word32(optional + 104)

    def word16(self, offset):
        return struct.unpack_from("<H", self.data, offset)[0]

    def word32(self, offset):
        return struct.unpack_from("<I", self.data, offset)[0]

    def at(self, address):
        """The file offset of an address relative to the image."""
        for size, start, raw_size, raw_start in self.sections:
            if start <= address < start + max(size, raw_size):
                return address - start + raw_start
        raise ValueError(f"address {address:#x} lies in no section")

    def text(self, address):
        start = self.at(address)
        return self.data[start:self.data.index(b"\0", start)].decode("ascii")

    def exports(self):
        """Names and ordinals, forwarded ones too."""
        if not self.export_table:
            return set()
        table = self.at(self.export_table)
        base, functions, names = struct.unpack_from("<III", self.data, table + 16)
        addresses, name_pointers = struct.unpack_from("<II", self.data, table + 28)
        found = {base + i for i in range(functions) if self.word32(self.at(addresses) + 4 * i)}
        found |= {self.text(self.word32(self.at(name_pointers) + 4 * i)) for i in range(names)}
        return found

    def imports(self):
        """(DLL name in lower case, name or ordinal) pairs."""
        descriptor = self.at(self.import_table)
        while self.word32(descriptor + 12):
            module = self.text(self.word32(descriptor + 12)).lower()
            entry = self.at(self.word32(descriptor) or self.word32(descriptor + 16))
            while value := self.word32(entry):
                yield module, value & 0xFFFF if value >> 31 else self.text(value + 2)
                entry += 4
            descriptor += 20


def listed(path):
    """What an import list names, as imports() gives it."""
    module = None
    with open(path, encoding="utf-8") as definition:
        for line in definition:
            if match := re.match(r"LIBRARY\s+(\S+)", line):
                module = match[1].lower()
            elif match := re.match(r"\s+(\w+)(?:@\d+)?(?:\s+@(\d+)\s+NONAME)?\s*$", line):
                yield module, int(match[2]) if match[2] else match[1]


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("library", nargs="?")
    parser.add_argument("exporters", nargs="*")
    parser.add_argument("--exporter", action="append", default=[])
    parser.add_argument("--lists", nargs="+", default=[])
    arguments = parser.parse_args()

    exports = {os.path.basename(path).lower(): Pe(path).exports()
               for path in arguments.exporters + arguments.exporter}
    sources = {path: list(listed(path)) for path in arguments.lists}
    if arguments.library:
        sources[arguments.library] = list(Pe(arguments.library).imports())

    problems = [f"{source} names nothing" for source, wanted in sources.items() if not wanted]
    problems += [f"{module} does not export {name}, which {source} wants"
                 for source, wanted in sources.items() for module, name in wanted
                 if module not in SYSTEM and name not in exports.get(module, ())]
    if not sources:
        problems.append("there is nothing to check")
    if problems:
        sys.exit("\n".join(problems))
    print(f"{sum(map(len, sources.values()))} imports, all exported by the emulated device")


if __name__ == "__main__":
    main()
