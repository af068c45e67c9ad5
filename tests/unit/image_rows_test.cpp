// Rows of pixels, stored where nobody may write a byte further.

#include "faults.h"
#include "guarded_bytes.h"
#include "image_fixture.h"

static GuardedBytes* guarded;
static const BYTE* pixels;

// The section is made; its pixels are asked for elsewhere.
static HBITMAP WINAPI createGuarded(HDC context, const BITMAPINFO* info, UINT usage, void** bits,
                                    HANDLE file, DWORD offset) {
    HBITMAP section = CreateDIBSection(context, info, usage, bits, file, offset);
    const BITMAPINFOHEADER& header = info->bmiHeader;
    size_t stride = (size_t(header.biWidth) * header.biBitCount + 31) / 32 * 4;
    std::vector<BYTE> zeros(stride * labs(header.biHeight));
    *bits = guarded->copyToEnd(zeros.data(), zeros.size());
    pixels = static_cast<const BYTE*>(*bits);
    return section;
}

class ImageRowsTest : public ImageFixture {
  protected:
    ImageRowsTest() {
        guarded = &memory;
        faults.replace("CreateDIBSection", reinterpret_cast<void*>(createGuarded));
    }
    GuardedBytes memory{0x4000};
    Faults faults;
};

constexpr jint widest = 70;

TEST_F(ImageRowsTest, of_colors_end_where_they_end) {
    for (jint depth : {16, 24, 32})
        for (jint alpha : {-1, 128})
            for (bool own : {false, true})
                for (jint width = 1; width <= widest; ++width) {
                    std::optional<Bytes> alphas;
                    if (own) alphas = Bytes(width * 2, 5);
                    Ints colors(width * 2, -1);
                    jint image = newDirect(width, 2, colors, depth, -1, alpha, alphas);
                    ASSERT_NE(image, 0);
                    EXPECT_NE(pixels[0], 0) << depth << " bits, width " << width;
                    disposeImage(image);
                }
}

TEST_F(ImageRowsTest, of_a_size_end_where_they_end) {
    for (jint width = 1; width <= widest; ++width) {
        jint image = call(OS::Image_NewFromSize, display, width, 2, -1);
        ASSERT_NE(image, 0);
        EXPECT_EQ(pixels[0], 0xFF);
        disposeImage(image);
    }
}

TEST_F(ImageRowsTest, of_indices_end_where_they_end) {
    for (jint depth : {1, 2, 4, 8})
        for (jint width = 1; width <= widest; ++width)
            for (jint bytesPerLine : {(width * depth + 7) / 8, (width * depth + 7) / 8 + 5}) {
                jint image = newIndexed(width, 2, Bytes(bytesPerLine * 2, jbyte(-1)), bytesPerLine,
                                        depth, {0, 0xFFFFFF});
                ASSERT_NE(image, 0);
                EXPECT_NE(pixels[0], 0) << depth << " bits, width " << width;
                disposeImage(image);
            }
}
