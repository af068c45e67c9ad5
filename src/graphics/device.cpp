#include "graphics/device.h"
#include "bridge/arithmetic.h"
#include "graphics/gdi_guards.h"

static constexpr jint deepestPalette = 8; // bits per pixel
static constexpr int paletteEntries = 1 << deepestPalette;

void Device_Dispose(DeviceRecord* device, ErrorRecord* error) {
    if (device->dispose) device->dispose(device, error);
}

static jint depthOf(HDC screen) {
    return GetDeviceCaps(screen, BITSPIXEL) * GetDeviceCaps(screen, PLANES);
}

Bounds Device_GetBounds(DeviceRecord*, ErrorRecord*) {
    WindowContext screen(nullptr);
    return {0, 0, GetDeviceCaps(screen, HORZRES), GetDeviceCaps(screen, VERTRES)};
}

PixelPair Device_GetDPI(DeviceRecord*, ErrorRecord*) {
    WindowContext screen(nullptr);
    return {GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
}

jint Device_GetDepth(DeviceRecord*, ErrorRecord*) {
    WindowContext screen(nullptr);
    return depthOf(screen);
}

bool Device_IsDirect(DeviceRecord* device, ErrorRecord* error) {
    return Device_GetDepth(device, error) > deepestPalette;
}

static void noScreenContext(ErrorRecord* error) {
    Win32Error_SetLast(error, L"Cannot get DC for handle");
}

ColorMasks Device_GetDirectPaletteMasks(DeviceRecord*, ErrorRecord* error) {
    WindowContext screen(nullptr);
    if (!screen) {
        noScreenContext(error);
        return {};
    }
    switch (depthOf(screen)) {
    case 16:
        return {0xF800, 0x07E0, 0x001F, 0};
    case 24:
        return {0xFF0000, 0x00FF00, 0x0000FF, 0};
    case 32:
        return {0xFF0000, 0x00FF00, 0x0000FF, static_cast<jint>(0xFF000000)};
    default:
        return {};
    }
}

void Device_GetIndexedPalette(DeviceRecord*, ByteArguments reds, ByteArguments greens,
                              ByteArguments blues, ErrorRecord* error) {
    WindowContext screen(nullptr);
    if (!screen) {
        noScreenContext(error);
        return;
    }
    jint depth = depthOf(screen);
    PALETTEENTRY entries[paletteEntries];
    UINT count = depth <= deepestPalette ? 1u << depth : 0;
    if (!count || !GetSystemPaletteEntries(screen, 0, count, entries)) {
        Win32Error_SetError(error, errorFailed, L"Unable to retrieve system palette entries");
        return;
    }
    jint room = lesser(lesser(reds.count, greens.count), lesser(blues.count, count));
    for (jint i = 0; i < room; ++i) {
        reds.values[i] = static_cast<jbyte>(entries[i].peRed);
        greens.values[i] = static_cast<jbyte>(entries[i].peGreen);
        blues.values[i] = static_cast<jbyte>(entries[i].peBlue);
    }
}

void Device_CopyArea(DeviceRecord*, GraphicsRecord*, jint, jint, jint, jint, ErrorRecord* error) {
    Error_SetCode(error, errorNotSupported);
}

jint Device_GetAvailableAcceleratedMemory(DeviceRecord*, ErrorRecord*) { return 0; }
