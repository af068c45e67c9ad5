#include "graphics/color.h"
#include "bridge/leaf_lock.h"
#include "bridge/memory.h"

namespace {

struct OwnedColor : ColorRecord {
    LONG owners;
    OwnedColor* next;
};

} // namespace

static OwnedColor* firstColor; // of all

static bool isComponent(jint value) { return value >= 0 && value <= 255; }

ColorRecord* Color_New(DeviceRecord*, jint red, jint green, jint blue, ErrorRecord* error) {
    if (!isComponent(red) || !isComponent(green) || !isComponent(blue)) {
        Win32Error_SetError(error, errorFailed, L"Invalid color component range");
        return nullptr;
    }
    auto* color = allocate<OwnedColor>();
    if (!color) {
        Win32Error_SetError(error, errorOutOfMemory, L"Not enough memory to allocate color");
        return nullptr;
    }
    color->color = RGB(red, green, blue);
    color->owners = 1;
    LeafLock lock;
    color->next = firstColor;
    firstColor = color;
    return color;
}

// The link that leads to the colour; the one at the end for a record of somebody else's.
static OwnedColor** linkTo(const ColorRecord* color) {
    OwnedColor** link = &firstColor;
    while (*link && *link != color) link = &(*link)->next;
    return link;
}

static bool isLeftByLast(const ColorRecord* color) {
    LeafLock lock;
    OwnedColor** link = linkTo(color);
    OwnedColor* owned = *link;
    if (!owned || --owned->owners) return false;
    *link = owned->next;
    return true;
}

static void leave(ColorRecord* color) {
    if (!color || !isLeftByLast(color)) return;
    if (color->brush) DeleteObject(color->brush);
    freeBlock(color);
}

static ColorRecord* exchange(ColorRecord** field, ColorRecord* color) {
    LeafLock lock;
    if (OwnedColor* owned = *linkTo(color)) ++owned->owners;
    ColorRecord* previous = *field;
    *field = color;
    return previous;
}

void Color_Wear(ColorRecord** field, ColorRecord* color) { leave(exchange(field, color)); }

void Color_Dispose(ColorRecord* color, ErrorRecord*) { leave(color); }

bool Color_Read(ColorRecord* const* field, COLORREF* color) {
    LeafLock lock;
    if (*field) *color = (*field)->color;
    return *field != nullptr;
}

jint Color_GetRed(ColorRecord* color, ErrorRecord*) { return GetRValue(color->color); }

jint Color_GetGreen(ColorRecord* color, ErrorRecord*) { return GetGValue(color->color); }

jint Color_GetBlue(ColorRecord* color, ErrorRecord*) { return GetBValue(color->color); }

HBRUSH Color_GetBrush(ColorRecord* color) {
    LeafLock lock;
    if (!color->brush) color->brush = CreateSolidBrush(color->color);
    return color->brush;
}
