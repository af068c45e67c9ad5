#include "menu/menu.h"
#include "bridge/native.h"

WIDGET_NATIVE(void, Menu, SetFont, (jint menu, jint font), (menu, font))
