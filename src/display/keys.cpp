#include "display/keys.h"
#include "bridge/java_numbers.h"
#include "bridge/narrow.h"

namespace {

struct KeyRow {
    BYTE virtualKey;
    WORD keyCode;
};

} // namespace

// Scanned in this order, first match wins, in both directions.
// Quirk: Enter of the number pad has a code that no key is told with. Pinned by
// KeyboardTest.enter_comes_from_its_character_with_its_code.
// Quirk: Cancel cannot be sent, as End has the same code. Pinned by
// ServicesTest.keys_are_sent_as_virtual_keys.
static constexpr KeyRow keyTable[] = {
    {VK_MENU, keyAlt},
    {VK_SHIFT, keyShift},
    {VK_CONTROL, keyControl},
    {VK_UP, keyUp},
    {VK_DOWN, keyDown},
    {VK_LEFT, keyLeft},
    {VK_RIGHT, keyRight},
    {VK_PRIOR, keyPageUp},
    {VK_NEXT, keyPageDown},
    {VK_HOME, keyHome},
    {VK_END, keyEnd},
    {VK_INSERT, keyInsert},
    {VK_BACK, keyBackspace},
    {VK_RETURN, keyEnter},
    {VK_DELETE, keyDelete},
    {VK_ESCAPE, keyEscape},
    {VK_TAB, keyTab},
    {VK_F1, keyF1},
    {VK_F2, keyF2},
    {VK_F3, keyF3},
    {VK_F4, keyF4},
    {VK_F5, keyF5},
    {VK_F6, keyF6},
    {VK_F7, keyF7},
    {VK_F8, keyF8},
    {VK_F9, keyF9},
    {VK_F10, keyF10},
    {VK_F11, keyF11},
    {VK_F12, keyF12},
    {VK_F13, keyF13},
    {VK_F14, keyF14},
    {VK_F15, keyF15},
    {VK_MULTIPLY, keyNumpadMultiply},
    {VK_ADD, keyNumpadAdd},
    {VK_RETURN, keyNumpadEnter},
    {VK_SUBTRACT, keyNumpadSubtract},
    {VK_DECIMAL, keyNumpadDecimal},
    {VK_DIVIDE, keyNumpadDivide},
    {VK_NUMPAD0, keyNumpad0},
    {VK_NUMPAD1, keyNumpad1},
    {VK_NUMPAD2, keyNumpad2},
    {VK_NUMPAD3, keyNumpad3},
    {VK_NUMPAD4, keyNumpad4},
    {VK_NUMPAD5, keyNumpad5},
    {VK_NUMPAD6, keyNumpad6},
    {VK_NUMPAD7, keyNumpad7},
    {VK_NUMPAD8, keyNumpad8},
    {VK_NUMPAD9, keyNumpad9},
    {VK_CAPITAL, keyCapsLock},
    {VK_NUMLOCK, keyNumLock},
    {VK_SCROLL, keyScrollLock},
    {VK_PAUSE, keyPause},
    {VK_CANCEL, keyEnd},
    {VK_SNAPSHOT, keyPrintScreen},
};
static_assert(sizeof(keyTable) / sizeof(keyTable[0]) == 54);

jint Key_ToJava(DWORD virtualKey) {
    for (const KeyRow& row : keyTable)
        if (row.virtualKey == virtualKey) return row.keyCode;
    return 0;
}

DWORD Key_FromJava(jint keyCode) {
    for (const KeyRow& row : keyTable)
        if (row.keyCode == keyCode) return row.virtualKey;
    return Key_ToUpper(static_cast<wchar_t>(keyCode));
}

wchar_t Key_GetNumpadCharacter(DWORD virtualKey) {
    if (virtualKey >= VK_NUMPAD0 && virtualKey <= VK_NUMPAD9)
        return static_cast<wchar_t>(L'0' + (virtualKey - VK_NUMPAD0));
    switch (virtualKey) {
    case VK_MULTIPLY:
        return L'*';
    case VK_ADD:
        return L'+';
    case VK_SUBTRACT:
        return L'-';
    case VK_DECIMAL:
        return L'.';
    case VK_DIVIDE:
        return L'/';
    default:
        return 0;
    }
}

// CharUpperW takes a character in place of a pointer when the high word is zero.
wchar_t Key_ToUpper(wchar_t character) {
    auto* packed = reinterpret_cast<wchar_t*>(static_cast<UINT_PTR>(character));
    return static_cast<wchar_t>(reinterpret_cast<UINT_PTR>(CharUpperW(packed)));
}

bool Key_IsDown(int virtualKey) { return narrow(GetKeyState(virtualKey)) < 0; }
