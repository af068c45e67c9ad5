#include "waiting.h"
#include <atomic>
#include <cstdio>
#include <cstdlib>

static constexpr UINT lookAgain = 20; // milliseconds
static constexpr DWORD usualPatience = 30;

static std::atomic<DWORD> lastProgress;
static std::atomic<int> idleLooks;

static BOOL CALLBACK findDialog(HWND window, LPARAM found) {
    wchar_t name[16];
    GetClassNameW(window, name, 16);
    if (lstrcmpW(name, L"#32770") != 0 || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

static void leaveDialog() {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), findDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog) PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

static void letGo() {
    if (HWND holder = GetCapture()) PostMessageW(holder, WM_LBUTTONUP, 0, 0);
}

static void leave(int loop) {
    if (loop == MSGF_MENU)
        EndMenu();
    else if (loop == MSGF_DIALOGBOX)
        leaveDialog();
    else
        letGo();
}

// A timer's message comes when there is no other one.
static LRESULT CALLBACK lookAtLoop(int loop, WPARAM wParam, LPARAM lParam) {
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    if (loop >= 0 && message->message == WM_TIMER && !message->hwnd) leave(loop);
    return CallNextHookEx(nullptr, loop, wParam, lParam);
}

// Loops that tell no hook of their messages.
static void CALLBACK lookAtTime(HWND, UINT, UINT_PTR, DWORD) {
    constexpr int tooMany = 50;
    if (++idleLooks < tooMany) return;
    idleLooks = 0;
    EndMenu();
    leaveDialog();
    letGo();
}

Impatience::Impatience()
    : timer(SetTimer(nullptr, 0, lookAgain, lookAtTime)),
      hook(SetWindowsHookExW(WH_MSGFILTER, lookAtLoop, nullptr, GetCurrentThreadId())) {}

Impatience::~Impatience() {
    UnhookWindowsHookEx(hook);
    KillTimer(nullptr, timer);
}

static DWORD WINAPI endWhatHangs(void*) {
    const char* given = getenv("ZEMVOLT_PATIENCE");
    DWORD tooLong = 1000 * (given ? strtoul(given, nullptr, 10) : usualPatience);
    while (GetTickCount() - lastProgress < tooLong) Sleep(tooLong / 50);
    std::fprintf(stderr, "nothing happens any more\n");
    TerminateProcess(GetCurrentProcess(), hangCode);
    return 0;
}

void tellProgress() {
    static const HANDLE watch = [] {
        lastProgress = GetTickCount();
        return CreateThread(nullptr, 0, endWhatHangs, nullptr, 0, nullptr);
    }();
    if (watch) lastProgress = GetTickCount();
    idleLooks = 0;
}
