// What listeners still do with a widget while it is being disposed of: nothing of it stays that
// nobody would give back.

#include "declared/objects.h"
#include "leaks.h"
#include <algorithm>

using Kind = ObjectKind;

static bool canHaveFocus(Kind kind) {
    return kind >= Kind::shell && kind <= Kind::scrollBar && kind != Kind::label;
}

class EndingWidgetTest : public ObjectsTest, public testing::WithParamInterface<DeclaredNative> {
  protected:
    // The focus, which whoever has it loses in the end: something in the object, or the object.
    void focusIn(Kind kind, jint object) {
        bool isParent = kind == Kind::shell || kind == Kind::childShell;
        jint holder = isParent ? newControl(OS::Composite_New, object, 0) : object;
        inside = isParent ? holder : 0;
        call(OS::Control_ForceFocus, holder);
        if (inside) listen(inside);
        if (kind != Kind::shell) listen(objectOf(Kind::shell));
    }

    void callWhileEnding(size_t kind) {
        const DeclaredNative& native = GetParam();
        call(OS::Control_SetVisible, objectOf(Kind::shell), true);
        Words words;
        for (const Parameter& parameter : native.parameters)
            words.push_back(usualWord(native, parameter, words.empty() ? kind : 0));
        call(OS::Control_SetVisible, jint(words[0]), true);
        focusIn(kindsOfFirst(native)[kind], jint(words[0]));
        jint made = 0;
        int asked = 0;
        vm.behavior["focus"] = [&](const std::vector<jint>&) {
            if (asked++) return 0;
            DWORD result = callAny(exportOf(native.exported), vm.env(), words);
            if (makesAnObject(native)) made = jint(result);
            return 0;
        };
        disposeFirst(jint(words[0]));
        EXPECT_GT(asked, 0) << "no listener was asked";
        vm.behavior.clear();
        if (made) disposeOfResult(native.name, made);
        if (inside) dispose(inside);
        disposeOfObjects();
        vm.reports.clear();
        vm.calls.clear();
        vm.clearException();
    }

    jint inside = 0;
};

TEST_P(EndingWidgetTest, leaves_nothing_behind) {
    std::vector<Kind> kinds = kindsOfFirst(GetParam());
    for (size_t kind = 0; kind < kinds.size(); ++kind) {
        if (!canHaveFocus(kinds[kind])) continue;
        SCOPED_TRACE(static_cast<int>(kinds[kind]));
        callWhileEnding(kind); // what the system makes once
        LiveCounts before = countLive();
        callWhileEnding(kind);
        expectLive(before);
    }
}

static bool takesWhatHasFocus(const DeclaredNative& native) {
    std::vector<Kind> kinds = kindsOfFirst(native);
    return std::any_of(kinds.begin(), kinds.end(), canHaveFocus);
}

INSTANTIATE_TEST_SUITE_P(natives, EndingWidgetTest,
                         testing::ValuesIn(declaredNatives(takesWhatHasFocus)),
                         [](const auto& native) { return std::string(native.param.name); });
