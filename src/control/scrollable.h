#pragma once
// Controls whose window may have scroll bars of its own, and the composites that hold children.

#include "bridge/handles.h"
#include "control/control.h"

struct AdjustableRecord;
struct OwnBarRecord;

struct ScrollableRecord : ControlRecord {
    AdjustableRecord* horizontalBar; // owned; null until asked for
    AdjustableRecord* verticalBar;
};
ASSERT_OFFSET(ScrollableRecord, horizontalBar, 56)
ASSERT_OFFSET(ScrollableRecord, verticalBar, 60)

struct CompositeRecord : ScrollableRecord {};

// Answer of a child to a reflected WM_NOTIFY.
struct NotifyAnswer {
    BOOL handled;
};

extern "C" {
DWORD _Scrollable_Style(DWORD javaStyle);
LRESULT CALLBACK _Scrollable_Proc(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
int _Dispose_Scrollable(WidgetRecord* scrollable, ErrorRecord* error);
}

// Handles a message as all scrollables do, in a window whose control a listener may have disposed
// of meanwhile.
LRESULT Scrollable_HandleIn(HWND window, Message message);

// Between the window's edges and its client area, the scroll bars included, in pixels.
Insets Scrollable_MeasureInsets(HWND window);
Insets Scrollable_GetInsets(ControlRecord* scrollable, ErrorRecord* error);

// The record of one of the window's own bars, made on first use. Owned by the scrollable.
Lent<OwnBarRecord> Scrollable_GetHorizontalBar(ScrollableRecord* scrollable, ErrorRecord* error);
Lent<OwnBarRecord> Scrollable_GetVerticalBar(ScrollableRecord* scrollable, ErrorRecord* error);

// The room that the bar takes, from the client area's origin, in pixels.
Bounds Scrollable_GetAdjustableBounds(ScrollableRecord* scrollable, OwnBarRecord* bar,
                                      ErrorRecord* error);
void Scrollable_SetAdjustableEnabled(ScrollableRecord* scrollable, OwnBarRecord* bar, bool enabled,
                                     ErrorRecord* error);
void Scrollable_SetAdjustableVisible(ScrollableRecord* scrollable, OwnBarRecord* bar, bool visible,
                                     ErrorRecord* error);

CompositeRecord* Composite_New(OrNone<ControlRecord> parent, DWORD style, ErrorRecord* error);

// Handles a message as all composites do, in a window whose control a listener may have disposed of
// meanwhile.
LRESULT Composite_HandleIn(HWND window, Message message);

// What the platform can do, by the number under which Java knows the capability; 0 if nothing.
jint Platform_GetCapability(jint id, ErrorRecord* error);
