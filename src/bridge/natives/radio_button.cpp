#include "bridge/native.h"
#include "widgets/button.h"

WIDGET_NATIVE(jint, RadioButton, New, (jint parent, jint style), (parent, style))
