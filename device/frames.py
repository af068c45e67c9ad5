"""What instructions do to the stack, as far as unwinding it goes."""

ALWAYS = 0xE
LINK = 14


def step(word):
    """By how many bytes an instruction lowers the stack pointer; None when it cannot be told."""
    if word & 0x0FFFF000 == 0x024DD000:  # sub sp, sp, #n
        turn = (word >> 8 & 0xF) * 2
        value = word & 0xFF
        return (value >> turn | value << (32 - turn)) & 0xFFFFFFFF if turn else value
    if word & 0x0FFF0000 == 0x092D0000:  # push {...}
        return 4 * bin(word & 0xFFFF).count("1")
    if word & 0x0FFF0FFF == 0x052D0004:  # push {rN}
        return 4
    if word & 0x0FEFFFF0 == 0x004DD000:  # sub sp, sp, rN
        return None
    return 0


def is_prologue(word):
    """Whether the system's unwinder knows how to undo this instruction at a function's start."""
    return word >> 28 == ALWAYS and (
        word & 0x0FFF0000 == 0x092D0000         # push {...}
        or word & 0x0FFF0FFF == 0x052D0004      # push {rN}
        or word & 0x0FFFF000 == 0x024DD000      # sub sp, sp, #n
        or word & 0x0FFFF000 == 0x028DB000      # add fp, sp, #n
        or word & 0x0FFFFFFF == 0x01A0B00D)     # mov fp, sp


def changes_link(word):
    """Whether the place to return to is another one behind the instruction."""
    kind, is_load = word >> 25 & 7, word >> 20 & 1
    is_of_link = word >> 12 & 0xF == LINK
    if kind in (0, 1):
        is_comparison = word & 0x01900000 == 0x01100000
        return is_of_link and not is_comparison
    if kind in (2, 3):
        return bool(is_of_link and is_load)
    if kind == 4:
        return bool(word >> LINK & 1 and is_load)
    return word & 0x0F000000 == 0x0B000000  # a call


def branch_target(address, word):
    """Where a plain branch goes; None for any other instruction."""
    if word & 0x0F000000 != 0x0A000000:
        return None
    distance = word & 0x00FFFFFF
    return address + 8 + 4 * (distance - (distance >> 23 << 24))
