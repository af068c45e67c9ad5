#include "graphics/device.h"

void Device_Dispose(DeviceRecord* device, ErrorRecord* error) {
    if (device->dispose) device->dispose(device, error);
}

Bounds Device_GetBounds(DeviceRecord*, ErrorRecord*) {
    HDC screen = GetDC(nullptr);
    Bounds bounds = {0, 0, GetDeviceCaps(screen, HORZRES), GetDeviceCaps(screen, VERTRES)};
    ReleaseDC(nullptr, screen);
    return bounds;
}
