#include "control/appearance.h"
#include "graphics/graphics.h"

extern "C" void _Control_SetBackground(ControlRecord* control, ColorRecord* color,
                                       ErrorRecord* error) {
    Color_Wear(&control->background, color);
    Control_Redraw(control, error);
}

extern "C" void _Control_SetForeground(ControlRecord* control, ColorRecord* color,
                                       ErrorRecord* error) {
    Color_Wear(&control->foreground, color);
    Control_Redraw(control, error);
}

extern "C" void _Control_SetFont(ControlRecord* control, FontRecord* font, ErrorRecord*) {
    HFONT handle = font ? font->font : _Control_GetDefaultFont();
    ask(control->hwnd, WM_SETFONT, handle, TRUE);
}

static void stackAfter(HWND window, HWND insertAfter) {
    SetWindowPos(window, insertAfter, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
}

void Control_StackAbove(ControlRecord* control, const ControlRecord* other) {
    if (!other) {
        stackAfter(control->hwnd, HWND_TOP);
        return;
    }
    if (other == control || other->parent != control->parent) return;
    HWND above = GetWindow(other->hwnd, GW_HWNDPREV);
    if (above == control->hwnd) return;
    stackAfter(control->hwnd, above && above != other->hwnd ? above : HWND_TOP);
}

static void request(const ControlRecord* control, ControlMessage message, const void* value,
                    ErrorRecord* error) {
    ask(control->hwnd, message, value, &error);
}

void Control_SetBackground(ControlRecord* control, ColorRecord* color, ErrorRecord* error) {
    request(control, controlSetBackground, color, error);
}

void Control_SetForeground(ControlRecord* control, ColorRecord* color, ErrorRecord* error) {
    request(control, controlSetForeground, color, error);
}

jint Control_GetBackgroundRGB(ControlRecord* control, ErrorRecord*) {
    COLORREF color;
    if (!Color_Read(&control->background, &color)) color = ask(control->hwnd, controlGetBackground);
    return swapRedAndBlue(color);
}

jint Control_GetForegroundRGB(ControlRecord* control, ErrorRecord*) {
    COLORREF color;
    if (!Color_Read(&control->foreground, &color)) color = ask(control->hwnd, controlGetForeground);
    return swapRedAndBlue(color);
}

bool Control_InheritsBackground(ControlRecord* control, ErrorRecord*) {
    return static_cast<BYTE>(control->inheritsBackground);
}

void Control_SetFont(ControlRecord* control, FontRecord* font, ErrorRecord* error) {
    request(control, controlSetFont, font, error);
}

FontRecord* Control_GetDefaultFont(ControlRecord* control, ErrorRecord* error) {
    DisplayRecord* display = Control_GetDisplay(control);
    if (!display->systemFont)
        display->systemFont = Font_FromHandle(_Control_GetDefaultFont(), error);
    return display->systemFont;
}

void Control_SetCursor(ControlRecord* control, HCURSOR cursor, ErrorRecord*) {
    control->cursor = cursor;
    SetCursor(cursor);
}

void Control_MoveAbove(ControlRecord* control, ControlRecord* other, ErrorRecord* error) {
    request(control, controlMoveAbove, other, error);
}

void Control_MoveBelow(ControlRecord* control, ControlRecord* other, ErrorRecord*) {
    if (!other) {
        stackAfter(control->hwnd, HWND_BOTTOM);
        return;
    }
    if (other == control || other->parent != control->parent) return;
    stackAfter(control->hwnd, other->hwnd);
}

PixelPair Control_GetMinimumSize(ControlRecord* control, ErrorRecord* error) {
    POINT size = {};
    ask(control->hwnd, controlGetMinimumSize, &size, &error);
    return {size.x, size.y};
}

void Control_SetEnabled(ControlRecord* control, bool enabled, ErrorRecord* error) {
    ask(control->hwnd, controlSetEnabled, enabled, &error);
}

void Control_SetRedraw(ControlRecord* control, bool redraw, ErrorRecord*) {
    control->redraw = redraw;
    if (redraw && Control_IsDrawingEnabled(control))
        RedrawWindow(control->hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

static bool takesInput(HWND window) { return IsWindowEnabled(window) && IsWindowVisible(window); }

bool Control_ForceFocus(ControlRecord* control, ErrorRecord*) {
    if (!takesInput(control->hwnd)) return false;
    HWND parent = GetParent(control->hwnd);
    if (parent && !takesInput(parent)) return false;
    if (GetFocus() == control->hwnd) return true;
    return ask(control->hwnd, controlForceFocus, control->hwnd) != 0;
}

static void copyPixels(GraphicsRecord* target, const GraphicsRecord* source, jint x, jint y,
                       jint width, jint height, ErrorRecord* error) {
    Drawing drawing(target);
    if (!BitBlt(drawing, 0, 0, width, height, source->dc, x, y, SRCCOPY))
        Win32Error_SetLast(error, L"Unable to bit blit from control to image");
}

// A context whose control does not tell its client area is made all the same, with an error.
static GraphicsRecord* newContext(ControlRecord* control, ErrorRecord* error) {
    // The thread that owns the window gets its context.
    HWND window = control->hwnd;
    HDC dc = reinterpret_cast<HDC>(ask(window, controlGetContext, &error));
    if (!dc) return nullptr;
    RECT bounds = {};
    if (!GetClientRect(window, &bounds)) Win32Error_SetLast(error, L"Unable to get clipping area");
    GraphicsRecord* graphics = Graphics_New(dc, nullptr, bounds, error);
    if (graphics)
        Graphics_EnterWindow(graphics, window);
    else
        ReleaseDC(window, dc);
    return graphics;
}

GraphicsRecord* Control_NewGraphics(ControlRecord* control, ErrorRecord* error) {
    GraphicsRecord* graphics = newContext(control, error);
    if (!graphics || WYX_GetError(error) == errorNone) return graphics;
    Graphics_Dispose(graphics, nullptr);
    return nullptr;
}

void Control_CopyArea(ControlRecord* control, ImageRecord* image, jint x, jint y, jint width,
                      jint height, ErrorRecord* error) {
    GraphicsRecord* source = newContext(control, error);
    if (!source) return;
    if (GraphicsRecord* target = Image_NewGraphics(image, error)) {
        copyPixels(target, source, x, y, width, height, error);
        Graphics_Dispose(target, error);
    }
    Graphics_Dispose(source, error);
}
