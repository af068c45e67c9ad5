#include "device.h"
#include "faults.h"
#include "variety.h"

class ServicesTest : public DeviceTest {
  protected:
    static std::vector<INPUT> sent;
    static std::vector<std::pair<BYTE, DWORD>> keys;
    static UINT WINAPI recordInput(UINT count, INPUT* inputs, int size) {
        EXPECT_EQ(size, 28);
        sent.insert(sent.end(), inputs, inputs + count);
        return count;
    }
    static void WINAPI recordKey(BYTE virtualKey, BYTE scanCode, DWORD flags, ULONG_PTR) {
        EXPECT_EQ(scanCode, 0);
        keys.emplace_back(virtualKey, flags);
    }
    ServicesTest() {
        sent.clear();
        keys.clear();
        faults.replace("SendInput", reinterpret_cast<void*>(recordInput));
        faults.replace("keybd_event", reinterpret_cast<void*>(recordKey));
    }
    int keySentFor(jint key) {
        keys.clear();
        EXPECT_EQ(call(OS::Display_PostKeyEvent, display, 1, key, u'\0'), JNI_TRUE);
        return keys.at(0).first;
    }
    jboolean post(jint type, jint button) {
        return call(OS::Display_PostPointerEvent, display, type, button);
    }
    Faults faults;
};
std::vector<INPUT> ServicesTest::sent;
std::vector<std::pair<BYTE, DWORD>> ServicesTest::keys;

TEST_F(ServicesTest, keys_are_sent_as_virtual_keys) {
    EXPECT_EQ(keySentFor(1008), VK_END) << "not Cancel, which has the same code";
    EXPECT_EQ(keySentFor(1082), VK_RETURN);
    EXPECT_EQ(keySentFor(1002), VK_RETURN);
    EXPECT_EQ(keySentFor('a'), 'A');
    EXPECT_EQ(keySentFor('z'), 'Z');
    EXPECT_EQ(keySentFor('A'), 'A');
    EXPECT_EQ(keySentFor('{'), '{');
    EXPECT_EQ(keySentFor(1037), VK_F15);
}

TEST_F(ServicesTest, a_press_goes_down_and_any_other_type_up) {
    call(OS::Display_PostKeyEvent, display, 1, 'a', u'x');
    call(OS::Display_PostKeyEvent, display, 2, 'a', u'x');
    EXPECT_EQ(keys, (std::vector<std::pair<BYTE, DWORD>>{{'A', 1}, {'A', 3}}));
}

TEST_F(ServicesTest, three_pointer_buttons_are_sent) {
    const struct {
        jint button;
        DWORD down, up;
    } rows[] = {{8, 0x2, 0x4}, {16, 0x20, 0x40}, {32, 0x8, 0x10}};
    for (const auto& row : rows) {
        sent.clear();
        EXPECT_EQ(post(pointerPress, row.button), JNI_TRUE);
        EXPECT_EQ(post(pointerRelease, row.button), JNI_TRUE);
        EXPECT_EQ(sent.at(0).mi.dwFlags, row.down);
        EXPECT_EQ(sent.at(1).mi.dwFlags, row.up);
    }
}

TEST_F(ServicesTest, another_pointer_button_is_refused_and_nothing_sent) {
    EXPECT_EQ(post(pointerPress, 4), JNI_FALSE);
    EXPECT_TRUE(sent.empty());
}

TEST_F(ServicesTest, input_that_the_system_refuses_is_told) {
    faults.replace("SendInput", nullptr);
    faults.fail("SendInput", 0);
    EXPECT_EQ(post(pointerPress, buttonLeft), JNI_FALSE);
    EXPECT_EQ(call(OS::Display_PostPointerMoveEvent, display, 1, 1), JNI_FALSE);
}

TEST_F(ServicesTest, a_move_is_absolute_on_the_scale_of_the_screen) {
    LONG right = theDevice().screen.cx - 1, bottom = theDevice().screen.cy - 1;
    call(OS::Display_PostPointerMoveEvent, display, right, bottom);
    call(OS::Display_PostPointerMoveEvent, display, 100, 7);
    EXPECT_EQ(sent.at(0).mi.dwFlags, 0x8001u);
    EXPECT_EQ(sent.at(0).mi.dx, 65535);
    EXPECT_EQ(sent.at(0).mi.dy, 65535);
    EXPECT_EQ(sent.at(1).mi.dx, 100 * 65535 / right);
    EXPECT_EQ(sent.at(1).mi.dy, 7 * 65535 / bottom);
}

TEST_F(ServicesTest, a_real_move_reaches_exactly_its_pixel) {
    faults.replace("SendInput", nullptr);
    LONG right = theDevice().screen.cx - 1, bottom = theDevice().screen.cy - 1;
    for (POINT point : {POINT{0, 0}, POINT{right, bottom}, POINT{1, 1}, POINT{100, 7},
                        POINT{right - 1, bottom - 1}}) {
        call(OS::Display_PostPointerMoveEvent, display, point.x, point.y);
        POINT now;
        GetCursorPos(&now);
        EXPECT_EQ(now.x, point.x);
        EXPECT_EQ(now.y, point.y);
    }
}

static BOOL WINAPI answerWorkArea(UINT action, UINT size, void* data, UINT profile) {
    if (action != SPI_GETWORKAREA || size || profile) return FALSE;
    *static_cast<RECT*>(data) = {1, 26, theDevice().screen.cx - 2, theDevice().screen.cy - 20};
    return TRUE;
}

TEST_F(ServicesTest, insets_are_what_the_work_area_leaves_of_the_screen) {
    faults.replace("SystemParametersInfoW", reinterpret_cast<void*>(answerWorkArea));
    EXPECT_EQ(vm.ints(call(OS::Display_GetInsets, display)), (std::vector<jint>{1, 26, 2, 20}));
}

TEST_F(ServicesTest, clearing_the_focus_leaves_no_window_with_it) {
    jint button = newButton(newShell());
    call(OS::Control_ForceFocus, button);
    ASSERT_EQ(GetFocus(), windowOf(button));
    call(OS::Display_ClearFocus, display);
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST_F(ServicesTest, the_beep_beeps) {
    call(OS::Display_Beep, display);
    EXPECT_EQ(faults.countCalls("MessageBeep"), 1);
}

TEST_F(ServicesTest, a_full_screen_shell_is_not_offered_and_no_error) {
    call(OS::Display_SetFullScreenShell, display, 0);
    EXPECT_TRUE(faults.calls().empty());
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ServicesTest, the_screen_is_the_devices) {
    EXPECT_EQ(vm.ints(call(OS::Device_GetBounds, display)),
              (std::vector<jint>{0, 0, theDevice().screen.cx, theDevice().screen.cy}));
}
