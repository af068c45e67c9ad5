#include "system_functions.h"
#include <algorithm>
#include <iterator>

static constexpr char hasNoFailure[] = "there is no failure that it could tell";
static constexpr char delivers[] = "it answers what the receiver of a message does";
static constexpr char answersState[] = "none, or no, is an answer like any other";

// Their failures are tests of tests/unit, but for FreeLibrary's.
static constexpr char ofEntryPoint[] = "an entry point for companion libraries alone calls it";
static constexpr char ofOtherThreads[] = "natives on other threads alone call it";
static constexpr char ofUnknownClass[] = "it is asked about classes that could not be described";
static constexpr char ofPalette[] = "only a screen with a palette has any entries";
static constexpr char takesWhatLives[] =
    "it fails only for what is gone, and this is the library's own";

static const struct {
    const char* import;
    const char* reason;
} neverFailing[] = {
    {"CallWindowProcW", delivers},
    {"CharUpperW", hasNoFailure},
    {"CoUninitialize", hasNoFailure},
    {"DefWindowProcW", delivers},
    {"DeleteCriticalSection", hasNoFailure},
    {"DispatchMessageW", delivers},
    {"EnterCriticalSection", hasNoFailure},
    {"EventModify", takesWhatLives},
    {"FreeLibrary", ofEntryPoint},
    {"GetAsyncKeyState", answersState},
    {"GetClassNameW", ofUnknownClass},
    {"GetDoubleClickTime", hasNoFailure},
    {"GetExitCodeThread", ofOtherThreads},
    {"GetKeyState", answersState},
    {"GetLastError", hasNoFailure},
    {"GetProcAddressW", ofEntryPoint},
    {"GetSysColor", hasNoFailure},
    {"GetSystemPaletteEntries", ofPalette},
    {"GetSystemMetrics", hasNoFailure},
    {"GetTickCount", hasNoFailure},
    {"InitializeCriticalSection", hasNoFailure},
    {"IsWindow", answersState},
    {"LeaveCriticalSection", hasNoFailure},
    {"LoadLibraryW", ofEntryPoint},
    {"PeekMessageW", answersState},
    {"PostQuitMessage", hasNoFailure},
    {"PtInRect", answersState},
    {"SHRecognizeGesture", answersState},
    {"SendMessageW", delivers},
    {"SetLastError", hasNoFailure},
    {"SetWindowLongW", takesWhatLives},
    {"Sleep", hasNoFailure},
    {"TranslateMessage", answersState},
    {"WaitForSingleObject", takesWhatLives},
    {"keybd_event", hasNoFailure},
    {"lstrcmpiW", answersState},
};

const char* reasonWhyNever(const std::string& import) {
    for (const auto& known : neverFailing)
        if (import == known.import) return known.reason;
    return nullptr;
}

static const Leavings leavings[] = {
    {.import = "CloseHandle", .handles = true},
    {.import = "DeleteDC", .gdiObjects = true},
    {.import = "DeleteObject", .gdiObjects = true},
    {.import = "DestroyAcceleratorTable", .menus = true},
    {.import = "DestroyMenu", .menus = true},
    {.import = "DestroyWindow",
     .gdiObjects = true,
     .windows = true,
     .heapBlocks = true,
     .handles = true},
    {.import = "EndPaint", .gdiObjects = true},
    {.import = "LocalFree", .heapBlocks = true},
    {.import = "ReleaseDC", .gdiObjects = true},
    {.import = "SelectObject", .gdiObjects = true},
    {.import = "waveOutClose", .heapBlocks = true, .handles = true},
    {.import = "waveOutReset", .heapBlocks = true, .handles = true},
};

Leavings leavingsOf(const std::string& import) {
    for (const Leavings& known : leavings)
        if (import == known.import) return known;
    return {};
}

static const char* const givingBack[] = {
    "CloseHandle",    "DeleteDC",
    "DeleteObject",   "DestroyAcceleratorTable",
    "DestroyMenu",    "EndPaint",
    "DestroyWindow",  "KillTimer",
    "LocalFree",      "ReleaseDC",
    "ReleaseCapture", "waveOutClose",
    "waveOutReset",   "waveOutUnprepareHeader",
};

static const char* const making[] = {
    "CoCreateInstance",   "CreateAcceleratorTableW",
    "CreateBitmap",       "CreateCompatibleBitmap",
    "CreateCompatibleDC", "CreateDIBSection",
    "CreateEventW",       "CreateFontIndirectW",
    "CreatePenIndirect",  "CreatePopupMenu",
    "CreateRectRgn",      "CreateRectRgnIndirect",
    "CreateSolidBrush",   "CreateThread",
    "CreateWindowExW",    "LoadCursorW",
    "LocalAlloc",         "SHCreateMenuBar",
    "waveOutOpen",
};

// What is made and missed without a word, and why.
static const struct {
    const char* native;
    const char* import;
} untold[] = {
    // Messages and listeners have nobody to tell.
    {"Display_ReadAndDispatch", "*"},
    // Part of an image that is drawn: no error is told of it.
    {"Graphics_DrawImageRegion", "*"},
    // Without a brush nothing is filled.
    {"Graphics_FillBackground", "CreateSolidBrush"},
    // The image is black, its palette white.
    {"Image_Flip", "CreateCompatibleDC"},
    {"Image_NewFromHandle", "CreateCompatibleDC"},
    {"Image_NewFromFileData", "CreateCompatibleDC"},
    {"Image_NewFromFile", "CreateCompatibleDC"},
    // A context lives without its placeholder and without its first clip.
    {"Control_CopyArea", "CreateCompatibleBitmap"},
    {"Control_CopyArea", "CreateRectRgnIndirect"},
    {"Control_NewGraphics", "CreateRectRgnIndirect"},
    {"Image_NewGraphics", "CreateCompatibleBitmap"},
    {"Image_NewGraphics", "CreateRectRgnIndirect"},
    // Sizes are those of what has no text.
    {"Control_GetMinimumSize", "LocalAlloc"},
    {"List_GetMinimumSize", "LocalAlloc"},
    {"List_Remove", "LocalAlloc"},
    {"List_SetItem", "LocalAlloc"},
    // The old window stays.
    {"Scrollbar_SetOrientation", "CreateWindowExW"},
    // Java gets none.
    {"Cursor_New", "LoadCursorW"},
    {"Shell_New", "LocalAlloc"},
    {"Shell_NewChild", "LocalAlloc"},
};

template <size_t Count>
static bool contains(const char* const (&names)[Count], const std::string& name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

static bool isUntold(const std::string& native, const std::string& import) {
    return std::any_of(std::begin(untold), std::end(untold), [&](const auto& row) {
        return native == row.native && (import == row.import || row.import[0] == '*');
    });
}

bool isDescribed(const std::string& native, const std::string& import, const std::string& outcome) {
    bool isTold = outcome.starts_with("error") || outcome.starts_with("throws");
    if (contains(givingBack, import)) return outcome == "ignored";
    return !contains(making, import) || isTold || isUntold(native, import);
}
