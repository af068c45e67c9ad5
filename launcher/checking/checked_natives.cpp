#include "checked_natives.h"
#include <string.h>

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all = {
#include "checked_kinds.inc"
    };
    return all;
}

bool isA(int kind, int other) {
    for (; kind >= 0; kind = kinds()[kind].base)
        if (kind == other) return true;
    return false;
}

int kindOf(const char* record) {
    int kind = 0;
    while (strcmp(kinds()[kind].record, record) != 0) ++kind;
    return kind;
}

const std::vector<CheckedNative>& checkedNatives() {
    static const std::vector<CheckedNative> all = {
#include "checked_natives.inc"
    };
    return all;
}

const CheckedNative* findCheckedNative(const std::string& name) {
    for (const CheckedNative& native : checkedNatives())
        if (name == native.name) return &native;
    return nullptr;
}

const std::vector<CheckedEvent>& checkedEvents() {
    static const std::vector<CheckedEvent> all = {
#include "checked_events.inc"
    };
    return all;
}

const CheckedEvent* findCheckedEvent(uint32_t id) {
    for (const CheckedEvent& event : checkedEvents())
        if (event.id == id) return &event;
    return nullptr;
}
