#pragma once
// What a listener is told, as the VM records it: EXPECT_EQ(vm.takeEvents(),
// Events{fired::pointer(pointerPress, 50, 20, buttonLeft)}).

#include "bridge/java_numbers.h"
#include "test_vm.h"

using Events = std::vector<std::string>;

namespace fired {

// Of a key that makes none, in the press.
constexpr jint noCharacter = 0xFFFF;

inline std::string selected() { return TestVm::eventOf("selected", {}); }

inline std::string listSelected(jint index, ListSelection kind) {
    return TestVm::eventOf("listSelected", {index, static_cast<jint>(kind)});
}

inline std::string window(WindowEvent event) {
    return TestVm::eventOf("window", {static_cast<jint>(event)});
}

inline std::string scrolled(jint value, ScrollKind kind) {
    return TestVm::eventOf("scrolled", {value, static_cast<jint>(kind)});
}

inline std::string chosen(jint index) { return TestVm::eventOf("chosen", {index}); }

// code: one of Key's, or a character's.
inline std::string key(KeyKind kind, jint character, jint code, jint modifiers = 0) {
    return TestVm::eventOf("key", {static_cast<jint>(kind), character, code, modifiers});
}

inline std::string modified() { return TestVm::eventOf("modified", {}); }

// In the control's client area.
inline std::string pointer(PointerType type, jint x, jint y, PointerButton button,
                           jint modifiers = 0) {
    return TestVm::eventOf("pointer", {type, x, y, button, modifiers});
}

inline std::string menu() { return TestVm::eventOf("menu", {0}); }

inline std::string focus(FocusChange change) {
    return TestVm::eventOf("focus", {static_cast<jint>(change)});
}

inline std::string paint(jint x, jint y, jint width, jint height) {
    return TestVm::eventOf("paint", {x, y, width, height});
}

inline std::string resize(jint width, jint height) {
    return TestVm::eventOf("resize", {width, height});
}

inline std::string move(jint x, jint y) { return TestVm::eventOf("move", {x, y}); }

// On the screen; one notch forward is -1.
inline std::string wheel(WheelType type, jint x, jint y, jint modifiers, jint amount,
                         jint notches) {
    return TestVm::eventOf("wheel", {type, x, y, modifiers, amount, notches});
}

inline std::string pointerDown(jint x, jint y) { return TestVm::eventOf("pointerDown", {x, y}); }

// Whether an event is told by this method, with whatever arguments.
inline bool isOf(const std::string& event, const std::string& method) {
    return event.starts_with(method + "(");
}

inline bool isPointer(const std::string& event, PointerType type) {
    return event.starts_with("pointer(" + std::to_string(type) + ",");
}

// Those that these methods tell, and those that others do.
Events only(Events events, const std::vector<std::string>& methods);
Events without(Events events, const std::vector<std::string>& methods);

} // namespace fired
