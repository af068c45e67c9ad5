#!/usr/bin/env python3
"""second_processor.py LIBRARY.dll IMAGE.elf PROGRAM_OBJECTS LINKER CORE DESK_COMMAND...

Runs the functions of the device's library, from the image as it is shipped, on the ARM core of an
emulator that has nothing in common with the one that the other tests use, and compares what they
compute with what the desk's build does. PROGRAM_OBJECTS are separated by commas.
"""
import difflib
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "../../../device"))

# pylint: disable=wrong-import-position
import elf  # noqa: E402
import pe  # noqa: E402

LOAD_ADDRESS = 0x00800000
SECONDS = 240
CHECKSUM = re.compile(r"[a-z]+ [0-9a-f]{8}")


def read_elf(path):
    with open(path, "rb") as file:
        return elf.Elf(file.read())


def loaded_image(library, functions):
    """The image as it lies in memory, its imports leading to the functions."""
    image = pe.Pe(library)
    memory = bytearray(image.size)
    for section in image.sections:
        memory[section.address:section.address + section.size] = \
            image.bytes_at(section.address, section.size)
    for address, _ in image.fixups():
        word, = struct.unpack_from("<I", memory, address)
        struct.pack_into("<I", memory, address, word - image.base + LOAD_ADDRESS)
    for _, name, slot in image.imports():
        place = functions.get(name, functions["missingImport"])
        struct.pack_into("<I", memory, slot, place)
    return bytes(memory)


def emulate(core, files):
    """What the machine writes. It reads its console all the time, and goes no further where that
    ends: so it gets one that is open and says nothing."""
    silent, held = os.pipe()
    try:
        return subprocess.run(["gxemul", "-q", "-E", "testarm", "-C", core, *files], stdin=silent,
                              capture_output=True, text=True, timeout=SECONDS, check=False).stdout
    finally:
        os.close(silent)
        os.close(held)


def run_on_core(library, linked, objects, linker, core):
    with tempfile.TemporaryDirectory() as folder:
        def path(name):
            return os.path.join(folder, name)

        # The program's own functions come first, the image's are found for the rest.
        with open(path("functions.ld"), "w", encoding="ascii") as script:
            base = pe.Pe(library).base
            for name, address in read_elf(linked).addresses.items():
                if name.isidentifier():
                    script.write(f"PROVIDE({name} = {address - base + LOAD_ADDRESS:#x});\n")
        subprocess.run([linker, "-T", os.path.join(HERE, "machine.ld"), "-T", path("functions.ld"),
                        "-o", path("program.elf"), *objects], check=True,
                       stderr=subprocess.DEVNULL)
        functions = read_elf(path("program.elf")).addresses
        with open(path("image"), "wb") as file:
            file.write(loaded_image(library, functions))
        return emulate(core, [f"{LOAD_ADDRESS:#x}:{path('image')}", path("program.elf")])


def checksums(output):
    return [line.strip() for line in output.splitlines() if CHECKSUM.fullmatch(line.strip())]


def main():
    library, linked, objects, linker, core, *desk = sys.argv[1:]
    if not shutil.which("gxemul"):
        sys.exit("gxemul is not installed; ./zemvolt test installs it")
    ours = checksums(run_on_core(library, linked, objects.split(","), linker, core))
    theirs = checksums(subprocess.run(desk, check=True, capture_output=True, text=True).stdout)
    if ours != theirs or not theirs:
        sys.exit("\n".join(difflib.unified_diff(theirs, ours, "desk", core, lineterm="", n=0)) or
                 "there are no checksums")
    print(f"{len(ours)} checksums are the same on {core} and on the desk")


main()
