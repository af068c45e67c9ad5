// What the system is given to make sections of, and which sizes it is not even asked for.

#include "faults.h"
#include "image_fixture.h"

static std::vector<BITMAPINFOHEADER> headers;
static std::vector<std::vector<DWORD>> masks;
static HBITMAP WINAPI recordSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits,
                                    HANDLE file, DWORD offset) {
    headers.push_back(info->bmiHeader);
    auto* entries = reinterpret_cast<const DWORD*>(info->bmiColors);
    masks.emplace_back(entries, entries + 3);
    return CreateDIBSection(dc, info, usage, bits, file, offset);
}

class SectionTest : public ImageFixture {
  protected:
    SectionTest() {
        faults.replace("CreateDIBSection", reinterpret_cast<void*>(recordSection));
        headers.clear();
        masks.clear();
    }
    ~SectionTest() override {
        for (jint image : images) disposeImage(image);
    }
    jint made(jint image) {
        images.push_back(image);
        return image;
    }
    void expectMasks() {
        ASSERT_FALSE(headers.empty());
        for (size_t i = 0; i < headers.size(); ++i) {
            EXPECT_EQ(headers[i].biCompression, DWORD(BI_RGB)) << i;
            if (headers[i].biBitCount == 16) {
                EXPECT_EQ(masks[i], (std::vector<DWORD>{0x7C00, 0x3E0, 0x1F})) << i;
            } else if (headers[i].biBitCount == 32) {
                EXPECT_EQ(masks[i], (std::vector<DWORD>{0xFF0000, 0xFF00, 0xFF})) << i;
            }
        }
    }
    Faults faults;
    std::vector<jint> images;
};

TEST_F(SectionTest, of_16_and_32_bits_is_made_with_its_masks) {
    for (jint depth : {16, 32}) {
        jint image = made(newDirect(2, 1, {1, 2}, depth));
        made(copyOf(image));
        made(newIndexed(1, 1, {1, 2, 3, 4}, 4, depth, {}));
        EXPECT_EQ(headers.back().biBitCount, depth);
        EXPECT_EQ(headers.size(), 3u);
        expectMasks();
        headers.clear();
        masks.clear();
    }
}

TEST_F(SectionTest, of_a_copy_has_a_palette_of_colours_alone) {
    for (jint depth : {4, 8}) {
        const std::vector<COLORREF> palette = {RGB(0x10, 0x20, 0x30), RGB(0x40, 0x50, 0x60),
                                               RGB(0x70, 0x80, 0x90)};
        made(copyOf(made(newIndexed(1, 1, {1, 2, 3, 4}, 4, depth, palette))));
        EXPECT_EQ(masks.back(), (std::vector<DWORD>{0x102030, 0x405060, 0x708090})) << depth;
    }
}

TEST_F(SectionTest, for_blending_is_made_with_its_masks) {
    jint target = made(newImage(4, 4, 0));
    jint image = made(newDirect(2, 1, {1, 2}, 24, -1, 128));
    jint graphics = call(OS::Image_NewGraphics, target);
    headers.clear();
    masks.clear();
    call(OS::Graphics_DrawImage, graphics, image, 0, 0);
    expectMasks();
    call(OS::Graphics_Dispose, graphics);
}

TEST_F(SectionTest, whose_bytes_cannot_be_counted_is_not_asked_for) {
    const struct {
        jint width, height;
    } sizes[] = {{0x0AAAAAAB, 1},    {0x0AAAAAAB, 1000}, {0x7FFFFFFF, 1},       {1, 0x7FFFFFFF},
                 {0x10000, 0x10000}, {0x5556, 0x10000},  {0x7FFFFFFF, INT_MIN}, {100, INT_MIN}};
    for (const auto& size : sizes) {
        EXPECT_EQ(newImage(size.width, size.height, 7), 0) << size.width << " " << size.height;
        expectReport("Image_NewFromSize", -4,
                     u"Unable to create device-independent image handle::");
    }
    EXPECT_TRUE(headers.empty());
}
