#include "graphics/color.h"
#include "bridge/native.h"

BASE_NATIVE(jint, Color, New, (jint device, jint red, jint green, jint blue),
            (device, red, green, blue))
BASE_NATIVE(void, Color, Dispose, (jint color), (color))
WIDGET_NATIVE(jint, Color, GetRed, (jint color), (color))
WIDGET_NATIVE(jint, Color, GetGreen, (jint color), (color))
WIDGET_NATIVE(jint, Color, GetBlue, (jint color), (color))
