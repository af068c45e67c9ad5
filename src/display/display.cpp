#include "display/display.h"
#include "bridge/leaf_lock.h"
#include "bridge/library.h"
#include "bridge/memory.h"
#include "control/control.h"
#include "control/shell.h"
#include "display/accelerators.h"
#include "display/message.h"
#include "display/requests.h"
#include "graphics/font.h"
#include "menu/menu.h"

static constexpr LRESULT noAction = 1;

static DisplayRecord* displayOf(HWND window) {
    return reinterpret_cast<DisplayRecord*>(GetWindowLongW(window, GWL_USERDATA));
}

static LRESULT createShell(HWND window, Message message) {
    auto* request = message.details<const ShellRequest>();
    DisplayRecord* display = displayOf(window);
    return reinterpret_cast<LRESULT>(
        Shell_Create(display, request->parent, message.wParam, request->error));
}

static LRESULT createControl(Message message) {
    return reinterpret_cast<LRESULT>(
        Control_Create(message.record<ControlRecord>(), *message.details<const ControlRequest>()));
}

static LRESULT createMenu(MenuRecord* (*create)(ControlRecord*, ErrorRecord*), Message message) {
    return reinterpret_cast<LRESULT>(create(message.record<ControlRecord>(), message.error()));
}

static LRESULT setFocus(HWND window) {
    SetFocus(window);
    return 1;
}

// A widget that is being disposed of has no listener any more, and gets none.
static CallbackTarget* swapCallbackTarget(WidgetRecord* widget, CallbackTarget* target) {
    if (Widget_IsEnding(widget)) return target;
    CallbackTarget* previous = widget->callbackTarget;
    widget->callbackTarget = target;
    return previous;
}

namespace {

struct DisplayWorkRequest {
    DisplayWork work;
    void* context;
    bool done;
    LRESULT result;
};

} // namespace

static LRESULT run(DisplayWorkRequest* request) {
    if (!request) return noAction;
    request->result = request->work(request->context);
    request->done = true;
    return noAction;
}

static LRESULT handle(HWND window, Message message) {
    if (message.id < WM_USER) return callSystem(window, message);
    switch (message.id) {
    case requestCreateShell:
        return createShell(window, message);
    case requestCreateControl:
        return createControl(message);
    case requestDestroyWindow:
        return DestroyWindow(message.window());
    case requestSetFocus:
        return setFocus(message.window());
    case requestCreateMenuBar:
        return createMenu(MenuBar_Create, message);
    case requestCreatePopupMenu:
        return createMenu(PopupMenu_Create, message);
    case requestSwapCallbackTarget:
        return reinterpret_cast<LRESULT>(
            swapCallbackTarget(message.record<WidgetRecord>(), message.details<CallbackTarget>()));
    case requestRun:
        return run(message.record<DisplayWorkRequest>());
    default:
        return noAction;
    }
}

static LRESULT CALLBACK messageWindowProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return handle(window, {id, wParam, lParam});
}

static void forgetCommandItems(DisplayRecord* display) {
    MenuItemRecord** items = display->commandItems;
    {
        LeafLock lock;
        display->commandItems = nullptr;
        display->commandItemCapacity = 0;
    }
    freeBlock(items);
}

static LRESULT end(DisplayRecord* display) {
    HWND messageWindow = display->messageWindow;
    FontRecord* systemFont = display->systemFont;
    display->messageWindow = nullptr;
    display->systemFont = nullptr;
    display->callbackLookup = nullptr;
    Font_Dispose(systemFont, nullptr);
    DestroyWindow(messageWindow);
    // Quirk: a display that ends while another still uses the class leaves its command table
    // allocated. Pinned by
    // DisplayTest.that_ends_beside_another_leaves_its_table_of_commands_behind.
    if (UnregisterClassW(displayWindowClass, display->instance)) forgetCommandItems(display);
    return 0;
}

static void disposeDisplay(DeviceRecord* device, ErrorRecord*) {
    auto* display = reinterpret_cast<DisplayRecord*>(device);
    Display_Run(display, [=] { return end(display); });
    Display_Release(display);
}

// The result is not looked at: an earlier display may have left the class registered.
static void registerWindowClass(HCURSOR cursor) {
    WNDCLASSW windowClass = {};
    windowClass.style = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS;
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = Library_GetInstance();
    windowClass.hCursor = cursor;
    windowClass.lpszClassName = displayWindowClass;
    RegisterClassW(&windowClass);
}

static HWND createMessageWindow(ErrorRecord* error) {
    HWND window = CreateWindowExW(0, displayWindowClass, nullptr, WS_CAPTION, 0, 0, 0, 0, nullptr,
                                  nullptr, Library_GetInstance(), nullptr);
    if (!window) Win32Error_SetLast(error, L"Unable to create message/creation window");
    return window;
}

static void attachMessageWindow(DisplayRecord* display, HWND window) {
    SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(messageWindowProc));
    SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG>(display));
    display->messageWindow = window;
    display->threadId = currentThreadId();
    display->processId = currentProcessId();
    display->instance = Library_GetInstance();
}

DisplayRecord* Display_New(ErrorRecord* error) {
    WNDCLASSW staticClass;
    if (!GetClassInfoW(nullptr, L"STATIC", &staticClass)) {
        Win32Error_SetLast(error, L"Unable get \"STATIC\" class data");
        return nullptr;
    }
    registerWindowClass(staticClass.hCursor);
    Block<DisplayRecord> display(allocate<DisplayRecord>());
    if (!display) {
        Win32Error_SetError(error, ERROR_NOT_ENOUGH_MEMORY,
                            L"Unable to create message/creation window");
        return nullptr;
    }
    display->device.dispose = disposeDisplay;
    display->owners = 1;
    HWND window = createMessageWindow(error);
    if (!window) return nullptr;
    attachMessageWindow(display, window);
    return display.release();
}

bool Display_ReadAndDispatch(DisplayRecord*, ErrorRecord*) {
    MSG message;
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return false;
    if (Accelerators_Translate(&message)) return true;
    TranslateMessage(&message);
    DispatchMessageW(&message);
    return true;
}

DWORD Display_Sleep(DisplayRecord*, ErrorRecord*) {
    constexpr DWORD anyInput = 0x7F; // the device's QS_ALLINPUT, without the desktop's later bits
    return MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, anyInput, MWMO_INPUTAVAILABLE);
}

jint Display_Wake(DisplayRecord* display, ErrorRecord*) {
    return PostMessageW(display->messageWindow, WM_NULL, 0, 0);
}

namespace {

// What a library's DllGetVersion fills.
struct LibraryVersion {
    DWORD size;
    DWORD major;
    DWORD minor;
    DWORD build;
    DWORD platform;
};

} // namespace

static bool readVersion(HMODULE library, LibraryVersion* version) {
    using GetVersion = HRESULT(CALLBACK*)(LibraryVersion*);
    auto* address = reinterpret_cast<void*>(GetProcAddressW(library, L"DllGetVersion"));
    auto getVersion = reinterpret_cast<GetVersion>(address);
    if (!getVersion) return false;
    *version = {};
    version->size = sizeof(LibraryVersion);
    return getVersion(version) == S_OK;
}

extern "C" DWORD _Display_GetComCtrlMajorVersion(DisplayRecord* display, ErrorRecord* error) {
    if (display->comctlMajorVersion) return display->comctlMajorVersion;
    HMODULE library = LoadLibraryW(L"comctl32.dll");
    if (!library) {
        Win32Error_SetError(error, errorFailed, L"Failed to load comctl32.dll");
        return 0;
    }
    LibraryVersion version;
    if (readVersion(library, &version)) {
        display->comctlMajorVersion = version.major;
        display->comctlMinorVersion = version.minor;
    } else {
        Win32Error_SetLast(error, L"Unable to get comctrl version");
    }
    FreeLibrary(library);
    return display->comctlMajorVersion;
}

LRESULT Display_RunWork(DisplayRecord* display, DisplayWork work, void* context) {
    if (!display->messageWindow || Display_IsCurrentThread(display)) return work(context);
    DisplayWorkRequest request = {work, context, false, 0};
    ask(display->messageWindow, requestRun, &request);
    // The display may have ended meanwhile, or its thread.
    return request.done ? request.result : work(context);
}

void Display_Retain(DisplayRecord* display) {
    LeafLock lock;
    ++display->owners;
}

static bool isReleasedByLast(DisplayRecord* display) {
    LeafLock lock;
    return --display->owners == 0;
}

// A control may have asked for the font when the display had ended.
void Display_Release(DisplayRecord* display) {
    if (!isReleasedByLast(display)) return;
    Font_Dispose(display->systemFont, nullptr);
    freeBlock(display);
}

static BOOL destroyWithoutDisplay(const DisplayRecord* display, HWND window) {
    if (Display_IsCurrentThread(display)) return DestroyWindow(window);
    return ask(window, requestDestroyItself);
}

BOOL Display_DestroyWindow(DisplayRecord* display, HWND window) {
    if (!display->messageWindow) return destroyWithoutDisplay(display, window);
    return ask(display->messageWindow, requestDestroyWindow, window);
}

CallbackTarget* Widget_SwapCallbackTarget(WidgetRecord* widget, CallbackTarget* target) {
    if (!widget->display->messageWindow) return swapCallbackTarget(widget, target);
    return reinterpret_cast<CallbackTarget*>(
        ask(widget->display->messageWindow, requestSwapCallbackTarget, widget, target));
}
