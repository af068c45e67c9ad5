#include "graphics/device.h"
#include "bridge/native.h"

BASE_NATIVE(void, Device, Dispose, (jint device), (device))
BASE_NATIVE(jintArray, Device, GetBounds, (jint device), (device))
BASE_NATIVE(jobjectArray, Device, GetTypefaces, (jint device, jboolean scalable),
            (device, scalable))
WIDGET_NATIVE(jintArray, Device, GetDPI, (jint device), (device))
WIDGET_NATIVE(jint, Device, GetDepth, (jint device), (device))
WIDGET_NATIVE(void, Device, CopyArea,
              (jint device, jint graphics, jint x, jint y, jint width, jint height),
              (device, graphics, x, y, width, height))
WIDGET_NATIVE(jintArray, Device, GetDirectPaletteMasks, (jint device), (device))
WIDGET_NATIVE(void, Device, GetIndexedPalette,
              (jint device, jbyteArray reds, jbyteArray greens, jbyteArray blues),
              (device, reds, greens, blues))
WIDGET_NATIVE(jboolean, Device, IsDirect, (jint device), (device))
WIDGET_NATIVE(jint, Device, GetAvailableAcceleratedMemory, (jint device), (device))
