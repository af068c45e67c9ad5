#include "bridge/native.h"
#include "menu/menu.h"

WIDGET_NATIVE(jint, MenuBar, New, (jint shell), (shell))
