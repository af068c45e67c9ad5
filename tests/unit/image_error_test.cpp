// Images that cannot be made or read.

#include "faults.h"
#include "image_fixture.h"
#include "leaks.h"

static const char16_t noHandle[] = u"Unable to create device-independent image handle";

class ImageErrorTest : public ImageFixture {};

TEST_F(ImageErrorTest, a_section_that_cannot_be_made) {
    Faults faults;
    faults.fail("CreateDIBSection", 0, ERROR_INVALID_PARAMETER);
    EXPECT_EQ(newImage(1, 1, 0), 0);
    expectReport("Image_NewFromSize", -3, std::u16string(noHandle) + u"::");
    EXPECT_EQ(newDirect(1, 1, {0}, 24), 0);
    expectReport("Image_NewFromIntData", -3, std::u16string(noHandle) + u"::");
    EXPECT_EQ(newIndexed(1, 1, {0}, 1, 8, {0}), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Image_NewFromByteData");
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message, noHandle) << "without the system's text";
}

TEST_F(ImageErrorTest, the_systems_out_of_memory_is_told_as_such) {
    Faults faults;
    faults.fail("CreateDIBSection", 0, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(newImage(1, 1, 0), 0);
    expectReport("Image_NewFromSize", -4, std::u16string(noHandle) + u"::");
}

TEST_F(ImageErrorTest, a_copy_or_flip_without_a_section) {
    jint image = newImage(1, 1, 0);
    {
        NoLeaks noLeaks;
        HeldImage held(image);
        Faults faults;
        faults.fail("CreateDIBSection", 0, ERROR_INVALID_PARAMETER);
        EXPECT_EQ(copyOf(image), 0);
        expectReport("Image_NewFromHandle", -3, std::u16string(noHandle) + u"::");
        EXPECT_TRUE(held.isHeld());
        EXPECT_EQ(flip(image, false, false, 0, 0, 1, 1), 0);
        expectReport("Image_Flip", -3, std::u16string(noHandle) + u"::");
    }
    disposeImage(image);
}

TEST_F(ImageErrorTest, the_systems_text_is_that_of_the_failed_call) {
    jint image = newImage(1, 1, 0);
    Faults faults;
    faults.fail("CreateDIBSection", 0, ERROR_INVALID_PARAMETER);
    copyOf(image);
    const std::u16string copied = onlyReport().message;
    newImage(1, 1, 0);
    EXPECT_EQ(copied, onlyReport().message) << "not that of what was called since";
    disposeImage(image);
}

TEST_F(ImageErrorTest, sizes_that_are_none) {
    for (const auto& [width, height] : std::vector<std::pair<jint, jint>>{
             {0, 1}, {1, 0}, {-1, 1}, {0, 0}, {INT_MIN, 1}, {0x7FFFFFFF, 0x7FFFFFFF}}) {
        EXPECT_EQ(newImage(width, height, 0), 0) << width << " x " << height;
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, "Image_NewFromSize");
        EXPECT_NE(report.code, 0);
        EXPECT_EQ(report.message.find(noHandle), 0u);
    }
}

TEST_F(ImageErrorTest, without_memory_for_the_record_nothing_is_left) {
    jint source = newImage(1, 1, 0);
    newShell();
    {
        NoLeaks noLeaks;
        Faults faults;
        faults.fail("LocalAlloc");
        EXPECT_EQ(newImage(1, 1, 0), 0);
        expectReportWithoutMessage("Image_NewFromSize", -4);
        faults.fail("LocalAlloc");
        EXPECT_EQ(newDirect(1, 1, {0}, 24), 0);
        expectReportWithoutMessage("Image_NewFromIntData", -4);
        faults.fail("LocalAlloc", 2);
        EXPECT_EQ(newIndexed(1, 1, {0}, 1, 8, {0}), 0);
        expectReportWithoutMessage("Image_NewFromByteData", -4);
        faults.fail("LocalAlloc");
        EXPECT_EQ(copyOf(source), 0);
        expectReportWithoutMessage("Image_NewFromHandle", -4);
        faults.fail("LocalAlloc");
        EXPECT_EQ(flip(source, false, false, 0, 0, 1, 1), 0);
        expectReportWithoutMessage("Image_Flip", -4);
    }
    disposeImage(source);
}

TEST_F(ImageErrorTest, without_memory_for_the_palette) {
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(newIndexed(1, 1, {0}, 1, 8, {0}), 0);
    expectReport("Image_NewFromByteData", -4, u"Not enough memory to create image");
    EXPECT_EQ(call(OS::Image_NewFromByteData, display, 1, 1, vm.newBytes({0}), 1, 8,
                   vm.newBytes({0}), vm.newBytes({0}), vm.newBytes({0}), 0x7FFFFFFF, -1),
              0);
    expectReport("Image_NewFromByteData", -4, u"Not enough memory to create image");
}

TEST_F(ImageErrorTest, a_negative_palette_size_is_none) {
    jint image = call(OS::Image_NewFromByteData, display, 1, 1, vm.newBytes({0}), 1, 8,
                      vm.newBytes({0}), vm.newBytes({0}), vm.newBytes({0}), -5, -1);
    EXPECT_EQ(pixelsOf(image).colorsUsed, 0u);
    disposeImage(image);
}

TEST_F(ImageErrorTest, a_palette_asked_of_a_direct_image) {
    jint image = newImage(1, 1, 0);
    EXPECT_EQ(paletteOf(image, 1)[0], untouchedColor);
    expectReport("Image_GetIndexedPalette", -3,
                 u"Indexed palette not available for direct color image");
    disposeImage(image);
}

TEST_F(ImageErrorTest, a_palette_that_cannot_be_read) {
    jint image = newIndexed(1, 1, {0}, 1, 8, {1});
    Faults faults;
    faults.fail("GetDIBColorTable");
    EXPECT_EQ(paletteOf(image, 1)[0], untouchedColor);
    expectReport("Image_GetIndexedPalette", -3, u"Unable to get DIB color table");
    disposeImage(image);
}

TEST_F(ImageErrorTest, pixels_of_the_other_kind) {
    jint direct = newImage(1, 1, 0);
    jint indexed = newIndexed(1, 1, {0}, 1, 8, {1});
    EXPECT_EQ(call(OS::Image_GetPixelsHighColor, indexed), nullptr);
    expectReport("Image_GetPixelsHighColor", -3,
                 u"Pixels High color invalid on indexed color image");
    EXPECT_EQ(call(OS::Image_GetPixelsLowColor, direct), nullptr);
    expectReport("Image_GetPixelsLowColor", -3, u"Pixels Low color invalid on direct color image");
    disposeImage(direct);
    disposeImage(indexed);
}

TEST_F(ImageErrorTest, pixels_without_memory) {
    jint image = newImage(1, 1, 0);
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(call(OS::Image_GetPixelsHighColor, image), nullptr);
    expectReportWithoutMessage("Image_GetPixelsHighColor", -4);
    disposeImage(image);
}

TEST_F(ImageErrorTest, pixels_without_a_java_array_are_null_and_freed) {
    jint direct = newImage(1, 1, 0);
    jint indexed = newIndexed(1, 1, {0}, 1, 8, {1});
    long blocks = countHeapBlocks();
    vm.failCall("NewIntArray");
    EXPECT_EQ(call(OS::Image_GetPixelsHighColor, direct), nullptr);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    vm.clearException();
    vm.failCall("NewByteArray");
    EXPECT_EQ(call(OS::Image_GetPixelsLowColor, indexed), nullptr);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    vm.clearException();
    EXPECT_EQ(countHeapBlocks(), blocks);
    disposeImage(direct);
    disposeImage(indexed);
}

TEST_F(ImageErrorTest, a_depth_without_colors_stores_none) {
    jint image = newDirect(2, 1, {-1, -1}, 8);
    ASSERT_NE(image, 0);
    EXPECT_EQ(storedIn(image), Bytes(4, 0));
    disposeImage(image);
    EXPECT_EQ(newDirect(2, 1, {-1, -1}, 17), 0);
    expectReport("Image_NewFromIntData", -3, std::u16string(noHandle) + u"::");
}

TEST_F(ImageErrorTest, any_failing_call_is_reported_at_most_once_and_leaves_nothing) {
    newShell();
    NoLeaks noLeaks;
    int failures = forEachFailure([&](Faults&) {
        jint image = newIndexed(3, 3, Bytes(9), 3, 8, paletteOfLength(5), 1);
        EXPECT_LE(vm.reports.size(), image ? 0u : 1u);
        vm.reports.clear();
        if (!image) return;
        for (jint made : {copyOf(image), flip(image, true, true, 0, 0, 3, 3)}) {
            if (made) {
                highColorOf(made);
                lowColorOf(made);
                disposeImage(made);
            }
        }
        paletteOf(image);
        vm.reports.clear();
        disposeImage(image);
    });
    EXPECT_GT(failures, 10);
}
