#include "bridge/native.h"
#include "widgets/text.h"

WIDGET_NATIVE(jint, TextArea, New, (jint parent, jint style), (parent, style))
WIDGET_NATIVE(jintArray, TextArea, GetMinimumSize, (jint area, jint rows, jint columns),
              (area, rows, columns))
