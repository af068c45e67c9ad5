// The quit message that a disposed control posts ends no modal loop of the system's.

#include "held_bar_fixture.h"

static bool takeQuit() {
    MSG message;
    if (!PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) return false;
    EXPECT_EQ(message.wParam, 0u) << "how the application ends";
    return true;
}

TEST_F(HeldBarTest, goes_on_scrolling_when_a_control_is_disposed_of_meanwhile) {
    listen(bar);
    releaseAfterScrolls([this] { dispose(other); });
    Events events = hold(bar, {6, 145});
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
    Events events = hold(bar, {6, 145});
    EXPECT_EQ(scrolls, heldScrolls) << testing::PrintToString(events);
    EXPECT_EQ(countReleases(events), 1) << testing::PrintToString(events);
}

TEST_F(HeldBarTest, goes_on_scrolling_when_it_was_tapped_twice) {
    listen(bar);
    releaseAfterScrolls([this] { dispose(other); });
    moveTo(bar, {6, 145});
    post(pointerPress);
    post(pointerRelease);
    dispatchAll();
    EXPECT_EQ(scrolls, 1);
    other = newButton(shell);
    scrolls = 0;
    post(pointerPress);
    dispatchAll();
    EXPECT_EQ(scrolls, heldScrolls);
}

TEST_F(HeldBarTest, of_the_window_itself_goes_on_scrolling) {
    jint own = call(OS::Scrollable_GetVerticalBar, shell);
    call(OS::Adjustable_SetMaximum, own, 1000);
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
    hold(bar, {6, 145});
    vm.behavior.clear();
    EXPECT_TRUE(seen);
    EXPECT_TRUE(queued) << "the tracking has ended when the release is told";
}

TEST_F(PressingTest, a_quit_is_posted_at_once_where_no_modal_loop_runs) {
    takeQuit();
    dispose(newButton(shell));
    EXPECT_TRUE(takeQuit());
    EXPECT_FALSE(takeQuit());
}
