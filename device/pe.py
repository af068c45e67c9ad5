"""Reads a 32-bit PE file."""
import struct
from typing import NamedTuple

EXPORT_TABLE, IMPORT_TABLE, RESOURCE_TABLE, EXCEPTION_TABLE, RELOCATION_TABLE = 0, 1, 2, 3, 5


class PeError(Exception):
    pass


class Section(NamedTuple):
    name: str
    size: int
    address: int  # relative to the image, as all addresses of an image here
    stored: int
    place: int  # in the file
    flags: int


class Pe:
    def __init__(self, path):
        with open(path, "rb") as file:
            self.data = file.read()
        head, = struct.unpack_from("<I", self.data, 0x3C)
        if self.data[:2] != b"MZ" or self.data[head:head + 4] != b"PE\0\0":
            raise PeError(f"{path} is no PE file")
        (self.machine, count, self.time, _, _, optional_size,
         self.flags) = struct.unpack_from("<HHIIIHH", self.data, head + 4)
        optional = head + 24
        if struct.unpack_from("<H", self.data, optional)[0] != 0x10B:
            raise PeError(f"{path} is no 32-bit PE file")
        self.entry, = struct.unpack_from("<I", self.data, optional + 16)
        self.base, self.alignment, self.file_alignment = struct.unpack_from(
            "<III", self.data, optional + 28)
        self.system_version = struct.unpack_from("<HH", self.data, optional + 40)
        self.subsystem_version = struct.unpack_from("<HH", self.data, optional + 48)
        self.size, self.header_size = struct.unpack_from("<II", self.data, optional + 56)
        self.subsystem, = struct.unpack_from("<H", self.data, optional + 68)
        directories, = struct.unpack_from("<I", self.data, optional + 92)
        self.directories = [struct.unpack_from("<II", self.data, optional + 96 + 8 * index)
                            for index in range(directories)]
        table = optional + optional_size
        self.sections = [self._section(table + 40 * index) for index in range(count)]

    def _section(self, offset):
        name, size, address, stored, place = struct.unpack_from("<8sIIII", self.data, offset)
        flags, = struct.unpack_from("<I", self.data, offset + 36)
        return Section(name.rstrip(b"\0").decode("ascii"), size, address, stored, place, flags)

    def section_at(self, address):
        for section in self.sections:
            if section.address <= address < section.address + max(section.size, section.stored):
                return section
        raise PeError(f"address {address:#x} lies in no section")

    def bytes_at(self, address, size):
        section = self.section_at(address)
        start = address - section.address
        stored = self.data[section.place + start:section.place + min(start + size, section.stored)]
        return stored + b"\0" * (size - len(stored))

    def word(self, address):
        return struct.unpack("<I", self.bytes_at(address, 4))[0]

    def text(self, address):
        section = self.section_at(address)
        start = section.place + address - section.address
        return self.data[start:self.data.index(b"\0", start)].decode("ascii")

    def exports(self):
        """(ordinal, name, address) in the order of the table of names."""
        table, _ = self.directories[EXPORT_TABLE]
        base, _, count, functions, names, ordinals = struct.unpack(
            "<IIIIII", self.bytes_at(table + 16, 24))
        for index in range(count):
            position, = struct.unpack("<H", self.bytes_at(ordinals + 2 * index, 2))
            yield (base + position, self.text(self.word(names + 4 * index)),
                   self.word(functions + 4 * position))

    def exported(self):
        """The names and ordinals of all exports, forwarded ones and those without a name too."""
        table, _ = self.directories[EXPORT_TABLE]
        base, count, _, functions = struct.unpack("<IIII", self.bytes_at(table + 16, 16))
        ordinals = {base + index for index in range(count) if self.word(functions + 4 * index)}
        return ordinals | {name for _, name, _ in self.exports()}

    def imports(self):
        """(DLL, name or ordinal, slot)."""
        descriptor, _ = self.directories[IMPORT_TABLE]
        while self.word(descriptor + 12):
            library = self.text(self.word(descriptor + 12))
            lookup, slot = self.word(descriptor), self.word(descriptor + 16)
            while value := self.word(lookup):
                yield library, value & 0xFFFF if value >> 31 else self.text(value + 2), slot
                lookup, slot = lookup + 4, slot + 4
            descriptor += 20

    def resources(self):
        """(type, name, language, content) of each resource. Those that are known by number only."""
        root, size = self.directories[RESOURCE_TABLE]
        if size:
            yield from self._resources(root, root, ())

    def _resources(self, root, directory, path):
        named, numbered = struct.unpack("<HH", self.bytes_at(directory + 12, 4))
        if named:
            raise PeError("a resource has a name that is a text")
        for entry in range(directory + 16, directory + 16 + 8 * numbered, 8):
            number, place = struct.unpack("<II", self.bytes_at(entry, 8))
            below = (*path, number)
            if place >> 31:
                yield from self._resources(root, root + (place & 0x7FFFFFFF), below)
            elif len(below) != 3:
                raise PeError("a resource does not lie in the third directory")
            else:
                address, size = struct.unpack("<II", self.bytes_at(root + place, 8))
                yield (*below, self.bytes_at(address, size))

    def fixups(self):
        """(address, type) of each base relocation, the padding left out."""
        address, size = self.directories[RELOCATION_TABLE]
        end = address + size
        while address < end:
            page, length = struct.unpack("<II", self.bytes_at(address, 8))
            if length < 8:
                raise PeError("a block of base relocations has no end")
            count = (length - 8) // 2
            for entry in struct.unpack(f"<{count}H", self.bytes_at(address + 8, 2 * count)):
                if entry:
                    yield page | entry & 0xFFF, entry >> 12
            address += length

    def functions(self):
        """(address, size, prologue size) of each entry of the exception table."""
        address, size = self.directories[EXCEPTION_TABLE]
        for entry in range(address, address + size, 8):
            start, packed = struct.unpack("<II", self.bytes_at(entry, 8))
            yield start - self.base, 4 * (packed >> 8 & 0x3FFFFF), 4 * (packed & 0xFF)
