#include "device.h"
#include "faults.h"
#include "leaks.h"
#include "variety.h"

// What the replaced system tells about the screen.
static int bitsPerPixel;
static int planes;
static int WINAPI answerDepth(HDC, int index) {
    if (index == BITSPIXEL) return bitsPerPixel;
    return index == PLANES ? planes : 0;
}

static UINT WINAPI answerPalette(HDC, UINT first, UINT count, PALETTEENTRY* entries) {
    for (UINT i = 0; i < count; ++i)
        entries[i] = {BYTE(first + i), BYTE(100 + i), BYTE(200 - i), 0};
    return count;
}

class ScreenDeviceTest : public DeviceTest {
  protected:
    void setDepth(int bits, int planeCount = 1) {
        bitsPerPixel = bits;
        planes = planeCount;
        faults.replace("GetDeviceCaps", reinterpret_cast<void*>(answerDepth));
    }
    jint depth() { return call(OS::Device_GetDepth, display); }
    bool isDirect() { return call(OS::Device_IsDirect, display); }
    std::vector<jint> masks() { return vm.ints(call(OS::Device_GetDirectPaletteMasks, display)); }
    Faults faults;
};

TEST_F(ScreenDeviceTest, bounds_and_resolution_are_the_screens) {
    EXPECT_EQ(vm.ints(call(OS::Device_GetBounds, display)),
              (std::vector<jint>{0, 0, theDevice().screen.cx, theDevice().screen.cy}));
    jint dpi = theDevice().dotsPerInch;
    EXPECT_EQ(vm.ints(call(OS::Device_GetDPI, display)), (std::vector<jint>{dpi, dpi}));
}

TEST_F(ScreenDeviceTest, depth_counts_the_bits_of_all_planes) {
    setDepth(16);
    EXPECT_EQ(depth(), 16);
    EXPECT_TRUE(isDirect());
    setDepth(1, 4);
    EXPECT_EQ(depth(), 4);
    EXPECT_FALSE(isDirect());
    setDepth(8);
    EXPECT_FALSE(isDirect());
}

TEST_F(ScreenDeviceTest, masks_follow_the_depth) {
    setDepth(16);
    EXPECT_EQ(masks(), (std::vector<jint>{0xF800, 0x07E0, 0x001F, 0}));
    setDepth(24);
    EXPECT_EQ(masks(), (std::vector<jint>{0xFF0000, 0x00FF00, 0x0000FF, 0}));
    setDepth(32);
    EXPECT_EQ(masks(), (std::vector<jint>{0xFF0000, 0x00FF00, 0x0000FF, jint(0xFF000000)}));
    setDepth(8);
    EXPECT_EQ(masks(), (std::vector<jint>{0, 0, 0, 0}));
}

TEST_F(ScreenDeviceTest, masks_without_a_context_are_an_error) {
    faults.fail("GetDC", 1, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(call(OS::Device_GetDirectPaletteMasks, display), nullptr);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Device_GetDirectPaletteMasks");
    EXPECT_EQ(report.code, -4);
    EXPECT_EQ(report.message.find(u"Cannot get DC for handle::"), 0u);
}

class PaletteTest : public ScreenDeviceTest {
  protected:
    jbyteArray reds = vm.newBytes(std::vector<jbyte>(20, 77));
    jbyteArray greens = vm.newBytes(std::vector<jbyte>(20, 77));
    jbyteArray blues = vm.newBytes(std::vector<jbyte>(20, 77));
    void read(jbyteArray blueArray) {
        call(OS::Device_GetIndexedPalette, display, reds, greens, blueArray);
    }
};

TEST_F(PaletteTest, has_as_many_entries_as_the_depth_counts) {
    setDepth(4);
    faults.replace("GetSystemPaletteEntries", reinterpret_cast<void*>(answerPalette));
    read(blues);
    EXPECT_EQ(vm.bytes(reds)[0], 0);
    EXPECT_EQ(vm.bytes(reds)[15], 15);
    EXPECT_EQ(vm.bytes(reds)[16], 77) << "beyond the palette";
    EXPECT_EQ(vm.bytes(greens)[15], 115);
    EXPECT_EQ(vm.bytes(blues)[15], jbyte(185));
}

TEST_F(PaletteTest, never_writes_beyond_the_shortest_array) {
    setDepth(8);
    faults.replace("GetSystemPaletteEntries", reinterpret_cast<void*>(answerPalette));
    jbyteArray three = vm.newBytes({7, 7, 7});
    read(three);
    EXPECT_EQ(vm.bytes(three), (std::vector<jbyte>{jbyte(200), jbyte(199), jbyte(198)}));
    EXPECT_EQ(vm.bytes(reds)[2], 2);
    EXPECT_EQ(vm.bytes(reds)[3], 77);
}

TEST_F(PaletteTest, of_a_direct_screen_is_an_error_and_copies_nothing) {
    for (int bits : {16, 32}) {
        setDepth(bits);
        read(blues);
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, "Device_GetIndexedPalette");
        EXPECT_EQ(report.code, -3);
        EXPECT_EQ(report.message, u"Unable to retrieve system palette entries");
    }
    EXPECT_EQ(vm.bytes(reds), std::vector<jbyte>(20, 77));
}

TEST_F(PaletteTest, that_the_system_does_not_tell_is_an_error) {
    setDepth(8);
    faults.fail("GetSystemPaletteEntries");
    read(blues);
    EXPECT_EQ(onlyReport().message, u"Unable to retrieve system palette entries");
}

TEST_F(PaletteTest, without_a_context_is_an_error) {
    faults.fail("GetDC", 1, ERROR_INVALID_HANDLE);
    read(blues);
    EXPECT_EQ(onlyReport().message.find(u"Cannot get DC for handle::"), 0u);
}

TEST_F(ScreenDeviceTest, copying_from_the_screen_is_not_offered) {
    call(OS::Device_CopyArea, display, 0, 0, 0, 10, 10);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Device_CopyArea");
    EXPECT_EQ(report.code, -1);
    EXPECT_FALSE(report.hasMessage);
}

TEST_F(ScreenDeviceTest, has_no_accelerated_memory) {
    EXPECT_EQ(call(OS::Device_GetAvailableAcceleratedMemory, display), 0);
}

TEST_F(ScreenDeviceTest, queries_release_the_screen) {
    NoLeaks noLeaks;
    for (int i = 0; i < 2000; ++i) {
        depth();
        isDirect();
        masks();
        call(OS::Device_GetBounds, display);
        call(OS::Device_GetDPI, display);
    }
    EXPECT_EQ(faults.countCalls("GetDC"), faults.countCalls("ReleaseDC"));
}

class TypefacesTest : public ScreenDeviceTest {
  protected:
    std::vector<std::u16string> typefaces(bool scalable) {
        return vm.texts(call(OS::Device_GetTypefaces, display, scalable));
    }
    static bool contains(const std::vector<std::u16string>& names, const std::u16string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    }
};

TEST_F(TypefacesTest, are_listed_by_their_kind) {
    std::vector<std::u16string> scalable = typefaces(true);
    std::vector<std::u16string> raster = typefaces(false);
    EXPECT_TRUE(contains(scalable, u"Tahoma"));
    EXPECT_FALSE(contains(raster, u"Tahoma"));
    EXPECT_TRUE(contains(raster, u"System"));
    EXPECT_FALSE(contains(scalable, u"System"));
}

// A system of many families with two fonts each, of which one is a raster font.
static int enumerateFont(const std::wstring& name, DWORD type, FONTENUMPROCW proc, LPARAM data) {
    LOGFONTW font = {};
    name.copy(font.lfFaceName, LF_FACESIZE);
    TEXTMETRICW metrics = {};
    return proc(&font, &metrics, type, data);
}
// As the system, it stops when it is told to.
static int WINAPI enumerateManyFamilies(HDC, LPCWSTR family, FONTENUMPROCW proc, LPARAM data) {
    if (family)
        return enumerateFont(family, TRUETYPE_FONTTYPE, proc, data) &&
               enumerateFont(family, RASTER_FONTTYPE, proc, data) &&
               enumerateFont(family, DEVICE_FONTTYPE, proc, data);
    for (int i = 0; i < 100; ++i)
        if (!enumerateFont(L"Family " + std::to_wstring(i), TRUETYPE_FONTTYPE, proc, data))
            return 0;
    return enumerateFont(std::wstring(LF_FACESIZE, L'x'), TRUETYPE_FONTTYPE, proc, data) &&
           enumerateFont(L"Raster family", RASTER_FONTTYPE, proc, data);
}

TEST_F(TypefacesTest, occur_once_for_every_font_of_a_family) {
    faults.replace("EnumFontFamiliesW", reinterpret_cast<void*>(enumerateManyFamilies));
    std::vector<std::u16string> names = typefaces(true);
    ASSERT_EQ(names.size(), 202u);
    EXPECT_EQ(names[0], u"Family 0");
    EXPECT_EQ(names[1], u"Family 0");
    EXPECT_EQ(names[199], u"Family 99");
    EXPECT_EQ(names[200], std::u16string(32, u'x')) << "a name that fills its field";
    EXPECT_EQ(typefaces(false), std::vector<std::u16string>{u"Raster family"});
}

TEST_F(TypefacesTest, without_memory_are_an_error_that_leaks_nothing) {
    faults.replace("EnumFontFamiliesW", reinterpret_cast<void*>(enumerateManyFamilies));
    NoLeaks noLeaks;
    for (int nth = 1; nth < 330; ++nth) {
        faults.fail("LocalAlloc", nth);
        jobject names = call(OS::Device_GetTypefaces, display, true);
        if (names) {
            EXPECT_GT(nth, 300);
            return;
        }
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, "Device_GetTypefaces");
        EXPECT_EQ(report.code, -4);
        EXPECT_EQ(report.message, u"Not enough memory to list typefaces");
    }
    ADD_FAILURE() << "it never succeeded";
}
