"""Small images for the device, made from assembly or C++ as the library is."""
import os
import subprocess
import sys
import tempfile

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "../.."))
DEVICE = os.path.join(ROOT, "device")
sys.path.insert(0, DEVICE)

# pylint: disable=wrong-import-position
import definition  # noqa: E402

COMPILER, LINKER = "clang++-14", "ld.lld-14"
RESOURCE_COMPILER = "i686-w64-mingw32-windres"
FLAGS = ["--target=armv4t-none-eabi", "-marm", "-mfloat-abi=soft", "-mabi=apcs-gnu", "-O2",
         "-fno-exceptions", "-fno-rtti", "-fomit-frame-pointer", "-ffunction-sections",
         "-fno-unwind-tables", "-Wno-unused-command-line-argument"]

SYSTEM = "LIBRARY coredll.dll\nEXPORTS\n LocalAlloc@8\n MessageBeep@4\n memset\n"
SHELL = "LIBRARY aygshell.dll\nEXPORTS\n SHFindMenuBar@4 @188 NONAME\n"
EXPORTS = "LIBRARY sample\nEXPORTS\n beep\n _find\n Allocate\n"

SAMPLE = r"""
    .syntax unified
    .arm
    .macro function name
        .section .text.\name, "ax", %progbits
        .p2align 2
        .globl \name
        .type \name, %function
        \name:
    .endm
    function DllMain
        mov r0, #1
        bx lr
        .size DllMain, . - DllMain
    function beep
        push {r4, lr}
        sub sp, sp, #8
        ldr r0, .Lcounter
        bl MessageBeep
        add sp, sp, #8
        pop {r4, lr}
        bx lr
    .Lcounter:
        .word counter
        .word 0xe12fff1e        @ data that looks like an instruction
        .size beep, . - beep
    function _find
        b SHFindMenuBar
        .size _find, . - _find
    function Allocate
        b LocalAlloc
        .size Allocate, . - Allocate
    .section .data.counter, "aw", %progbits
    .p2align 2
    counter:
        .word table
        .word 5
    .section .rodata.table, "a", %progbits
    .p2align 2
    table:
        .word beep
        .word 7
    .section .bss.buffer, "aw", %nobits
    .p2align 2
    .globl buffer
    buffer:
        .space 64
    .section .text.beep
        .reloc 0, R_ARM_NONE, buffer
"""


class Folder:
    """A folder of files for one test."""

    linked = {}  # images by what they are made of: most tests take the same one

    def __init__(self):
        self.owner = tempfile.TemporaryDirectory()
        self.system = self.write("coredll.def", SYSTEM)
        self.shell = self.write("aygshell.def", SHELL)
        self.exports = self.write("sample.def", EXPORTS)

    def close(self):
        self.owner.cleanup()

    def path(self, name):
        return os.path.join(self.owner.name, name)

    def write(self, name, content):
        mode = "wb" if isinstance(content, bytes) else "w"
        with open(self.path(name), mode) as file:
            file.write(content)
        return self.path(name)

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def definitions(self):
        return [definition.read(self.system), definition.read(self.shell)]

    def compile_resources(self, source):
        """The bytes of the compiled resources."""
        self.write("sample.rc", source)
        subprocess.run([RESOURCE_COMPILER, "-O", "res", self.path("sample.rc"),
                        self.path("sample.res")], check=True)
        return self.read("sample.res")

    def compile(self, source, language="assembler", flags=()):
        name = "source.s" if language == "assembler" else "source.cpp"
        self.write(name, source)
        subprocess.run([COMPILER, *FLAGS, *flags, "-c", self.path(name), "-o",
                        self.path("source.o")], check=True)
        return self.path("source.o")

    def link(self, source, language="assembler", flags=()):
        """The linked image's bytes."""
        made_of = (source, language, *flags)
        if made_of not in self.linked:
            self.linked[made_of] = self.link_anew(source, language, flags)
        self.write("image.elf", self.linked[made_of])
        return self.linked[made_of]

    def link_anew(self, source, language, flags):
        objects = [self.compile(source, language, flags)]
        stubs, roots = self.path("stubs.s"), self.path("roots.ld")
        subprocess.run([sys.executable, os.path.join(DEVICE, "link_inputs.py"), self.exports, stubs,
                        roots, self.system, self.shell], check=True)
        subprocess.run([COMPILER, *FLAGS, "-c", stubs, "-o", self.path("stubs.o")], check=True)
        objects.append(self.path("stubs.o"))
        subprocess.run([LINKER, "-q", "--gc-sections", "-T", os.path.join(DEVICE, "image.ld"),
                        "-T", roots, "-o", self.path("image.elf"), *objects],
                       check=True, stderr=subprocess.DEVNULL)
        return self.read("image.elf")
