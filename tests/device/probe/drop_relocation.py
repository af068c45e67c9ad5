#!/usr/bin/env python3
"""drop_relocation.py LIBRARY.dll IMAGE.elf SYMBOL OUTPUT.dll: the library without the base relocation
of the first word at the symbol."""
import os
import struct
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../device"))

# pylint: disable=wrong-import-position
import elf  # noqa: E402
import pe  # noqa: E402


def entry_of(image, wanted):
    """The place in the file of an address's entry in the relocation table."""
    address, size = image.directories[pe.RELOCATION_TABLE]
    section = image.section_at(address)
    start = section.place + address - section.address
    offset = 0
    while offset < size:
        page, length = struct.unpack_from("<II", image.data, start + offset)
        for entry in range(start + offset + 8, start + offset + length, 2):
            value, = struct.unpack_from("<H", image.data, entry)
            if value and page | value & 0xFFF == wanted:
                return entry
        offset += length
    sys.exit(f"no relocation at {wanted:#x}")


def main():
    library, linked, symbol, output = sys.argv[1:]
    image = pe.Pe(library)
    with open(linked, "rb") as file:
        address = elf.Elf(file.read()).addresses[symbol] - image.base
    data = bytearray(image.data)
    struct.pack_into("<H", data, entry_of(image, address), 0)
    with open(output, "wb") as file:
        file.write(data)


main()
