#include "bridge/widget.h"
#include "bridge/memory.h"

// Stands in for the disposal of a widget while it runs: listeners may ask for it again.
static int refuseWhileEnding(WidgetRecord*, ErrorRecord*) { return disposalRefused; }

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

void Widget_Discard(WidgetRecord* widget) {
    if (!widget) return;
    ErrorRecord unheard = {};
    Widget_Dispose(widget, &unheard);
    Error_Clear(&unheard);
}
