#pragma once
// Messages of windows: what they carry, under the name of what it is, and the one way to send them.

#include "bridge/error.h"
#include "ce.h"
#include <type_traits>

// What a message carries: a number, a handle, or the address of what its receiver reads or fills.
struct MessageWord {
    LPARAM word;

    template <class Value>
    MessageWord(Value value) {
        if constexpr (std::is_pointer_v<Value>)
            word = reinterpret_cast<LPARAM>(value);
        else
            word = static_cast<LPARAM>(value);
    }
};

// Which of the answers a message has is told where its number is listed. It is passed by value: a
// window procedure receives it in the same registers.
struct Message {
    UINT id;
    WPARAM wParam;
    LPARAM lParam;

    Message as(UINT other) const { return {other, wParam, lParam}; }
    Message about(MessageWord subject) const {
        return {id, static_cast<WPARAM>(subject.word), lParam};
    }

    bool flag() const { return wParam != 0; }
    HDC context() const { return reinterpret_cast<HDC>(wParam); }
    HFONT font() const { return reinterpret_cast<HFONT>(wParam); }

    // The window that the message is about, and the one that it comes from.
    HWND window() const { return reinterpret_cast<HWND>(wParam); }
    HWND sender() const { return reinterpret_cast<HWND>(lParam); }

    // Of WM_COMMAND and what is like it: the command's number, and what the sender tells.
    WORD command() const { return LOWORD(wParam); }
    WORD notification() const { return HIWORD(wParam); }

    // Of the pointer's: where it is, and what is held and turned.
    POINT point() const {
        return {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    }
    bool holds(WPARAM buttons) const { return (wParam & buttons) != 0; }
    int wheelTurn() const { return static_cast<short>(HIWORD(wParam)); }
    WORD hitTest() const { return LOWORD(lParam); }

    // Of the keyboard's.
    DWORD key() const { return wParam; }
    wchar_t character() const { return static_cast<wchar_t>(wParam); }
    bool isRepeated() const { return lParam & 1 << 30; }

    // The record that the message is about; null when it is about none.
    template <class Record>
    Record* record() const {
        return reinterpret_cast<Record*>(wParam);
    }
    // Where the answer goes that is no word.
    template <class Answer>
    Answer& answer() const {
        return *reinterpret_cast<Answer*>(wParam);
    }
    const RECT& bounds() const { return *reinterpret_cast<const RECT*>(wParam); }
    // What comes with the record, or with a message of the system's.
    template <class Details>
    Details* details() const {
        return reinterpret_cast<Details*>(lParam);
    }
    // Of the caller, who waits; null when nobody does.
    ErrorRecord* error() const { return errorAt(lParam); }

    // What the address of an ErrorRecord* argument leads to.
    static ErrorRecord* errorAt(LPARAM address) {
        return address ? *reinterpret_cast<ErrorRecord**>(address) : nullptr;
    }
};

// Sends a message and returns the window's answer. Any thread, for a window of any.
inline LRESULT ask(HWND window, UINT id, MessageWord first = 0, MessageWord second = 0) {
    return SendMessageW(window, id, static_cast<WPARAM>(first.word), second.word);
}

inline LRESULT send(HWND window, Message message) {
    return SendMessageW(window, message.id, message.wParam, message.lParam);
}

// Leaves it to the system.
inline LRESULT callSystem(HWND window, Message message) {
    return DefWindowProcW(window, message.id, message.wParam, message.lParam);
}

// Has a window's earlier procedure handle it; the system when there is none.
[[gnu::always_inline]] inline LRESULT callProc(WNDPROC proc, HWND window, Message message) {
    if (!proc) return callSystem(window, message);
    return CallWindowProcW(proc, window, message.id, message.wParam, message.lParam);
}
