// Modal shells that listeners open within each other, as deep as the system lets them.

#include "device.h"
#include "leaks.h"

// The listener of each shell opens the next one, and closes it before it returns.
class NestedShellsTest : public DeviceTest {
  protected:
    void openWithin(jint owner) {
        constexpr jint titled = 0x20, modal = 0x40;
        jint child = call(OS::Shell_NewChild, owner, titled | modal);
        if (!child) return;
        ++depth;
        call(OS::Widget_SetData, child, vm.newObject("test/Listener"));
        innermost = child;
        call(OS::Control_SetBounds, child, 10, 40, 200, 200);
        call(OS::Control_SetVisible, child, true);
        EXPECT_TRUE(IsWindowEnabled(windowOf(child))) << "what was opened within it is gone";
        dispose(child);
    }
    // By the first event of each shell.
    void openAt(const char* event) {
        vm.behavior[event] = [this](const std::vector<jint>&) {
            jint owner = innermost;
            innermost = 0;
            if (owner) openWithin(owner);
            return 0;
        };
        openWithin(shell);
        vm.behavior.clear();
        dispatchAll();
    }

    jint shell = newShell();
    jint innermost = 0;
    int depth = 0;
};

TEST_F(NestedShellsTest, end_with_a_report_and_close_one_after_the_other) {
    // As many as an application opens by far; where it ends is the system's.
    constexpr int enough = 20;
    for (const char* event : {"window", "focus", "paint"}) {
        LiveCounts before = countLive();
        depth = 0;
        openAt(event);
        EXPECT_GE(depth, enough) << event;
        expectReport("Shell_NewChild", -4, u"Unable to create menu bar!");
        EXPECT_TRUE(IsWindowEnabled(windowOf(shell)));
        LiveCounts after = countLive();
        EXPECT_EQ(after.windows, before.windows);
        EXPECT_EQ(after.heapBlocks, before.heapBlocks);
    }
    jint button = newButton(shell);
    listen(button);
    tap(button);
    Events events = vm.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), fired::selected()), 1);
}
