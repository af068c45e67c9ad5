#include "widgets/clipboard.h"

WIDGET_NATIVE(jstring, Clipboard, GetText, (), ())
WIDGET_NATIVE(void, Clipboard, SetText, (jstring text), (text))
