#include "image/sink.h"
#include "bridge/memory.h"
#include "image/bitmap_guards.h"

static HRESULT STDMETHODCALLTYPE queryInterface(Sink*, REFIID, void**) { return E_NOINTERFACE; }

static ULONG STDMETHODCALLTYPE addRef(Sink* sink) { return ++sink->refCount; }

static void dropBitmap(Sink* sink) {
    if (sink->bitmap) DeleteObject(sink->bitmap);
    sink->bitmap = nullptr;
    sink->bits = nullptr;
}

static ULONG STDMETHODCALLTYPE release(Sink* sink) {
    if (sink->refCount != 1) return --sink->refCount;
    dropBitmap(sink);
    freeBlock(sink);
    return 0;
}

// The format of the section for a decoder's pixels.
static WORD acceptFormat(Sink* sink, ImageInfo* info) {
    sink->isDirect = info->PixelFormat == PixelFormat24bppRGB;
    sink->hasAlpha = FALSE;
    switch (info->PixelFormat) {
    case PixelFormat1bppIndexed:
        return 1;
    case PixelFormat4bppIndexed:
        return 4;
    case PixelFormat8bppIndexed:
        return 8;
    case PixelFormat24bppRGB:
        return 24;
    default:
        info->PixelFormat = PixelFormat32bppARGB;
        sink->isDirect = TRUE;
        sink->hasAlpha = TRUE;
        return 32;
    }
}

// The result of making the section is not looked at: without one no buffer is handed out.
static HRESULT STDMETHODCALLTYPE beginSink(Sink* sink, ImageInfo* info, RECT* subarea) {
    info->RawDataFormat = ImageFormatMemoryBMP;
    info->Flags |= SinkFlagsTopDown | SinkFlagsFullWidth;
    WORD bitCount = acceptFormat(sink, info);
    sink->width = static_cast<LONG>(info->Width);
    sink->height = static_cast<LONG>(info->Height);
    sink->pixelFormat = info->PixelFormat;
    sink->stride = strideOf(sink->width, bitCount);
    if (subarea) *subarea = {0, 0, sink->width, sink->height};
    dropBitmap(sink);
    sink->bitmap = createSection(sink->width, sink->height, bitCount, &sink->bits);
    return S_OK;
}

static HRESULT STDMETHODCALLTYPE endSink(Sink* sink, HRESULT status) {
    if (FAILED(status)) dropBitmap(sink);
    return S_OK;
}

static RGBQUAD entryOf(DWORD color) {
    return {static_cast<BYTE>(color), static_cast<BYTE>(color >> 8), static_cast<BYTE>(color >> 16),
            static_cast<BYTE>(color >> 24)};
}

// Of several entries without opacity the last one counts.
static HRESULT STDMETHODCALLTYPE setPalette(Sink* sink, const ColorPalette* palette) {
    RGBQUAD entries[longestPalette] = {};
    UINT count = palette->Count < longestPalette ? palette->Count : longestPalette;
    for (UINT i = 0; i < count; ++i) {
        RGBQUAD entry = entryOf(palette->Entries[i]);
        entries[i] = entry;
        if (entry.rgbReserved != 0) continue;
        sink->transparentIndex = static_cast<LONG>(i);
        sink->transparentColor = RGB(entry.rgbRed, entry.rgbGreen, entry.rgbBlue);
    }
    BitmapContext context(nullptr, sink->bitmap);
    SetDIBColorTable(context, 0, count, entries);
    return S_OK;
}

static bool spansWidth(const Sink* sink, const RECT* part) {
    return part->left == 0 && part->right == sink->width;
}

static bool liesWithin(const Sink* sink, const RECT* part) {
    return sink->bits && part->top >= 0 && part->top <= part->bottom &&
           part->bottom <= sink->height;
}

static HRESULT STDMETHODCALLTYPE getPixelDataBuffer(Sink* sink, const RECT* part, UINT pixelFormat,
                                                    BOOL, BitmapData* data) {
    if (pixelFormat != sink->pixelFormat || !spansWidth(sink, part)) return E_NOTIMPL;
    if (!liesWithin(sink, part)) return E_FAIL;
    data->Width = sink->width;
    data->Height = part->bottom - part->top;
    data->Stride = sink->stride;
    data->PixelFormat = sink->pixelFormat;
    data->Scan0 = sink->bits + part->top * sink->stride;
    return S_OK;
}

static HRESULT STDMETHODCALLTYPE releasePixelDataBuffer(Sink*, const BitmapData*) { return S_OK; }

static HRESULT STDMETHODCALLTYPE pushRawData(Sink*, const void*, UINT) { return E_NOTIMPL; }

static HRESULT STDMETHODCALLTYPE pushPixelData(Sink* sink, const RECT* part, const BitmapData* data,
                                               BOOL lastPass) {
    if (data->PixelFormat != sink->pixelFormat) return E_NOTIMPL;
    if (!lastPass) return S_OK;
    if (!spansWidth(sink, part)) return E_NOTIMPL;
    if (!liesWithin(sink, part)) return E_FAIL;
    LONG rows = part->bottom - part->top;
    BYTE* target = sink->bits + part->top * sink->stride;
    auto* source = static_cast<const BYTE*>(data->Scan0);
    if (data->Stride == sink->stride) {
        memcpy(target, source, rows * sink->stride);
        return S_OK;
    }
    LONG length = data->Stride < 0 ? -data->Stride : data->Stride;
    if (length > sink->stride) length = sink->stride;
    for (LONG row = 0; row < rows; ++row, target += sink->stride, source += data->Stride)
        memcpy(target, source, length);
    return S_OK;
}

// Sections keep no properties, and images are taken as they lie.
static HRESULT STDMETHODCALLTYPE notOffered(Sink*, void*) { return E_NOTIMPL; }
static HRESULT STDMETHODCALLTYPE needRawProperty(Sink*) { return E_NOTIMPL; }
static HRESULT STDMETHODCALLTYPE getPropertyBuffer(Sink*, UINT, void**) { return E_NOTIMPL; }
static HRESULT STDMETHODCALLTYPE pushPropertyItems(Sink*, UINT, UINT, void*) { return E_NOTIMPL; }

static constexpr SinkTable sinkTable = {
    queryInterface,
    addRef,
    release,
    beginSink,
    endSink,
    setPalette,
    getPixelDataBuffer,
    releasePixelDataBuffer,
    pushRawData,
    pushPixelData,
    notOffered, // a transform
    needRawProperty,
    notOffered, // raw information
    getPropertyBuffer,
    pushPropertyItems,
};

Sink* createSink() {
    constexpr LONG noIndex = -1;
    auto* sink = allocate<Sink>();
    if (!sink) return nullptr;
    sink->table = &sinkTable;
    sink->transparentIndex = noIndex;
    sink->transparentColor = noTransparentColor;
    addRef(sink);
    return sink;
}
