#!/usr/bin/env python3
"""elf_to_pe.py [--without-bx] [--resources RESOURCES.res] IMAGE.elf EXPORTS.def OUTPUT.dll MAP IMPORTS.def...

Turns a linked ELF image, whose relocations were kept (ld -q), into a Windows CE DLL for ARM, and
writes the map of its functions. Stops on everything that it does not know. The same input gives the
same bytes.

--without-bx writes "mov pc, rN" for each "bx rN", which processors of ARM architecture 4 lack. In
an image without Thumb code the two do the same.
"""
import argparse
import struct
import sys

import definition
import elf
import frames
import resources

IMAGE_BASE = 0x10000000
FILE_ALIGNMENT, SECTION_ALIGNMENT = 0x200, 0x1000
HEADER_SIZE = 0x400
MACHINE_ARM = 0x1C0
SUBSYSTEM_CE = 9
SYSTEM_VERSION = (4, 20)
STACK_RESERVE, HEAP_RESERVE, COMMIT = 0x10000, 0x100000, 0x1000
# Executable, without line numbers and local symbols, for 32 bits, a DLL.
FILE_FLAGS = 0x210E
CODE, READABLE_DATA, WRITABLE_DATA = 0x60000020, 0x40000040, 0xC0000040
DISCARDABLE = 0x02000000
READ_ONLY = ".rdata"

EXPORT_TABLE, IMPORT_TABLE, RESOURCE_TABLE, EXCEPTION_TABLE, RELOCATION_TABLE = 0, 1, 2, 3, 5
DIRECTORY_COUNT = 16

# Relocations that are distances within the image, and those that are addresses.
PC24, REL32, LDR_PC, CALL, JUMP24, PREL31 = 1, 3, 4, 28, 29, 42
RELATIVE = {PC24, REL32, LDR_PC, CALL, JUMP24, PREL31}
ABS32, TARGET1 = 2, 38
ABSOLUTE = {ABS32, TARGET1}
NONE, V4BX = 0, 40
NO_RELOCATION = {NONE, V4BX}

LONGEST_PROLOGUE = 255  # instructions

BX, BX_MASK = 0x012FFF10, 0x0FFFFFF0
MOV_PC = 0x01A0F000

# What loads a slot in a stub, and how far a slot can lie behind the first.
LOAD_SLOT, LARGEST_OFFSET = 0xE59CC000, 0xFFF


class ConversionError(Exception):
    pass


def align(value, alignment):
    return (value + alignment - 1) // alignment * alignment


class PeSection:
    def __init__(self, name, address, content, flags, size=None):
        self.name = name
        self.address = address  # relative to the image, as all addresses from here on
        self.content = bytearray(content)
        self.flags = flags
        self.size = len(self.content) if size is None else size

    @property
    def end(self):
        return self.address + self.size


class Image:
    """The sections of the DLL and the places in them that hold addresses."""

    def __init__(self, source):
        self.source = source
        self.sections = []
        self.directories = [(0, 0)] * DIRECTORY_COUNT
        self.fixups = set()
        self._carry_sections()

    def _carry_sections(self):
        flags = {".text": CODE, READ_ONLY: READABLE_DATA, ".data": WRITABLE_DATA}
        for section in self.source.loaded_sections():
            address = section.address - IMAGE_BASE
            if section.name == ".bss":
                self._append_zeros(address, section.size)
            elif section.name not in flags:
                raise ConversionError(f"section {section.name} has no place in the image")
            elif address % SECTION_ALIGNMENT or address < self._end():
                raise ConversionError(f"section {section.name} is not on pages of its own")
            else:
                content = self.source.content(section)
                self.sections.append(PeSection(section.name, address, content, flags[section.name]))
        if not self.sections or self.sections[0].name != ".text":
            raise ConversionError("there is no code")

    def _append_zeros(self, address, size):
        """What the image starts with as zeros lies behind the writable data."""
        if self.sections[-1].name != ".data":
            start = address // SECTION_ALIGNMENT * SECTION_ALIGNMENT
            self.sections.append(PeSection(".data", start, b"", WRITABLE_DATA))
        self.sections[-1].size = address + size - self.sections[-1].address

    def _end(self):
        return self.sections[-1].end if self.sections else SECTION_ALIGNMENT

    def add(self, name, directory, build, flags=READABLE_DATA):
        """build(address) gives the section's bytes, which the directory describes."""
        address = align(self._end(), SECTION_ALIGNMENT)
        content = build(address)
        self.sections.append(PeSection(name, address, content, flags))
        self.directories[directory] = (address, len(content))

    def append(self, directory, build):
        """Behind the read-only data. build(address) gives the table's bytes, and how many of them the
        directory names."""
        section = self.sections[-1]
        if section.name != READ_ONLY:
            raise ConversionError("there is no read-only data behind all other")
        section.content += bytes(-len(section.content) % 4)
        address = section.address + len(section.content)
        content, described = build(address)
        section.content += content
        section.size = len(section.content)
        self.directories[directory] = (address, described)

    def _section_at(self, address):
        for section in self.sections:
            if section.address <= address and address + 4 <= section.address + len(section.content):
                return section
        raise ConversionError(f"address {address:#x} lies in no initialised data")

    def word(self, address):
        section = self._section_at(address)
        return struct.unpack_from("<I", section.content, address - section.address)[0]

    def set_word(self, address, value):
        section = self._section_at(address)
        struct.pack_into("<I", section.content, address - section.address, value)

    def address_of(self, name):
        if name not in self.source.addresses:
            raise ConversionError(f"{name} is not defined")
        return self.source.addresses[name] - IMAGE_BASE


def find_fixups(image):
    for relocation in image.source.relocations():
        symbol = relocation.symbol
        where = f"relocation at {relocation.address:#x} against {symbol.name or 'a section'}"
        outside = symbol.section in (elf.SHN_UNDEF, elf.SHN_ABS)
        if relocation.type in NO_RELOCATION:
            continue
        if relocation.type in RELATIVE:
            if outside:
                raise ConversionError(f"{where} is relative to something outside the image")
            continue
        if relocation.type not in ABSOLUTE:
            raise ConversionError(f"{where} is of unknown type {relocation.type}")
        if outside:  # a number, or a weak symbol that nobody defines
            continue
        if relocation.address % 4:
            raise ConversionError(f"{where} is not aligned")
        image.word(relocation.address - IMAGE_BASE)
        image.fixups.add(relocation.address - IMAGE_BASE)


def replace_bx(image):
    for start, end in image.source.code_ranges():
        for address in range(start - IMAGE_BASE, end - IMAGE_BASE, 4):
            word = image.word(address)
            if word & BX_MASK == BX:
                image.set_word(address, word & 0xF0000000 | MOV_PC | word & 0xF)


def linked_slots(image, module):
    """(slot, entry) of what the image calls in a DLL, by slot."""
    slots = []
    for entry in module.entries:
        name = definition.slot_symbol(module.library, entry.name)
        if name in image.source.addresses:
            slots.append((image.address_of(name), entry))
    slots.sort()
    if not slots:
        return slots
    end = image.address_of(definition.end_symbol(module.library))
    expected = list(range(end - 4 * len(slots), end, 4))
    if [slot for slot, _ in slots] != expected:
        raise ConversionError(f"the import slots of {module.library} are not in one piece")
    if any(image.word(slot) for slot in expected + [end]):
        raise ConversionError(f"the import slots of {module.library} are not empty")
    return slots


def complete_stub(image, entry, slot):
    """Writes into the stub of an import how far its slot lies behind the first."""
    load = image.address_of(entry.name) + 4
    offset = slot - image.address_of(definition.FIRST_SLOT)
    if image.word(load) != LOAD_SLOT or not 0 <= offset <= LARGEST_OFFSET:
        raise ConversionError(f"the stub of {entry.name} cannot reach its slot")
    image.set_word(load, LOAD_SLOT | offset)


def build_imports(image, modules, address):
    used = [(module.library, slots) for module in modules
            if (slots := linked_slots(image, module))]
    if not used:
        raise ConversionError("nothing is imported")
    descriptors = bytearray(20 * (len(used) + 1))
    lookup_start = len(descriptors)
    lookups = bytearray(sum(4 * (len(slots) + 1) for _, slots in used))
    texts = bytearray()
    texts_start = address + lookup_start + len(lookups)

    def add_text(prefix, text):
        place = texts_start + len(texts)
        texts.extend(prefix + text.encode("ascii") + b"\0")
        texts.extend(b"\0" * (len(texts) % 2))
        return place

    lookup = 0
    for index, (library, slots) in enumerate(used):
        struct.pack_into("<5I", descriptors, 20 * index, address + lookup_start + lookup, 0, 0,
                         add_text(b"", library), slots[0][0])
        for slot, entry in slots:
            by_name = entry.ordinal is None
            value = add_text(b"\0\0", entry.name) if by_name else 0x80000000 | entry.ordinal
            struct.pack_into("<I", lookups, lookup, value)
            image.set_word(slot, value)
            complete_stub(image, entry, slot)
            lookup += 4
        lookup += 4
    return descriptors + lookups + texts, len(descriptors)


def stored_text(image, text):
    """Where the read-only data has a text and its end; None when it has not."""
    section = image.sections[-1]
    place = section.content.find(text + b"\0")
    return section.address + place if place >= 0 else None


def build_exports(image, module, address):
    """Ordinals count from 1 in the order of the names, which is that of their bytes. A name that the
    image has anyway is not stored again."""
    names = sorted(entry.name.encode("ascii") for entry in module.entries)
    if len(set(names)) != len(names):
        raise ConversionError("a name is exported twice")
    count = len(names)
    functions, pointers = 40, 40 + 4 * count
    ordinals = pointers + 4 * count
    content = bytearray(ordinals + 2 * count)
    library = address + len(content)
    content += module.library.encode("ascii") + b"\0"
    struct.pack_into("<IIHHIIIIIII", content, 0, 0, 0, 0, 0, library, 1, count, count,
                     address + functions, address + pointers, address + ordinals)
    for index, name in enumerate(names):
        function = image.address_of(name.decode("ascii"))
        struct.pack_into("<I", content, functions + 4 * index, function)
        place = stored_text(image, name)
        struct.pack_into("<I", content, pointers + 4 * index, place or address + len(content))
        struct.pack_into("<H", content, ordinals + 2 * index, index)
        content += b"" if place else name + b"\0"
    return content, len(content)


def framed_parts(code, start, end):
    """(start, end, words of the prologue) of what lies behind the first instruction that lowers the
    stack, in a function's code. What lies before returns without a frame."""
    lowering = [address for address in range(start, end, 4)
                if address in code and frames.step(code[address]) != 0]
    if not lowering:
        return []
    first = lowering[0]
    prologue = 0
    while frames.is_prologue(code.get(first + 4 * prologue, 0)):
        prologue += 1
    if prologue > LONGEST_PROLOGUE or lowering[-1] >= first + 4 * prologue:
        raise ConversionError(f"the function at {start:#x} makes its frame in several places")
    return [(first, end, prologue)]


def build_exceptions(image, address):
    """Entries for what has a frame. The system returns from all else by the link register."""
    code = {place: image.word(place - IMAGE_BASE) for start, end in image.source.code_ranges()
            for place in range(start, end, 4)}
    content = bytearray()
    for start, size, _ in image.source.functions():
        starts = [start, *image.source.function_starts(start + 4, start + size), start + size]
        for part, end in zip(starts, starts[1:]):
            for first, end, prologue in framed_parts(code, part, end):
                image.fixups.add(address + len(content))
                of_32_bit_code = 1 << 30
                content += struct.pack("<II", first,
                                       prologue | (end - first) // 4 << 8 | of_32_bit_code)
    if not content:
        raise ConversionError("no function has a frame")
    return content, len(content)


def build_relocations(image, _):
    highlow = 3
    pages = {}
    for fixup in sorted(image.fixups):
        pages.setdefault(fixup & ~0xFFF, []).append(highlow << 12 | fixup & 0xFFF)
    content = bytearray()
    for page, entries in sorted(pages.items()):
        entries += [0] * (len(entries) % 2)
        content += struct.pack(f"<II{len(entries)}H", page, 8 + 2 * len(entries), *entries)
    if not content:
        raise ConversionError("an image that cannot be moved")
    return content


def headers(image):
    head = bytearray(HEADER_SIZE)
    pe = 0x80
    head[:2] = b"MZ"
    struct.pack_into("<I", head, 0x3C, pe)
    optional_size = 96 + 8 * DIRECTORY_COUNT
    struct.pack_into("<4sHHIIIHH", head, pe, b"PE\0\0", MACHINE_ARM, len(image.sections), 0, 0, 0,
                     optional_size, FILE_FLAGS)
    optional = pe + 24
    code, *others = [align(len(section.content), FILE_ALIGNMENT) for section in image.sections]
    entry = image.source.entry - IMAGE_BASE
    struct.pack_into("<HBBIIIIIIIII", head, optional, 0x10B, 0, 0, code, sum(others), 0, entry,
                     image.sections[0].address, image.sections[1].address, IMAGE_BASE,
                     SECTION_ALIGNMENT, FILE_ALIGNMENT)
    image_size = align(image.sections[-1].end, SECTION_ALIGNMENT)
    struct.pack_into("<HHHHHHIIIIHHIIIIII", head, optional + 40, *SYSTEM_VERSION, 1, 0,
                     *SYSTEM_VERSION, 0, image_size, HEADER_SIZE, 0, SUBSYSTEM_CE, 0,
                     STACK_RESERVE, COMMIT, HEAP_RESERVE, COMMIT, 0, DIRECTORY_COUNT)
    for index, (address, size) in enumerate(image.directories):
        struct.pack_into("<II", head, optional + 96 + 8 * index, address, size)
    place = HEADER_SIZE
    table = optional + optional_size
    if table + 40 * len(image.sections) > HEADER_SIZE:
        raise ConversionError("too many sections")
    for index, section in enumerate(image.sections):
        stored = align(len(section.content), FILE_ALIGNMENT)
        struct.pack_into("<8sIIIIIIHHI", head, table + 40 * index, section.name.encode("ascii"),
                         section.size, section.address, stored, place if stored else 0, 0, 0, 0, 0,
                         section.flags)
        place += stored
    return head


def write(image):
    content = headers(image)
    for section in image.sections:
        content += section.content + b"\0" * (-len(section.content) % FILE_ALIGNMENT)
    return bytes(content)


def convert(data, exports, imports, without_bx=False, compiled_resources=None):
    """The DLL's bytes and the lines of its map: address, size and names of each function."""
    source = elf.Elf(data)
    source.code_ranges()  # stops at Thumb code
    image = Image(source)
    find_fixups(image)
    if without_bx:
        replace_bx(image)
    if not image.sections[0].address <= source.entry - IMAGE_BASE < image.sections[0].end:
        raise ConversionError("the entry point is no code")
    image.append(IMPORT_TABLE, lambda address: build_imports(image, imports, address))
    image.append(EXPORT_TABLE, lambda address: build_exports(image, exports, address))
    image.append(EXCEPTION_TABLE, lambda address: build_exceptions(image, address))
    if compiled_resources:
        found = resources.read(compiled_resources)
        image.add(".rsrc", RESOURCE_TABLE, lambda address: resources.build(found, address))
    image.add(".reloc", RELOCATION_TABLE, lambda address: build_relocations(image, address),
              READABLE_DATA | DISCARDABLE)
    lines = [f"{start - IMAGE_BASE:08x} {size:6x} {' '.join(names)}\n"
             for start, size, names in source.functions()]
    return write(image), lines


def main(words=None):
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--without-bx", action="store_true")
    parser.add_argument("--resources")
    for name in ("image", "exports", "output", "map"):
        parser.add_argument(name)
    parser.add_argument("imports", nargs="+")
    arguments = parser.parse_args(words)
    with open(arguments.image, "rb") as file:
        data = file.read()
    compiled_resources = None
    if arguments.resources:
        with open(arguments.resources, "rb") as file:
            compiled_resources = file.read()
    try:
        dll, lines = convert(data, definition.read(arguments.exports),
                             [definition.read(path) for path in arguments.imports],
                             arguments.without_bx, compiled_resources)
    except (ConversionError, elf.ElfError, definition.DefinitionError,
            resources.ResourceError) as problem:
        sys.exit(f"elf_to_pe: {arguments.image}: {problem}")
    with open(arguments.output, "wb") as file:
        file.write(dll)
    with open(arguments.map, "w", encoding="ascii") as file:
        file.writelines(lines)


if __name__ == "__main__":
    main()
