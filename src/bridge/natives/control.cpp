#include "control/control.h"
#include "bridge/native.h"
#include "control/appearance.h"
#include "graphics/graphics.h"

BASE_NATIVE(jintArray, Control, GetBounds, (jint control), (control))
BASE_NATIVE(void, Control, SetBounds, (jint control, jint x, jint y, jint width, jint height),
            (control, x, y, width, height))
BASE_NATIVE(void, Control, SetVisible, (jint control, jboolean visible), (control, visible))
BASE_NATIVE(jint, Control, NewGraphics, (jint control), (control))
WIDGET_NATIVE(jintArray, Control, GetMinimumSize, (jint control), (control))
WIDGET_NATIVE(void, Control, SetEnabled, (jint control, jboolean enabled), (control, enabled))
WIDGET_NATIVE(void, Control, SetRedraw, (jint control, jboolean redraw), (control, redraw))
WIDGET_NATIVE(jboolean, Control, ForceFocus, (jint control), (control))
WIDGET_NATIVE(void, Control, SetBackground, (jint control, jint color), (control, color))
WIDGET_NATIVE(void, Control, SetForeground, (jint control, jint color), (control, color))
WIDGET_NATIVE(jint, Control, GetBackgroundRGB, (jint control), (control))
WIDGET_NATIVE(jint, Control, GetForegroundRGB, (jint control), (control))
WIDGET_NATIVE(jboolean, Control, InheritsBackground, (jint control), (control))
WIDGET_NATIVE(void, Control, SetFont, (jint control, jint font), (control, font))
WIDGET_NATIVE(jint, Control, GetDefaultFont, (jint control), (control))
WIDGET_NATIVE(void, Control, SetCursor, (jint control, jint cursor), (control, cursor))
WIDGET_NATIVE(void, Control, MoveAbove, (jint control, jint other), (control, other))
WIDGET_NATIVE(void, Control, MoveBelow, (jint control, jint other), (control, other))
WIDGET_NATIVE(void, Control, CopyArea,
              (jint control, jint image, jint x, jint y, jint width, jint height),
              (control, image, x, y, width, height))
