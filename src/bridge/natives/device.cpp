#include "graphics/device.h"
#include "bridge/native.h"

BASE_NATIVE(void, Device, Dispose, (jint device), (device))
BASE_NATIVE(jintArray, Device, GetBounds, (jint device), (device))
