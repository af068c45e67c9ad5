#include "display/accelerators.h"
#include "bridge/memory.h"
#include "control/shell.h"
#include "display/display.h"
#include "display/keys.h"
#include "display/message.h"
#include "display/shells.h"

static constexpr LONG firstCapacity = 10;
static constexpr LONG growth = 5;

static bool reserve(ShellAccelerators* accelerators, LONG capacity) {
    auto* entries = allocateArray<ACCEL>(capacity);
    if (!entries) return false;
    if (accelerators->entries)
        memcpy(entries, accelerators->entries, accelerators->count * sizeof(*entries));
    freeBlock(accelerators->entries);
    accelerators->entries = entries;
    accelerators->capacity = capacity;
    return true;
}

// Makes room for one entry more.
static bool makeRoom(ShellAccelerators* accelerators, ErrorRecord* error) {
    if (!accelerators->entries) {
        if (reserve(accelerators, firstCapacity)) return true;
        Win32Error_SetError(error, errorOutOfMemory,
                            L"Not enough space to create accelerator table");
        return false;
    }
    if (accelerators->count < accelerators->capacity) return true;
    if (reserve(accelerators, accelerators->capacity + growth)) return true;
    Win32Error_SetError(error, errorOutOfMemory, L"Not enough space to grow accelerator table");
    return false;
}

static ACCEL* find(const ShellAccelerators* accelerators, WORD command) {
    for (LONG i = 0; i < accelerators->count; ++i)
        if (accelerators->entries[i].cmd == command) return &accelerators->entries[i];
    return nullptr;
}

void Accelerators_Set(ShellAccelerators* accelerators, const ACCEL& entry, ErrorRecord* error) {
    ACCEL* existing = find(accelerators, entry.cmd);
    if (existing)
        *existing = entry;
    else if (makeRoom(accelerators, error))
        accelerators->entries[accelerators->count++] = entry;
    Accelerators_DropTable(accelerators);
}

void Accelerators_Remove(ShellAccelerators* accelerators, WORD command) {
    LONG kept = 0;
    for (LONG i = 0; i < accelerators->count; ++i)
        if (accelerators->entries[i].cmd != command)
            accelerators->entries[kept++] = accelerators->entries[i];
    if (kept == accelerators->count) return;
    accelerators->count = kept;
    Accelerators_DropTable(accelerators);
}

void Accelerators_RemoveAll(const DisplayRecord* display, WORD command) {
    for (ShellRecord* shell = display->shells; shell; shell = *Shell_GetNext(shell))
        Accelerators_Remove(Shell_GetAccelerators(shell), command);
}

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

void Accelerators_Free(ShellAccelerators* accelerators) {
    freeBlock(accelerators->entries);
    accelerators->entries = nullptr;
    accelerators->count = 0;
    accelerators->capacity = 0;
    Accelerators_DropTable(accelerators);
}

ShellAccelerators* Accelerators_Above(HWND window) {
    ShellRecord* shell = Shell_Find(topLevelWindow(window));
    return shell ? Shell_GetAccelerators(shell) : nullptr;
}

static const ACCEL* findShifted(const ShellAccelerators& accelerators, WPARAM key) {
    for (LONG i = 0; i < accelerators.count; ++i) {
        const ACCEL& entry = accelerators.entries[i];
        if (entry.key == key && (entry.fVirt & FSHIFT)) return &entry;
    }
    return nullptr;
}

// The system does not match Ctrl+Shift accelerators.
static bool dispatchControlShift(const ShellAccelerators& accelerators, const MSG& message) {
    if (message.message != WM_KEYDOWN || !accelerators.shiftDown) return false;
    if (message.wParam == VK_SHIFT || message.wParam == VK_CONTROL) return false;
    if (!Key_IsDown(VK_CONTROL)) return false;
    const ACCEL* entry = findShifted(accelerators, message.wParam);
    if (!entry) return false;
    constexpr WORD fromAccelerator = 1;
    ask(message.hwnd, WM_COMMAND, MAKEWPARAM(entry->cmd, fromAccelerator));
    return true;
}

static bool isKey(const MSG& message) {
    return message.message == WM_KEYDOWN || message.message == WM_KEYUP ||
           message.message == WM_SYSKEYDOWN || message.message == WM_SYSKEYUP;
}

bool Accelerators_Translate(MSG* message) {
    if (message->message < WM_KEYFIRST || message->message > WM_KEYLAST) return false;
    ShellAccelerators* accelerators = Accelerators_Above(message->hwnd);
    if (!accelerators) return false;
    HACCEL table = Accelerators_GetTable(accelerators);
    if (!table) return false;

    if (isKey(*message) && message->wParam == VK_SHIFT)
        accelerators->shiftDown = message->message == WM_KEYDOWN;
    if (dispatchControlShift(*accelerators, *message)) return true;
    return TranslateAcceleratorW(topLevelWindow(message->hwnd), table, message) != 0;
}
