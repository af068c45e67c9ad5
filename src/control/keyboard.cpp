#include "control/input.h"
#include "display/keys.h"

namespace {

struct ResolvedKey {
    bool resolved;
    wchar_t character;
    jint keyCode;
};

} // namespace

static constexpr wchar_t noCharacter = 0xFFFF;
static constexpr jint unresolvedModifiers = -1;

static KeyTranslation& translationOf(ControlRecord* control) {
    return Control_GetDisplay(control)->key;
}

static jint modifiersOfKey(KeyKind kind, jint keyCode) {
    jint held = 0;
    if (Key_IsDown(VK_MENU)) held |= modifierAlt;
    if (Key_IsDown(VK_SHIFT)) held |= modifierShift;
    if (Key_IsDown(VK_CONTROL)) held |= modifierControl;

    // A modifier key reports the state from before its own event.
    jint own = 0;
    if (keyCode == Key_ToJava(VK_MENU)) own = modifierAlt;
    if (keyCode == Key_ToJava(VK_SHIFT)) own = modifierShift;
    if (keyCode == Key_ToJava(VK_CONTROL)) own = modifierControl;
    return kind == KeyKind::pressed ? held & ~own : held | own;
}

static ResolvedKey resolve(KeyTranslation& key, wchar_t initialCharacter) {
    ResolvedKey result = {false, initialCharacter, static_cast<jint>(key.pendingKey)};
    if (key.translate) result.keyCode = Key_ToJava(key.pendingKey);
    if (key.pendingCharacter || key.characterIsZero) result.character = key.pendingCharacter;
    result.resolved = result.keyCode || result.character || key.characterIsZero;
    return result;
}

static bool isArrow(DWORD virtualKey) { return virtualKey >= VK_LEFT && virtualKey <= VK_DOWN; }

static bool isShiftOrControl(DWORD virtualKey) {
    return virtualKey == VK_SHIFT || virtualKey == VK_CONTROL;
}

static bool actsAsTab(DWORD virtualKey) { return virtualKey == VK_F14 || virtualKey == VK_F15; }

static bool dropsAutoRepeat(DWORD virtualKey) {
    switch (virtualKey) {
    case VK_NUMLOCK:
    case VK_SCROLL:
    case VK_CAPITAL:
    case VK_SHIFT:
    case VK_CONTROL:
    case VK_MENU:
        return true;
    default:
        return false;
    }
}

// A waiting quit message answers too, and so does a dead key of a window within this one.
static bool isDeadKeyQueued(HWND window) {
    MSG message;
    return PeekMessageW(&message, window, WM_DEADCHAR, WM_DEADCHAR, PM_NOREMOVE | PM_NOYIELD) &&
           message.message == WM_DEADCHAR && message.hwnd == window;
}

static jint report(ControlRecord* control, const ResolvedKey& key) {
    if (!key.resolved) return 0;
    jint modifiers = modifiersOfKey(KeyKind::pressed, key.keyCode);
    return control->keyHandler(control, KeyKind::pressed, key.character, key.keyCode, modifiers);
}

// With Ctrl and Shift held a letter stands for its control character. False for the at sign, which
// is no event.
static bool makeControlCharacter(KeyTranslation& key, wchar_t character) {
    if (!Key_IsDown(VK_SHIFT)) return true;
    if (character == L'@') return false;
    wchar_t upper = Key_ToUpper(character);
    if (upper >= 64 && upper <= 95) upper &= 0xBF;
    key.pendingCharacter = upper;
    return true;
}

static jint keyDownWithoutCharacter(ControlRecord* control, KeyTranslation& key, DWORD virtualKey) {
    key.pendingKey = virtualKey;
    key.pendingCharacter = Key_GetNumpadCharacter(virtualKey);
    return report(control, resolve(key, noCharacter));
}

// Its character follows in a message of its own, unless Ctrl is held.
static jint keyDownWithCharacter(ControlRecord* control, KeyTranslation& key, DWORD virtualKey,
                                 DWORD character) {
    jint keyCode = Key_ToJava(virtualKey);
    key.pendingKey = keyCode ? keyCode : character;
    if (virtualKey == VK_CANCEL) key.translate = true;
    if (!Key_IsDown(VK_CONTROL)) return 0;
    if (!makeControlCharacter(key, static_cast<wchar_t>(character))) return 0;
    return report(control, resolve(key, noCharacter));
}

jint Control_ProcessKeyDown(HWND window, Message message) {
    ControlRecord* control = controlOf(window);
    if (!control) return 0;
    translationOf(control) = {};
    DWORD pressed = message.key();
    if (message.isRepeated() && dropsAutoRepeat(pressed)) return 0;

    bool deadKeyQueued = isDeadKeyQueued(window);
    control = controlOf(window);
    if (!control) return 0;
    DWORD virtualKey = actsAsTab(pressed) ? VK_TAB : pressed;
    DWORD character = isShiftOrControl(pressed) || isArrow(pressed) ? 0 : pressed;
    KeyTranslation& key = translationOf(control);
    key.translate = character == 0;
    if (deadKeyQueued) {
        key.characterExpected = true;
        key.pendingKey = character ? character : virtualKey;
        return 0;
    }
    key.translate = key.translate || Key_GetNumpadCharacter(virtualKey);
    if (key.translate) return keyDownWithoutCharacter(control, key, virtualKey);
    return keyDownWithCharacter(control, key, virtualKey, character);
}

jint Control_ProcessCharacter(HWND window, Message message) {
    ControlRecord* control = controlOf(window);
    if (!control) return 0;
    KeyTranslation& key = translationOf(control);
    key.pendingCharacter = message.character();
    key.characterIsZero = message.key() == 0;
    ResolvedKey resolved = resolve(key, message.character());
    jint modifiers = resolved.resolved ? modifiersOfKey(KeyKind::pressed, resolved.keyCode)
                                       : unresolvedModifiers;
    return control->keyHandler(control, KeyKind::pressed, resolved.character, resolved.keyCode,
                               modifiers);
}

jint Control_ProcessKeyUp(HWND window, Message message) {
    ControlRecord* control = controlOf(window);
    if (!control) return 0;
    DWORD released = message.key();
    DWORD virtualKey = actsAsTab(released) ? VK_TAB : released;
    bool withoutCharacter = virtualKey == VK_TAB || isShiftOrControl(released) || isArrow(released);
    KeyTranslation& key = translationOf(control);
    // The character still to come reports the key; its state lives on until the next key down.
    if (key.characterExpected) return 0;

    key.translate = withoutCharacter || Key_GetNumpadCharacter(virtualKey);
    if (key.translate) {
        key.pendingKey = virtualKey;
    } else {
        if (virtualKey == VK_CANCEL) key.translate = true;
        if (!key.pendingKey) {
            key.pendingCharacter = 0;
            key.translate = false;
            key.characterIsZero = false;
            return 0;
        }
    }
    ResolvedKey resolved = resolve(key, message.character());
    key = {};
    if (!resolved.resolved) return 0;
    jint modifiers = modifiersOfKey(KeyKind::released, resolved.keyCode);
    return control->keyHandler(control, KeyKind::released, resolved.character, resolved.keyCode,
                               modifiers);
}

bool Control_HandleKey(ControlRecord* control, KeyKind kind, wchar_t character, jint keyCode,
                       jint modifiers) {
    return fireKey(control->callbackTarget, kind, character, keyCode, modifiers);
}

extern "C" jint _Control_ProcessWmKeyDown(HWND window, WPARAM wParam, LPARAM lParam) {
    return Control_ProcessKeyDown(window, {WM_KEYDOWN, wParam, lParam});
}

extern "C" jint _Control_ProcessWmChar(HWND window, WPARAM wParam, LPARAM lParam) {
    return Control_ProcessCharacter(window, {WM_CHAR, wParam, lParam});
}
