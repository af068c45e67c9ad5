#include "bridge/native.h"
#include "menu/menu_item.h"

WIDGET_NATIVE(void, LabeledMenuItem, SetText, (jint item, jstring text, jstring acceleratorText),
              (item, text, acceleratorText))
WIDGET_NATIVE(void, LabeledMenuItem, SetAccelerator, (jint item, jint accelerator),
              (item, accelerator))
WIDGET_NATIVE(void, LabeledMenuItem, SetFont, (jint item, jint font), (item, font))
