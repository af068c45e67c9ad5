#pragma once
// Images out of files.

#include "emulator.h"
#include "image_fixture.h"
#include "imaging.h"
#include "png.h"
#include <fstream>
#include <iterator>

inline constexpr char16_t noStream[] = u"Failed to create an IStream from a memory location";
inline constexpr char16_t noCom[] = u"Failed to initialize COM";
inline constexpr char16_t noFactory[] = u"Failed to create IImagingFactory";
inline constexpr char16_t noDecoder[] = u"Failed to create IImageDecoder from IStream";
inline constexpr char16_t notBegun[] = u"Failed to begin decoding";
inline constexpr char16_t notDecoded[] = u"Failed to decode image";

inline Bytes readFile(const std::string& name) {
    std::ifstream file(SUITE_FOLDER "/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline Bytes bytesOf(const Png& png) {
    std::vector<uint8_t> encoded = encode(png);
    return {encoded.begin(), encoded.end()};
}

class DecodingTest : public ImageFixture {
  protected:
    ~DecodingTest() override { Emulator_SetImageDelivery(deliverWhole); }

    jint fromData(const Bytes& data) { return fromData(data, static_cast<jint>(data.size())); }
    jint fromData(const Bytes& data, jint length) {
        return call(OS::Image_NewFromFileData, display, vm.newBytes(data), length);
    }
    jint fromFile(const std::u16string& path) {
        return call(OS::Image_NewFromFile, display, vm.newString(path));
    }
    void expectNoImage(const Bytes& data, jint code, const std::u16string& message) {
        EXPECT_EQ(fromData(data), 0);
        expectReport("Image_NewFromFileData", code, message);
    }

    // Red, green, blue and alpha of each pixel; those of a palette have no alpha here.
    static Bytes componentsOf(jint image) {
        Pixels pixels = pixelsOf(image);
        RGBQUAD palette[256] = {};
        if (pixels.bitCount <= 8) readPalette(image, palette);
        Bytes components;
        for (LONG y = 0; y < pixels.height; ++y)
            for (LONG x = 0; x < pixels.width; ++x) {
                RGBQUAD color = colorOf(pixels, palette, x, y);
                for (BYTE component :
                     {color.rgbRed, color.rgbGreen, color.rgbBlue, color.rgbReserved})
                    components.push_back(static_cast<jbyte>(component));
            }
        return components;
    }

    static const Png onePixel;

  private:
    static void readPalette(jint image, RGBQUAD* palette) {
        HDC context = CreateCompatibleDC(nullptr);
        HGDIOBJ before = SelectObject(context, recordOf(image)->bitmap);
        GetDIBColorTable(context, 0, 256, palette);
        SelectObject(context, before);
        DeleteDC(context);
    }
    static RGBQUAD colorOf(const Pixels& pixels, const RGBQUAD* palette, LONG x, LONG y) {
        const BYTE* row = pixels.bits + y * pixels.stride;
        if (pixels.bitCount == 32) return reinterpret_cast<const RGBQUAD*>(row)[x];
        if (pixels.bitCount == 24) return {row[3 * x], row[3 * x + 1], row[3 * x + 2], 255};
        int perByte = 8 / pixels.bitCount;
        int shift = (perByte - 1 - x % perByte) * pixels.bitCount;
        return palette[row[x / perByte] >> shift & ((1 << pixels.bitCount) - 1)];
    }
};

const Png DecodingTest::onePixel = {1, 1, 8, 2, {0x12, 0x34, 0x56}, {}, {}};

// An image of a suite and what another decoder made of it.
struct Known {
    std::string name;
    jint width, height, depth, transparent;
    int tolerance;
};

inline std::vector<Known> suite() {
    std::ifstream list(SUITE_FOLDER "/suite.txt");
    std::vector<Known> images;
    for (Known known; list >> known.name >> known.width >> known.height >> known.depth >>
                      known.transparent >> known.tolerance;)
        images.push_back(known);
    EXPECT_GT(images.size(), 200u);
    return images;
}
