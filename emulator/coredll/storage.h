#pragma once
// The device's files. Its paths start with a backslash and know no drives; what they name lies in a
// folder beside the emulator's libraries. Paths of the desk, with a drive, stay what they are.

#include <string>
#include <windows.h>

// A path of the device without "." and "..", which lead no further than to the root.
std::wstring devicePath(const std::wstring& path);

// Where the desk has it.
std::wstring deskPath(const std::wstring& path);

bool isFolder(const std::wstring& path);

constexpr wchar_t documentsFolder[] = L"\\My Documents";
