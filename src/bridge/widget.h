#pragma once
// The head of every record that Java holds as a widget handle and disposes through
// Widget_Dispose: controls, scroll bars, menus, menu items, file dialogs.

#include "bridge/callbacks.h"
#include "bridge/error.h"
#include "bridge/layout.h"

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

// Ends the widget without firing any further callback, and frees its record. A callback target
// that is still installed stays alive on purpose: Java detaches its data first.
void Widget_Dispose(WidgetRecord* widget, ErrorRecord* error);

// Widget_Dispose of a widget that Java was not told of, whose errors nobody hears. Null is allowed.
void Widget_Discard(WidgetRecord* widget);

// Stores the target in the record on the display's thread and returns the previous one.
// The display owns the way to its thread.
CallbackTarget* Widget_SwapCallbackTarget(WidgetRecord* widget, CallbackTarget* target);
