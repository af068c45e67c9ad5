// Graphics contexts on controls whose window goes, or gives way to another.

#include "declared/objects.h"
#include "leaks.h"
#include <set>

namespace {

// What a native is tried with: the usual numbers behind the last limit.
struct Variant {
    bool truth;
    size_t limit;
};

constexpr size_t noLimit = 99;
constexpr Variant variants[] = {{true, noLimit}, {false, noLimit}, {true, 0}, {true, 1}};

} // namespace

static bool isControl(ObjectKind kind) {
    return kind >= ObjectKind::shell && kind <= ObjectKind::scrollBar;
}

class LostWindowTest : public ObjectsTest {
  protected:
    DWORD wordOf(const DeclaredNative& native, const Parameter& parameter, size_t kind,
                 const Variant& variant) {
        const Meaning* meaning = meaningOf(native.name, parameter.name);
        if (parameter.type == "boolean") return asWord(jboolean(variant.truth));
        bool isNumber = parameter.type == "int" && meaning && meaning->isNumber();
        if (isNumber && variant.limit < meaning->limits.size())
            return meaning->limits[variant.limit];
        return usualWord(native, parameter, kind);
    }

    // Whether it changes anything for the native.
    static bool matters(const DeclaredNative& native, const Variant& variant) {
        if (variant.truth && variant.limit == noLimit) return true;
        for (const Parameter& parameter : native.parameters) {
            const Meaning* meaning = meaningOf(native.name, parameter.name);
            bool isLimited = parameter.type == "int" && meaning && meaning->isNumber() &&
                             variant.limit < meaning->limits.size();
            if (isLimited || (!variant.truth && parameter.type == "boolean")) return true;
        }
        return false;
    }

    Words wordsOf(const DeclaredNative& native, size_t kind, const Variant& variant) {
        Words words;
        for (const Parameter& parameter : native.parameters)
            words.push_back(wordOf(native, parameter, words.empty() ? kind : 0, variant));
        return words;
    }

    // With a pen, a brush and a font of its own.
    void furnish(jint graphics) {
        call(OS::Graphics_SetForeground, graphics, objectOf(ObjectKind::color));
        call(OS::Graphics_SetBackground, graphics, objectOf(ObjectKind::color));
        call(OS::Graphics_SetLineWidth, graphics, 3);
        call(OS::Graphics_SetFont, graphics, objectOf(ObjectKind::font));
    }

    void drawWith(jint graphics) {
        call(OS::Graphics_DrawLine, graphics, 1, 2, 9, 7);
        call(OS::Graphics_FillRectangle, graphics, 1, 2, 9, 7);
        call(OS::Graphics_DrawString, graphics, vm.newString(u"text"), 1, 2, 0);
    }

    // Whether the control has another window than before, or none.
    bool callOn(const DeclaredNative& native, const Words& words) {
        auto control = jint(words[0]);
        jint graphics = call(OS::Control_NewGraphics, control);
        if (!graphics) return false;
        HWND before = windowOf(control);
        furnish(graphics);
        DWORD made = callAny(exportOf(native.exported), vm.env(), words);
        if (native.result == std::string("int")) disposeOfResult(native.name, jint(made));
        bool isLost = !IsWindow(before);
        furnish(graphics);
        drawWith(graphics);
        call(OS::Graphics_Dispose, graphics);
        vm.reports.clear();
        vm.clearException();
        return isLost;
    }

    bool losesWindow(const DeclaredNative& native) {
        bool isLost = false;
        std::vector<ObjectKind> kinds = kindsOfFirst(native);
        for (size_t kind = 0; kind < kinds.size(); ++kind)
            for (const Variant& variant : variants)
                if (isControl(kinds[kind]) && matters(native, variant))
                    isLost = callOn(native, wordsOf(native, kind, variant)) || isLost;
        disposeOfObjects();
        return isLost;
    }

    // Fills all that the context may draw on, and all that it no longer may.
    void fillWith(jint color, jint graphics) {
        call(OS::Graphics_SetBackground, graphics, color);
        call(OS::Graphics_FillRectangle, graphics, 0, 0, 500, 500);
        vm.reports.clear();
    }
};

TEST_F(LostWindowTest, gives_all_back_that_a_context_on_it_had) {
    std::set<std::string> losing;
    for (const DeclaredNative& native : declaredNatives()) {
        if (native.name == std::string(OS::Widget_Dispose.name)) continue; // below
        SCOPED_TRACE(native.name);
        losesWindow(native); // what the system makes once
        NoLeaks noLeaks;
        if (losesWindow(native)) losing.insert(native.name);
    }
    EXPECT_EQ(losing, (std::set<std::string>{"List_SetMultipleMode", "Scrollbar_SetOrientation"}));
}

TEST_F(LostWindowTest, gives_all_back_with_whatever_takes_it_along) {
    static const struct {
        const char* what;
        ObjectKind disposed;
        bool byTheSystem;
    } rows[] = {{"the control is disposed of", ObjectKind::composite, false},
                {"its shell is disposed of", ObjectKind::shell, false},
                {"the system destroys the control", ObjectKind::composite, true},
                {"the system destroys its shell", ObjectKind::shell, true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        NoLeaks noLeaks;
        jint shell = call(OS::Shell_New, display, 0);
        jint composite = call(OS::Composite_New, shell, 0);
        jint graphics = call(OS::Control_NewGraphics, composite);
        furnish(graphics);
        jint disposed = row.disposed == ObjectKind::shell ? shell : composite;
        if (row.byTheSystem)
            DestroyWindow(windowOf(disposed));
        else
            call(OS::Widget_Dispose, disposed);
        furnish(graphics);
        drawWith(graphics);
        call(OS::Graphics_Dispose, graphics);
        for (jint left : {composite, shell})
            if (row.byTheSystem || left != disposed) call(OS::Widget_Dispose, left);
        vm.reports.clear();
        disposeOfObjects();
    }
}

// The system gives a context that it took back to whoever asks next.
TEST_F(LostWindowTest, leaves_its_context_nothing_to_draw_on) {
    for (const auto& lose : std::vector<std::function<void(jint)>>{
             [&](jint bar) { call(OS::Scrollbar_SetOrientation, bar, 8); },
             [&](jint bar) { call(OS::Widget_Dispose, bar); }}) {
        jint shell = newShell(), color = objectOf(ObjectKind::color);
        jint bar = newControl(OS::Scrollbar_New, shell);
        jint stale = call(OS::Control_NewGraphics, bar);
        lose(bar);
        jint neighbour = newControl(OS::PushButton_New, shell, 0, {20, 100, 120, 140});
        dispatchAll();
        jint graphics = call(OS::Control_NewGraphics, neighbour);
        COLORREF before = pixelOf(neighbour, 5, 5);
        fillWith(color, stale);
        EXPECT_EQ(pixelOf(neighbour, 5, 5), before) << "of another's";
        call(OS::Graphics_Dispose, stale);
        fillWith(color, graphics);
        EXPECT_EQ(pixelOf(neighbour, 5, 5), RGB(10, 20, 30)) << "the other's context went with it";
        call(OS::Graphics_Dispose, graphics);
    }
}
