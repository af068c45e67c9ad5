#!/usr/bin/env python3
"""The step from an ELF image to the device's DLL: what it carries over, and that it stops at what
it does not know."""
import struct
import unittest

import images
from images import SAMPLE

# pylint: disable=wrong-import-position
import definition  # noqa: E402
import elf  # noqa: E402
import elf_to_pe  # noqa: E402
import pe  # noqa: E402
import resources  # noqa: E402


UPWARDS = 1 << 23  # in an instruction that loads: the offset is added


class ConversionTest(unittest.TestCase):
    def setUp(self):
        self.folder = images.Folder()
        self.addCleanup(self.folder.close)

    def convert(self, data, **options):
        dll, lines = elf_to_pe.convert(data, definition.read(self.folder.exports),
                                       self.folder.definitions(), **options)
        return pe.Pe(self.folder.write("sample.dll", dll)), lines

    def sample(self, extra="", **options):
        return self.convert(self.folder.link(SAMPLE + extra), **options)

    def refuses(self, data, words, kind=elf_to_pe.ConversionError):
        with self.assertRaises(kind) as caught:
            self.convert(data)
        self.assertIn(words, str(caught.exception))

    def refuses_source(self, extra, words, kind=elf_to_pe.ConversionError):
        self.refuses(self.folder.link(SAMPLE + extra), words, kind)


class CarriesOver(ConversionTest):
    def test_header_is_that_of_a_device_library(self):
        image, _ = self.sample()
        self.assertEqual((image.machine, image.subsystem, image.flags), (0x1C0, 9, 0x210E))
        self.assertEqual((image.base, image.time), (0x10000000, 0))

    def test_imports_by_name_and_by_ordinal_and_none_that_is_not_called(self):
        image, _ = self.sample()
        self.assertEqual([(library, name) for library, name, _ in image.imports()],
                         [("coredll.dll", "LocalAlloc"), ("coredll.dll", "MessageBeep"),
                          ("aygshell.dll", 188)])

    def test_each_stub_calls_through_its_slot(self):
        image, _ = self.sample()
        linked = elf.Elf(self.folder.read("image.elf"))
        slots = {"SHFindMenuBar" if name == 188 else name: slot
                 for _, name, slot in image.imports()}
        for name in slots:
            self.check_stub(image, linked.addresses[name] - image.base, name, slots)

    def check_stub(self, image, stub, name, slots):
        # Loading the program counter does not switch to the instructions of 16 bits that a library of
        # the system may be made of; the exchange does.
        load_table, load_slot, leave = [image.word(stub + 4 * i) for i in range(3)]
        self.assertEqual([load_table >> 16 | 0x80, load_slot & ~0xFFF, leave],
                         [0xE59F, 0xE59CC000, 0xE12FFF1C])
        distance = load_table & 0xFFF if load_table & UPWARDS else -(load_table & 0xFFF)
        first = image.word(stub + 8 + distance) - image.base
        self.assertEqual(first + (load_slot & 0xFFF), slots[name])

    def test_slots_start_with_what_the_lookup_table_says(self):
        image, _ = self.sample()
        for _, name, slot in image.imports():
            value = image.word(slot)
            if isinstance(name, int):
                self.assertEqual(value, 0x80000000 | name)
            else:
                self.assertEqual(image.text(value + 2), name)

    def test_exports_are_sorted_by_bytes_and_numbered_from_one(self):
        image, _ = self.sample()
        linked = elf.Elf(self.folder.read("image.elf"))
        self.assertEqual(list(image.exports()),
                         [(number, name, linked.addresses[name] - image.base)
                          for number, name in ((1, "Allocate"), (2, "_find"), (3, "beep"))])

    def with_texts(self, *texts):
        source = ".section .rodata.table\n" + "".join(f' .asciz "{text}"\n' for text in texts)
        image, _ = self.sample(source + ' .section .text.beep\n .reloc 0, R_ARM_NONE, table\n')
        return image

    def test_the_name_of_an_export_that_the_image_has_is_not_stored_again(self):
        plain, _ = self.sample()
        image = self.with_texts("beep", "a text that ends in Allocate")
        self.assertEqual([name for _, name, _ in image.exports()], ["Allocate", "_find", "beep"])
        for name in (b"Allocate\0", b"beep\0"):
            self.assertEqual(image.data.count(name), plain.data.count(name), name)

    def test_a_longer_text_is_no_name_of_an_export(self):
        image = self.with_texts("beeper", "Allocated", "_finds")
        self.assertEqual([name for _, name, _ in image.exports()], ["Allocate", "_find", "beep"])

    def test_the_tables_lie_on_words_behind_the_read_only_data(self):
        image = self.with_texts("odd", "more")
        linked = elf.Elf(self.folder.read("image.elf")).section(".rdata")
        free = linked.address + linked.size - image.base
        for table in (pe.IMPORT_TABLE, pe.EXPORT_TABLE, pe.EXCEPTION_TABLE):
            address, size = image.directories[table]
            self.assertEqual((address % 4, image.section_at(address).name), (0, ".rdata"))
            self.assertGreaterEqual(address, free)
            free = address + size

    def test_exactly_the_addresses_are_relocated(self):
        image, _ = self.sample()
        linked = elf.Elf(self.folder.read("image.elf"))
        at = {name: value - image.base for name, value in linked.addresses.items()}
        unwinding, size = image.directories[pe.EXCEPTION_TABLE]
        wanted = {at["counter"], at["table"], at["beep"] + 28, at[definition.SLOT_TABLE]}
        wanted |= set(range(unwinding, unwinding + size, 8))
        self.assertEqual(dict(image.fixups()), dict.fromkeys(wanted, 3))

    def test_content_and_zeros(self):
        image, _ = self.sample()
        linked = elf.Elf(self.folder.read("image.elf"))
        counter = linked.addresses["counter"] - image.base
        self.assertEqual([image.word(counter), image.word(counter + 4)],
                         [linked.addresses["table"], 5])
        data = next(section for section in image.sections if section.name == ".data")
        buffer = linked.addresses["buffer"] - image.base
        self.assertLessEqual(buffer + 64, data.address + data.size)
        self.assertLess(data.address + data.size - buffer, 68)
        self.assertEqual(image.bytes_at(buffer, 64), bytes(64))

    def test_functions_and_prologues_for_the_unwinder(self):
        image, lines = self.sample()
        linked = elf.Elf(self.folder.read("image.elf"))
        found = {start: (size, prologue) for start, size, prologue in image.functions()}
        self.assertEqual(found[linked.addresses["beep"] - image.base], (36, 8))
        self.assertEqual(list(found), [linked.addresses["beep"] - image.base])  # the others have no frame
        address = linked.addresses["beep"] - image.base
        self.assertIn(f"{address:08x}     24 beep\n", lines)

    def test_same_input_same_bytes(self):
        data = self.folder.link(SAMPLE)
        self.convert(data)
        first = self.folder.read("sample.dll")
        self.convert(data)
        self.assertEqual(self.folder.read("sample.dll"), first)

    def test_overlapping_functions_become_one(self):
        image, _ = self.sample("""
            .section .text.Allocate
            .globl inner
            .type inner, %function
        inner:
            push {r4}
            pop {r4}
            .size inner, . - inner
            .globl outer
            .set outer, inner
            .type outer, %function
            .size outer, 4
        """)
        linked = elf.Elf(self.folder.read("image.elf"))
        inner = linked.addresses["inner"] - image.base
        self.assertEqual([entry for entry in image.functions() if entry[0] == inner],
                         [(inner, 8, 4)])

    def test_a_function_without_size_reaches_to_the_next(self):
        image, _ = self.sample("""
            function aaa
                push {r4}
                pop {r4}
                bx lr
            .section .text.beep
            .reloc 0, R_ARM_NONE, aaa
        """)
        linked = elf.Elf(self.folder.read("image.elf"))
        start = linked.addresses["aaa"] - image.base
        self.assertIn((start, 12, 4), list(image.functions()))

    def test_a_frame_starts_where_it_is_made(self):
        image, _ = self.sample("""
            function late
                teq r0, #0
                bxeq lr
                push {r4, lr}
                bl MessageBeep
                pop {r4, lr}
                bx lr
            .globl second
            .type second, %function
            second:
                teq r0, #1
                bxeq lr
                sub sp, sp, #8
                add sp, sp, #8
                bx lr
                .size late, . - late
                .size second, . - second
            .section .text.beep
            .reloc 0, R_ARM_NONE, late
        """)
        linked = elf.Elf(self.folder.read("image.elf"))
        late = linked.addresses["late"] - image.base
        second = linked.addresses["second"] - image.base
        self.assertEqual([entry for entry in image.functions() if entry[0] >= late],
                         [(late + 8, second - late - 8, 4), (second + 8, 12, 4)])


class Resources(ConversionTest):
    SOURCE = """
        100 RCDATA BEGIN 0, 1, 0xFFFE END
        LANGUAGE 7, 1
        7 RCDATA BEGIN "odd" END
        LANGUAGE 9, 1
        7 RCDATA BEGIN 5 END
        2 300 BEGIN 0x1234 END
    """

    def converted(self, source):
        return self.sample(compiled_resources=self.folder.compile_resources(source))[0]

    def test_an_image_without_has_no_table(self):
        image, _ = self.sample()
        self.assertEqual(image.directories[pe.RESOURCE_TABLE], (0, 0))
        self.assertEqual(list(image.resources()), [])

    def test_they_are_found_by_type_number_and_language(self):
        image = self.converted(self.SOURCE)
        self.assertEqual(list(image.resources()),
                         [(10, 7, 0x407, b"odd"), (10, 7, 0x409, b"\5\0"),
                          (10, 100, 0x409, b"\0\0\1\0\xfe\xff"),
                          (300, 2, 0x409, b"\x34\x12")])

    def test_they_lie_on_words_in_a_section_of_their_own(self):
        image = self.converted(self.SOURCE)
        table, size = image.directories[pe.RESOURCE_TABLE]
        section = image.section_at(table)
        self.assertEqual((section.name, section.address, section.size), (".rsrc", table, size))
        self.assertIn(b"odd\0\5\0\0\0", image.bytes_at(table, size))

    def refuses_resources(self, data, words):
        with self.assertRaises(resources.ResourceError) as caught:
            self.sample(compiled_resources=data)
        self.assertIn(words, str(caught.exception))

    def test_names_that_are_texts_are_refused(self):
        data = self.folder.compile_resources("icons RCDATA BEGIN 1 END")
        self.refuses_resources(data, "no compiled resources")
        number = bytearray(self.folder.compile_resources("100 RCDATA BEGIN 1 END"))
        number[32 + 12:32 + 16] = "a\0".encode("utf-16-le")
        self.refuses_resources(bytes(number), "a name that is a text")

    def test_a_resource_that_is_there_twice_is_refused(self):
        data = self.folder.compile_resources("100 RCDATA BEGIN 1 END")
        self.refuses_resources(data + data[32:], "twice")

    def test_other_files_are_refused(self):
        data = self.folder.compile_resources("100 RCDATA BEGIN 1, 2 END")
        self.refuses_resources(b"MZ" + bytes(62), "no compiled resources")
        self.refuses_resources(data[:-1], "no compiled resources")
        self.refuses_resources(data[32:], "no compiled resources")
        self.refuses_resources(data[:32], "no compiled resources")


class WithoutExchange(ConversionTest):
    def test_returns_become_moves_in_code_alone(self):
        plain, _ = self.sample()
        older, _ = self.sample(without_bx=True)
        beep = elf.Elf(self.folder.read("image.elf")).addresses["beep"] - plain.base
        self.assertEqual(plain.word(beep + 24), 0xE12FFF1E)
        self.assertEqual(older.word(beep + 24), 0xE1A0F00E)
        self.assertEqual(older.word(beep + 32), 0xE12FFF1E)

    def test_condition_and_register_stay(self):
        self.folder.write("sample.def", images.EXPORTS + " jump\n")
        extra = """
            function jump
                bxne r3
                bx r0
                .size jump, . - jump
        """
        older, _ = self.sample(extra, without_bx=True)
        jump = elf.Elf(self.folder.read("image.elf")).addresses["jump"] - older.base
        self.assertEqual([older.word(jump), older.word(jump + 4)], [0x11A0F003, 0xE1A0F000])


class Stops(ConversionTest):
    """At everything that it does not know."""

    def patched(self, find, change):
        data = bytearray(self.folder.link(SAMPLE))
        linked = elf.Elf(bytes(data))
        change(data, find(linked))
        return bytes(data)

    def relocation_offset(self, linked, address):
        for table in linked.sections:
            if table.type == elf.SHT_REL:
                for offset in range(table.offset, table.offset + table.size, 8):
                    if struct.unpack_from("<I", linked.data, offset)[0] == address:
                        return offset
        self.fail("no such relocation")
        return None

    def test_an_object_that_is_not_linked(self):
        self.folder.compile(SAMPLE)
        self.refuses(self.folder.read("source.o"), "not linked", elf.ElfError)

    def test_no_elf_file(self):
        self.refuses(b"MZ" + bytes(100), "no little-endian 32-bit ELF", elf.ElfError)

    def test_another_machine(self):
        def change(data, _):
            struct.pack_into("<H", data, 18, 3)
        self.refuses(self.patched(lambda linked: None, change), "machine 3", elf.ElfError)

    def test_a_section_without_place(self):
        self.refuses_source('.section .init_array, "aw", %init_array\n .word beep\n',
                            "section .init_array has no place")
        self.refuses_source(
            '.section .secret, "a", %progbits\n .word 1\n'
            '.section .text.beep\n .reloc 0, R_ARM_NONE, .secret\n',
            "section .secret has no place")

    def test_an_image_without_read_only_data(self):
        source = SAMPLE.replace(".section .rodata.table, \"a\"", ".section .data.table, \"aw\"")
        self.refuses(self.folder.link(source), "no read-only data behind all other")

    def test_an_unknown_relocation(self):
        def change(data, offset):
            data[offset + 4] = 43  # a half of an address, as newer processors load it
        data = self.patched(lambda linked: self.relocation_offset(
            linked, linked.addresses["counter"]), change)
        self.refuses(data, "unknown type 43")

    def test_an_address_that_is_not_aligned(self):
        self.refuses_source(".section .data.counter\n .byte 1\n .4byte beep\n", "not aligned")

    def test_an_address_where_nothing_is_stored(self):
        def change(data, found):
            struct.pack_into("<I", data, found[0], found[1])
        data = self.patched(
            lambda linked: (self.relocation_offset(linked, linked.addresses["counter"]),
                            linked.addresses["buffer"]), change)
        self.refuses(data, "lies in no initialised data")

    def test_a_distance_to_something_outside(self):
        self.refuses_source(
            ".section .data.counter\n .globl fixed\n .set fixed, 64\n .word fixed - .\n",
            "relative to something outside")

    def test_thumb_code(self):
        self.refuses_source(
            ".section .text.beep\n .thumb\n .thumb_func\n small:\n bx lr\n bx lr\n"
            ".type small, %function\n .size small, 4\n", "Thumb", elf.ElfError)

    def test_a_frame_that_is_made_in_two_places(self):
        for step in ("push {r5}", "sub sp, sp, #8", "str r5, [sp, #-4]!", "sub sp, sp, r3"):
            self.refuses_source(f"function twice\n push {{r4}}\n mov r0, r0\n {step}\n bx lr\n"
                                ".section .text.beep\n .reloc 0, R_ARM_NONE, twice\n",
                                "makes its frame in several places")

    def test_an_image_without_any_frame(self):
        source = SAMPLE.replace("push {r4, lr}", "nop").replace("sub sp, sp, #8", "nop")
        self.refuses(self.folder.link(source), "no function has a frame")

    def test_an_export_that_is_not_there(self):
        data = self.folder.link(SAMPLE)
        self.folder.write("sample.def", images.EXPORTS + " gone\n")
        self.refuses(data, "gone is not defined")

    def test_a_name_exported_twice(self):
        self.folder.write("sample.def", images.EXPORTS + " beep\n")
        self.refuses(self.folder.link(SAMPLE), "exported twice")

    def test_slots_that_hold_something(self):
        def change(data, offset):
            data[offset] = 1

        def slot(linked):
            data = linked.section(".data")
            return (linked.addresses[definition.slot_symbol("coredll.dll", "LocalAlloc")] -
                    data.address + data.offset)
        self.refuses(self.patched(slot, change), "are not empty")

    def test_a_stub_that_is_none_or_too_far_away(self):
        def change(data, offset):
            data[offset] = 1

        def load(linked):
            code = linked.section(".text")
            return linked.addresses["LocalAlloc"] + 4 - code.address + code.offset
        self.refuses(self.patched(load, change), "the stub of LocalAlloc cannot reach its slot")
        self.refuses_source('.section .iat.a, "aw", %progbits\n many:\n .space 4096\n'
                            ".section .text.beep\n .reloc 0, R_ARM_NONE, many\n",
                            "cannot reach its slot")

    def test_an_image_that_imports_nothing(self):
        source = SAMPLE.replace("bl MessageBeep", "nop").replace(
            "b SHFindMenuBar", "nop").replace("b LocalAlloc", "nop")
        self.refuses(self.folder.link(source), "nothing is imported")

    def test_a_definition_that_cannot_be_read(self):
        self.folder.write("sample.def", images.EXPORTS + " one two three\n")
        with self.assertRaises(definition.DefinitionError) as caught:
            definition.read(self.folder.exports)
        self.assertIn("sample.def:6: cannot read: one two three", str(caught.exception))
        self.folder.write("sample.def", "EXPORTS\n")
        with self.assertRaises(definition.DefinitionError):
            definition.read(self.folder.exports)


if __name__ == "__main__":
    unittest.main()
