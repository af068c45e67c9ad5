#pragma once
// Devices: the screen's properties. Any thread.

#include "bridge/error.h"
#include "bridge/native.h"
#include "ce.h"

struct DeviceRecord;

using DeviceDispose = void (*)(DeviceRecord* device, ErrorRecord* error);

// The head of every device record. A display is one.
struct DeviceRecord {
    DeviceDispose dispose; // null: nothing to end. Ends the device and frees its record.
};

void Device_Dispose(DeviceRecord* device, ErrorRecord* error);

// The screen: 0, 0, width, height in pixels.
Bounds Device_GetBounds(DeviceRecord* device, ErrorRecord* error);
