// Sections as the device makes them.

#include "guarded_bytes.h"
#include <gtest/gtest.h>

static BITMAPINFOHEADER headerOf(WORD bits, DWORD compression = BI_RGB) {
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof(header);
    header.biWidth = 2;
    header.biHeight = -2;
    header.biPlanes = 1;
    header.biBitCount = bits;
    header.biCompression = compression;
    return header;
}

static HBITMAP make(const void* info, HANDLE file = nullptr, DWORD offset = 0) {
    void* bits = nullptr;
    return CreateDIBSection(nullptr, static_cast<const BITMAPINFO*>(info), DIB_RGB_COLORS, &bits,
                            file, offset);
}

class DeviceSectionTest : public testing::Test {
  protected:
    static bool makes(WORD bits, DWORD compression, HANDLE file = nullptr, DWORD offset = 0) {
        struct {
            BITMAPINFOHEADER header;
            DWORD masks[256];
        } info = {headerOf(bits, compression), {0xF800, 0x7E0, 0x1F}};
        HBITMAP bitmap = make(&info, file, offset);
        if (bitmap) return DeleteObject(bitmap);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
        return false;
    }
};

TEST_F(DeviceSectionTest, are_made_of_plain_pixels) {
    for (WORD bits : {1, 4, 8, 16, 24, 32}) EXPECT_TRUE(makes(bits, BI_RGB)) << bits;
    EXPECT_TRUE(makes(16, BI_BITFIELDS));
    EXPECT_FALSE(makes(8, BI_RLE8));
    EXPECT_FALSE(makes(4, BI_RLE4));
    EXPECT_FALSE(makes(24, 7));
}

TEST_F(DeviceSectionTest, have_memory_of_their_own) {
    HANDLE file =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 65536, nullptr);
    EXPECT_FALSE(makes(24, BI_RGB, file));
    CloseHandle(file);
    EXPECT_FALSE(makes(24, BI_RGB, nullptr, 4));
}

TEST_F(DeviceSectionTest, of_24_bits_have_nothing_behind_their_header) {
    GuardedBytes bytes(sizeof(BITMAPINFOHEADER));
    const BITMAPINFOHEADER header = headerOf(24);
    HBITMAP bitmap = make(bytes.copyToEnd(&header, sizeof(header)));
    EXPECT_NE(bitmap, nullptr);
    DeleteObject(bitmap);
}

// A header without its masks would end the program.
TEST_F(DeviceSectionTest, of_16_and_32_bits_have_three_masks_behind_their_header) {
    for (WORD bits : {16, 32}) {
        struct {
            BITMAPINFOHEADER header;
            DWORD masks[3];
        } info = {headerOf(bits), {}};
        GuardedBytes bytes(sizeof(info));
        HBITMAP bitmap = make(bytes.copyToEnd(&info, sizeof(info)));
        EXPECT_NE(bitmap, nullptr);
        DeleteObject(bitmap);
    }
}
