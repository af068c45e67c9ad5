#include "widgets/label.h"
#include "bridge/memory.h"
#include "control/painting.h"
#include "graphics/gdi_guards.h"
#include "image/image.h"
#include "widgets/measuring.h"

static constexpr DWORD typeBits = 0xF;

static DWORD styleOf(HWND window) { return GetWindowLongW(window, GWL_STYLE); }

static void setStyle(HWND window, DWORD style) { SetWindowLongW(window, GWL_STYLE, style); }

static bool isImage(DWORD windowStyle) { return (windowStyle & SS_BITMAP) == SS_BITMAP; }

static bool isIcon(DWORD windowStyle) { return (windowStyle & typeBits) == SS_ICON; }

static HBRUSH backgroundBrush(const LabelRecord* label) {
    if (label->background) return Color_GetBrush(label->background);
    return GetSysColorBrush(COLOR_STATIC | SYS_COLOR_INDEX_FLAG);
}

static UINT lineFlags(DWORD windowStyle) {
    constexpr UINT line = DT_SINGLELINE | DT_VCENTER | DT_EXPANDTABS;
    if (windowStyle & SS_CENTER) return line | DT_CENTER;
    if (windowStyle & SS_RIGHT) return line | DT_RIGHT;
    return line;
}

static void setTextColor(HDC context, const LabelRecord* label) {
    if (!IsWindowEnabled(label->hwnd))
        SetTextColor(context, systemColor(COLOR_GRAYTEXT));
    else if (label->foreground)
        SetTextColor(context, label->foreground->color);
}

static void drawLine(HDC context, const LabelRecord* label, const wchar_t* text) {
    RECT client = {};
    GetClientRect(label->hwnd, &client);
    SelectedObject font(context, windowFont(label->hwnd));
    FillRect(context, &client, backgroundBrush(label));
    setTextColor(context, label);
    int mode = SetBkMode(context, TRANSPARENT);
    DrawTextW(context, text, -1, &client, lineFlags(styleOf(label->hwnd)));
    SetBkMode(context, mode);
}

// Vertically centred text is one line, which is drawn here and not by the window class.
static LRESULT paint(const LabelRecord* label, Message message) {
    HWND window = label->hwnd;
    Block<wchar_t> text(label->style & styleCenteredLine ? copyWindowText(window) : nullptr);
    if (!text) return callProc(label->staticProc, window, message);
    PAINTSTRUCT area;
    drawLine(BeginPaint(window, &area), label, text);
    EndPaint(window, &area);
    return 0;
}

// Stands between the control's procedure and the window class.
static LRESULT handlePainting(const LabelRecord* label, Message message) {
    switch (message.id) {
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
        return 0;
    case WM_PAINT:
        return paint(label, message);
    default:
        return callProc(label->staticProc, label->hwnd, message);
    }
}

static LRESULT sized(HWND window, Message message) {
    LRESULT result = Control_HandleIn(window, message);
    InvalidateRect(window, nullptr, TRUE);
    return result;
}

static POINT imageSize(const LabelRecord* label) {
    POINT size = {};
    if (label->image) _Image_GetSize(label->image, &size.x, &size.y, nullptr);
    return size;
}

static POINT minimumSize(const LabelRecord* label) {
    constexpr LONG textMargin = 2;
    LONG borders = 2 * _Control_GetBorderWidth(label->hwnd);
    DWORD style = styleOf(label->hwnd);
    if (isImage(style) || isIcon(style)) {
        POINT size = imageSize(label);
        return {size.x + borders, size.y + borders};
    }
    TextExtent text = measureText(label->hwnd, DT_CALCRECT | DT_EXPANDTABS, {0, 0, 1, 0});
    return {text.width + borders + textMargin, text.height + borders};
}

static LRESULT handle(LabelRecord* label, Message message) {
    HWND window = label->hwnd;
    switch (message.id) {
    case WM_DESTROY:
        // What follows is the window class's own to see.
        label->classProc = label->staticProc;
        break;
    case WM_SETFONT:
        label->font = message.font();
        break;
    case WM_SIZE:
        return sized(window, message);
    case WM_ERASEBKGND:
        if (!isImage(styleOf(window))) break;
        Control_FillClip(message.context(), backgroundBrush(label));
        return 1;
    case controlGetMinimumSize:
        message.answer<POINT>() = minimumSize(label);
        return 0;
    default:
        return Control_Handle(label, message);
    }
    return Control_HandleIn(window, message);
}

static DWORD windowStyle(DWORD javaStyle) {
    DWORD style = (_Control_Style() & ~WS_TABSTOP) | SS_NOTIFY | SS_NOPREFIX;
    if (!(javaStyle & styleWrap)) style |= SS_LEFTNOWORDWRAP;
    if (javaStyle & styleCenteredLine) style |= SS_CENTERIMAGE;
    return style;
}

LabelRecord* Label_New(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    auto* label = Control_NewOf<LabelRecord>(
        parent, {.className = L"STATIC",
                 .windowProc = controlProc<LabelRecord, handle>,
                 .javaStyle = style,
                 .windowStyle = windowStyle(style),
                 .extendedStyle = style & styleBorder ? DWORD(WS_EX_STATICEDGE) : 0,
                 .error = error});
    if (!label) return nullptr;
    label->inheritsBackground = TRUE;
    label->staticProc = label->classProc;
    label->classProc = controlProc<const LabelRecord, handlePainting>;
    return label;
}

static DWORD typeFor(DWORD alignment, DWORD javaStyle) {
    DWORD left = javaStyle & styleWrap ? SS_LEFT : SS_LEFTNOWORDWRAP;
    if (alignment & alignLeft) return left;
    if (alignment & alignRight) return SS_RIGHT;
    if (alignment & alignCenter) return SS_CENTER;
    return left;
}

static void setAlignment(LabelRecord* label, DWORD alignment, ErrorRecord* error) {
    label->alignment = alignment;
    DWORD before = styleOf(label->hwnd);
    if (isImage(before) || isIcon(before)) return;
    DWORD style = (before & ~(typeBits | SS_CENTERIMAGE)) | typeFor(alignment, label->style);
    if (label->style & styleCenteredLine) style |= SS_CENTERIMAGE;
    if (style == before) return;
    setStyle(label->hwnd, style);
    Control_Redraw(label, error);
}

void Label_SetAlignment(LabelRecord* label, DWORD alignment, ErrorRecord* error) {
    Control_Run(label, [=](LabelRecord* found) { setAlignment(found, alignment, error); });
}

// The window class takes the text of an image label for the name of an image.
static void setTextOfImage(HWND window, const wchar_t* text) {
    DWORD style = styleOf(window);
    setStyle(window, style & ~typeBits);
    SetWindowTextW(window, text);
    setStyle(window, style);
}

void Label_SetText(LabelRecord* label, const wchar_t* text, ErrorRecord*) {
    Control_Run(label, [text = text ? text : L""](const LabelRecord* found) {
        if (isImage(styleOf(found->hwnd)))
            setTextOfImage(found->hwnd, text);
        else
            SetWindowTextW(found->hwnd, text);
    });
}
