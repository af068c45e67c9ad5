#include "display_thread.h"
#include "emulator.h"
#include <memory>
#include <mutex>

namespace {

// What is to be done at the next ticks; the display's thread does it, another one waits for it.
struct Request {
    std::function<bool()> tick; // true: no further tick is needed
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    ~Request() { CloseHandle(done); }
};

struct Search {
    HWND found;
};

} // namespace

static constexpr UINT_PTR timer = 0x7E57;
static std::mutex lock;
static std::shared_ptr<Request> current;

static bool isOfClass(HWND window, const wchar_t* name) {
    wchar_t className[64] = L"";
    GetClassNameW(window, className, ARRAYSIZE(className));
    return lstrcmpiW(className, name) == 0;
}

static BOOL CALLBACK findDisplay(HWND window, LPARAM lParam) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    bool isDisplay = process == GetCurrentProcessId() && isOfClass(window, L"Window Class Name") &&
                     !IsWindowVisible(window);
    if (isDisplay) reinterpret_cast<Search*>(lParam)->found = window;
    return !isDisplay;
}

HWND displayWindow() {
    Search search = {nullptr};
    EnumWindows(findDisplay, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

static void CALLBACK onTick(HWND window, UINT, UINT_PTR id, DWORD) {
    std::shared_ptr<Request> request;
    {
        std::lock_guard<std::mutex> guard(lock);
        request = current;
    }
    if (request && !request->tick()) return;
    KillTimer(window, id);
    if (request) SetEvent(request->done);
}

static void setCurrent(std::shared_ptr<Request> request) {
    std::lock_guard<std::mutex> guard(lock);
    current = std::move(request);
}

// The rest event ends it too when it is given.
static bool runTicks(std::function<bool()> tick, DWORD milliseconds, HANDLE rests = nullptr) {
    HWND window = displayWindow();
    if (!window) return false;
    auto request = std::make_shared<Request>();
    request->tick = std::move(tick);
    setCurrent(request);
    HANDLE thread = OpenThread(SYNCHRONIZE, FALSE, GetWindowThreadProcessId(window, nullptr));
    bool done = false;
    if (SetTimer(window, timer, USER_TIMER_MINIMUM, onTick)) {
        const HANDLE ends[] = {request->done, thread, rests};
        DWORD end = WaitForMultipleObjects(rests ? 3 : 2, ends, FALSE, milliseconds);
        done = end == WAIT_OBJECT_0 || end == WAIT_OBJECT_0 + 2;
    }
    if (thread) CloseHandle(thread);
    setCurrent(nullptr);
    return done;
}

static BOOL CALLBACK findDialog(HWND window, LPARAM lParam) {
    bool isDialog = IsWindowVisible(window) && isOfClass(window, L"#32770");
    if (isDialog) *reinterpret_cast<bool*>(lParam) = true;
    return !isDialog;
}

// Whether a loop of the system's own runs, which does none of the application's tasks.
static bool isInSystemLoop() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    constexpr DWORD modes =
        GUI_INMENUMODE | GUI_INMOVESIZE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE;
    if (GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & modes)) return true;
    bool hasDialog = false;
    EnumThreadWindows(GetCurrentThreadId(), findDialog, reinterpret_cast<LPARAM>(&hasDialog));
    return hasDialog;
}

// Between two ticks the application's loop has gone to sleep, or it never does; or it waits for a
// time of a clock that stands, and gets no tick.
bool awaitIdle(DWORD milliseconds) {
    constexpr int ticksOfPatience = 8;
    int ticks = 0;
    LONG before = 0;
    return runTicks(
        [ticks, before]() mutable {
            LONG waits = Emulator_CountWaits();
            bool hasSlept = ticks && waits != before;
            before = waits;
            return ++ticks > 1 && (hasSlept || isInSystemLoop() || ticks > ticksOfPatience);
        },
        milliseconds, Emulator_GetRestEvent());
}

bool doWhenIdle(const std::function<void()>& work, DWORD milliseconds) {
    return runTicks(
        [work] {
            work();
            return true;
        },
        milliseconds);
}
