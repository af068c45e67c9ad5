#include "bridge/native.h"
#include "menu/menu_item.h"

WIDGET_NATIVE(jint, SeparatorItem, New, (jint menu, jint index), (menu, index))
