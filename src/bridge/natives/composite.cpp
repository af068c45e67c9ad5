#include "bridge/native.h"
#include "control/scrollable.h"

WIDGET_NATIVE(jint, Composite, New, (jint parent, jint style), (parent, style))
