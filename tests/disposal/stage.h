#pragma once
// A small application on the emulated device, one widget of which is watched: what a listener of
// that widget may do to all of it, and what must still work afterwards.

#include "device.h"
#include <functional>
#include <set>

enum class Role { control, shell, ownBar, item };

class Stage;

// A widget that Java can make.
struct Kind {
    const char* name;   // as its native has it: PushButton for PushButton_New
    const char* native; // that makes it, by its Java name
    Role role;
    std::function<jint(Stage&)> make;
};

// What makes a widget fire.
struct Provocation {
    const char* name;
    std::vector<Role> roles;
    // The events at which a listener does something, as keyOf has them; those that it cannot fire
    // on a kind of widget are left out there.
    std::vector<const char*> keys;
    std::function<void(Stage&)> provoke;
};

// What the listener does.
struct Action {
    const char* name;
    std::function<bool(const Stage&)> isPossible; // null: always
    std::function<void(Stage&)> act;
};

// "pointer1" of "pointer(1, 5, 5, 8, 0)": the method, and what tells its events apart.
std::string keyOf(const std::string& event);

class Stage : public DeviceTest {
  public:
    explicit Stage(const Kind& kind);
    ~Stage() override;
    void TestBody() override {}

    // Provokes the widget, acts in its first event of the key (null: in none), and dispatches all
    // that follows. Returns the widget's events.
    Events play(const Provocation& provocation, const char* key, const Action* action);
    // Whether the event that was waited for came.
    bool hasActed() const { return acted; }
    // While it is being provoked, and not before.
    bool isPlaying() const { return playing && !isPreparing; }
    // How often the person had to let go of the pointer once more, because something else than what
    // was pressed got the first time.
    int countFurtherReleases() const { return furtherReleases; }

    // A tap on a button of a new shell is reported, each of its events once. A display that is
    // gone is followed by a new one.
    void expectNextTapWorks();

    using DeviceTest::display;
    using DeviceTest::vm;
    using DeviceTest::windowOf;

    // For kinds, provocations and actions.
    template <class Signature, class... Arguments>
    jint make(const Native<Signature>& native, Arguments... arguments) {
        made.push_back(call(native, arguments...));
        return made.back();
    }
    // The vertical bar of a scrollable.
    jint vertical(jint scrollable) { return call(OS::Scrollable_GetVerticalBar, scrollable); }
    void add(const Native<void(jint, jstring, jint)>& native, jint widget, jint index) {
        call(native, widget, vm.newString(u"item"), index);
    }
    template <class Signature, class... Arguments>
    void tell(const Native<Signature>& native, jint widget, Arguments... arguments) {
        if (!isGone(widget)) call(native, widget, arguments...);
        surface();
    }
    void show(jint control, bool shown = true);
    void place(jint control, RECT place);
    void end(jint widget);
    void endDisplay();
    void throwException() { vm.pendingException = "java/lang/IllegalStateException"; }
    void runFileDialog();
    void showModalShell();
    void answerPointerDown(jint answer) { pointerDownAnswer = answer; }
    // Of the window that the subject has, or is shown in; null when it is gone.
    HWND window() const;
    HWND windowIfThere(jint control) const { return isGone(control) ? nullptr : windowOf(control); }
    void post(UINT message, WPARAM wParam, LPARAM lParam);
    void send(UINT message, WPARAM wParam, LPARAM lParam);
    LPARAM middle() const;
    void pump();
    // Does what must have been done before the widget is watched.
    void prepare(const std::function<void()>& work);
    bool isGone(jint widget) const { return gone.count(widget) != 0; }

    const Kind& kind;
    jint shell = 0, parent = 0, subject = 0;
    jint other = 0;     // can have the focus; in the shell
    jint bystander = 0; // beside the subject
    jint bar = 0, barItem = 0, menu = 0;

  private:
    void surface() { vm.clearException(); }
    static void CALLBACK letGo(HWND, UINT, UINT_PTR, DWORD);
    void watch(const char* key, const Action* action);

    std::vector<jint> made; // parents first
    std::set<jint> gone;
    static inline int furtherReleases;
    bool acted = false, playing = false, isPreparing = false;
    jint pointerDownAnswer = 2;
};
