#include "bridge/native.h"
#include "menu/menu_item.h"

WIDGET_NATIVE(void, AbstractMenuItem, SetEnabled, (jint item, jboolean enabled), (item, enabled))
