#!/usr/bin/env python3
"""checked_natives.py kinds|natives|events SRC OS.java...: what the declarations say of the arguments
of every native, as rows of C++ tables.

A native calls the operation of its name, which a header of the library in SRC declares with the kinds
of records that it takes; the words of bridge/handles.h say more.

kinds: of handles, each behind the kind that it is one of.
natives: the parameters and what is made or ended.
events: the signature of the method that each calls."""
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "java"))
from declarations import natives_of  # noqa: E402

# What Java declares, and what an operation may take for it.
NUMBERS = {"jint", "LONG", "DWORD"}
TAKEN = {
    "int": NUMBERS,
    "boolean": {"bool"},
    "char": {"jchar"},
    "String": {"const wchar_t*", "jstring"},
    "Object": {"jobject"},
}
ARRAYS = {"int[]": "IntArguments", "byte[]": "ByteArguments"}
# What the length of an array follows from, by its word.
EXTENTS = {
    "OfAnyLength": ("any", []),
    "OfPixels": ("pixels", ["width", "height"]),
    "OfRows": ("rows", ["width", "height", "bytesPerLine", "depth"]),
    "OfScannedRows": ("scannedRows", ["width", "height", "offset", "scanSize"]),
}
ARRAY = re.compile(r"(?:(\w+)<)?(\w+Arguments)>?$")
COUNT = re.compile(r"CountOfArray(?:s<(\d+)>)?$")
HANDLE = re.compile(r"(?:(OrNone|OfThisThread|Lent)<(\w+Record)>|(\w+Record)\*|(HCURSOR))$")


def without_comments(text):
    return re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)


def headers_in(folder):
    return "\n".join(
        without_comments(path.read_text(encoding="utf-8")) for path in sorted(folder.rglob("*.h"))
    )


def bases_of(headers):
    """Of each record, the one that it begins with; an empty name for none."""
    bases = {"HCURSOR": ""}
    no_handles = {"ErrorRecord"}
    for name, base, first in re.findall(
        r"struct (\w+Record)(?: : (\w+Record))? \{\s*(?:(\w+Record) \w+;)?", headers
    ):
        bases[name] = base or first
    return {name: base for name, base in bases.items() if name not in no_handles}


def in_order(bases):
    """Every record behind its base."""
    ordered = []

    def add(name):
        if name in ordered or not name:
            return
        add(bases[name])
        ordered.append(name)

    for name in sorted(bases):
        add(name)
    return ordered


# What its record's name would not tell.
SPOKEN = {
    "HCURSOR": "cursor",
    "GraphicsRecord": "graphics context",
    "OwnBarRecord": "scrollable's bar",
    "TextRecord": "text component",
}


def spoken(record):
    """ButtonRecord is a button, TextFieldRecord a text field."""
    if record in SPOKEN:
        return SPOKEN[record]
    words = re.findall(r"[A-Z][a-z]*", record.removesuffix("Record"))
    return " ".join(word.lower() for word in words)


class Operation:
    """What a header declares for a native."""

    def __init__(self, headers, name):
        found = re.findall(rf"^([\w:<>*& ]+?)\b{name}\(([^)]*)\);", headers, re.M)
        if len(found) != 1:
            raise SystemExit(f"{name}: the headers declare {len(found)} operations of that name")
        result, declared = found[0]
        self.result = result.replace('extern "C"', "").strip()
        parameters = [one.strip() for one in " ".join(declared.split()).split(",") if one.strip()]
        kept = [
            one for one in parameters if one not in ("ErrorRecord* error", "JNIEnv* env")
        ]
        self.parameters = [one.rsplit(" ", 1) for one in kept]


def counts_of(name, java, operation):
    """Of each array that a number counts, that number's place."""
    counts = {}
    for index, (taken, _) in enumerate(operation.parameters):
        count = COUNT.match(taken)
        for array in range(index - int(count[1] or 1), index) if count else ():
            if array < 0 or java[array][0] not in ARRAYS:
                raise SystemExit(f"{name}: {taken} counts arrays that are not before it")
            counts[array] = index
    return counts


def array_row(name, java, index, taken, counted_by):
    """Of the parameter of that index, with what its length follows from."""
    java_type, word = java[index]
    if counted_by is not None and taken == ARRAYS[java_type]:
        return '{"%s", Role::array, %d, false, false, Extent::counted}' % (word, counted_by)
    array = ARRAY.match(taken)
    if not array or array[2] != ARRAYS[java_type] or array[1] not in EXTENTS:
        raise SystemExit(f"{name}: how long {word} has to be is not declared")
    extent, names = EXTENTS[array[1]]
    missing = set(names) - {one for _, one in java}
    if missing:
        raise SystemExit(f"{name}: the length of {word} follows from {missing}")
    return '{"%s", Role::array, -1, false, false, Extent::%s}' % (word, extent)


def parameter_row(name, java, taken, kinds):
    java_type, word = java
    handle = HANDLE.match(taken)
    if handle and java_type == "int":
        word_of, marked, plain, system = handle.groups()
        kind = kinds.index(marked or plain or system)
        maybe_none = word_of == "OrNone" or bool(system)
        traits = [str(flag).lower() for flag in (maybe_none, word_of == "OfThisThread")]
        return '{"%s", Role::handle, %d, %s}' % (word, kind, ", ".join(traits))
    is_count = java_type == "int" and COUNT.match(taken)
    if not is_count and taken not in TAKEN[java_type]:
        raise SystemExit(f"{name}: what {taken} {word} is cannot be told from its declaration")
    return '{"%s", Role::other}' % word


def native_row(headers, kinds, name, java):
    operation = Operation(headers, name)
    if len(operation.parameters) != len(java):
        raise SystemExit(f"{name}: the operation takes something else than what Java declares")
    counts = counts_of(name, java, operation)
    rows = [
        array_row(name, java, index, taken, counts.get(index))
        if one[0] in ARRAYS
        else parameter_row(name, one, taken, kinds)
        for index, (one, (taken, _)) in enumerate(zip(java, operation.parameters))
    ]
    made = HANDLE.match(operation.result)
    kind = kinds.index(made[2] or made[3] or made[4]) if made else -1
    lent = str(bool(made and made[1] == "Lent")).lower()
    ends = str(name.endswith("_Dispose")).lower()
    return '{"%s", {%s}, %d, %s, %s},' % (name, ", ".join(rows), kind, lent, ends)


def events_in(source):
    numbers = dict(
        re.findall(r"\b(CB_\w+) = (\w+),", (source / "bridge/java_numbers.h").read_text("utf-8"))
    )
    firing = (source / "display/firing.cpp").read_text("utf-8")
    signatures = dict(re.findall(r'vaCallback\w*\(\s*(CB_\w+),\s*"([^"]+)"', firing))
    if set(numbers) != set(signatures):
        raise SystemExit(f"events that are not fired: {set(numbers) ^ set(signatures)}")
    for name, number in numbers.items():
        yield '{"%s", %s, "%s"},' % (name, number, signatures[name])


def main():
    form, source = sys.argv[1], Path(sys.argv[2])
    headers = headers_in(source)
    bases = bases_of(headers)
    kinds = in_order(bases)
    if form == "kinds":
        for name in kinds:
            base = kinds.index(bases[name]) if bases[name] else -1
            system = str(name == "HCURSOR").lower()
            print('{"%s", "%s", %d, %s},' % (name, spoken(name), base, system))
    elif form == "events":
        print("\n".join(events_in(source)))
    else:
        for path in sys.argv[3:]:
            text = Path(path).read_text("utf-8")
            for _, name, java in natives_of(text):
                print(native_row(headers, kinds, name, java))


main()
