#!/usr/bin/env python3
"""public_signatures.py HEADER EXPORTS.def SOURCES OUT.cpp: writes what compiles only if each function
of the public header is exported and declared in the library's own headers with the same type. The
header's records stand for the library's of the same names."""
import re
import sys
from pathlib import Path

COMPARISON = """
// What the header calls by a name is the library's record of that name.
template <class Published, class Own>
constexpr bool same = std::is_same_v<Published, Own>;
template <class Published, class Own>
constexpr bool same<Published*, Own*> = same<Published, Own>;
template <class Published, class Own>
constexpr bool same<const Published, const Own> = same<Published, Own>;
template <class... Types>
struct List {};
template <class... Published, class... Own>
constexpr bool same<List<Published...>, List<Own...>> = [] {
    if constexpr (sizeof...(Published) == sizeof...(Own)) return (same<Published, Own> && ...);
    return false;
}();
template <class Result, class... Arguments, class OwnResult, class... OwnArguments>
constexpr bool same<Result(Arguments...), OwnResult(OwnArguments...)> =
    same<List<Result, Arguments...>, List<OwnResult, OwnArguments...>>;
template <class Result, class... Arguments, class OwnResult, class... OwnArguments>
constexpr bool same<Result(Arguments..., ...), OwnResult(OwnArguments..., ...)> =
    same<List<Result, Arguments...>, List<OwnResult, OwnArguments...>>;
template <class Result, class... Arguments, class OwnResult, class... OwnArguments>
constexpr bool same<Result __stdcall(Arguments...), OwnResult __stdcall(OwnArguments...)> =
    same<List<Result, Arguments...>, List<OwnResult, OwnArguments...>>;

// Every control begins as a widget.
template <>
constexpr bool same<published::ControlRecord, WidgetRecord> = true;
"""


def main():
    header, exports, sources, out = map(Path, sys.argv[1:])
    text = re.sub(r"/\*.*?\*/", "", header.read_text(encoding="utf-8"), flags=re.S)
    names = re.findall(r"^(?!typedef)[\w ]+[ *]+(\w+)\(", text, re.M)
    records = re.findall(r"^typedef struct \w+(?: \{[^}]*\})? (\w+);", text, re.M)
    exported = re.findall(r"^ +(?!Java_)(\w+)", exports.read_text(encoding="ascii"), re.M)
    if set(names) != set(exported):
        sys.exit(f"declared or exported alone: {sorted(set(names) ^ set(exported))}")
    headers = sorted(path.relative_to(sources) for path in sources.rglob("*.h"))
    # The header comes first: its records must not be taken for the library's.
    lines = [f"#include <{name}>" for name in ("jni.h", "type_traits", "windows.h")]
    lines += [f"#define {name} published_{name}" for name in names]
    lines += ["namespace published {", f'#include "{header.name}"', "}"]
    lines += [f"#undef {name}" for name in names]
    lines += [f'#include "{path}"' for path in headers if "natives" not in path.parts]
    lines.append(COMPARISON)
    lines += [f"template <>\nconstexpr bool same<published::{record}, ::{record}> = true;"
              for record in records if record != "WidgetRecord"]
    lines += [f"static_assert(same<decltype(published::published_{name}), decltype(::{name})>,\n"
              f'              "{name} is declared otherwise in {header.name}");' for name in names]
    out.write_text("\n".join(lines) + "\n", encoding="utf-8")


main()
