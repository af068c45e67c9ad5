#include "widgets/button.h"
#include "image/image.h"
#include "widgets/measuring.h"

namespace {

// What a button shows, and how far it stands from its box.
struct Content {
    LONG width, height, spacing;
};

} // namespace

static constexpr DWORD checkOrRadio = BS_CHECKBOX | BS_RADIOBUTTON;

static DWORD alignmentOf(DWORD javaStyle) {
    if (javaStyle & alignLeft) return BS_LEFT;
    if (javaStyle & alignCenter) return BS_CENTER;
    if (javaStyle & alignRight) return BS_RIGHT;
    return 0;
}

static DWORD styleOf(HWND window) { return GetWindowLongW(window, GWL_STYLE); }

static bool isChecked(HWND window) { return (ask(window, BM_GETCHECK) & BST_CHECKED) != 0; }

// The message may alter the window's style, which Java has set.
static void setChecked(HWND window, bool checked) {
    DWORD style = styleOf(window);
    ask(window, BM_SETCHECK, checked);
    SetWindowLongW(window, GWL_STYLE, style);
}

static LRESULT forceFocus(ButtonRecord* button, HWND focused) {
    HWND window = button->hwnd;
    bool isRadio = styleOf(window) & BS_RADIOBUTTON;
    BOOL wasFocusing = button->focusing; // a listener may give it the focus as well
    if (isRadio) button->focusing = TRUE;
    HWND previous = SetFocus(focused);
    button = static_cast<ButtonRecord*>(controlOf(window));
    if (isRadio && button) button->focusing = wasFocusing;
    return previous != nullptr;
}

// A click toggles radio buttons too: that only one of a group stays selected is Java's to see to.
static LRESULT command(const ButtonRecord* button, Message message) {
    if (message.notification() != BN_CLICKED || button->focusing) return 0;
    HWND window = button->hwnd;
    setChecked(window, !isChecked(window));
    if (const ControlRecord* clicked = controlOf(window)) fireSelection(clicked->callbackTarget);
    return 0;
}

static LRESULT background(const ButtonRecord* button, Message message) {
    DWORD style = styleOf(button->hwnd);
    bool isOwnerDrawn = (style & BS_OWNERDRAW) == BS_OWNERDRAW;
    if (isOwnerDrawn || !(style & checkOrRadio)) return systemColor(COLOR_BTNFACE);
    return send(GetParent(button->hwnd), message);
}

static Content contentOf(const ButtonRecord* button) {
    constexpr LONG leastSpacing = 8;
    if (button->image) {
        Content content = {0, 0, leastSpacing};
        _Image_GetSize(button->image, &content.width, &content.height, nullptr);
        return content;
    }
    TextExtent text = measureText(button->hwnd, DT_CALCRECT | DT_SINGLELINE, {0, 0, 1, 1});
    if (text.isEmpty) return {0, text.height, 0};
    bool isNarrow = text.averageWidth < leastSpacing;
    return {text.width, text.height, isNarrow ? leastSpacing : text.averageWidth};
}

static POINT minimumSize(const ButtonRecord* button) {
    constexpr int checkMargin = 3;
    constexpr int pushMarginX = 12;
    constexpr int pushMarginY = 10;
    HWND window = button->hwnd;
    Content content = contentOf(button);
    LONG width = content.width;
    LONG height = content.height;
    if (styleOf(window) & checkOrRadio) {
        LONG least = GetSystemMetrics(SM_CYSMICON) + checkMargin;
        width += GetSystemMetrics(SM_CXSMICON) + content.spacing;
        if (height < least) height = least;
    } else {
        width += pushMarginX;
        height += pushMarginY;
    }
    LONG borders = 2 * _Control_GetBorderWidth(window);
    return {width + borders, height + borders};
}

static LRESULT handle(ButtonRecord* button, Message message) {
    if (message.id < WM_APP) return Control_Handle(button, message);
    switch (message.id) {
    case controlForceFocus:
        return forceFocus(button, message.window());
    case controlCommand:
        return command(button, message);
    case controlGetMinimumSize:
        message.answer<POINT>() = minimumSize(button);
        return 0;
    case controlGetBackground:
        return background(button, message);
    default:
        return Control_Handle(button, message);
    }
}

static ButtonRecord* newButton(ControlRecord* parent, DWORD javaStyle, DWORD type,
                               ErrorRecord* error) {
    return Control_NewOf<ButtonRecord>(
        parent, {.className = L"BUTTON",
                 .windowProc = controlProc<ButtonRecord, handle>,
                 .javaStyle = javaStyle,
                 .windowStyle = _Control_Style() | type | alignmentOf(javaStyle),
                 .extendedStyle = javaStyle & styleBorder ? DWORD(WS_EX_CLIENTEDGE) : 0,
                 .error = error});
}

static ButtonRecord* newCheckable(ControlRecord* parent, DWORD javaStyle, DWORD type,
                                  ErrorRecord* error) {
    ButtonRecord* button = newButton(parent, javaStyle, type, error);
    if (button) button->inheritsBackground = TRUE;
    return button;
}

ButtonRecord* PushButton_New(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    return newButton(parent, style, BS_PUSHBUTTON, error);
}

ButtonRecord* Checkbox_New(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    return newCheckable(parent, style, BS_CHECKBOX, error);
}

ButtonRecord* RadioButton_New(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    return newCheckable(parent, style, BS_RADIOBUTTON, error);
}

void Button_SetLabel(ButtonRecord* button, const wchar_t* label, ErrorRecord*) {
    SetWindowTextW(button->hwnd, label ? label : L"");
}

void Button_SetSelection(ButtonRecord* button, bool selected, ErrorRecord*) {
    Control_Run(button, [=](const ControlRecord* found) { setChecked(found->hwnd, selected); });
}
