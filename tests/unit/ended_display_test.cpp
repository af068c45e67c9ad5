// What is done with the widgets of a display that has ended: nothing is made for it any more that
// nobody would give back.

#include "declared/objects.h"
#include "display/display.h"
#include "leaks.h"

class EndedDisplayTest : public ObjectsTest, public testing::WithParamInterface<DeclaredNative> {
  protected:
    // With objects of a display that ends before the call.
    void callAfterTheEnd(size_t kind) {
        const DeclaredNative& native = GetParam();
        jint living = display;
        display = call(OS::Display_New);
        Words words;
        for (const Parameter& parameter : native.parameters)
            words.push_back(usualWord(native, parameter, words.empty() ? kind : 0));
        hasTable = reinterpret_cast<DisplayRecord*>(display)->commandItems != nullptr;
        call(OS::Device_Dispose, display);
        DWORD made = callAny(exportOf(native.exported), vm.env(), words);
        if (made && native.result == std::string("int")) disposeOfResult(native.name, jint(made));
        disposeOfObjects();
        vm.reports.clear();
        vm.clearException();
        display = living;
    }

    bool hasTable = false; // of commands, which another display lets stay
};

TEST_P(EndedDisplayTest, leaves_nothing_behind) {
    for (size_t kind = 0; kind < kindsOfFirst(GetParam()).size(); ++kind) {
        SCOPED_TRACE(kind);
        callAfterTheEnd(kind); // what the system makes once
        LiveCounts before = countLive();
        callAfterTheEnd(kind);
        before.heapBlocks += hasTable;
        expectLive(before);
    }
}

// A widget outlives its display; displays and widgets that are ended have no say.
static bool takesWidget(const DeclaredNative& native) {
    std::vector<ObjectKind> kinds = kindsOfFirst(native);
    bool takesNone =
        kinds.empty() || kinds.front() <= ObjectKind::display || kinds.front() >= ObjectKind::color;
    return !takesNone && native.name != std::string(OS::Widget_Dispose.name);
}

INSTANTIATE_TEST_SUITE_P(natives, EndedDisplayTest, testing::ValuesIn(declaredNatives(takesWidget)),
                         [](const auto& native) { return std::string(native.param.name); });
