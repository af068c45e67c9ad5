#include "widgets/adjustable.h"
#include "bridge/native.h"

WIDGET_NATIVE(jint, Adjustable, GetMinimum, (jint bar), (bar))
WIDGET_NATIVE(jint, Adjustable, GetMaximum, (jint bar), (bar))
WIDGET_NATIVE(jint, Adjustable, GetValue, (jint bar), (bar))
WIDGET_NATIVE(jint, Adjustable, GetVisibleAmount, (jint bar), (bar))
WIDGET_NATIVE(void, Adjustable, SetMinimum, (jint bar, jint value), (bar, value))
WIDGET_NATIVE(void, Adjustable, SetMaximum, (jint bar, jint value), (bar, value))
WIDGET_NATIVE(void, Adjustable, SetValue, (jint bar, jint value), (bar, value))
WIDGET_NATIVE(void, Adjustable, SetVisibleAmount, (jint bar, jint amount), (bar, amount))
WIDGET_NATIVE(void, Adjustable, SetUnitIncrement, (jint bar, jint value), (bar, value))
WIDGET_NATIVE(void, Adjustable, SetBlockIncrement, (jint bar, jint value), (bar, value))
