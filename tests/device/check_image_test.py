#!/usr/bin/env python3
"""The structure check of the device's DLL bites: each flaw is told, the sound image has none."""
import contextlib
import io
import struct
import unittest

import images
from images import SAMPLE

# pylint: disable=wrong-import-position
import check_image  # noqa: E402
import elf  # noqa: E402
import elf_to_pe  # noqa: E402
import pe  # noqa: E402

HEADER = 0x80  # of the images that the converter writes


class CheckTest(unittest.TestCase):
    def setUp(self):
        self.folder = images.Folder()
        self.addCleanup(self.folder.close)

    def build(self, source=SAMPLE, language="assembler", flags=(), options=()):
        self.folder.link(source, language, flags)
        elf_to_pe.main([*options, self.folder.path("image.elf"), self.folder.exports,
                        self.folder.path("sample.dll"), self.folder.path("sample.map"),
                        self.folder.system, self.folder.shell])
        self.folder.write("desk.dll", self.folder.read("sample.dll"))
        return bytearray(self.folder.read("sample.dll"))

    def check(self, architecture="armv4t"):
        words = ["--desk", self.folder.path("desk.dll"), self.folder.path("sample.dll"),
                 self.folder.path("image.elf"), self.folder.exports, architecture,
                 self.folder.system, self.folder.shell]
        output = io.StringIO()
        try:
            with contextlib.redirect_stdout(output):
                check_image.main(words)
        except SystemExit as problems:
            return 1, str(problems)
        return 0, output.getvalue()

    def passes(self, architecture="armv4t"):
        code, output = self.check(architecture)
        self.assertEqual(code, 0, output)

    def tells(self, problem, data=None, architecture="armv4t"):
        if data is not None:
            self.folder.write("sample.dll", bytes(data))
        code, output = self.check(architecture)
        self.assertIn(problem, output)
        self.assertEqual(code, 1)


class Sound(CheckTest):
    def test_the_sample_has_no_flaw(self):
        self.build()
        self.passes()

    def test_it_has_none_for_older_processors(self):
        self.build(options=["--without-bx"])
        self.passes("armv4")


class Flaws(CheckTest):
    def test_header_fields(self):
        data = self.build()
        for offset, problem in ((HEADER + 4, "the machine is"), (HEADER + 8, "the time is"),
                                (HEADER + 22, "the file flags is"),
                                (HEADER + 24 + 68, "the subsystem is"),
                                (HEADER + 24 + 40, "the system version is"),
                                (HEADER + 24 + 48, "the subsystem version is"),
                                (HEADER + 24 + 56, "the size of the image is not"),
                                (HEADER + 24 + 16, "the entry point is no code")):
            changed = bytearray(data)
            changed[offset] ^= 1
            self.tells(problem, changed)

    def test_missing_tables(self):
        data = self.build()
        size_of_exceptions = HEADER + 24 + 96 + 8 * pe.EXCEPTION_TABLE + 4
        struct.pack_into("<I", data, size_of_exceptions, 0)
        self.tells("there is no exception table", data)

    def test_section_names_and_flags(self):
        data = self.build()
        table = HEADER + 24 + 96 + 8 * 16
        renamed = bytearray(data)
        renamed[table:table + 8] = b".code\0\0\0"
        self.tells("the sections are", renamed)
        writable = bytearray(data)
        writable[table + 39] |= 0x80
        self.tells("section .text is code that can be written to", writable)

    def test_bytes_behind_the_end(self):
        self.tells("bytes behind the last section", self.build() + bytes(512))

    def test_a_file_that_is_too_large(self):
        self.build(SAMPLE + ".section .rodata.table\n .space 0x20000, 1\n")
        self.tells("more than 131072")

    def test_every_single_relocation_that_is_dropped(self):
        data = self.build(SAMPLE + """
            .section .data.more, "aw", %progbits
            .p2align 2
        more:
            .word beep, table, counter
            .section .text.beep
            .reloc 0, R_ARM_NONE, more
        """)
        image = pe.Pe(self.folder.path("sample.dll"))
        address, size = image.directories[pe.RELOCATION_TABLE]
        section = image.section_at(address)
        start, end = section.place + address - section.address, 0
        dropped = 0
        while end < size:
            page, length = struct.unpack_from("<II", data, start + end)
            for entry in range(start + end + 8, start + end + length, 2):
                value, = struct.unpack_from("<H", data, entry)
                if value:
                    changed = bytearray(data)
                    struct.pack_into("<H", changed, entry, 0)
                    self.tells(f"the address at {page | value & 0xFFF:#x} is not relocated",
                               changed)
                    dropped += 1
            end += length
        self.assertEqual(dropped, len(list(image.fixups())))
        self.assertGreater(dropped, 5)

    def test_relocations_of_what_is_no_address(self):
        data = self.build()
        image = pe.Pe(self.folder.path("sample.dll"))
        address, _ = image.directories[pe.RELOCATION_TABLE]
        place = image.section_at(address).place
        first, = struct.unpack_from("<H", data, place + 8)
        struct.pack_into("<H", data, place + 8, first - 4)  # a word of code before the address
        self.tells("instructions are relocated", data)
        self.tells("is no address of the image", data)

    def test_an_import_beyond_the_lists(self):
        self.build()
        self.folder.write("coredll.def", images.SYSTEM.replace(" MessageBeep@4\n", ""))
        self.tells("MessageBeep of coredll.dll is imported")

    def test_exports_that_differ(self):
        self.build()
        self.folder.write("sample.def", images.EXPORTS + " another\n")
        self.tells("exports differ from the list: ['another']")

    def test_an_export_table_unlike_the_desks(self):
        data = self.build()
        self.folder.write("desk.dll", bytes(data).replace(b"beep\0", b"seep\0"))
        self.tells("the export table is not that of the desk's library")

    def test_an_export_that_is_data(self):
        self.folder.write("sample.def", images.EXPORTS + " buffer\n")
        self.build()
        self.tells("export buffer is no code")

    def test_resources_unlike_the_desks(self):
        resources = self.folder.compile_resources("100 RCDATA BEGIN 1, 2 END")
        with_them = ["--resources", self.folder.path("sample.res")]
        data = self.build(options=with_them)
        self.passes()
        self.tells("the resources are", bytes(data).replace(resources[-4:], b"\1\0\3\0"))
        self.build()
        self.folder.write("desk.dll", bytes(data))
        self.tells("the resources are []")

    def test_static_constructors(self):
        source = """
            extern "C" unsigned __attribute__((noinline)) beep(unsigned a) {
                asm volatile("" : "+r"(a)); // no constant for the compiler to see through
                return a;
            }
            extern "C" unsigned _find() { return beep(2); }
            extern "C" void* LocalAlloc(unsigned, unsigned);
            extern "C" void* Allocate() { return LocalAlloc(0, 4); }
            struct Counter { int value; Counter() : value(beep(7)) {} } counter;
            extern "C" int DllMain() { return counter.value; }
        """
        self.folder.link(source, "C++")
        linked = elf.Elf(self.folder.read("image.elf"))
        self.assertIn(".ctors", [section.name for section in linked.sections])
        with self.assertRaises(SystemExit):
            self.build(source, "C++")
        # The converter stops there; the check tells it of an image that came about otherwise.
        bad = self.folder.read("image.elf")
        self.build()
        self.folder.write("image.elf", bad)
        self.tells("there are static constructors (.ctors)")
        self.tells("there is a static constructor: _GLOBAL__sub_I_source.cpp")

    def function(self, body):
        return SAMPLE + f"""
            .section .text.beep
            .globl odd
            .type odd, %function
        odd:
            {body}
            .size odd, . - odd
        """

    def test_large_frames(self):
        self.build(self.function("sub sp, sp, #4096\n push {r4, lr}\n"))
        self.tells("odd has a stack frame of 4104 bytes")
        self.build(self.function("sub sp, sp, #4096\n"))
        self.passes()
        data = self.build(self.function("sub sp, sp, #16\n"))
        self.tells("odd has a stack frame of unknown size",
                   bytes(data).replace(struct.pack("<I", 0xE24DD010), struct.pack("<I", 0xE04DD003)))

    def test_instructions_that_not_every_processor_has(self):
        for instruction in ("clz r0, r1", "blx r3", "ldrd r0, [r2]", "strd r0, [r2]", "pld [r0]",
                            "smulbb r0, r1, r2", "qadd r0, r1, r2", "bkpt #0", "rev r0, r1",
                            "movw r0, #4660", "ldrex r0, [r1]", "swp r0, r1, [r2]", "uxtb r0, r1",
                            "mrs r0, cpsr", "msr cpsr_f, r0", "svc #1", "mrc p15, 0, r0, c1, c0, 0",
                            "bfi r0, r1, #3, #4", "mls r0, r1, r2, r3"):
            self.build(self.function(f".arch armv7-a\n {instruction}\n"))
            self.tells("odd has an instruction that not every processor has")

    def test_instructions_that_every_processor_has(self):
        self.build(self.function("""
            push {r4, lr}
            adds r0, r1, r2, lsl #3
            movs r0, r1, asr r2
            cmp r0, #3
            tst r1, r2
            mulne r0, r1, r2
            mla r0, r1, r2, r3
            umull r0, r1, r2, r3
            smlals r0, r1, r2, r3
            ldrh r0, [r1], #2
            strh r0, [r1, r2]
            ldrsb r0, [r1]
            ldrsh r0, [r1, -r2]!
            strb r0, [r1, r2, lsr #1]
            ldmib r0!, {r1, r2}
            stmda r0, {r1, r2}
            blne beep
        """))
        self.passes()

    def test_ways_out_without_an_exchange(self):
        for way in ("ldr pc, [ip]", "ldr pc, [r0, #8]", "pop {r4, pc}", "ldmia r1, {r0, pc}",
                    "mov pc, lr", "moveq pc, r3"):
            self.build(self.function(f"push {{r4, lr}}\n {way}\n"))
            self.tells("odd goes elsewhere without an exchange")
        self.build(self.function("ldr pc, [r0, r1, lsl #2]\n ldr r0, [pc, #4]\n ldr ip, [ip]\n"))
        self.passes()

    def test_exchange_on_older_processors(self):
        self.build()
        self.tells("DllMain has an instruction that not every processor has", None, "armv4")

    def test_exception_entries(self):
        data = self.build()
        image = pe.Pe(self.folder.path("sample.dll"))
        address, size = image.directories[pe.EXCEPTION_TABLE]
        section = image.section_at(address)
        place = section.place + address - section.address
        swapped = bytearray(data)
        swapped[place:place + 16] = data[place + 8:place + 16] + data[place:place + 8]
        self.tells("is wrong", swapped)
        short = bytearray(data)
        struct.pack_into("<I", short, HEADER + 24 + 96 + 8 * pe.EXCEPTION_TABLE + 4, size - 8)
        self.tells("is in no function of the exception table", short)

    def test_a_frame_behind_the_prologue(self):
        nop, prologue = 0xE1A00000, 0xE24DD008  # what beep makes its frame with
        for word in (0xE92D0010, 0xE52D4004, 0xE24DD008, 0x024DD008, 0xE04DD003):
            data = self.build(self.function(f".word {nop}\n .word {nop}\n"))
            place = data.index(struct.pack("<I", prologue)) + 4
            struct.pack_into("<I", data, place, word)
            self.tells("beep, at 0x1010, lowers the stack behind its prologue", data)

    def test_a_call_without_a_frame(self):
        for call in ("bl beep", "blne beep", "mov lr, pc", "ldr lr, [r0]", "add lr, r0, #4",
                     "ldmia r0, {r1, lr}"):
            self.build(self.function(f"{call}\n bx lr\n"))
            self.tells("has a frame and is in no function of the exception table")

    def test_a_way_around_the_frame(self):
        self.build(self.function("""
            cmp r0, #0
            beq 1f
            push {r4, lr}
            bl beep
            pop {r4, lr}
            bx lr
        1:  mov r0, #1
            bx lr
        """))
        self.tells("odd, at 0x1030, goes on without a frame where there is one")
        self.build(self.function("cmp r0, #0\n bne beep\n bx lr\n"))  # to where it is made
        self.passes()


if __name__ == "__main__":
    unittest.main()
