#include "display/firing.h"

void fireSelection(CallbackTarget* target) { vaCallback(CB_SELECTION, "()V", target); }

void fireListSelection(CallbackTarget* target, jint index, ListSelection kind) {
    vaCallback(CB_LIST_SELECTION, "(II)V", target, index, static_cast<jint>(kind));
}

void fireWindowEvent(CallbackTarget* target, WindowEvent event) {
    vaCallback(CB_WINDOW_EVENT, "(I)V", target, static_cast<jint>(event));
}

void fireScroll(CallbackTarget* target, jint value, ScrollKind kind) {
    vaCallback(CB_SCROLL, "(II)V", target, value, static_cast<jint>(kind));
}

void fireChoiceSelection(CallbackTarget* target, jint index) {
    vaCallback(CB_CHOICE_SELECTION, "(I)V", target, index);
}

bool fireKey(CallbackTarget* target, KeyKind kind, wchar_t character, jint keyCode,
             jint modifiers) {
    return vaCallbackBoolean(CB_KEY, "(ICII)Z", target, static_cast<jint>(kind),
                             static_cast<jint>(character), keyCode, modifiers) != 0;
}

void fireTextModified(CallbackTarget* target) { vaCallback(CB_TEXT_MODIFIED, "()V", target); }

void firePointer(CallbackTarget* target, jint type, jint x, jint y, jint button, jint modifiers) {
    vaCallback(CB_POINTER, "(IIIII)V", target, type, x, y, button, modifiers);
}

void fireMenuSelection(CallbackTarget* target, jint code) {
    vaCallback(CB_MENU_SELECTION, "(I)V", target, code);
}

void fireFocus(CallbackTarget* target, FocusChange change) {
    vaCallback(CB_FOCUS, "(I)V", target, static_cast<jint>(change));
}

void firePaint(CallbackTarget* target, jint x, jint y, jint width, jint height) {
    vaCallback(CB_PAINT, "(IIII)V", target, x, y, width, height);
}

void fireResize(CallbackTarget* target, jint width, jint height) {
    vaCallback(CB_RESIZE, "(II)V", target, width, height);
}

void fireMove(CallbackTarget* target, jint x, jint y) {
    vaCallback(CB_MOVE, "(II)V", target, x, y);
}

void fireWheel(CallbackTarget* target, jint type, jint x, jint y, jint modifiers, jint amount,
               jint notches) {
    vaCallback(CB_WHEEL, "(IIIIII)V", target, type, x, y, modifiers, amount, notches);
}

jint firePointerDownQuery(CallbackTarget* target, jint x, jint y) {
    return vaCallbackInt(CB_POINTER_DOWN_QUERY, "(II)I", target, x, y);
}
