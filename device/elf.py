"""Reads a linked 32-bit ARM ELF file whose relocations were kept."""
import struct
from typing import NamedTuple

SHT_SYMTAB, SHT_RELA, SHT_REL = 2, 4, 9
SHF_ALLOC = 2
SHN_UNDEF, SHN_ABS = 0, 0xFFF1
STT_FUNC, STT_TLS = 2, 6


class ElfError(Exception):
    pass


class Section(NamedTuple):
    name: str
    type: int
    flags: int
    address: int
    offset: int
    size: int
    link: int
    info: int


class Symbol(NamedTuple):
    name: str
    value: int
    size: int
    type: int
    section: int

    @property
    def is_defined(self):
        return self.section != SHN_UNDEF


class Relocation(NamedTuple):
    address: int
    type: int
    symbol: Symbol


class Elf:
    def __init__(self, data):
        self.data = data
        if data[:6] != b"\x7fELF\x01\x01":
            raise ElfError("no little-endian 32-bit ELF file")
        kind, machine = struct.unpack_from("<HH", data, 16)
        if kind != 2:
            raise ElfError("not linked to an image")
        if machine != 40:
            raise ElfError(f"machine {machine} is not ARM")
        self.entry, = struct.unpack_from("<I", data, 24)
        self.sections = self._read_sections()
        self.symbols = self._read_symbols()
        self.addresses = {symbol.name: symbol.value for symbol in self.symbols
                          if symbol.name and symbol.is_defined}

    def _read_sections(self):
        start, = struct.unpack_from("<I", self.data, 32)
        count, names = struct.unpack_from("<HH", self.data, 48)
        raw = [struct.unpack_from("<10I", self.data, start + 40 * i) for i in range(count)]
        return [Section(self._text(raw[names][4] + entry[0]), *entry[1:8]) for entry in raw]

    def _text(self, offset):
        return self.data[offset:self.data.index(b"\0", offset)].decode("ascii")

    def _read_symbols(self):
        for table in self.sections:
            if table.type == SHT_SYMTAB:
                strings = self.sections[table.link].offset
                return [self._symbol(strings, offset)
                        for offset in range(table.offset, table.offset + table.size, 16)]
        raise ElfError("no symbols")

    def _symbol(self, strings, offset):
        name, value, size, info, _, section = struct.unpack_from("<IIIBBH", self.data, offset)
        return Symbol(self._text(strings + name), value, size, info & 15, section)

    def section(self, name):
        """The section of that name that is loaded with the image; None when it has none."""
        return next((section for section in self.loaded_sections() if section.name == name), None)

    def loaded_sections(self):
        return [section for section in self.sections if section.flags & SHF_ALLOC and section.size]

    def content(self, section):
        return self.data[section.offset:section.offset + section.size]

    def relocations(self):
        """Those of loaded sections."""
        for table in self.sections:
            if table.type == SHT_RELA and self.sections[table.info].flags & SHF_ALLOC:
                raise ElfError(f"{table.name}: relocations with addends of their own")
            if table.type != SHT_REL or not self.sections[table.info].flags & SHF_ALLOC:
                continue
            for offset in range(table.offset, table.offset + table.size, 8):
                address, info = struct.unpack_from("<II", self.data, offset)
                yield Relocation(address, info & 0xFF, self.symbols[info >> 8])

    def functions(self):
        """(address, size, names) of each function, by address; those that overlap are one. One
        whose size is not told, as assembly may leave it, reaches to the next."""
        marked = sorted((symbol.value, symbol.size, symbol.name) for symbol in self.symbols
                        if symbol.type == STT_FUNC and symbol.is_defined)
        text = self.section(".text")
        starts = sorted({address for address, _, _ in marked} | {text.address + text.size})
        merged = []
        for address, size, name in marked:
            size = size or starts[starts.index(address) + 1] - address
            if merged and address < merged[-1][0] + merged[-1][1]:
                start, length, names = merged[-1]
                merged[-1] = (start, max(length, address + size - start), names + [name])
            else:
                merged.append((address, size, [name]))
        return merged

    def function_starts(self, start, end):
        """Where functions start in a range of addresses, those inside of others too."""
        return sorted({symbol.value for symbol in self.symbols if symbol.type == STT_FUNC
                       and symbol.is_defined and start <= symbol.value < end})

    def code_ranges(self):
        """(start, end) of the instructions among the loaded sections, by address: what lies between
        is data that functions keep beside their code."""
        marks = sorted({(symbol.value, symbol.name[1]) for symbol in self.symbols
                        if symbol.name[:2] in ("$a", "$d", "$t") and symbol.is_defined
                        and (len(symbol.name) == 2 or symbol.name[2] == ".")})
        if any(kind == "t" for _, kind in marks):
            raise ElfError("Thumb code")
        text = self.section(".text")
        end_of_text = text.address + text.size
        ranges = []
        for index, (address, kind) in enumerate(marks):
            end = marks[index + 1][0] if index + 1 < len(marks) else end_of_text
            if kind == "a" and text.address <= address < end_of_text and address < end:
                ranges.append((address, min(end, end_of_text)))
        if not ranges:
            raise ElfError("no code is marked as such")
        return ranges
