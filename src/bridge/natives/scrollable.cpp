#include "control/scrollable.h"
#include "bridge/native.h"

BASE_NATIVE(jintArray, Scrollable, GetInsets, (jint scrollable), (scrollable))
WIDGET_NATIVE(jintArray, Scrollable, GetAdjustableBounds, (jint scrollable, jint bar),
              (scrollable, bar))
WIDGET_NATIVE(jint, Scrollable, GetHorizontalBar, (jint scrollable), (scrollable))
WIDGET_NATIVE(jint, Scrollable, GetVerticalBar, (jint scrollable), (scrollable))
WIDGET_NATIVE(void, Scrollable, SetAdjustableEnabled, (jint scrollable, jint bar, jboolean enabled),
              (scrollable, bar, enabled))
WIDGET_NATIVE(void, Scrollable, SetAdjustableVisible, (jint scrollable, jint bar, jboolean visible),
              (scrollable, bar, visible))
