#!/usr/bin/env python3
"""check_exports.py LIBRARY JAVA_FOLDER: compares the library's export table with the natives that
the two OS classes declare, and with the entry points for companion libraries."""
import os
import re
import subprocess
import sys

ENTRY_POINTS = set("""
    getEnv convertToJavaString createJavaRect createJavaPoint WYX_ErrorHandler WYX_GetError
    Win32Error_SetError getCallbackLookup vaCallback vaCallbackBoolean
    _Display_GetComCtrlMajorVersion Display_UpdateModalShellVisibility Control_GetDisplay
    _Control_New _Control_Style _Dispose_Control _Control_Proc _Control_ProcessWmChar
    _Control_ProcessWmKeyDown _Control_ProcessWmLButtonDown _Control_ProcessWmRButtonDown
    Control_Redraw _Control_GetBorderWidth _Control_GetDefaultFont _Control_SetBackground
    _Control_SetFont _Control_SetForeground _Scrollable_Proc _Scrollable_Style _Dispose_Scrollable
    _Font_FillInFont _Image_GetSize
""".split())


def exports_of(library):
    listing = subprocess.run(["i686-w64-mingw32-objdump", "-p", library], check=True,
                             capture_output=True, text=True).stdout
    table = listing[listing.index("[Ordinal/Name Pointer] Table"):]
    return set(re.findall(r"^\s*\[\s*\d+\].*\s(\S+)$", table.split("\n\n")[0], re.M))


def natives_of(folder):
    natives = set()
    for package in ("k4tr", "dovr"):
        path = os.path.join(folder, "com/nuvik/wyx", package, "OS.java")
        with open(path, encoding="utf-8") as source:
            for name in re.findall(r"\bnative\s+[\w\[\]]+\s+(\w+)\(", source.read()):
                natives.add(f"Java_com_nuvik_wyx_{package}_OS_" + name.replace("_", "_1"))
    return natives


def main():
    exports = exports_of(sys.argv[1])
    expected = natives_of(sys.argv[2]) | ENTRY_POINTS
    for name in sorted(expected - exports):
        print(f"not exported: {name}")
    for name in sorted(exports - expected):
        print(f"exported, but not declared: {name}")
    print(f"{len(exports)} exports: {len(exports & ENTRY_POINTS)} entry points, "
          f"{len(exports - ENTRY_POINTS)} natives")
    sys.exit(exports != expected)


main()
