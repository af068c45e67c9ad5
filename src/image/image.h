#pragma once
// Images: a device-independent section of pixels with its transparency. Any thread; what selects
// an image's bitmap into a device context holds the image's lock meanwhile. Only what reads and
// writes pixels, and Image_Flip, take no lock: they must not run beside drawing on the same image.

#include "bridge/error.h"
#include "bridge/handles.h"
#include "bridge/layout.h"
#include "bridge/values.h"
#include "ce.h"
#include "image/section.h"

struct DeviceRecord;

constexpr COLORREF noTransparentColor = 0xFFFFFFFF;

// Owned by the Java image, by the graphics contexts on it and by what reads it: the record and its
// bitmap go with the last of them.
struct ImageRecord {
    HBITMAP bitmap;            // the section; owned
    HDC selectedDC;            // the drawing context that holds the bitmap, or null
    HBITMAP placeholderBitmap; // takes the bitmap's place in selectedDC; not owned
    BYTE isDirect;             // whether pixels hold colours and not palette indices
    DWORD transparentIndex;    // of 0 to 255; indexed images
    COLORREF transparentColor; // 0x00BBGGRR, or noTransparentColor
    CRITICAL_SECTION lock;
    LONG owners;
};
ASSERT_OFFSET(ImageRecord, selectedDC, 4)
ASSERT_OFFSET(ImageRecord, placeholderBitmap, 8)
ASSERT_OFFSET(ImageRecord, isDirect, 12)
ASSERT_OFFSET(ImageRecord, transparentIndex, 16)
ASSERT_OFFSET(ImageRecord, transparentColor, 20)
ASSERT_OFFSET(ImageRecord, lock, 24)

// Drawing skips the pixels of the transparent colour (of the transparent index, when indexed).
inline bool hasTransparentColor(const ImageRecord* image) {
    return image->transparentColor != noTransparentColor;
}

// Width and height in pixels.
extern "C" void _Image_GetSize(ImageRecord* image, jint* width, jint* height, ErrorRecord* error);

// The image's pixels; all 0 when the system does not know the bitmap.
inline Section sectionOf(const ImageRecord* image) { return sectionOf(image->bitmap); }

// A record that takes the bitmap over, also when it cannot be allocated. Null with the error set.
ImageRecord* Image_FromBitmap(HBITMAP bitmap, bool isDirect, DWORD transparentIndex,
                              COLORREF transparentColor, ErrorRecord* error);

// One more owner, and one less.
void Image_Join(ImageRecord* image);
void Image_Leave(ImageRecord* image);

// Every New gives an image that the caller owns, or null with the error set. Images belong to no
// device.

// 24 bits per pixel, filled with the colour 0xRRGGBB.
ImageRecord* Image_NewFromSize(OrNone<DeviceRecord> device, jint width, jint height, jint color,
                               ErrorRecord* error);

// pixels: row by row, of 16 (5-6-5), 24 or 32 bits as depth says. alpha: of every pixel, 0 to 255,
// or -1 for none; alphaData: one byte for each pixel, or null. With either the image has 32 bits
// per pixel. transparentColor: 0x00BBGGRR or -1. What an array is too short for is 0.
ImageRecord* Image_NewFromIntData(OrNone<DeviceRecord> device, jint width, jint height,
                                  OfPixels<IntArguments> pixels, jint depth, jint transparentColor,
                                  jint alpha, OfPixels<ByteArguments> alphaData,
                                  ErrorRecord* error);

// data: rows of bytesPerLine bytes, palette indices of 1, 2, 4 or 8 bits as depth says, leftmost
// pixel in the highest bits. transparentIndex: -1 for none. What an array is too short for is 0.
ImageRecord* Image_NewFromByteData(OrNone<DeviceRecord> device, jint width, jint height,
                                   OfRows<ByteArguments> data, jint bytesPerLine, jint depth,
                                   ByteArguments reds, ByteArguments greens, ByteArguments blues,
                                   CountOfArrays<3> paletteSize, jint transparentIndex,
                                   ErrorRecord* error);

// A copy with pixels of its own.
ImageRecord* Image_NewFromHandle(OrNone<DeviceRecord> device, ImageRecord* image,
                                 ErrorRecord* error);

// The rectangle of the image, mirrored or not, with 24 bits per pixel and the same transparency.
// Takes no lock: a drawing on the image meanwhile, on another thread, may be lost.
ImageRecord* Image_Flip(ImageRecord* image, bool horizontal, bool vertical, jint x, jint y,
                        jint width, jint height, ErrorRecord* error);

// Decodes the first length bytes of an image file's contents.
ImageRecord* Image_NewFromFileData(OrNone<DeviceRecord> device, ByteArguments data,
                                   CountOfArray length, ErrorRecord* error);
ImageRecord* Image_NewFromFile(OrNone<DeviceRecord> device, const wchar_t* path,
                               ErrorRecord* error);

// Java has done with the image. Contexts on it may still draw, and end later.
void Image_Dispose(ImageRecord* image, ErrorRecord* error);

// 0, 0, width, height in pixels.
Bounds Image_GetBounds(ImageRecord* image, ErrorRecord* error);

// Bits per pixel.
jint Image_GetDepth(ImageRecord* image, ErrorRecord* error);
bool Image_IsDirect(ImageRecord* image, ErrorRecord* error);

// 0x00BBGGRR of a direct image, the index of an indexed one; -1 for none.
jint Image_GetTransparentColor(ImageRecord* image, ErrorRecord* error);

// Where a pixel holds each component; all 0 for a depth without them.
ColorMasks Image_GetDirectPaletteMasks(ImageRecord* image, ErrorRecord* error);

// The palette of an indexed image: as many entries as it has, or as the shortest array has room
// for.
void Image_GetIndexedPalette(ImageRecord* image, OfAnyLength<ByteArguments> reds,
                             OfAnyLength<ByteArguments> greens, OfAnyLength<ByteArguments> blues,
                             ErrorRecord* error);

// The pixels of a direct image row by row: 5-6-5 of 16 bits, 0xRRGGBB of 24, as they are of 32.
NativeIntArray Image_GetPixelsHighColor(ImageRecord* image, ErrorRecord* error);

// The rows of an indexed image as they are stored, padded to multiples of 4 bytes.
NativeByteArray Image_GetPixelsLowColor(ImageRecord* image, ErrorRecord* error);

// The pixels of a 24-bit image as 0xFFRRGGBB, at out[offset + row * scanSize + column]. Another
// depth's bytes are read as if they were 24-bit pixels; what lies outside the image or the array is
// left out.
void Image_GetRGB(ImageRecord* image, jint x, jint y, jint width, jint height, jint offset,
                  jint scanSize, OfScannedRows<IntArguments> out, ErrorRecord* error);

// One pixel of a 24-bit image, 0xRRGGBB; nothing happens outside the image.
void Image_SetRGB(ImageRecord* image, jint x, jint y, jint rgb, ErrorRecord* error);
