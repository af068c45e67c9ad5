#include "rules.h"
#include "lengths.h"
#include <array>
#include <string.h>

namespace {

struct Call {
    const CheckedNative& native;
    const uint32_t* arguments;
    Handles* handles;
    Surroundings* surroundings;
    std::array<std::optional<Object>, mostParameters> objects; // of the handles that are not 0

    std::string naming(size_t index) const {
        return std::string(native.name) + ": " + native.parameters[index].name;
    }
    std::string telling(size_t index) const {
        return naming(index) + " " + std::to_string(static_cast<int32_t>(arguments[index]));
    }
};

using Found = std::optional<Misuse>;

} // namespace

static std::string withArticle(int kind) {
    std::string name = kinds()[kind].name;
    bool startsWithVowel = strchr("aeiou", name[0]) != nullptr;
    return (startsWithVowel ? "an " : "a ") + name;
}

static bool isAlive(const Object& object) { return object.number && !object.isGone; }

static int widgetKind() {
    static const int kind = kindOf("WidgetRecord");
    return kind;
}
static int displayKind() {
    static const int kind = kindOf("DisplayRecord");
    return kind;
}
static int graphicsKind() {
    static const int kind = kindOf("GraphicsRecord");
    return kind;
}

Object companionsControl(uint32_t handle, const Object& display, uint32_t thread) {
    // Nobody says what kind of control it is. This one may be given wherever any control may that
    // the public header lets a companion library make.
    static const int kind = kindOf("ScrollableRecord");
    Object object;
    object.handle = handle;
    object.kind = kind;
    object.display = display.handle;
    object.displayNumber = display.number;
    object.thread = thread;
    return object;
}

// What has the handle. A companion library's control may have come, also to the address of another,
// without any native that tells so.
static Object lookUp(const Call& call, uint32_t handle) {
    Object object = call.handles->find(handle);
    uint32_t display = 0;
    if (isAlive(object) || !call.surroundings->isCompanionsControl(handle, &display)) return object;
    call.handles->add(
        companionsControl(handle, call.handles->find(display), call.surroundings->thread()),
        nullptr);
    return call.handles->find(handle);
}

static std::string wanted(const CheckedParameter& parameter) {
    return withArticle(parameter.index) + " is wanted";
}

static Found checkHandle(Call& call, size_t index) {
    const CheckedParameter& parameter = call.native.parameters[index];
    uint32_t handle = call.arguments[index];
    if (handle == 0) {
        if (parameter.maybeNone) return {};
        return Misuse{call.naming(index) + " is 0; " + wanted(parameter), nullptr, false};
    }
    Object object = lookUp(call, handle);
    call.objects[index] = object;
    if (!object.number)
        return Misuse{call.telling(index) + " was never a handle; " + wanted(parameter), nullptr,
                      false};
    if (object.isGone)
        return Misuse{call.telling(index) + ", " + withArticle(object.kind) + ", was disposed of",
                      call.handles->placesOf(handle).ended, false};
    if (!isA(object.kind, parameter.index))
        return Misuse{call.telling(index) + " is " + withArticle(object.kind) + "; " +
                          wanted(parameter),
                      call.handles->placesOf(handle).made, false};
    return {};
}

static Found checkThread(const Call& call, size_t index) {
    if (!call.native.parameters[index].ofThisThread) return {};
    uint32_t handle = call.arguments[index];
    if (call.objects[index]->thread == call.surroundings->thread()) return {};
    return Misuse{call.telling(index) + " belongs to the thread that made it, which alone may call",
                  call.handles->placesOf(handle).made, true};
}

// All that belong to a display belong to the same one, and it is there. What a display leaves
// behind is still to be disposed of.
static Found checkDisplay(const Call& call, size_t index, uint32_t* common) {
    uint32_t handle = call.arguments[index];
    const Object& object = *call.objects[index];
    if (!object.display) return {};
    Object display = call.handles->find(object.display);
    bool isThere = display.number == object.displayNumber && !display.isGone;
    if (!isThere && !call.native.ends)
        return Misuse{call.telling(index) + ", " + withArticle(object.kind) +
                          ", belongs to a display that was disposed of",
                      display.isGone ? call.handles->placesOf(object.display).ended : nullptr,
                      true};
    if (!*common) *common = object.displayNumber;
    if (*common == object.displayNumber) return {};
    return Misuse{call.telling(index) + " belongs to another display than what stands before it",
                  call.handles->placesOf(handle).made, true};
}

static Found checkOwner(const Call& call, size_t index) {
    uint32_t handle = call.arguments[index];
    const Object& object = *call.objects[index];
    if (call.native.ends) {
        if (!object.isLent) return {};
        return Misuse{call.telling(index) + ", " + withArticle(object.kind) +
                          ", goes with what it belongs to and cannot be disposed of",
                      call.handles->placesOf(handle).made, true};
    }
    if (object.kind == graphicsKind()) {
        Object target = call.handles->find(object.owner);
        if (target.number == object.ownerNumber && !target.isGone) return {};
        std::string of = target.number == object.ownerNumber
                             ? withArticle(target.kind) + " that was disposed of"
                             : "what was disposed of";
        return Misuse{call.telling(index) + " draws on " + of,
                      call.handles->placesOf(object.owner).ended, true};
    }
    return {};
}

static Found checkBar(const Call& call) {
    const auto& parameters = call.native.parameters;
    if (parameters.size() < 2 || parameters[1].role != Role::handle) return {};
    static const int ownBar = kindOf("OwnBarRecord"), scrollable = kindOf("ScrollableRecord");
    if (parameters[0].index != scrollable || parameters[1].index != ownBar) return {};
    if (call.objects[1]->owner == call.arguments[0]) return {};
    return Misuse{call.telling(1) + " belongs to another scrollable",
                  call.handles->placesOf(call.arguments[1]).made, true};
}

// What the library does without an array is documented, native by native.
static Found checkLength(const Call& call, size_t index) {
    uint32_t array = call.arguments[index];
    if (!array) return {};
    Elements used = elementsUsed(call.native, call.arguments, index);
    int length = call.surroundings->lengthOf(array);
    if (used.first >= 0 && used.end <= length) return {};
    std::string wrong = used.first < 0 ? " is wanted from index " + std::to_string(used.first)
                                       : " has a length of " + std::to_string(length) + "; " +
                                             std::to_string(used.end) + " is wanted";
    return Misuse{call.naming(index) + wrong + " (" + used.reason + ")", nullptr, true};
}

static Found checkBelonging(const Call& call) {
    uint32_t display = 0; // its number
    for (size_t i = 0; i < call.native.parameters.size(); ++i) {
        if (call.native.parameters[i].role != Role::handle || !call.arguments[i]) continue;
        if (Found misuse = checkThread(call, i)) return misuse;
        if (Found misuse = checkDisplay(call, i, &display)) return misuse;
        if (Found misuse = checkOwner(call, i)) return misuse;
    }
    return checkBar(call);
}

std::optional<Misuse> findMisuse(const CheckedNative& native, const uint32_t* arguments,
                                 Handles* handles, Surroundings* surroundings) {
    Call call = {native, arguments, handles, surroundings, {}};
    for (size_t i = 0; i < native.parameters.size(); ++i)
        if (native.parameters[i].role == Role::handle)
            if (Found misuse = checkHandle(call, i)) return misuse;
    if (Found misuse = checkBelonging(call)) return misuse;
    for (size_t i = 0; i < native.parameters.size(); ++i)
        if (native.parameters[i].role == Role::array)
            if (Found misuse = checkLength(call, i)) return misuse;
    return {};
}

Object madeBy(const CheckedNative& native, const uint32_t* arguments, uint32_t handle,
              Handles* handles, uint32_t thread) {
    Object object;
    object.handle = handle;
    object.kind = native.made;
    object.isLent = native.isLent;
    object.thread = thread;
    bool isOfWidget = !native.parameters.empty() && native.parameters[0].role == Role::handle;
    Object first = isOfWidget ? handles->find(arguments[0]) : Object();
    bool isWidget = isA(native.made, widgetKind());
    if (native.made == displayKind()) object.display = handle;
    if (isWidget) {
        object.display = first.display;
        object.displayNumber = first.displayNumber;
    }
    // A control's own parts are lent by it, all else by its display.
    if (native.isLent && !isWidget) first = handles->find(first.display);
    if (native.isLent || native.made == graphicsKind()) {
        object.owner = first.handle;
        object.ownerNumber = first.number;
    }
    return object;
}
