#include "control/shell.h"
#include "bridge/native.h"

BASE_NATIVE(jint, Shell, New, (jint display, jint style), (display, style))
BASE_NATIVE(void, Shell, SetMaximized, (jint shell, jboolean maximized), (shell, maximized))
BASE_NATIVE(void, Shell, SetText, (jint shell, jstring text), (shell, text))
WIDGET_NATIVE(jint, Shell, NewChild, (jint parent, jint style), (parent, style))
