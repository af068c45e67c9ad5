"""Module definition files: what a DLL exports, or what may be imported from one."""
import re
from typing import NamedTuple, Optional


class Entry(NamedTuple):
    name: str
    ordinal: Optional[int]  # of an entry that is known by its number alone


class Definition(NamedTuple):
    library: str  # with its extension
    entries: list


class DefinitionError(Exception):
    pass


def read(path):
    """Decorations (@ and the bytes of arguments) are dropped: the device's names have none."""
    library, entries = None, []
    with open(path, encoding="utf-8") as lines:
        for number, line in enumerate(lines, 1):
            text = line.split(";")[0].strip()
            if not text or text == "EXPORTS":
                continue
            if match := re.fullmatch(r"LIBRARY\s+(\S+)", text):
                library = match[1] if "." in match[1] else match[1] + ".dll"
            elif match := re.fullmatch(r"(\w+)(?:@\d+)?(?:\s+@(\d+)\s+NONAME)?", text):
                entries.append(Entry(match[1], int(match[2]) if match[2] else None))
            else:
                raise DefinitionError(f"{path}:{number}: cannot read: {text}")
    if not library or not entries:
        raise DefinitionError(f"{path} defines nothing")
    return Definition(library, entries)


# The linker's names of the first slot of all DLLs, and of the word that holds its address.
FIRST_SLOT, SLOT_TABLE = "__imp__first", "__imp__table"


def slot_symbol(library, name):
    """The linker's name of the word through which an import is called."""
    return f"__imp_{library.rsplit('.', 1)[0]}_{name}"


def end_symbol(library):
    """The linker's name of the zero word behind the slots of a DLL."""
    return f"__imp_{library.rsplit('.', 1)[0]}__end"
