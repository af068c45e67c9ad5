#pragma once
// Keyboard and pointer messages to callbacks. Display thread only. Those that return a number tell
// whether the event was consumed.

#include "control/control.h"

struct PointerEvent {
    jint type;   // a PointerType or a WheelType
    jint x, y;   // client coordinates, pixels
    jint button; // a PointerButton
    jint modifiers;
};

jint Control_ProcessKeyDown(HWND window, Message message);
jint Control_ProcessKeyUp(HWND window, Message message);
jint Control_ProcessCharacter(HWND window, Message message);
void Control_ProcessLeftButtonDown(HWND window, Message message);
void Control_ProcessRightButtonDown(HWND window, Message message);
void Control_ProcessMiddleButtonDown(HWND window, Message message);
void Control_ProcessMouseMove(HWND window, Message message);
void Control_ProcessDoubleClick(HWND window, PointerButton button, Message message);
void Control_ProcessWheel(HWND window, Message message);

// Also passes the message to the window class, whose result it returns.
LRESULT Control_ProcessButtonUp(HWND window, PointerButton button, Message message);

// A pointer message as an event. The state of the event's own button is not among its modifiers.
PointerEvent Control_BuildPointerEvent(jint type, PointerButton button, Message message);
void Control_FirePointer(const ControlRecord* control, const PointerEvent& event);

// The key handler that controls start with: it fires the key callback.
bool Control_HandleKey(ControlRecord* control, KeyKind kind, wchar_t character, jint keyCode,
                       jint modifiers);

// The same for the windows of companion libraries.
extern "C" {
jint _Control_ProcessWmChar(HWND window, WPARAM wParam, LPARAM lParam);
jint _Control_ProcessWmKeyDown(HWND window, WPARAM wParam, LPARAM lParam);
void _Control_ProcessWmLButtonDown(HWND window, WPARAM wParam, LPARAM lParam);
void _Control_ProcessWmRButtonDown(HWND window, WPARAM wParam, LPARAM lParam);
}
