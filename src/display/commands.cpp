#include "display/commands.h"
#include "bridge/leaf_lock.h"
#include "bridge/memory.h"
#include "display/display.h"

static constexpr LONG firstCommandId = 108;
static constexpr LONG growth = 32;

static LONG findFreeSlot(const DisplayRecord* display) {
    LONG slot = 0;
    while (slot < display->commandItemCapacity && display->commandItems[slot]) ++slot;
    return slot;
}

static bool grow(DisplayRecord* display) {
    LONG capacity = display->commandItemCapacity;
    auto** items = allocateArray<MenuItemRecord*>(capacity + growth);
    if (!items) return false;
    if (capacity) memcpy(items, display->commandItems, capacity * sizeof(*items));
    freeBlock(display->commandItems);
    display->commandItems = items;
    display->commandItemCapacity = capacity + growth;
    return true;
}

static MenuItemRecord** slotOf(const DisplayRecord* display, LONG id) {
    LONG slot = id - firstCommandId;
    if (slot < 0 || slot >= display->commandItemCapacity) return nullptr;
    return &display->commandItems[slot];
}

LONG Display_AssignCommandId(DisplayRecord* display, MenuItemRecord* item) {
    LeafLock lock;
    if (!display->messageWindow) return 0;
    LONG slot = findFreeSlot(display);
    if (slot == display->commandItemCapacity && !grow(display)) return 0;
    display->commandItems[slot] = item;
    return slot + firstCommandId;
}

MenuItemRecord* Display_FindCommandItem(const DisplayRecord* display, LONG id) {
    LeafLock lock;
    MenuItemRecord** slot = slotOf(display, id);
    return slot ? *slot : nullptr;
}

void Display_ReleaseCommandId(DisplayRecord* display, LONG id) {
    LeafLock lock;
    if (MenuItemRecord** slot = slotOf(display, id)) *slot = nullptr;
}

MenuItemRecord* Display_NextCommandItem(const DisplayRecord* display, LONG* id) {
    LeafLock lock;
    if (*id < firstCommandId) *id = firstCommandId;
    MenuItemRecord** slot = slotOf(display, *id);
    while (slot && !*slot) slot = slotOf(display, ++*id);
    return slot ? *slot : nullptr;
}
