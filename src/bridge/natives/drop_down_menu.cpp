#include "bridge/native.h"
#include "menu/menu.h"

WIDGET_NATIVE(jint, DropDownMenu, New, (jint owner), (owner))
