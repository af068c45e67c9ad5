#include "bridge/native.h"
#include "menu/menu_item.h"

WIDGET_NATIVE(jint, CascadeMenuItem, New, (jint menu, jint index), (menu, index))
WIDGET_NATIVE(void, CascadeMenuItem, SetMenu, (jint item, jint menu), (item, menu))
