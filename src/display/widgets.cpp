// What every widget owes to its display.

#include "bridge/memory.h"
#include "bridge/widget.h"
#include "display/display.h"

namespace {

struct Ending {
    WidgetRecord* widget;
    ErrorRecord* error;
};

} // namespace

void Widget_SetDisplay(WidgetRecord* widget, DisplayRecord* display) {
    widget->display = display;
    if (display) Display_Retain(display);
}

void Widget_Free(WidgetRecord* widget) {
    if (widget->display) Display_Release(widget->display);
    freeBlock(widget);
}

static LRESULT end(void* context) {
    auto* ending = static_cast<const Ending*>(context);
    return Widget_End(ending->widget, ending->error);
}

void Widget_Dispose(WidgetRecord* widget, ErrorRecord* error) {
    Ending ending = {widget, error};
    DisplayRecord* display = widget->display;
    bool ended = display ? Display_Run(display, end, &ending) : end(&ending);
    if (ended) Widget_Free(widget);
}
