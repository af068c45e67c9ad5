#!/usr/bin/env python3
"""link_inputs.py EXPORTS.def STUBS.s ROOTS.ld IMPORTS.def...

Writes what the linker needs beside the objects: for each function that may be imported a stub with
the slot that the system's loader fills, and the names that must stay in the image.
"""
import sys

import definition

# The converter fills in where the slot lies among all slots, whose address the stubs share.
STUB = """\
\t.section .text.import.{name},"ax",%progbits
\t.p2align 2
\t.globl {name}
\t.type {name},%function
{name}:
\t.reloc ., R_ARM_LDR_PC_G0, {table}
\tldr ip, [pc, #-8]
\t.reloc ., R_ARM_NONE, {slot}
\tldr ip, [ip]
\tbx ip
\t.size {name}, . - {name}
\t.section .iat.{library}.1.{name},"aw",%progbits
\t.p2align 2
\t.globl {slot}
{slot}:
\t.word 0
"""

# The first of all slots, and its address among the stubs, which is marked as data.
TABLE = """\
\t.section .text.import,"ax",%progbits
\t.p2align 2
\t.globl {table}
$d:
{table}:
\t.word {first}
\t.section .iat,"aw",%progbits
\t.p2align 2
\t.globl {first}
{first}:
"""

# Sorts behind the slots of its DLL.
END = """\
\t.section .iat.{library}.2,"aw",%progbits
\t.p2align 2
\t.globl {end}
{end}:
\t.word 0
"""


def main():
    exports, stubs, roots, *imports = sys.argv[1:]
    keep = [entry.name for entry in definition.read(exports).entries]
    with open(stubs, "w", encoding="utf-8") as out:
        out.write("\t.syntax unified\n\t.arm\n")
        for module in map(definition.read, imports):
            for entry in module.entries:
                out.write(STUB.format(name=entry.name, library=module.library,
                                      slot=definition.slot_symbol(module.library, entry.name),
                                      table=definition.SLOT_TABLE))
            end = definition.end_symbol(module.library)
            out.write(END.format(library=module.library, end=end))
            keep.append(end)
        out.write(TABLE.format(table=definition.SLOT_TABLE, first=definition.FIRST_SLOT))
    with open(roots, "w", encoding="utf-8") as out:
        out.write("ENTRY(DllMain)\n" + "".join(f"EXTERN({name})\n" for name in keep))


main()
