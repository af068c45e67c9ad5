#include "leaks.h"
#include "library.h"
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

// The system's table of GDI objects, which the process block of every process leads to.
struct GdiEntry {
    uint64_t object;
    uint32_t owner;
    uint16_t unique;
    uint8_t type;
    uint8_t flags;
    uint64_t user;
};
static_assert(sizeof(GdiEntry) == 24);
constexpr int gdiEntries = 0x4000;

} // namespace

static int countGdiObjects() {
    const char* threadBlock;
    __asm__("movl %%fs:0x18, %0" : "=r"(threadBlock));
    const char* processBlock = *reinterpret_cast<char* const*>(threadBlock + 0x30);
    auto* table = *reinterpret_cast<const GdiEntry* const*>(processBlock + 0x94);
    int count = 0;
    for (int i = 0; table && i < gdiEntries; ++i) count += table[i].type != 0;
    return count;
}

static BOOL CALLBACK countChild(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

// The device's own, wherever a control asks for it.
static bool isInputPanel(HWND window) {
    wchar_t name[16];
    GetClassNameW(window, name, 16);
    return lstrcmpW(name, L"SipWndClass") == 0;
}

static BOOL CALLBACK countTop(HWND window, LPARAM count) {
    if (isInputPanel(window)) return TRUE;
    ++*reinterpret_cast<int*>(count);
    EnumChildWindows(window, countChild, count);
    return TRUE;
}

// What the device tells of itself in a function of that name.
static long countOf(const char* function) {
    theLibrary();
    using Count = LONG(WINAPI*)();
    auto* count = reinterpret_cast<Count>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"coredll.dll"), function)));
    return count();
}

long countHeapBlocks() { return countOf("Emulator_CountHeapBlocks"); }

// The system keeps the contexts of windows for whoever needs one next. It makes enough of them
// once, so that none is taken for a leak: a release that a test lets fail keeps one for good.
void makeSpareContexts() {
    HDC contexts[64];
    for (HDC& context : contexts) context = GetDC(nullptr);
    for (HDC context : contexts) ReleaseDC(nullptr, context);
}

// What it draws every button's frame with, it makes with the first one.
static bool drawFirstFrame() {
    HDC context = CreateCompatibleDC(nullptr);
    RECT place = {0, 0, 10, 10};
    DrawFrameControl(context, &place, DFC_BUTTON, DFCS_BUTTONPUSH);
    return DeleteDC(context);
}

LiveCounts countLive() {
    static bool isPrepared = (makeSpareContexts(), drawFirstFrame());
    EXPECT_TRUE(isPrepared);
    LiveCounts counts = {countGdiObjects(), 0, countHeapBlocks(),
                         countOf("Emulator_CountMenusAndTables")};
    EnumThreadWindows(GetCurrentThreadId(), countTop, reinterpret_cast<LPARAM>(&counts.windows));
    return counts;
}

void expectLive(const LiveCounts& expected) {
    LiveCounts live = countLive();
    EXPECT_EQ(live.gdiObjects, expected.gdiObjects) << "GDI objects";
    EXPECT_EQ(live.windows, expected.windows) << "windows";
    EXPECT_EQ(live.heapBlocks, expected.heapBlocks) << "heap blocks";
    EXPECT_EQ(live.menus, expected.menus) << "menus and tables of accelerators";
}

NoLeaks::~NoLeaks() { expectLive(before); }

int leakRounds(int usual) {
    const char* rounds = getenv("ZEMVOLT_LEAK_ROUNDS");
    return rounds ? atoi(rounds) : usual;
}
