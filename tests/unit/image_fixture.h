#pragma once
// Images on the emulated device, made and read through the natives.

#include "device.h"
#include "faults.h"
#include "image/image.h"
#include <optional>
#include <random>

using Ints = std::vector<jint>;
using Bytes = std::vector<jbyte>;

class ImageFixture : public DeviceTest {
  protected:
    // As the record and the system describe it.
    struct Pixels {
        LONG width, height, stride;
        WORD bitCount;
        DWORD colorsUsed;
        const BYTE* bits;
    };

    static ImageRecord* recordOf(jint image) { return reinterpret_cast<ImageRecord*>(image); }

    // The device's own answer, which the desk's differs from.
    static DIBSECTION describe(HBITMAP bitmap) {
        auto getObject = reinterpret_cast<decltype(&GetObjectW)>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"coredll.dll"), "GetObjectW")));
        DIBSECTION section = {};
        EXPECT_EQ(getObject(bitmap, sizeof(section), &section), int(sizeof(section)));
        return section;
    }

    static Pixels pixelsOf(jint image) {
        DIBSECTION section = describe(recordOf(image)->bitmap);
        const BITMAP& bitmap = section.dsBm;
        return {bitmap.bmWidth,           bitmap.bmHeight,
                bitmap.bmWidthBytes,      bitmap.bmBitsPixel,
                section.dsBmih.biClrUsed, static_cast<const BYTE*>(bitmap.bmBits)};
    }

    // All rows with their padding.
    static Bytes storedIn(jint image) {
        Pixels pixels = pixelsOf(image);
        auto* bits = reinterpret_cast<const jbyte*>(pixels.bits);
        return {bits, bits + pixels.stride * pixels.height};
    }

    // The colour as the system sees the pixel.
    static COLORREF colorAt(jint image, int x, int y) {
        HDC context = CreateCompatibleDC(nullptr);
        HGDIOBJ before = SelectObject(context, recordOf(image)->bitmap);
        COLORREF color = GetPixel(context, x, y);
        SelectObject(context, before);
        DeleteDC(context);
        return color;
    }

    jint newImage(jint width, jint height, jint color) {
        return call(OS::Image_NewFromSize, display, width, height, color);
    }
    jint newDirect(jint width, jint height, const Ints& pixels, jint depth, jint transparent = -1,
                   jint alpha = -1, const std::optional<Bytes>& alphas = {}) {
        return call(OS::Image_NewFromIntData, display, width, height, vm.newInts(pixels), depth,
                    transparent, alpha, alphas ? vm.newBytes(*alphas) : nullptr);
    }
    jint newIndexed(jint width, jint height, const Bytes& data, jint bytesPerLine, jint depth,
                    const std::vector<COLORREF>& palette, jint transparent = -1) {
        Bytes reds, greens, blues;
        for (COLORREF color : palette) {
            reds.push_back(static_cast<jbyte>(GetRValue(color)));
            greens.push_back(static_cast<jbyte>(GetGValue(color)));
            blues.push_back(static_cast<jbyte>(GetBValue(color)));
        }
        return call(OS::Image_NewFromByteData, display, width, height, vm.newBytes(data),
                    bytesPerLine, depth, vm.newBytes(reds), vm.newBytes(greens), vm.newBytes(blues),
                    static_cast<jint>(palette.size()), transparent);
    }
    jint copyOf(jint image) { return call(OS::Image_NewFromHandle, display, image); }
    jint flip(jint image, bool horizontal, bool vertical, jint x, jint y, jint width, jint height) {
        return call(OS::Image_Flip, image, horizontal, vertical, x, y, width, height);
    }
    void disposeImage(jint image) { call(OS::Image_Dispose, image); }

    jint depthOf(jint image) { return call(OS::Image_GetDepth, image); }
    bool isDirect(jint image) { return call(OS::Image_IsDirect, image) != 0; }
    jint transparencyOf(jint image) { return call(OS::Image_GetTransparentColor, image); }
    Ints boundsOf(jint image) { return vm.ints(call(OS::Image_GetBounds, image)); }
    Ints masksOf(jint image) { return vm.ints(call(OS::Image_GetDirectPaletteMasks, image)); }
    Ints highColorOf(jint image) {
        jobject array = call(OS::Image_GetPixelsHighColor, image);
        return array ? vm.ints(array) : Ints();
    }
    Bytes lowColorOf(jint image) {
        jobject array = call(OS::Image_GetPixelsLowColor, image);
        return array ? vm.bytes(array) : Bytes();
    }
    // The palette as it is read into arrays of that length.
    std::vector<COLORREF> paletteOf(jint image, size_t length = 256) {
        constexpr jbyte untouched = 0x55;
        const Bytes empty(length, untouched);
        jbyteArray arrays[] = {vm.newBytes(empty), vm.newBytes(empty), vm.newBytes(empty)};
        call(OS::Image_GetIndexedPalette, image, arrays[0], arrays[1], arrays[2]);
        const Bytes reds = vm.bytes(arrays[0]), greens = vm.bytes(arrays[1]),
                    blues = vm.bytes(arrays[2]);
        std::vector<COLORREF> palette;
        for (size_t i = 0; i < length; ++i)
            palette.push_back(RGB(static_cast<BYTE>(reds[i]), static_cast<BYTE>(greens[i]),
                                  static_cast<BYTE>(blues[i])));
        return palette;
    }
    static constexpr COLORREF untouchedColor = RGB(0x55, 0x55, 0x55);

    void expectReportWithoutMessage(const char* function, jint code) {
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, function);
        EXPECT_EQ(report.code, code);
        EXPECT_FALSE(report.hasMessage);
    }

    // The same numbers in every run.
    Ints randomInts(size_t count) {
        Ints values(count);
        for (jint& value : values) value = static_cast<jint>(random());
        return values;
    }
    Bytes randomBytes(size_t count) {
        Bytes values(count);
        for (jbyte& value : values) value = static_cast<jbyte>(random());
        return values;
    }
    std::mt19937 random{7};
};

class ImageTest : public ImageFixture {};

// Different colours, none of them grey.
inline std::vector<COLORREF> paletteOfLength(size_t length) {
    std::vector<COLORREF> palette;
    for (size_t i = 0; i < length; ++i)
        palette.push_back(RGB(255 - i, 7 * i % 256, (i * 37 + 11) % 256));
    return palette;
}

// How often a lock is entered and left.
inline CRITICAL_SECTION* watchedLock;
inline int entries, exits;
inline void WINAPI countEntry(CRITICAL_SECTION* lock) {
    entries += lock == watchedLock;
    EnterCriticalSection(lock);
}
inline void WINAPI countExit(CRITICAL_SECTION* lock) {
    exits += lock == watchedLock;
    LeaveCriticalSection(lock);
}
inline void watchLock(Faults& faults, ImageRecord* image) {
    watchedLock = &image->lock;
    entries = exits = 0;
    faults.replace("EnterCriticalSection", reinterpret_cast<void*>(countEntry));
    faults.replace("LeaveCriticalSection", reinterpret_cast<void*>(countExit));
}

// An image that a drawing context holds.
class HeldImage {
  public:
    explicit HeldImage(jint image)
        : record(reinterpret_cast<ImageRecord*>(image)), context(CreateCompatibleDC(nullptr)) {
        record->placeholderBitmap = static_cast<HBITMAP>(SelectObject(context, record->bitmap));
        record->selectedDC = context;
    }
    ~HeldImage() {
        SelectObject(context, record->placeholderBitmap);
        record->selectedDC = nullptr;
        DeleteDC(context);
    }
    bool isHeld() const { return GetCurrentObject(context, OBJ_BITMAP) == record->bitmap; }

  private:
    ImageRecord* record;
    HDC context;
};
