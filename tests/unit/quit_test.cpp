// The quit message that a disposed control posts ends no modal loop of the system's.

#include "device.h"
#include "display/display.h"
#include "display/quit.h"
#include <algorithm>

class QuitTest : public DeviceTest {
  protected:
    static bool takeQuit() {
        MSG message;
        return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    }
    void moveTo(jint control, POINT point) {
        ClientToScreen(windowOf(control), &point);
        call<jboolean(jint, jint, jint)>("Display_PostPointerMoveEvent", display, point.x, point.y);
    }
    void post(jint type) {
        call<jboolean(jint, jint, jint)>("Display_PostPointerEvent", display, type, 8);
    }
    static long countReleases(const Events& events) {
        return std::count_if(events.begin(), events.end(), [](const std::string& event) {
            return event.starts_with("pointer(2,");
        });
    }

    jint shell = newShell(true, 0x20000);
};

static constexpr int heldScrolls = 3;

// A bar whose lower arrow is pressed and held until it has scrolled several times.
class HeldBarTest : public QuitTest {
  protected:
    HeldBarTest() {
        call<void(jint, jint, jint, jint, jint)>("Control_SetBounds", bar, 20, 30, 13, 200);
        call<void(jint, jboolean)>("Control_SetVisible", bar, JNI_TRUE);
        dispatchAll();
        other = newButton(shell);
        vm.behavior["pointerDown"] = [](const std::vector<jint>&) { return 0; };
    }
    void releaseAfterScrolls(const std::function<void()>& first) {
        vm.behavior["scrolled"] = [=, this](const std::vector<jint>&) {
            if (++scrolls == 1) first();
            if (scrolls == heldScrolls) post(2);
            return 0;
        };
    }
    Events hold(jint control, POINT arrow) {
        moveTo(control, arrow);
        post(1);
        dispatchAll();
        return vm.takeEvents();
    }

    jint bar = call<jint(jint)>("Scrollbar_New", shell);
    jint other = 0;
    int scrolls = 0;
};

TEST_F(HeldBarTest, goes_on_scrolling_when_a_control_is_disposed_of_meanwhile) {
    listen(bar);
    releaseAfterScrolls([this] { dispose(other); });
    Events events = hold(bar, {6, 195});
    EXPECT_EQ(scrolls, heldScrolls) << testing::PrintToString(events);
    EXPECT_EQ(countReleases(events), 1) << testing::PrintToString(events);
}

TEST_F(HeldBarTest, goes_on_scrolling_when_a_control_was_disposed_of_just_before) {
    listen(bar);
    vm.behavior["pointer"] = [this](const std::vector<jint>& event) {
        if (event[0] == 1) dispose(other);
        return 0;
    };
    releaseAfterScrolls([] {});
    Events events = hold(bar, {6, 195});
    EXPECT_EQ(scrolls, heldScrolls) << testing::PrintToString(events);
    EXPECT_EQ(countReleases(events), 1) << testing::PrintToString(events);
}

TEST_F(HeldBarTest, goes_on_scrolling_when_it_was_tapped_twice) {
    listen(bar);
    releaseAfterScrolls([this] { dispose(other); });
    moveTo(bar, {6, 195});
    post(1);
    post(2);
    dispatchAll();
    EXPECT_EQ(scrolls, 1);
    other = newButton(shell);
    scrolls = 0;
    post(1);
    dispatchAll();
    EXPECT_EQ(scrolls, heldScrolls);
}

TEST_F(HeldBarTest, of_the_window_itself_goes_on_scrolling) {
    jint own = call<jint(jint)>("Scrollable_GetVerticalBar", shell);
    call<void(jint, jint)>("Adjustable_SetMaximum", own, 1000);
    listen(own);
    releaseAfterScrolls([this] { dispose(other); });
    RECT client;
    GetClientRect(windowOf(shell), &client);
    hold(shell, {client.right + 5, client.bottom - 5});
    EXPECT_EQ(scrolls, heldScrolls);
}

TEST_F(HeldBarTest, leaves_the_quit_message_to_the_displays_own_loop) {
    listen(bar);
    releaseAfterScrolls([this] { dispose(other); });
    bool seen = false, queued = false;
    vm.behavior["pointer"] = [&](const std::vector<jint>& event) {
        if (event[0] != 2) return 0;
        seen = true;
        queued = takeQuit();
        return 0;
    };
    hold(bar, {6, 195});
    EXPECT_TRUE(seen);
    EXPECT_TRUE(queued) << "the tracking has ended when the release is told";
}

TEST_F(QuitTest, is_posted_at_once_where_no_modal_loop_runs) {
    takeQuit();
    dispose(newButton(shell));
    EXPECT_TRUE(takeQuit());
    EXPECT_FALSE(takeQuit());
}
