#include "graphics/font.h"
#include "bridge/native.h"

BASE_NATIVE(jint, Font, New, (jint device, jstring name, jint points, jint style),
            (device, name, points, style))
BASE_NATIVE(void, Font, Dispose, (jint font), (font))
BASE_NATIVE(jint, Font, GetAscent, (jint font), (font))
BASE_NATIVE(jint, Font, GetDescent, (jint font), (font))
BASE_NATIVE(jint, Font, GetLeading, (jint font), (font))
BASE_NATIVE(jint, Font, GetSizeInPoints, (jint font), (font))
BASE_NATIVE(jint, Font, GetAdvanceWidth, (jint font, jchar character), (font, character))
WIDGET_NATIVE(jint, Font, NewLogical, (jint device, jint family, jint points, jint style),
              (device, family, points, style))
WIDGET_NATIVE(jint, Font, StringAdvance, (jint font, jstring text), (font, text))
WIDGET_NATIVE(jstring, Font, GetName, (jint font), (font))
WIDGET_NATIVE(jint, Font, GetStyle, (jint font), (font))
