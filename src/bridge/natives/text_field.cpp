#include "bridge/native.h"
#include "widgets/text.h"

WIDGET_NATIVE(jint, TextField, New, (jint parent, jint style), (parent, style))
WIDGET_NATIVE(jintArray, TextField, GetMinimumSize, (jint field, jint columns), (field, columns))
