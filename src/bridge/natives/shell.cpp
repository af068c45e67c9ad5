#include "control/shell.h"
#include "bridge/native.h"

BASE_NATIVE(jint, Shell, New, (jint display, jint style), (display, style))
BASE_NATIVE(void, Shell, SetMaximized, (jint shell, jboolean maximized), (shell, maximized))
BASE_NATIVE(void, Shell, SetText, (jint shell, jstring text), (shell, text))
WIDGET_NATIVE(jint, Shell, NewChild, (jint parent, jint style), (parent, style))
WIDGET_NATIVE(jboolean, Shell, GetMinimized, (jint shell), (shell))
WIDGET_NATIVE(void, Shell, SetMinimized, (jint shell, jboolean minimized), (shell, minimized))
WIDGET_NATIVE(void, Shell, SetImage, (jint shell, jint image), (shell, image))
WIDGET_NATIVE(void, Shell, SetResizable, (jint shell, jboolean resizable), (shell, resizable))
WIDGET_NATIVE(void, Shell, SetMenuBar, (jint shell, jint bar), (shell, bar))
