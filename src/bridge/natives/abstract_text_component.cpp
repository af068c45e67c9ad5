#include "bridge/native.h"
#include "widgets/text.h"

WIDGET_NATIVE(jint, AbstractTextComponent, GetCharCount, (jint text), (text))
WIDGET_NATIVE(jintArray, AbstractTextComponent, GetSelection, (jint text), (text))
WIDGET_NATIVE(jstring, AbstractTextComponent, GetSelectionText, (jint text), (text))
WIDGET_NATIVE(jstring, AbstractTextComponent, GetText, (jint text), (text))
WIDGET_NATIVE(void, AbstractTextComponent, Replace,
              (jint text, jstring characters, jint start, jint end), (text, characters, start, end))
WIDGET_NATIVE(void, AbstractTextComponent, SelectAll, (jint text), (text))
WIDGET_NATIVE(void, AbstractTextComponent, SetCaretPosition, (jint text, jint position),
              (text, position))
WIDGET_NATIVE(void, AbstractTextComponent, SetEchoChar, (jint text, jchar echo), (text, echo))
WIDGET_NATIVE(void, AbstractTextComponent, SetEditable, (jint text, jboolean editable),
              (text, editable))
WIDGET_NATIVE(void, AbstractTextComponent, SetSelection, (jint text, jint start, jint end),
              (text, start, end))
WIDGET_NATIVE(void, AbstractTextComponent, SetText, (jint text, jstring characters),
              (text, characters))
