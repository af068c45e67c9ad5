#include "display/shells.h"
#include "bridge/leaf_lock.h"
#include "bridge/links.h"
#include "bridge/memory.h"
#include "control/shell.h"
#include "display/display.h"

HWND topLevelWindow(HWND window) {
    while (window && (GetWindowLongW(window, GWL_STYLE) & WS_CHILD)) window = GetParent(window);
    return window;
}

static ShellNode* find(ShellNode* list, const ShellRecord* shell) {
    while (list && list->shell != shell) list = list->next;
    return list;
}

static bool add(ShellNode** list, ShellRecord* shell) {
    if (find(*list, shell)) return true;
    auto* node = allocate<ShellNode>();
    if (!node) return false;
    *node = {shell, *list, 0};
    *list = node;
    return true;
}

static bool remove(ShellNode** list, const ShellRecord* shell) {
    ShellNode* node = find(*list, shell);
    if (!node) return false;
    takeOut<&ShellNode::next>(list, node);
    freeBlock(node);
    return true;
}

static bool isInside(const ShellRecord* shell, const ShellRecord* outer) {
    for (; shell; shell = Shell_GetParent(shell))
        if (shell == outer) return true;
    return false;
}

static bool hasDialog(const DisplayRecord* display, const ShellRecord* shell) {
    for (const OpenDialog* dialog = display->dialogs; dialog; dialog = dialog->outerDialog())
        if (dialog->isOver(shell)) return true;
    return false;
}

static bool mayBeEnabled(const DisplayRecord* display, const ShellRecord* shell) {
    if (hasDialog(display, shell)) return false;
    return !display->modalShells || isInside(shell, display->modalShells->shell);
}

namespace {

struct EnabledState {
    HWND window;
    bool enabled;
};

} // namespace

static LONG beginWalk(DisplayRecord* display) {
    LeafLock lock;
    return ++display->modalityWalk;
}

// The next shell that the walk has not come by. False when there is none, and when a listener has
// begun a later walk, which has done the rest.
static bool takeStep(DisplayRecord* display, LONG walk, EnabledState* next) {
    LeafLock lock;
    if (display->modalityWalk != walk) return false;
    ShellNode* node = display->listedShells;
    while (node && node->modalityWalk == walk) node = node->next;
    if (!node) return false;
    node->modalityWalk = walk;
    *next = {Shell_GetWindow(node->shell), mayBeEnabled(display, node->shell)};
    return true;
}

void Display_ApplyModality(DisplayRecord* display) {
    Display_Retain(display);
    LONG walk = beginWalk(display);
    EnabledState next;
    while (takeStep(display, walk, &next)) EnableWindow(next.window, next.enabled);
    Display_Release(display);
}

void Display_RememberShell(DisplayRecord* display, ShellRecord* shell) {
    LeafLock lock;
    *Shell_GetNext(shell) = display->shells;
    display->shells = shell;
}

bool Display_ForgetShell(DisplayRecord* display, ShellRecord* shell) {
    LeafLock lock;
    takeOut<&ShellRecord::next>(&display->shells, shell);
    remove(&display->listedShells, shell);
    return remove(&display->modalShells, shell);
}

ShellRecord* Display_FindShell(const DisplayRecord* display, HWND window) {
    LeafLock lock;
    ShellRecord* shell = display->shells;
    while (shell && Shell_GetWindow(shell) != window) shell = *Shell_GetNext(shell);
    return shell;
}

// A shell that cannot be listed is kept from its place beside a modal one all the same.
void Display_ListShell(DisplayRecord* display, ShellRecord* shell, ErrorRecord* error) {
    HWND window = Shell_GetWindow(shell);
    if (!IsWindowEnabled(window)) return;
    bool listed, mayStay;
    {
        LeafLock lock;
        listed = add(&display->listedShells, shell);
        mayStay = mayBeEnabled(display, shell);
    }
    if (!listed) Win32Error_SetError(error, errorFailed, L"Could not add control to control list");
    if (!mayStay) EnableWindow(window, FALSE);
}

static bool endModality(DisplayRecord* display, const ShellRecord* shell) {
    LeafLock lock;
    return remove(&display->modalShells, shell);
}

bool Display_UnlistShell(DisplayRecord* display, ShellRecord* shell) {
    if (endModality(display, shell)) Display_ApplyModality(display);
    LeafLock lock;
    return remove(&display->listedShells, shell);
}

bool Display_SetShellListed(DisplayRecord* display, ShellRecord* shell, bool listed) {
    LeafLock lock;
    if (listed)
        add(&display->listedShells, shell);
    else
        remove(&display->listedShells, shell);
    return !mayBeEnabled(display, shell);
}

bool Display_IsListed(const DisplayRecord* display, const ShellRecord* shell) {
    LeafLock lock;
    return find(display->listedShells, shell);
}

static bool isListedWindow(const DisplayRecord* display, HWND window) {
    const ShellNode* node = display->listedShells;
    while (node && Shell_GetWindow(node->shell) != window) node = node->next;
    return node != nullptr;
}

OpenDialog::OpenDialog(DisplayRecord* itsDisplay, HWND owner)
    : display(itsDisplay), window(topLevelWindow(owner)) {
    Display_Retain(display);
    LeafLock lock;
    wasListed = isListedWindow(display, window);
    outer = display->dialogs;
    display->dialogs = this;
}

OpenDialog::~OpenDialog() {
    bool isListed;
    {
        LeafLock lock;
        takeOut<&OpenDialog::outer>(&display->dialogs, this);
        isListed = isListedWindow(display, window);
    }
    if (wasListed && !isListed) EnableWindow(window, FALSE);
    Display_ApplyModality(display);
    Display_Release(display);
}

bool OpenDialog::isOver(const ShellRecord* shell) const { return window == Shell_GetWindow(shell); }

extern "C" void Display_UpdateModalShellVisibility(DisplayRecord* display, ShellRecord* shell,
                                                   BOOL modal) {
    {
        LeafLock lock;
        if (modal)
            add(&display->modalShells, shell);
        else
            remove(&display->modalShells, shell);
    }
    Display_ApplyModality(display);
}
