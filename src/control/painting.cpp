#include "control/painting.h"
#include "graphics/gdi_guards.h"

static constexpr UINT_PTR repaintTimer = 101;
static constexpr UINT repaintPeriod = 10; // milliseconds

static void CALLBACK repaintWhenEnabled(HWND window, UINT, UINT_PTR, DWORD) {
    const ControlRecord* control = controlOf(window);
    if (!control || !Control_IsDrawingEnabled(control)) return;
    InvalidateRect(window, nullptr, TRUE);
    KillTimer(window, repaintTimer);
}

static void paintNothing(HWND window) {
    PAINTSTRUCT paint;
    BeginPaint(window, &paint);
    EndPaint(window, &paint);
}

static LRESULT deferPaint(HWND window) {
    RECT update;
    if (GetUpdateRect(window, &update, FALSE) && update.left == update.right &&
        update.top == update.bottom)
        paintNothing(window);
    ValidateRect(window, nullptr);
    SetTimer(window, repaintTimer, repaintPeriod, repaintWhenEnabled);
    return 0;
}

static void paintOver(HWND window) {
    PAINTSTRUCT paint;
    BeginPaint(window, &paint);
    const RECT& area = paint.rcPaint;
    if (const ControlRecord* control = controlOf(window))
        firePaint(control->callbackTarget, area.left, area.top, area.right - area.left,
                  area.bottom - area.top);
    EndPaint(window, &paint);
}

LRESULT Control_Paint(ControlRecord* control, Message message) {
    HWND window = control->hwnd;
    if (!Control_IsDrawingEnabled(control)) return deferPaint(window);
    RECT update;
    GetUpdateRect(window, &update, FALSE);
    LRESULT result = Control_CallClass(control, message);
    if (!controlOf(window)) return result;
    // The class has validated what Java is still to paint over.
    InvalidateRect(window, &update, FALSE);
    paintOver(window);
    return result;
}

static int rasterModeOf(HDC context) {
    int mode = SetROP2(context, R2_COPYPEN);
    SetROP2(context, mode);
    return mode;
}

void Control_FillClip(HDC context, HBRUSH brush) {
    RECT clip;
    if (GetClipBox(context, &clip) == NULLREGION) return;
    SelectedObject selected(context, brush);
    DWORD operation = rasterModeOf(context) == R2_XORPEN ? PATINVERT : PATCOPY;
    PatBlt(context, clip.left, clip.top, clip.right - clip.left, clip.bottom - clip.top, operation);
}

HBRUSH Control_AskParentForBrush(const ControlRecord* control, HDC context) {
    HWND parent = GetParent(control->hwnd);
    return reinterpret_cast<HBRUSH>(
        ask(parent ? parent : control->hwnd, control->ctlColorMessage, context, control->hwnd));
}

LRESULT Control_Erase(ControlRecord* control, Message message) {
    if (!Control_IsDrawingEnabled(control)) return 0;
    HWND window = control->hwnd;
    HBRUSH brush;
    if (control->background) {
        brush = Color_GetBrush(control->background);
    } else {
        LRESULT erased = Control_CallClass(control, message);
        control = controlOf(window);
        if (erased || !control) return erased;
        brush = Control_AskParentForBrush(control, message.context());
    }
    Control_FillClip(message.context(), brush);
    return 1;
}
