#include "bridge/native.h"
#include "menu/menu.h"

WIDGET_NATIVE(jint, PopupMenu, New, (jint owner), (owner))
WIDGET_NATIVE(void, PopupMenu, Show, (jint menu, jint x, jint y), (menu, x, y))
