#!/usr/bin/env python3
"""check_image.py [--desk DESK_LIBRARY.dll] LIBRARY.dll IMAGE.elf EXPORTS.def ARCHITECTURE IMPORTS.def...

Whether a DLL for the device is what the device can load and run: its headers, tables, instructions
and stack frames, and its export table beside the desk's. Prints each problem; none is success.
"""
import argparse
import struct
import sys

import definition
import elf
import frames
import pe

LARGEST_FILE = 128 * 1024
LARGEST_FRAME = 4096  # a page: larger ones would have to touch each page of theirs
CODE, WRITABLE = 0x20, 0x80000000
NEVER = 0xF


def is_multiply(word):
    kind = word >> 22 & 0x3F
    return kind == 0 or kind >> 1 == 1  # mul and mla, and the long forms


def is_register_form_known(word):
    """Words whose bits 27 to 25 are zero."""
    if word & 0x90 != 0x90:
        is_miscellaneous = word >> 23 & 3 == 2 and not word >> 20 & 1
        return not is_miscellaneous
    if word & 0x60 == 0:
        return is_multiply(word)
    # Of the transfers of halves and signed bytes, stores of signed ones are those of double words
    # of later architectures.
    loads = word >> 20 & 1
    return bool(loads or word & 0x60 == 0x20)


def is_known(word, has_bx):
    """Whether every processor of the architecture has the instruction, and programs may use it.
    What the system keeps to itself is not known, nor the exchange of a register with memory."""
    if word >> 28 == NEVER:
        return False
    if word & 0x0FFFFFF0 == 0x012FFF10:
        return has_bx
    kind = word >> 25 & 7
    if kind == 0:
        return is_register_form_known(word)
    if kind == 1:
        return not (word >> 23 & 3 == 2 and not word >> 20 & 1)
    if kind == 3:
        return not word >> 4 & 1
    return kind in (2, 4, 5)


def goes_without_exchange(word):
    """Whether an instruction goes to an address, or returns, and stays with instructions of 32 bits
    whatever lies there. Tables of places in one function are read by an index, and are none."""
    return (word & 0x0E50F000 == 0x0410F000      # ldr pc, [rN, #n]
            or word & 0x0E108000 == 0x08108000   # ldm rN, {..., pc}
            or word & 0x0FFFFFF0 == 0x01A0F000)  # mov pc, rN


def frame_problem(address, word, framed, starts):
    """What is wrong with an instruction beside the exception table. framed: where the prologue ends,
    for each address of code with a frame, which starts at one of starts."""
    if address in framed:
        in_prologue = address < framed[address]
        if frames.is_prologue(word) if in_prologue else frames.step(word) == 0:
            return None
        return "lowers the stack behind its prologue"
    if frames.step(word) != 0 or frames.changes_link(word):
        return "has a frame and is in no function of the exception table"
    target = frames.branch_target(address, word)
    if target in framed and target not in starts:
        return "goes on without a frame where there is one"
    return None


class Check:
    def __init__(self, library, linked, architecture):
        self.image = pe.Pe(library)
        with open(linked, "rb") as file:
            self.elf = elf.Elf(file.read())
        self.has_bx = architecture != "armv4"
        self.problems = []

    def expect(self, holds, problem):
        if not holds:
            self.problems.append(problem)

    def header(self):
        image = self.image
        for what, value, wanted in (
                ("machine", image.machine, 0x1C0), ("subsystem", image.subsystem, 9),
                ("file flags", image.flags, 0x210E), ("time", image.time, 0),
                ("section alignment", image.alignment, 0x1000),
                ("file alignment", image.file_alignment, 0x200),
                ("system version", image.system_version, (4, 20)),
                ("subsystem version", image.subsystem_version, (4, 20))):
            self.expect(value == wanted, f"the {what} is {value}, not {wanted}")
        for name, table in (("export", pe.EXPORT_TABLE), ("import", pe.IMPORT_TABLE),
                            ("exception", pe.EXCEPTION_TABLE),
                            ("relocation", pe.RELOCATION_TABLE)):
            self.expect(image.directories[table][1], f"there is no {name} table")
        entry = image.section_at(image.entry)
        self.expect(entry.flags & CODE and image.entry % 4 == 0, "the entry point is no code")
        self.expect(len(image.data) <= LARGEST_FILE,
                    f"the file has {len(image.data)} bytes, more than {LARGEST_FILE}")

    def sections(self):
        image = self.image
        names = [section.name for section in image.sections]
        wanted = [".text", ".data", ".rdata", ".rsrc", ".reloc"]
        if not image.directories[pe.RESOURCE_TABLE][1]:
            wanted.remove(".rsrc")
        self.expect(names == wanted, f"the sections are {names}, not {wanted}")
        free, place = 0, 0
        for section in image.sections:
            self.expect(section.address % image.alignment == 0 and section.address >= free,
                        f"section {section.name} does not follow the one before")
            self.expect(section.place % image.file_alignment == 0 and section.place >= place
                        and section.place + section.stored <= len(image.data),
                        f"section {section.name} is not where the file says")
            free, place = section.address + section.size, section.place + section.stored
            self.expect(not (section.flags & CODE and section.flags & WRITABLE),
                        f"section {section.name} is code that can be written to")
        self.expect(place == len(image.data), "there are bytes behind the last section")
        self.expect(image.size == -(-free // image.alignment) * image.alignment,
                    "the size of the image is not that of its sections")

    def imports(self, modules):
        allowed = {(module.library, entry.ordinal or entry.name)
                   for module in modules for entry in module.entries}
        libraries = {library for library, _, _ in self.image.imports()}
        slots = []
        for library, name, slot in self.image.imports():
            self.expect((library, name) in allowed, f"{name} of {library} is imported")
            self.expect(self.image.section_at(slot).flags & WRITABLE,
                        f"the slot of {name} cannot be written to")
            slots.append(slot)
        self.expect(len(set(slots)) == len(slots), "two imports have the same slot")
        self.expect(libraries <= {module.library for module in modules} and
                    "coredll.dll" in libraries, f"the DLLs are {sorted(libraries)}")

    def exports(self, wanted, desk):
        ours = list(self.image.exports())
        names = {name for _, name, _ in ours}
        listed = {entry.name for entry in wanted.entries}
        self.expect(names == listed, f"exports differ from the list: {sorted(names ^ listed)}")
        if desk:
            theirs = [(ordinal, name) for ordinal, name, _ in pe.Pe(desk).exports()]
            self.expect([(ordinal, name) for ordinal, name, _ in ours] == theirs,
                        "the export table is not that of the desk's library")
        for _, name, address in ours:
            self.expect(self.image.section_at(address).flags & CODE, f"export {name} is no code")

    def resources(self, desk):
        ours = list(self.image.resources())
        if desk:
            theirs = list(pe.Pe(desk).resources())
            self.expect(ours == theirs, f"the resources are {ours}, the desk's are {theirs}")
        table, size = self.image.directories[pe.RESOURCE_TABLE]
        section = self.image.section_at(table) if size else None
        self.expect(not section or section.name == ".rsrc" and table == section.address,
                    "the table of resources is not where the system looks for it")

    def constructors(self):
        """Nothing would run them. The linker makes such sections only when there is something in
        them; the compiler names what they would call."""
        for section in self.elf.sections:
            self.expect(not section.name.startswith((".init_array", ".ctors", ".preinit_array")),
                        f"there are static constructors ({section.name})")
        for symbol in self.elf.symbols:
            self.expect(not symbol.name.startswith(("_GLOBAL__sub_I", "__cxx_global_var_init")),
                        f"there is a static constructor: {symbol.name}")

    def relocations(self):
        """Each address in the image is relocated, and nothing else is. Words of code are none."""
        image = self.image
        fixups = dict(image.fixups())
        for address, kind in fixups.items():
            self.expect(kind == 3, f"the relocation at {address:#x} is of type {kind}")
            inside = 0 <= image.word(address) - image.base < image.size
            self.expect(inside, f"what is relocated at {address:#x} is no address of the image")
        code = {address - image.base for start, end in self.elf.code_ranges()
                for address in range(start, end, 4)}
        self.expect(not code & fixups.keys(), "instructions are relocated")
        for section in image.sections:
            if section.name in (".rsrc", ".reloc"):  # these hold no absolute addresses
                continue
            for address in range(section.address, section.address + section.size - 3, 4):
                if address in fixups or address in code:
                    continue
                inside = 0 <= image.word(address) - image.base < image.size
                self.expect(not inside, f"the address at {address:#x} is not relocated")

    def exceptions(self):
        """The table has each piece of code that has a frame, from the instruction that makes it, and
        nothing else: the system returns from all other code by the link register."""
        code = {address - self.image.base: self.image.word(address - self.image.base)
                for start, end in self.elf.code_ranges() for address in range(start, end, 4)}
        free = 0
        starts, framed = set(), {}  # to where the prologue ends
        for start, size, prologue in self.image.functions():
            self.expect(start >= free and size and 0 < prologue <= size,
                        f"the entry of the function at {start:#x} is wrong")
            free = start + size
            starts.add(start)
            framed.update(dict.fromkeys(range(start, free, 4), start + prologue))
        for address, word in code.items():
            problem = frame_problem(address, word, framed, starts)
            if problem:
                self.problems.append(f"{self.name_at(address)}, at {address:#x}, {problem}")

    def name_at(self, address):
        for start, size, names in self.elf.functions():
            if start <= address + self.image.base < start + size:
                return names[0]
        return "nobody's code"

    def instructions(self):
        image = self.image
        names = {start - image.base: names[0] for start, _, names in self.elf.functions()}
        starts = sorted(names)
        sizes = dict.fromkeys(starts, 0)
        position = 0
        for start, end in self.elf.code_ranges():
            words = struct.unpack(f"<{(end - start) // 4}I",
                                  image.bytes_at(start - image.base, (end - start) // 4 * 4))
            for index, word in enumerate(words):
                address = start - image.base + 4 * index
                while position + 1 < len(starts) and starts[position + 1] <= address:
                    position += 1
                name = names[starts[position]]
                self.expect(is_known(word, self.has_bx),
                            f"{name} has an instruction that not every processor has: "
                            f"{word:08x} at {address:#x}")
                self.expect(not self.has_bx or not goes_without_exchange(word),
                            f"{name} goes elsewhere without an exchange, at {address:#x}")
                step = frames.step(word)
                self.expect(step is not None, f"{name} has a stack frame of unknown size")
                sizes[starts[position]] += step or 0
        for start, size in sizes.items():
            self.expect(size <= LARGEST_FRAME, f"{names[start]} has a stack frame of {size} bytes")
        return max(sizes.values())


def main(words=None):
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--desk")
    for name in ("library", "linked", "exports", "architecture"):
        parser.add_argument(name)
    parser.add_argument("imports", nargs="+")
    arguments = parser.parse_args(words)
    check = Check(arguments.library, arguments.linked, arguments.architecture)
    check.header()
    check.sections()
    check.imports([definition.read(path) for path in arguments.imports])
    check.exports(definition.read(arguments.exports), arguments.desk)
    check.resources(arguments.desk)
    check.constructors()
    check.relocations()
    check.exceptions()
    largest_frame = check.instructions()
    if check.problems:
        sys.exit("\n".join(check.problems))
    image = check.image
    print(f"{len(image.data)} bytes, {len(list(image.exports()))} exports, "
          f"{len(list(image.imports()))} imports, {len(list(image.fixups()))} relocations, "
          f"{len(list(image.functions()))} functions, frames of at most {largest_frame} bytes")


if __name__ == "__main__":
    main()
