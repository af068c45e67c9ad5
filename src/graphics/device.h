#pragma once
// Devices: the screen's properties. Any thread.

#include "bridge/error.h"
#include "bridge/handles.h"
#include "bridge/values.h"
#include "ce.h"

struct DeviceRecord;
struct GraphicsRecord;

using DeviceDispose = void (*)(DeviceRecord* device, ErrorRecord* error);

// The head of every device record. A display is one.
struct DeviceRecord {
    DeviceDispose dispose; // null: nothing to end. Ends the device and frees its record.
};

void Device_Dispose(DeviceRecord* device, ErrorRecord* error);

// The screen: 0, 0, width, height in pixels.
Bounds Device_GetBounds(OrNone<DeviceRecord> device, ErrorRecord* error);

// Pixels per inch, across and down.
PixelPair Device_GetDPI(DeviceRecord* device, ErrorRecord* error);

// Bits per pixel.
jint Device_GetDepth(DeviceRecord* device, ErrorRecord* error);

// Whether pixels hold colours and not palette indices.
bool Device_IsDirect(DeviceRecord* device, ErrorRecord* error);

// Where a pixel holds each component; all 0 for a depth without them.
ColorMasks Device_GetDirectPaletteMasks(DeviceRecord* device, ErrorRecord* error);

// The system palette: as many entries as the depth counts, or as the shortest array has room for.
void Device_GetIndexedPalette(DeviceRecord* device, OfAnyLength<ByteArguments> reds,
                              OfAnyLength<ByteArguments> greens, OfAnyLength<ByteArguments> blues,
                              ErrorRecord* error);

// Face names of either the scalable or the raster fonts, once for every font of a family.
NativeStringList Device_GetTypefaces(DeviceRecord* device, bool scalable, ErrorRecord* error);

// Copying from the screen is not offered: always an error.
void Device_CopyArea(DeviceRecord* device, GraphicsRecord* graphics, jint x, jint y, jint width,
                     jint height, ErrorRecord* error);

// Always 0.
jint Device_GetAvailableAcceleratedMemory(DeviceRecord* device, ErrorRecord* error);
