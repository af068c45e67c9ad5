#include "widgets/scrollbar.h"
#include "bridge/native.h"

WIDGET_NATIVE(jint, Scrollbar, New, (jint parent), (parent))
WIDGET_NATIVE(void, Scrollbar, SetOrientation, (jint bar, jint orientation), (bar, orientation))
