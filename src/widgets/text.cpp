#include "widgets/text.h"
#include "bridge/memory.h"
#include "control/input.h"
#include "widgets/line_breaks.h"
#include "widgets/measuring.h"

static constexpr wchar_t noMemoryForText[] = L"Unable to allocate memory for text";
static constexpr wchar_t noMemoryForSelection[] =
    L"Unable to allocate memory to substring selection text";

static TextRecord* textOf(HWND window) { return static_cast<TextRecord*>(controlOf(window)); }

static bool wraps(DWORD javaStyle) {
    constexpr DWORD both = styleMultiple | styleWrap;
    return (javaStyle & both) == both;
}

static LONG marginsOf(const TextRecord* text) {
    LRESULT margins = ask(text->hwnd, EM_GETMARGINS);
    return LOWORD(margins) + HIWORD(margins);
}

// What stands around the text. Java's style counts here, even for a bar that the window lacks.
static PixelPair withSurroundings(const TextRecord* text, PixelPair size, LONG borderGap) {
    bool hasBorder = text->style & styleBorder;
    size.x += marginsOf(text);
    if (text->style & styleVerticalScroll) size.x += GetSystemMetrics(SM_CXVSCROLL);
    if (text->style & styleHorizontalScroll) {
        size.y += GetSystemMetrics(SM_CYHSCROLL);
        if (hasBorder) ++size.x;
    }
    if (!hasBorder) return size;
    LONG borders = 2 * _Control_GetBorderWidth(text->hwnd) + borderGap;
    return {size.x + borders, size.y + borders};
}

static PixelPair sizeOfText(const TextRecord* text) {
    constexpr LONG unknown = 64;
    TextExtent extent = measureText(text->hwnd, DT_CALCRECT | DT_NOPREFIX, {0, 0, 0, 0});
    if (extent.isEmpty) return {unknown, unknown};
    LONG height = extent.lineHeight * ask(text->hwnd, EM_GETLINECOUNT);
    if (wraps(text->style) && extent.height) height = extent.height;
    return {extent.width ? extent.width : unknown, height ? height : unknown};
}

static PixelPair preferredSize(const TextRecord* text) {
    constexpr LONG borderGap = 2;
    return withSurroundings(text, sizeOfText(text), borderGap);
}

// Quirk: around the same text the minimum size is one pixel larger than the preferred one. Pinned
// by TextTest.minimum_sizes_count_columns_and_rows.
static PixelPair minimumSize(const TextRecord* text, PixelPair size) {
    constexpr LONG borderGap = 3;
    return withSurroundings(text, size, borderGap);
}

static LRESULT doubleClick(TextRecord* text, Message message) {
    if (text->passDoubleClicks) return Scrollable_HandleIn(text->hwnd, message);
    Control_FirePointer(text, Control_BuildPointerEvent(pointerPress, buttonMiddle, message));
    return 0;
}

static void command(const TextRecord* text, Message message) {
    if (message.notification() == EN_CHANGE && !text->replacing)
        fireTextModified(text->callbackTarget);
}

static LRESULT handle(TextRecord* text, Message message) {
    HWND window = text->hwnd;
    switch (message.id) {
    case WM_LBUTTONDBLCLK:
        return doubleClick(text, message);
    case controlCommand:
        command(text, message);
        break;
    case controlGetMinimumSize:
        message.answer<PixelPair>() = preferredSize(text);
        return 0;
    default:
        break;
    }
    return Scrollable_HandleIn(window, message);
}

static ControlRecord* newText(ControlRecord* parent, DWORD javaStyle, DWORD windowStyle,
                              ErrorRecord* error) {
    auto* text = Control_NewOf<TextRecord>(parent, {.className = L"EDIT",
                                                    .windowProc = controlProc<TextRecord, handle>,
                                                    .javaStyle = javaStyle,
                                                    .windowStyle = windowStyle,
                                                    .error = error});
    if (!text) return nullptr;
    text->dispose = _Dispose_Scrollable;
    text->ctlColorMessage = WM_CTLCOLOREDIT;
    text->passDoubleClicks = TRUE;
    ask(text->hwnd, EM_LIMITTEXT, 0);
    return text;
}

TextFieldRecord* TextField_New(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    DWORD windowStyle = _Control_Style() | ES_AUTOHSCROLL;
    if (style & styleBorder) windowStyle |= WS_BORDER;
    return static_cast<TextFieldRecord*>(newText(parent, style, windowStyle, error));
}

// Where there is no bar to scroll with, the text scrolls by itself.
static DWORD areaStyle(DWORD javaStyle) {
    DWORD style = _Scrollable_Style(javaStyle) | ES_MULTILINE | ES_NOHIDESEL;
    if (!(style & WS_VSCROLL)) style |= ES_AUTOVSCROLL;
    if (javaStyle & styleWrap) return style & ~WS_HSCROLL;
    return style & WS_HSCROLL ? style : style | ES_AUTOHSCROLL;
}

TextAreaRecord* TextArea_New(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    return static_cast<TextAreaRecord*>(newText(parent, style, areaStyle(style), error));
}

// A column of a field is 1.4 times as wide as one of an area.
PixelPair TextField_GetMinimumSize(TextFieldRecord* text, jint columns, ErrorRecord*) {
    PixelPair size = {};
    Control_Run(text, [&](const TextRecord* found) {
        TextExtent extent = measureFont(found->hwnd);
        jint columnWidth = extent.averageWidth * 7 / 5;
        size = minimumSize(found, {columnWidth * columns, extent.lineHeight});
    });
    return size;
}

PixelPair TextArea_GetMinimumSize(TextAreaRecord* text, jint rows, jint columns, ErrorRecord*) {
    PixelPair size = {};
    Control_Run(text, [&](const TextRecord* found) {
        TextExtent extent = measureFont(found->hwnd);
        size = minimumSize(found, {extent.averageWidth * columns, extent.lineHeight * rows});
    });
    return size;
}

jint AbstractTextComponent_GetCharCount(TextRecord* text, ErrorRecord*) {
    return GetWindowTextLengthW(text->hwnd);
}

static NativeString getText(const TextRecord* text, ErrorRecord* error) {
    int length = GetWindowTextLengthW(text->hwnd);
    if (!length) return {L"", false};
    wchar_t* characters = allocateArray<wchar_t>(length + 2);
    if (characters)
        GetWindowTextW(text->hwnd, characters, length + 1);
    else
        Win32Error_SetError(error, errorFailed, noMemoryForText);
    return {characters, true};
}

NativeString AbstractTextComponent_GetText(TextRecord* text, ErrorRecord* error) {
    NativeString characters = {L"", false};
    Control_Run(text, [&](const TextRecord* found) { characters = getText(found, error); });
    return characters;
}

// With the control's line breaks; null with the error set when there is no memory for them.
static const wchar_t* convert(const wchar_t* characters, ErrorRecord* error) {
    const wchar_t* converted = withControlLineBreaks(characters);
    if (!converted) Win32Error_SetError(error, errorFailed, noMemoryForText);
    return converted;
}

static void freeConverted(const wchar_t* converted, const wchar_t* original) {
    if (converted != original) freeBlock(const_cast<wchar_t*>(converted));
}

void AbstractTextComponent_SetText(TextRecord* text, const wchar_t* characters,
                                   ErrorRecord* error) {
    if (!characters) characters = L"";
    const wchar_t* converted = convert(characters, error);
    if (!converted) return;
    SetWindowTextW(text->hwnd, converted);
    freeConverted(converted, characters);
}

static void setSelection(const TextRecord* text, jint start, jint end) {
    ask(text->hwnd, EM_SETSEL, start, end);
    ask(text->hwnd, EM_SCROLLCARET);
}

static void replace(TextRecord* text, const wchar_t* characters, jint start, jint end) {
    constexpr WPARAM canBeUndone = TRUE;
    HWND window = text->hwnd;
    setSelection(text, start, end);
    text->replacing = TRUE;
    ask(text->hwnd, EM_REPLACESEL, canBeUndone, characters);
    text = textOf(window);
    if (text) text->replacing = FALSE;
}

void AbstractTextComponent_Replace(TextRecord* text, const wchar_t* characters, jint start,
                                   jint end, ErrorRecord* error) {
    if (!characters) characters = L"";
    const wchar_t* converted = convert(characters, error);
    if (!converted) return;
    Control_Run(text, [=](TextRecord* found) { replace(found, converted, start, end); });
    freeConverted(converted, characters);
}

static PixelPair getSelection(const TextRecord* text) {
    DWORD start = 0, end = 0;
    ask(text->hwnd, EM_GETSEL, &start, &end);
    return {static_cast<jint>(start), static_cast<jint>(end)};
}

PixelPair AbstractTextComponent_GetSelection(TextRecord* text, ErrorRecord*) {
    return getSelection(text);
}

// Quirk: each reading of a selection leaves a copy of the whole text behind. Pinned by
// TextTest.a_selection_that_is_read_leaves_one_copy_of_the_whole_text.
static NativeString getSelectionText(const TextRecord* text, ErrorRecord* error) {
    PixelPair selection = getSelection(text);
    jint length = selection.y - selection.x;
    if (length < 1) return {L"", false};
    const wchar_t* whole = getText(text, error).text;
    if (!whole) return {nullptr, false};
    wchar_t* part = allocateArray<wchar_t>(length + 1);
    if (part && wcslen(whole) >= static_cast<UINT>(selection.y))
        memcpy(part, whole + selection.x, length * sizeof(wchar_t));
    if (!part) Win32Error_SetError(error, errorFailed, noMemoryForSelection);
    return {part, true};
}

NativeString AbstractTextComponent_GetSelectionText(TextRecord* text, ErrorRecord* error) {
    NativeString characters = {L"", false};
    Control_Run(text,
                [&](const TextRecord* found) { characters = getSelectionText(found, error); });
    return characters;
}

void AbstractTextComponent_SetSelection(TextRecord* text, jint start, jint end, ErrorRecord*) {
    Control_Run(text, [=](const TextRecord* found) { setSelection(found, start, end); });
}

void AbstractTextComponent_SetCaretPosition(TextRecord* text, jint position, ErrorRecord* error) {
    AbstractTextComponent_SetSelection(text, position, position, error);
}

void AbstractTextComponent_SelectAll(TextRecord* text, ErrorRecord*) {
    ask(text->hwnd, EM_SETSEL, 0, -1);
}

void AbstractTextComponent_SetEchoChar(TextRecord* text, jchar echo, ErrorRecord* error) {
    DWORD style = GetWindowLongW(text->hwnd, GWL_STYLE);
    style = echo ? style | ES_PASSWORD : style & ~ES_PASSWORD;
    SetWindowLongW(text->hwnd, GWL_STYLE, style);
    ask(text->hwnd, EM_SETPASSWORDCHAR, echo);
    Control_Redraw(text, error);
}

void AbstractTextComponent_SetEditable(TextRecord* text, bool editable, ErrorRecord*) {
    ask(text->hwnd, EM_SETREADONLY, !editable);
}
