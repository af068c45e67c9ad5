// What becomes of a press with time.

#include "device.h"
#include "faults.h"

static DWORD now; // milliseconds
static DWORD WINAPI answerTime() { return now; }

class PointerTimeTest : public DeviceTest {
  protected:
    PointerTimeTest() {
        control = newControl(OS::Composite_New, newShell());
        listen(control);
        faults.replace("GetTickCount", reinterpret_cast<void*>(answerTime));
    }
    // The last event of it.
    std::string send(UINT message, WPARAM held) {
        vm.takeEvents();
        sendTo(control, message, held, MAKELPARAM(40, 20));
        Events events = fired::only(vm.takeEvents(), {"pointer"});
        return events.empty() ? "" : events.back();
    }

    // Also where the clock begins anew.
    static constexpr DWORD starts[] = {1000000, 0xFFFFFFFF, 0xFFFFFF80};
    jint control;
    Faults faults;
};

TEST_F(PointerTimeTest, a_move_is_a_drag_when_the_time_of_a_double_click_has_passed) {
    DWORD limit = GetDoubleClickTime();
    for (DWORD start : starts)
        for (DWORD elapsed : {0ul, limit - 1, limit, limit + 1, 2 * limit}) {
            now = start;
            send(WM_LBUTTONDOWN, MK_LBUTTON);
            now = start + elapsed;
            EXPECT_EQ(send(WM_MOUSEMOVE, MK_LBUTTON),
                      fired::pointer(elapsed > limit ? pointerDrag : pointerMove, 40, 20,
                                     buttonNone, modifierLeftButton))
                << elapsed << " from " << start;
            send(WM_LBUTTONUP, 0);
        }
}

TEST_F(PointerTimeTest, a_press_is_held_when_it_lasts_longer_than_400_milliseconds) {
    for (DWORD start : starts)
        for (DWORD elapsed : {0, 399, 400, 401, 1000}) {
            now = start;
            send(WM_LBUTTONDOWN, MK_LBUTTON);
            now = start + elapsed;
            EXPECT_EQ(send(WM_LBUTTONUP, 0),
                      fired::pointer(pointerRelease, 40, 20, buttonLeft,
                                     elapsed > 400 ? jint(modifierContextGesture) : 0))
                << elapsed << " from " << start;
        }
}
