#include "bridge/native.h"
#include "menu/menu_item.h"

WIDGET_NATIVE(jint, StateMenuItem, New, (jint menu, jint index, jint style), (menu, index, style))
WIDGET_NATIVE(void, StateMenuItem, SetSelection, (jint item, jboolean checked), (item, checked))
