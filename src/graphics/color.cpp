#include "graphics/color.h"
#include "bridge/memory.h"

static bool isComponent(jint value) { return value >= 0 && value <= 255; }

ColorRecord* Color_New(DeviceRecord*, jint red, jint green, jint blue, ErrorRecord* error) {
    if (!isComponent(red) || !isComponent(green) || !isComponent(blue)) {
        Win32Error_SetError(error, errorFailed, L"Invalid color component range");
        return nullptr;
    }
    auto* color = allocate<ColorRecord>();
    if (!color) {
        Win32Error_SetError(error, errorOutOfMemory, L"Not enough memory to allocate color");
        return nullptr;
    }
    color->color = RGB(red, green, blue);
    return color;
}

void Color_Dispose(ColorRecord* color, ErrorRecord*) {
    if (color->brush) DeleteObject(color->brush);
    freeBlock(color);
}

jint Color_GetRed(ColorRecord* color, ErrorRecord*) { return GetRValue(color->color); }

jint Color_GetGreen(ColorRecord* color, ErrorRecord*) { return GetGValue(color->color); }

jint Color_GetBlue(ColorRecord* color, ErrorRecord*) { return GetBValue(color->color); }

HBRUSH Color_GetBrush(ColorRecord* color) {
    if (!color->brush) color->brush = CreateSolidBrush(color->color);
    return color->brush;
}
