#include "bridge/native.h"
#include "widgets/button.h"

WIDGET_NATIVE(jint, Checkbox, New, (jint parent, jint style), (parent, style))
