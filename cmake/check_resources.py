#!/usr/bin/env python3
"""check_resources.py LIBRARY.dll...: each has the tool bar that the shell makes a menu bar from. It
looks for the tool bar in the library, and makes no menu bar when it is not there."""
import os
import struct
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../device"))

# pylint: disable=wrong-import-position
import pe  # noqa: E402

RAW_DATA, MENU_BAR_TOOL_BAR = 10, 100
# The menu resource and the number of buttons; of the one button its image, command, state, style,
# text, data and menu. An image of -2 and a menu of 0xFFFF stand for none.
NO_MENU_RESOURCE, BUTTONS = 0, 1
BUTTON = (0xFFFE, 1, 4, 0x10, 0, 0, 0xFFFF)
TOOL_BAR = struct.pack("<9H", NO_MENU_RESOURCE, BUTTONS, *BUTTON)


def main():
    for path in sys.argv[1:]:
        found = [content for kind, name, _, content in pe.Pe(path).resources()
                 if (kind, name) == (RAW_DATA, MENU_BAR_TOOL_BAR)]
        if found != [TOOL_BAR]:
            held = ", ".join(content.hex(" ", 2) for content in found) or "nothing"
            sys.exit(f"{path}: tool bar {MENU_BAR_TOOL_BAR} is {held}, not {TOOL_BAR.hex(' ', 2)}")
    print(f"{len(sys.argv) - 1} libraries with the tool bar of menu bars")


main()
