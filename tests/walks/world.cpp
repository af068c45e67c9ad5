#include "world.h"
#include <gtest/gtest.h>

World::World(jint display) {
    Object object;
    object.handle = object.display = uint32_t(display);
    object.kind = kindOf("DisplayRecord");
    object.thread = GetCurrentThreadId();
    handles.add(object, nullptr);
    named[0] = handles.find(object.handle);
}

std::optional<Object> World::find(int step) {
    auto known = named.find(step);
    if (known == named.end()) return {};
    Object now = handles.find(known->second.handle);
    if (now.number != known->second.number || now.isGone) return {};
    if (!now.isLent) return now;
    // What is lent by something that is gone may go at any time.
    Object owner = handles.find(now.owner);
    if (owner.number != now.ownerNumber || owner.isGone) return {};
    return now;
}

std::vector<int> World::allOf(int kind) {
    std::vector<int> found;
    for (const auto& [step, object] : named)
        if ((kind == anyKind || isA(object.kind, kind)) && find(step)) found.push_back(step);
    return found;
}

size_t World::countAll() { return handles.left().size(); }

std::vector<Object> World::lentBy(const Object& owner) {
    std::vector<Object> found;
    for (int step : allOf(anyKind)) {
        Object object = *find(step);
        bool isLent = object.isLent && object.owner == owner.handle;
        if (isLent && object.ownerNumber == owner.number) found.push_back(object);
    }
    return found;
}

void World::enter(int step, const CheckedNative& native, const std::vector<uint32_t>& words,
                  uint32_t result) {
    if (native.made < 0 || !result) return;
    Object object = madeBy(native, words.data(), result, &handles, thread());
    if (!handles.hasAlready(object)) handles.add(object, nullptr);
    named[step] = handles.find(result);
}

int World::lengthOf(uint32_t array) {
    auto found = lengths.find(array);
    return found == lengths.end() ? 0 : found->second;
}

std::optional<Misuse> World::misuseOf(const CheckedNative& native,
                                      const std::vector<uint32_t>& words) {
    return findMisuse(native, words.data(), &handles, this);
}

bool World::isSurvived(const CheckedNative& native, const std::vector<uint32_t>& words) {
    std::optional<Misuse> misuse = misuseOf(native, words);
    return !misuse || misuse->mayGoOn;
}

bool World::isRight(const CheckedNative& native, const std::vector<uint32_t>& words) {
    return !misuseOf(native, words);
}

const std::vector<KnownNative>& knownNatives() {
    static const std::vector<KnownNative> all = [] {
        std::vector<KnownNative> found;
        for (const DeclaredNative& native : declaredNatives())
            if (const CheckedNative* checked = findCheckedNative(native.name))
                found.push_back({native, *checked});
        return found;
    }();
    return all;
}

const KnownNative* findNative(const std::string& name) {
    for (const KnownNative& native : knownNatives())
        if (name == native.declared.name) return &native;
    return nullptr;
}
