#pragma once
// The window class of menu bars, which aygshell makes and coredll hides with their owners.

constexpr wchar_t menuBarClass[] = L"MenuBar";
