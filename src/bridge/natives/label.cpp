#include "widgets/label.h"
#include "bridge/native.h"

WIDGET_NATIVE(jint, Label, New, (jint parent, jint style), (parent, style))
WIDGET_NATIVE(void, Label, SetAlignment, (jint label, jint alignment), (label, alignment))
WIDGET_NATIVE(void, Label, SetText, (jint label, jstring text), (label, text))
