#pragma once
// A person who presses the pointer and holds it.

#include "device.h"
#include <algorithm>

class PressingTest : public DeviceTest {
  protected:
    void moveTo(jint control, POINT point) {
        ClientToScreen(windowOf(control), &point);
        call(OS::Display_PostPointerMoveEvent, display, point.x, point.y);
    }
    void post(jint type, jint button = 8) {
        call(OS::Display_PostPointerEvent, display, type, button);
    }
    static long countReleases(const Events& events) {
        return std::count_if(events.begin(), events.end(), [](const std::string& event) {
            return fired::isPointer(event, pointerRelease);
        });
    }

    jint shell = newShell(true, 0x20000);
};

constexpr int heldScrolls = 3;

// A bar whose lower arrow is pressed and held until it has scrolled several times.
class HeldBarTest : public PressingTest {
  protected:
    HeldBarTest() {
        call(OS::Control_SetBounds, bar, 20, 30, 13, 150);
        call(OS::Control_SetVisible, bar, true);
        dispatchAll();
        other = newButton(shell);
        vm.behavior["pointerDown"] = [](const std::vector<jint>&) { return 0; };
    }
    void releaseAfterScrolls(const std::function<void()>& first) {
        vm.behavior["scrolled"] = [=, this](const std::vector<jint>&) {
            if (++scrolls == 1) first();
            if (scrolls == heldScrolls) post(pointerRelease);
            return 0;
        };
    }
    Events hold(jint control, POINT arrow) {
        moveTo(control, arrow);
        post(pointerPress);
        dispatchAll();
        return vm.takeEvents();
    }

    jint bar = call(OS::Scrollbar_New, shell);
    jint other = 0;
    int scrolls = 0;
};
