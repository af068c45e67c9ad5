#include "bridge/widget.h"
#include "bridge/memory.h"

void Widget_Dispose(WidgetRecord* widget, ErrorRecord* error) {
    CallbackTarget* target = widget->callbackTarget;
    widget->callbackTarget = nullptr;
    if (widget->dispose && widget->dispose(widget, error) == disposalRefused) {
        widget->callbackTarget = target;
        return;
    }
    freeBlock(widget);
}

void Widget_Discard(WidgetRecord* widget) {
    if (!widget) return;
    ErrorRecord unheard = {};
    Widget_Dispose(widget, &unheard);
    Error_Clear(&unheard);
}
