// Images on graphics contexts. The device's system knows neither transparency nor alpha: masks and
// blending are done here.

#include "bridge/arithmetic.h"
#include "graphics/blending.h"
#include "graphics/drawing.h"
#include "graphics/gdi_guards.h"
#include "image/bitmap_guards.h"

static constexpr jint unplaced = static_cast<jint>(0x80000002);
static constexpr jint unsized = 0x7FFFFFFF;
static constexpr WORD alphaDepth = 32; // bits per pixel

namespace {

struct Area {
    jint x, y, width, height;
};

// What is drawn where.
struct Copy {
    HDC target;
    Area to;
    ImageRecord* image;
    HDC source; // the image's bitmap is selected
    Area from;
    DWORD operation;
};

// A bitmap of the guard's own in a memory device context.
class ScratchContext {
  public:
    ScratchContext(HDC like, HBITMAP scratch) : bitmap(scratch), context(like, scratch) {}
    ~ScratchContext() = default;
    operator HDC() const { return context; }

  private:
    // Deletes the bitmap after the context has let it go.
    struct OwnBitmap {
        HBITMAP handle;
        ~OwnBitmap() {
            if (handle) DeleteObject(handle);
        }
        OwnBitmap(HBITMAP bitmap) : handle(bitmap) {}
        OwnBitmap(const OwnBitmap&) = delete;
        OwnBitmap& operator=(const OwnBitmap&) = delete;
    };
    OwnBitmap bitmap;
    BitmapContext context;
};

} // namespace

static BOOL transfer(HDC target, const Area& to, HDC source, const Area& from, DWORD operation) {
    if (to.width == from.width && to.height == from.height)
        return BitBlt(target, to.x, to.y, to.width, to.height, source, from.x, from.y, operation);
    return StretchBlt(target, to.x, to.y, to.width, to.height, source, from.x, from.y, from.width,
                      from.height, operation);
}

static Area atOrigin(const Area& area) { return {0, 0, area.width, area.height}; }

static void markByColor(HDC mask, const Copy& copy, COLORREF key) {
    COLORREF previous = SetBkColor(copy.source, key);
    BitBlt(mask, 0, 0, copy.from.width, copy.from.height, copy.source, copy.from.x, copy.from.y,
           SRCCOPY);
    SetBkColor(copy.source, previous);
}

// By the index alone, also where other entries have the transparent colour: for the length of the
// copy it is the only white one.
static void markByIndex(HDC mask, const Copy& copy) {
    constexpr UINT mostColors = 256;
    constexpr COLORREF white = RGB(255, 255, 255);
    WORD depth = sectionOf(copy.image).bitCount;
    UINT count = depth <= 8 ? 1u << depth : 0;
    RGBQUAD colors[mostColors];
    RGBQUAD onlyOne[mostColors] = {};
    count = GetDIBColorTable(copy.source, 0, count, colors);
    onlyOne[copy.image->transparentIndex & 0xFF] = {0xFF, 0xFF, 0xFF, 0};
    SetDIBColorTable(copy.source, 0, count, onlyOne);
    markByColor(mask, copy, white);
    SetDIBColorTable(copy.source, 0, count, colors);
}

// The mask has a 1 for every transparent pixel.
static void mark(HDC mask, const Copy& copy) {
    if (copy.image->isDirect)
        markByColor(mask, copy, copy.image->transparentColor);
    else
        markByIndex(mask, copy);
}

static bool isEmpty(const Area& area) { return area.width <= 0 || area.height <= 0; }

// The system's code of the call that just failed, read before anything is cleaned up.
static bool failed(DWORD* code) {
    *code = GetLastError();
    return false;
}

static bool drawThroughMask(const Copy& copy, DWORD* code) {
    if (isEmpty(copy.from) || isEmpty(copy.to)) return true;
    ScratchContext mask(copy.target,
                        CreateBitmap(copy.from.width, copy.from.height, 1, 1, nullptr));
    if (!mask) return failed(code);
    mark(mask, copy);
    if (GetDeviceCaps(copy.target, TECHNOLOGY) == DT_RASPRINTER) {
        *code = ERROR_NOT_SUPPORTED;
        return false;
    }
    Area whole = atOrigin(copy.to);
    Area masked = atOrigin(copy.from);
    ScratchContext result(copy.target,
                          CreateCompatibleBitmap(copy.target, whole.width, whole.height));
    if (!result) return failed(code);
    transfer(result, whole, copy.target, copy.to, SRCCOPY);
    transfer(result, whole, copy.source, copy.from, SRCINVERT);
    transfer(result, whole, mask, masked, SRCAND);
    transfer(result, whole, copy.source, copy.from, SRCINVERT);
    return transfer(copy.target, copy.to, result, whole, SRCCOPY) || failed(code);
}

// Of the image, which may not reach as far as the area: what it lacks counts as transparent.
static void blendOnto(BYTE* bits, const Section& image, const Area& from) {
    jint left = greater(from.x, 0);
    jint top = greater(from.y, 0);
    jint right = lesser(saturatingAdd(from.x, from.width), image.width);
    jint bottom = lesser(saturatingAdd(from.y, from.height), image.height);
    if (left >= right) return;
    LONG stride = strideOf(from.width, alphaDepth);
    for (jint y = top; y < bottom; ++y) {
        auto* target = reinterpret_cast<DWORD*>(bits + (y - from.y) * stride) + (left - from.x);
        auto* source = reinterpret_cast<const DWORD*>(image.bits + y * image.stride) + left;
        blendRow(target, source, right - left);
    }
}

// Quirk: where a region is stretched, what is behind it is fetched at the source's size and
// stretched too. Pinned by
// ImageDrawingTest.a_stretched_region_with_alpha_stretches_what_was_behind_its_own_size.
static bool drawBlended(const Copy& copy, DWORD* code) {
    if (isEmpty(copy.from)) return true;
    BYTE* bits = nullptr;
    ScratchContext result(copy.target,
                          createSection(copy.from.width, copy.from.height, alphaDepth, &bits));
    Area whole = atOrigin(copy.from);
    Area background = {copy.to.x, copy.to.y, whole.width, whole.height};
    if (!result || !transfer(result, whole, copy.target, background, SRCCOPY)) return failed(code);
    blendOnto(bits, sectionOf(copy.image), copy.from);
    return transfer(copy.target, copy.to, result, whole, copy.operation) || failed(code);
}

static bool hasAlpha(const ImageRecord* image) { return sectionOf(image).bitCount == alphaDepth; }

// False with the code of the failure.
static bool draw(const Copy& copy, DWORD* code) {
    if (!copy.source) return failed(code);
    if (hasTransparentColor(copy.image)) return drawThroughMask(copy, code);
    if (hasAlpha(copy.image)) return drawBlended(copy, code);
    return transfer(copy.target, copy.to, copy.source, copy.from, copy.operation) || failed(code);
}

// Whose lock is entered first. All threads follow one order, that two of them may draw two images
// into each other.
static ImageRecord* earlierOf(ImageRecord* target, ImageRecord* source) {
    return target && target < source ? target : source;
}

static DWORD operationOf(HDC dc) { return isXORMode(dc) ? SRCINVERT : SRCCOPY; }

void Graphics_DrawImage(GraphicsRecord* graphics, ImageRecord* image, jint x, jint y,
                        ErrorRecord* error) {
    ImageLock ordered(earlierOf(graphics->image, image));
    Drawing drawing(graphics);
    Section section = sectionOf(image);
    Area to = {x, y, section.width, section.height};
    if (!Graphics_MeetsClip(drawing, to.x, to.y, to.width, to.height, error)) return;
    ImageSource source(drawing, image);
    // Quirk: a whole image with alpha is blended and not inverted in XOR mode. Pinned by
    // ImageDrawingTest.alpha_blends_with_what_is_there.
    DWORD operation = hasAlpha(image) ? SRCCOPY : operationOf(drawing);
    DWORD code = 0;
    if (!draw({drawing, to, image, source, atOrigin(to), operation}, &code))
        Win32Error_SetError(error, code, L"Unable to complete blitting operation");
}

void Graphics_DrawImageRegion(GraphicsRecord* graphics, ImageRecord* image, jint sourceX,
                              jint sourceY, jint sourceWidth, jint sourceHeight, jint targetX,
                              jint targetY, jint targetWidth, jint targetHeight, ErrorRecord*) {
    // Java's sign for an image that has no place yet.
    if (targetX == unplaced && targetY == unplaced && targetWidth == unsized &&
        targetHeight == unsized)
        return;
    ImageLock ordered(earlierOf(graphics->image, image));
    Drawing drawing(graphics);
    ImageSource source(drawing, image);
    DWORD code = 0; // told to nobody
    draw({drawing,
          {targetX, targetY, targetWidth, targetHeight},
          image,
          source,
          {sourceX, sourceY, sourceWidth, sourceHeight},
          operationOf(drawing)},
         &code);
}
