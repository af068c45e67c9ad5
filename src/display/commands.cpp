#include "display/commands.h"
#include "display/display.h"

static constexpr LONG firstCommandId = 108;

MenuItemRecord* Display_FindCommandItem(const DisplayRecord* display, LONG id) {
    LONG slot = id - firstCommandId;
    if (slot < 0 || slot >= display->commandItemCapacity) return nullptr;
    return display->commandItems[slot];
}
