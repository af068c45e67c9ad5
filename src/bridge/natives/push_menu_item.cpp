#include "bridge/native.h"
#include "menu/menu_item.h"

WIDGET_NATIVE(jint, PushMenuItem, New, (jint menu, jint index), (menu, index))
