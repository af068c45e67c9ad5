#pragma once
// One routine per callback id, each with the id's fixed signature. The target is the widget's
// callback target; null makes the event vanish. Coordinates and sizes are in pixels.

#include "display/callbacks.h"

void fireSelection(CallbackTarget* target);
void fireListSelection(CallbackTarget* target, jint index, ListSelection kind);
void fireWindowEvent(CallbackTarget* target, WindowEvent event);
void fireScroll(CallbackTarget* target, jint value, ScrollKind kind);
void fireChoiceSelection(CallbackTarget* target, jint index);
bool fireKey(CallbackTarget* target, KeyKind kind, wchar_t character, jint keyCode, jint modifiers);
void fireTextModified(CallbackTarget* target);
void firePointer(CallbackTarget* target, jint type, jint x, jint y, jint button, jint modifiers);
void fireMenuSelection(CallbackTarget* target, jint code);
void fireFocus(CallbackTarget* target, FocusChange change);
void firePaint(CallbackTarget* target, jint x, jint y, jint width, jint height);
void fireResize(CallbackTarget* target, jint width, jint height);
void fireMove(CallbackTarget* target, jint x, jint y);
void fireWheel(CallbackTarget* target, jint type, jint x, jint y, jint modifiers, jint amount,
               jint notches);
jint firePointerDownQuery(CallbackTarget* target, jint x, jint y);
