#include "display/shells.h"
#include "bridge/memory.h"
#include "display/display.h"

static bool contains(const ShellNode* list, const ShellRecord* shell) {
    for (; list; list = list->next)
        if (list->shell == shell) return true;
    return false;
}

static bool add(ShellNode** list, ShellRecord* shell) {
    if (contains(*list, shell)) return true;
    auto* node = allocate<ShellNode>();
    if (!node) return false;
    *node = {shell, *list};
    *list = node;
    return true;
}

static bool remove(ShellNode** list, const ShellRecord* shell) {
    for (; *list; list = &(*list)->next) {
        if ((*list)->shell != shell) continue;
        ShellNode* found = *list;
        *list = found->next;
        freeBlock(found);
        return true;
    }
    return false;
}

static bool isInside(const ShellRecord* shell, const ShellRecord* outer) {
    for (; shell; shell = Shell_GetParent(shell))
        if (shell == outer) return true;
    return false;
}

static bool mayBeEnabled(const DisplayRecord* display, const ShellRecord* shell) {
    return !display->modalShells || isInside(shell, display->modalShells->shell);
}

static void applyModality(const DisplayRecord* display) {
    for (const ShellNode* node = display->controlList; node; node = node->next)
        EnableWindow(Shell_GetWindow(node->shell), mayBeEnabled(display, node->shell));
}

void Display_AddControl(DisplayRecord* display, ShellRecord* shell, ErrorRecord* error) {
    HWND window = Shell_GetWindow(shell);
    if (!IsWindowEnabled(window)) return;
    if (!add(&display->controlList, shell)) {
        Win32Error_SetError(error, errorFailed, L"Could not add control to control list");
        return;
    }
    if (!mayBeEnabled(display, shell)) EnableWindow(window, FALSE);
}

bool Display_RemoveControl(DisplayRecord* display, ShellRecord* shell) {
    if (remove(&display->modalShells, shell)) applyModality(display);
    return remove(&display->controlList, shell);
}

bool Display_SetControlEnabled(DisplayRecord* display, ShellRecord* shell, bool enabled) {
    if (enabled)
        add(&display->controlList, shell);
    else
        remove(&display->controlList, shell);
    return !mayBeEnabled(display, shell);
}

bool Display_IsListed(const DisplayRecord* display, const ShellRecord* shell) {
    return contains(display->controlList, shell);
}

extern "C" void Display_UpdateModalShellVisibility(DisplayRecord* display, ShellRecord* shell,
                                                   BOOL modal) {
    if (modal)
        add(&display->modalShells, shell);
    else
        remove(&display->modalShells, shell);
    applyModality(display);
}
