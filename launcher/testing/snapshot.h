#pragma once
// What a person sees on the device's screen, as text: windows, what is in them, and open menus.

#include <string>

// One record for each, parents first and the topmost window first. Records end with a line feed,
// fields with a unit separator (U+001F); line feeds within a text are U+001E. The fields: depth,
// kind of part (window, item, menu), handle, class, text, style, place (x, y,
// width, height on the screen), a point of it that a tap reaches (x, y; -1: none), what covers it
// (a handle; 0: nothing), the flags below, and a value: the position of a scroll bar, the selected
// range of a text. On the display's thread.
std::wstring takeSnapshot();

constexpr unsigned snapshotVisible = 1;
constexpr unsigned snapshotEnabled = 2; // itself
constexpr unsigned snapshotChecked = 4;
constexpr unsigned snapshotFocused = 8;
constexpr unsigned snapshotSelected = 16;
constexpr unsigned snapshotActive = 32;
constexpr unsigned snapshotSeparator = 64;
constexpr unsigned snapshotOpensMenu = 128;
constexpr unsigned snapshotOnScreen = 256; // a part of it is
