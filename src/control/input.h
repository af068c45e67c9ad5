#pragma once
// Keyboard and pointer messages to callbacks. Display thread only. Each takes the words of its
// message; those that return a flag tell whether the event was consumed.

#include "control/control.h"

struct PointerEvent {
    jint type;   // a PointerType or a WheelType
    jint x, y;   // client coordinates, pixels
    jint button; // a PointerButton
    jint modifiers;
};

extern "C" {
jint _Control_ProcessWmChar(HWND window, WPARAM wParam, LPARAM lParam);
jint _Control_ProcessWmKeyDown(HWND window, WPARAM wParam, LPARAM lParam);
void _Control_ProcessWmLButtonDown(HWND window, WPARAM wParam, LPARAM lParam);
void _Control_ProcessWmRButtonDown(HWND window, WPARAM wParam, LPARAM lParam);
}

jint Control_ProcessKeyUp(HWND window, WPARAM wParam, LPARAM lParam);
void Control_ProcessMiddleButtonDown(HWND window, WPARAM wParam, LPARAM lParam);
void Control_ProcessMouseMove(HWND window, WPARAM wParam, LPARAM lParam);
void Control_ProcessDoubleClick(HWND window, PointerButton button, WPARAM wParam, LPARAM lParam);
void Control_ProcessWheel(HWND window, WPARAM wParam, LPARAM lParam);

// Also passes the message to the window class, whose result it returns.
LRESULT Control_ProcessButtonUp(HWND window, PointerButton button, UINT message, WPARAM wParam,
                                LPARAM lParam);

// A pointer message as an event. The state of the event's own button is not among its modifiers.
PointerEvent Control_BuildPointerEvent(jint type, PointerButton button, WPARAM wParam,
                                       LPARAM lParam);
void Control_FirePointer(const ControlRecord* control, const PointerEvent& event);

// The key handler that controls start with: it fires the key callback.
bool Control_HandleKey(ControlRecord* control, KeyKind kind, wchar_t character, jint keyCode,
                       jint modifiers);
