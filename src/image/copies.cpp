// Images made of other images.

#include "image/bitmap_guards.h"
#include "image/image.h"

// The palette as drawing sees it: each index in turn is put into the bits of the first pixel, and
// its colour read.
// Quirk: the image's first pixel shows every colour of its palette in turn while it is copied.
// Pinned by ImageTest.copies_the_palette_as_its_pixels_show_it.
static void readPalette(HDC context, const Section& section, RGBQUAD* entries, UINT length) {
    BYTE before = section.bits[0];
    for (UINT i = 0; i < length; ++i) {
        section.bits[0] = static_cast<BYTE>(i << (8 - section.bitCount));
        COLORREF color = GetPixel(context, 0, 0);
        entries[i] = {GetBValue(color), GetGValue(color), GetRValue(color), 0};
    }
    section.bits[0] = before;
}

// The copied section; null with the system's error code.
static HBITMAP copySection(ImageRecord* image, DWORD* failure) {
    ImageSource source(nullptr, image);
    Section section = sectionOf(image);
    SectionInfo info = sectionInfo(section.width, section.height, section.bitCount);
    info.header.biClrUsed = paletteLength(image->bitmap);
    if (section.bits) readPalette(source, section, info.palette, info.header.biClrUsed);
    BYTE* bits = nullptr;
    HBITMAP copy = createSection(info.header, &bits);
    *failure = copy ? 0 : GetLastError();
    if (copy && section.bits) memcpy(bits, section.bits, section.stride * section.height);
    return copy;
}

ImageRecord* Image_NewFromHandle(DeviceRecord*, ImageRecord* image, ErrorRecord* error) {
    DWORD failure = 0;
    HBITMAP copy = copySection(image, &failure);
    if (!copy) {
        Win32Error_SetError(error, failure, L"Unable to create device-independent image handle");
        return nullptr;
    }
    return Image_FromBitmap(copy, image->isDirect, image->transparentIndex, image->transparentColor,
                            error);
}

ImageRecord* Image_Flip(ImageRecord* image, bool horizontal, bool vertical, jint x, jint y,
                        jint width, jint height, ErrorRecord* error) {
    constexpr jint black = static_cast<jint>(0xFF000000);
    ImageRecord* flipped = Image_NewFromSize(nullptr, width, height, black, error);
    if (!flipped) return nullptr;
    flipped->transparentIndex = image->transparentIndex;
    flipped->transparentColor = image->transparentColor;
    // Quirk: a flip does not wait for who draws on the image, and may show half of a drawing.
    // Pinned by ImageTest.flipping_works_on_a_held_image_and_takes_no_lock.
    Deselected deselected(image);
    BitmapContext source(nullptr, image->bitmap);
    BitmapContext target(nullptr, flipped->bitmap);
    StretchBlt(target, horizontal ? width - 1 : 0, vertical ? height - 1 : 0,
               horizontal ? -width : width, vertical ? -height : height, source, x, y, width,
               height, SRCCOPY);
    return flipped;
}
