#include "widgets/button.h"
#include "bridge/native.h"

WIDGET_NATIVE(void, Button, SetLabel, (jint button, jstring label), (button, label))
WIDGET_NATIVE(void, Button, SetSelection, (jint button, jboolean selected), (button, selected))
