#include "device.h"
#include "faults.h"
#include "graphics/color.h"
#include "leaks.h"
#include "variety.h"
#include <atomic>
#include <thread>

class ColorTest : public DeviceTest {
  protected:
    jint newColor(jint red, jint green, jint blue) {
        return call(OS::Color_New, display, red, green, blue);
    }
    void disposeColor(jint color) { call(OS::Color_Dispose, color); }
};

TEST_F(ColorTest, keeps_its_components) {
    jint color = newColor(1, 2, 3);
    EXPECT_EQ(call(OS::Color_GetRed, color), 1);
    EXPECT_EQ(call(OS::Color_GetGreen, color), 2);
    EXPECT_EQ(call(OS::Color_GetBlue, color), 3);
    EXPECT_EQ(reinterpret_cast<ColorRecord*>(color)->color, 0x030201u);
    disposeColor(color);
}

TEST_F(ColorTest, components_are_bytes) {
    for (const auto& wrong : std::vector<std::vector<jint>>{
             {256, 0, 0}, {-1, 0, 0}, {0, 256, 0}, {0, -1, 0}, {0, 0, 256}, {0, 0, -1}}) {
        EXPECT_EQ(newColor(wrong[0], wrong[1], wrong[2]), 0);
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, "Color_New");
        EXPECT_EQ(report.code, -3);
        EXPECT_EQ(report.message, u"Invalid color component range");
    }
    jint black = newColor(0, 0, 0);
    jint white = newColor(255, 255, 255);
    EXPECT_NE(black, 0);
    EXPECT_NE(white, 0);
    disposeColor(black);
    disposeColor(white);
}

TEST_F(ColorTest, no_memory_is_an_error) {
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(newColor(1, 2, 3), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.code, -4);
    EXPECT_EQ(report.message, u"Not enough memory to allocate color");
}

TEST_F(ColorTest, takes_its_brush_along) {
    jint shell = newShell();
    NoLeaks noLeaks;
    jint color = newColor(10, 20, 30);
    EXPECT_EQ(reinterpret_cast<ColorRecord*>(color)->brush, nullptr);
    call(OS::Control_SetBackground, shell, color);
    dispatchAll();
    EXPECT_NE(reinterpret_cast<ColorRecord*>(color)->brush, nullptr) << "made to erase with";
    call(OS::Control_SetBackground, shell, 0);
    disposeColor(color);
}

// Java may dispose of a colour before the control that shows it.
TEST_F(ColorTest, lives_as_long_as_a_control_wears_it) {
    jint shell = newShell();
    jint colors[] = {newColor(10, 20, 30), newColor(40, 50, 60)};
    call(OS::Control_SetBackground, shell, colors[0]);
    call(OS::Control_SetForeground, shell, colors[1]);
    for (jint color : colors) disposeColor(color);
    dispatchAll();
    EXPECT_EQ(pixelOf(shell, 5, 5), 0x1E140Au);
    EXPECT_EQ(call(OS::Control_GetBackgroundRGB, shell), 0x0A141E);
    EXPECT_EQ(call(OS::Control_GetForegroundRGB, shell), 0x28323C);
}

TEST_F(ColorTest, goes_with_the_last_control_that_wears_it) {
    NoLeaks noLeaks;
    jint shell = newShell();
    jint button = newButton(shell);
    jint color = newColor(10, 20, 30);
    call(OS::Control_SetBackground, shell, color);
    call(OS::Control_SetBackground, button, color);
    disposeColor(color);
    dispatchAll();
    call(OS::Control_SetBackground, shell, 0);
    dispose(button);
    dispose(shell);
}

static std::atomic<int> brushesMade;
static HBRUSH WINAPI makeSlowly(COLORREF color) {
    ++brushesMade;
    for (int i = 0; i < 50; ++i) SwitchToThread(); // another thread gets as far
    return CreateSolidBrush(color);
}

TEST_F(ColorTest, threads_that_need_its_brush_together_make_one) {
    jint images[2], graphics[2];
    for (int i : {0, 1}) {
        images[i] = call(OS::Image_NewFromSize, display, 4, 4, 0);
        graphics[i] = call(OS::Image_NewGraphics, images[i]);
    }
    Faults faults;
    faults.replace("CreateSolidBrush", reinterpret_cast<void*>(makeSlowly));
    for (int round = 0; round < 20; ++round) {
        jint color = newColor(10, 20, 30);
        brushesMade = 0;
        std::atomic<int> ready = 0;
        auto fill = [&](int i) {
            ++ready;
            while (ready < 2) SwitchToThread();
            call(OS::Graphics_FillBackground, graphics[i], color, 0, 0, 4, 4);
        };
        std::thread other(fill, 1);
        fill(0);
        other.join();
        EXPECT_EQ(brushesMade, 1);
        disposeColor(color);
    }
    for (int i : {0, 1}) {
        call(OS::Graphics_Dispose, graphics[i]);
        call(OS::Image_Dispose, images[i]);
    }
}

TEST_F(ColorTest, system_colours_have_numbers_of_their_own) {
    const int indices[] = {1, 2,  9,  10, 3,  19, 11, 5,  6,  8,  4, 7,  5,
                           8, 13, 14, 17, 15, 8,  22, 20, 16, 21, 0, 24, 23};
    for (jint id = 0; id < 26; ++id) {
        jint color = call(OS::Display_GetSystemColor, display, id);
        EXPECT_EQ(reinterpret_cast<ColorRecord*>(color)->color, GetSysColor(indices[id])) << id;
        disposeColor(color);
    }
}

static std::vector<int> askedIndices;
static DWORD WINAPI recordIndex(int index) {
    askedIndices.push_back(index);
    return 0x030201;
}

TEST_F(ColorTest, the_device_is_asked_for_a_system_colour_by_its_marked_index) {
    Faults faults;
    faults.replace("GetSysColor", reinterpret_cast<void*>(recordIndex));
    askedIndices.clear();
    jint color = call(OS::Display_GetSystemColor, display, 7);
    EXPECT_EQ(askedIndices, std::vector<int>{0x40000005});
    EXPECT_EQ(call(OS::Color_GetRed, color), 1);
    EXPECT_EQ(call(OS::Color_GetBlue, color), 3);
    disposeColor(color);
}

TEST_F(ColorTest, other_system_colours_are_an_error) {
    for (jint id : {-1, 26, 1000}) {
        EXPECT_EQ(call(OS::Display_GetSystemColor, display, id), 0);
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, "Display_GetSystemColor");
        EXPECT_EQ(report.code, -3);
        EXPECT_EQ(report.message, u"Unrecognized color ID");
    }
}

class CursorTest : public DeviceTest {
  protected:
    HCURSOR newCursor(jint type) {
        return reinterpret_cast<HCURSOR>(call(OS::Cursor_New, display, type));
    }
};

TEST_F(CursorTest, is_the_systems) {
    constexpr WORD waiting = 32514;
    const WORD names[] = {32512, 32515, 32513, 32514, 32645, 32644, 32645,
                          32644, 32643, 32642, 32643, 32642, 32649};
    for (jint type = 1; type <= 13; ++type) {
        WORD name = names[type - 1];
        HCURSOR expected = theDevice().hasOnlyWaitCursor && name != waiting
                               ? nullptr
                               : LoadCursorW(nullptr, MAKEINTRESOURCEW(name));
        EXPECT_EQ(newCursor(type), expected) << type;
    }
    EXPECT_EQ(vm.reports.size(), theDevice().hasOnlyWaitCursor ? 1u : 0u) << "of the hand alone";
    vm.reports.clear();
    HCURSOR wait = newCursor(4);
    EXPECT_NE(wait, nullptr);
    call(OS::Cursor_Dispose, reinterpret_cast<jint>(wait));
    EXPECT_EQ(newCursor(4), wait) << "disposing does nothing";
}

TEST_F(CursorTest, of_another_type_is_none_and_no_error) {
    for (jint type : {0, 14, 99, -1}) EXPECT_EQ(newCursor(type), nullptr) << type;
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(CursorTest, only_a_missing_hand_is_an_error) {
    Faults faults;
    faults.fail("LoadCursorW", 0);
    EXPECT_EQ(newCursor(1), nullptr);
    EXPECT_TRUE(vm.reports.empty());
    EXPECT_EQ(newCursor(13), nullptr);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Cursor_New");
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message, u"Unable to create cursor in WinCE");
}
