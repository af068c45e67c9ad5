#include "widgets/choice.h"
#include "bridge/native.h"

WIDGET_NATIVE(jint, Choice, New, (jint parent), (parent))
WIDGET_NATIVE(void, Choice, AddItem, (jint choice, jstring item, jint index), (choice, item, index))
WIDGET_NATIVE(void, Choice, RemoveItem, (jint choice, jint index), (choice, index))
WIDGET_NATIVE(void, Choice, RemoveAllItems, (jint choice), (choice))
WIDGET_NATIVE(void, Choice, SelectItem, (jint choice, jint index), (choice, index))
WIDGET_NATIVE(jint, Choice, GetSelectedItemIndex, (jint choice), (choice))
