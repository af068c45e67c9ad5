#include "display/widget.h"
#include "bridge/memory.h"
#include "display/display.h"

void Widget_SetDisplay(WidgetRecord* widget, DisplayRecord* display) {
    widget->display = display;
    if (display) Display_Retain(display);
}

void Widget_Free(WidgetRecord* widget) {
    if (widget->display) Display_Release(widget->display);
    freeBlock(widget);
}

// Stands in for the disposal of a widget while it runs: listeners may ask for it again.
static int refuseWhileEnding(WidgetRecord*, ErrorRecord*) { return disposalRefused; }

bool Widget_IsEnding(const WidgetRecord* widget) { return widget->dispose == refuseWhileEnding; }

bool Widget_End(WidgetRecord* widget, ErrorRecord* error) {
    CallbackTarget* target = widget->callbackTarget;
    WidgetDispose dispose = widget->dispose;
    widget->callbackTarget = nullptr;
    if (!dispose) return true;
    widget->dispose = refuseWhileEnding;
    if (dispose(widget, error) != disposalRefused) return true;
    widget->callbackTarget = target;
    widget->dispose = dispose;
    return false;
}

void Widget_Dispose(WidgetRecord* widget, ErrorRecord* error) {
    auto end = [=] { return Widget_End(widget, error); };
    DisplayRecord* display = widget->display;
    bool ended = display ? Display_Run(display, end) : end();
    if (ended) Widget_Free(widget);
}

void Widget_Discard(WidgetRecord* widget) {
    if (!widget) return;
    ErrorRecord unheard = {};
    Widget_Dispose(widget, &unheard);
    Error_Clear(&unheard);
}
