#include "graphics/cursor.h"
#include "bridge/native.h"

WIDGET_NATIVE(jint, Cursor, New, (jint device, jint type), (device, type))
WIDGET_NATIVE(void, Cursor, Dispose, (jint cursor), (cursor))
