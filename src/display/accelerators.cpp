#include "display/accelerators.h"

HACCEL Accelerators_GetTable(ShellAccelerators* accelerators) {
    if (!accelerators->table && accelerators->count != 0)
        accelerators->table = CreateAcceleratorTableW(accelerators->entries, accelerators->count);
    return accelerators->table;
}

void Accelerators_DropTable(ShellAccelerators* accelerators) {
    if (!accelerators->table) return;
    DestroyAcceleratorTable(accelerators->table);
    accelerators->table = nullptr;
}

static HWND topLevelOf(HWND window) {
    while (window && (GetWindowLongW(window, GWL_STYLE) & WS_CHILD)) window = GetParent(window);
    return window;
}

static const ACCEL* findShifted(const ShellAccelerators& accelerators, WPARAM key) {
    for (LONG i = 0; i < accelerators.count; ++i) {
        const ACCEL& entry = accelerators.entries[i];
        if (entry.key == key && (entry.fVirt & FSHIFT)) return &entry;
    }
    return nullptr;
}

// Ctrl+Shift accelerators are dispatched by hand on purpose: the system does not match them.
static bool dispatchControlShift(const ShellAccelerators& accelerators, const MSG& message) {
    if (message.message != WM_KEYDOWN || !accelerators.shiftDown) return false;
    if (message.wParam == VK_SHIFT || message.wParam == VK_CONTROL) return false;
    if (GetKeyState(VK_CONTROL) >= 0) return false;
    const ACCEL* entry = findShifted(accelerators, message.wParam);
    if (!entry) return false;
    constexpr WORD fromAccelerator = 1;
    SendMessageW(message.hwnd, WM_COMMAND, MAKEWPARAM(entry->cmd, fromAccelerator), 0);
    return true;
}

bool Accelerators_Translate(MSG* message) {
    if (message->message < WM_KEYFIRST || message->message > WM_KEYLAST) return false;
    HWND window = topLevelOf(message->hwnd);
    if (!window) return false;
    auto* shell = reinterpret_cast<ShellRecord*>(GetWindowLongW(window, GWL_USERDATA));
    if (!shell) return false;
    ShellAccelerators* accelerators = Shell_GetAccelerators(shell);
    HACCEL table = Accelerators_GetTable(accelerators);
    if (!table) return false;

    if (message->wParam == VK_SHIFT) accelerators->shiftDown = message->message == WM_KEYDOWN;
    if (dispatchControlShift(*accelerators, *message)) return true;
    return TranslateAcceleratorW(window, table, message) != 0;
}
