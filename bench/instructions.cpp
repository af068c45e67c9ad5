// Instructions that the device's processor runs for the library's commonest work, counted exactly
// by the emulated one: lines of "instructions NAME COUNT". What the system's libraries do meanwhile
// is not counted.

#include "device.h"
#include "toolkit.h"
#include <cstdio>

class InstructionsTest : public DeviceTest {
  protected:
    static constexpr jint smallSide = 16, largeSide = 80; // pixels

    template <class Work>
    unsigned long long count(Work work) {
        unsigned long long before = toolkitInstructions();
        work();
        return toolkitInstructions() - before;
    }

    // The first time differs: methods are looked up, contexts made.
    template <class Work>
    void tell(const char* name, Work work) {
        work();
        unsigned long long found = count(work);
        EXPECT_GT(found, 0u) << name;
        EXPECT_EQ(count(work), found) << name << " takes another number each time";
        std::printf("instructions %s %llu\n", name, found);
    }

    // What the second work takes more than the first.
    template <class Less, class More>
    void tellDifference(const char* name, Less less, More more) {
        more();
        less();
        unsigned long long least = count(less);
        more();
        unsigned long long found = count(more);
        EXPECT_GT(found, least) << name;
        std::printf("instructions %s %llu\n", name, found - least);
    }

    // What one pixel more takes, from the smaller square to the larger.
    template <class Work>
    void tellForPixel(const char* name, Work workOnSquare) {
        unsigned long long costs[2];
        for (jint side : {smallSide, largeSide}) {
            workOnSquare(side);
            costs[side == largeSide] = count([&] { workOnSquare(side); });
        }
        unsigned long long pixels = largeSide * largeSide - smallSide * smallSide;
        unsigned long long hundredths = (costs[1] - costs[0]) * 100 / pixels;
        EXPECT_GT(hundredths, 0u) << name;
        std::printf("instructions %s %llu.%02llu\n", name, hundredths / 100, hundredths % 100);
    }

    jint newSquare(jint side, jint alpha) {
        std::vector<jint> pixels(static_cast<size_t>(side) * side, 0x336699);
        return call(OS::Image_NewFromIntData, display, side, side, vm.newInts(pixels), 32, -1,
                    alpha, nullptr);
    }
    void disposeImage(jint image) { call(OS::Image_Dispose, image); }
};

TEST_F(InstructionsTest, are_counted) {
    jint shell = newShell();
    jint button = newButton(shell);
    listen(button);
    auto* widget = reinterpret_cast<WidgetRecord*>(button);

    tell("native_call", [&] { call(OS::Control_InheritsBackground, button); });
    tellDifference(
        "string_taken", [&] { call(OS::Shell_SetText, shell, nullptr); },
        [&, text = vm.newString(u"a title")] { call(OS::Shell_SetText, shell, text); });
    using Fire = void (*)(DWORD, const char*, CallbackTarget*, ...);
    auto fire = reinterpret_cast<Fire>(exportOf("vaCallback"));
    tell("fired_callback", [&] { fire(CB_SELECTION, "()V", widget->callbackTarget); });
    tell("message_through_the_chain", [&] { SendMessageW(windowOf(button), WM_USER + 50, 0, 0); });

    constexpr jint side = 100;
    jint target = call(OS::Image_NewFromSize, display, side, side, 0x808080);
    jint graphics = call(OS::Image_NewGraphics, target);
    const jint squares[] = {newSquare(smallSide, 128), newSquare(largeSide, 128)};
    tellForPixel("pixel_blended", [&](jint squareSide) {
        call(OS::Graphics_DrawImage, graphics, squares[squareSide == largeSide], 0, 0);
    });
    for (jint square : squares) disposeImage(square);
    jintArray pixels = vm.newInts(std::vector<jint>(side * side));
    tellForPixel("pixel_converted", [&](jint squareSide) {
        call(OS::Image_GetRGB, target, 0, 0, squareSide, squareSide, 0, squareSide, pixels);
    });
    call(OS::Graphics_Dispose, graphics);
    disposeImage(target);
    EXPECT_TRUE(vm.reports.empty());
}
