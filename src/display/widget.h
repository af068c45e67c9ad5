#pragma once
// The head of every record that Java holds as a widget handle and disposes through
// Widget_Dispose: controls, scroll bars, menus, menu items, file dialogs.

#include "bridge/error.h"
#include "bridge/layout.h"
#include "display/callbacks.h"

struct DisplayRecord;
struct WidgetRecord;

// What a disposal answers when the record must live on unchanged. It has set the error.
constexpr int disposalRefused = -1;

// Ends what the record stands for; the caller frees the record itself.
using WidgetDispose = int (*)(WidgetRecord* widget, ErrorRecord* error);

struct WidgetRecord {
    DisplayRecord* display;
    CallbackTarget* callbackTarget; // null: the widget's events vanish
    DWORD style;                    // the Java style bits given at creation
    WidgetDispose dispose;          // null: nothing to end
};
ASSERT_OFFSET(WidgetRecord, display, 0)
ASSERT_OFFSET(WidgetRecord, callbackTarget, 4)
ASSERT_OFFSET(WidgetRecord, style, 8)
ASSERT_OFFSET(WidgetRecord, dispose, 12)

// Ends the widget without firing any further callback, and frees its record. Any thread: the work
// is done on the display's, so that nobody there meets a record that is half gone. Disposing again
// of what is being disposed of does nothing.
// Quirk: a callback target that is still installed is never freed, as Java detaches its data first.
// Pinned by ControlTest.a_listener_that_is_still_there_outlives_its_control.
void Widget_Dispose(WidgetRecord* widget, ErrorRecord* error);

// Widget_Dispose of a widget that Java was not told of, whose errors nobody hears. Null is allowed.
void Widget_Discard(WidgetRecord* widget);

// Ends the widget as Widget_Dispose does, but leaves its record. False when it was refused. Display
// thread.
bool Widget_End(WidgetRecord* widget, ErrorRecord* error);

// Whether the widget is being ended: what listeners still ask of it makes nothing that would stay.
// Display thread.
bool Widget_IsEnding(const WidgetRecord* widget);

// Frees the record of a widget that has ended, or was never shown to Java.
void Widget_Free(WidgetRecord* widget);

// Makes the display the widget's own. The display's record lives until the last of its widgets is
// freed, so that widgets may be disposed of after their display. Any thread.
void Widget_SetDisplay(WidgetRecord* widget, DisplayRecord* display);

// Stores the target in the record on the display's thread and returns the previous one.
// The display owns the way to its thread.
CallbackTarget* Widget_SwapCallbackTarget(WidgetRecord* widget, CallbackTarget* target);
