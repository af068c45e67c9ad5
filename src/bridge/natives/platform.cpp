#include "bridge/native.h"
#include "control/scrollable.h"

WIDGET_NATIVE(jint, Platform, GetCapability, (jint id), (id))
