#include "control/control.h"
#include "bridge/native.h"
#include "control/appearance.h"

BASE_NATIVE(jintArray, Control, GetBounds, (jint control), (control))
BASE_NATIVE(void, Control, SetBounds, (jint control, jint x, jint y, jint width, jint height),
            (control, x, y, width, height))
BASE_NATIVE(void, Control, SetVisible, (jint control, jboolean visible), (control, visible))
WIDGET_NATIVE(jintArray, Control, GetMinimumSize, (jint control), (control))
WIDGET_NATIVE(void, Control, SetEnabled, (jint control, jboolean enabled), (control, enabled))
WIDGET_NATIVE(void, Control, SetRedraw, (jint control, jboolean redraw), (control, redraw))
WIDGET_NATIVE(jboolean, Control, ForceFocus, (jint control), (control))
