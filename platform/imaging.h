#pragma once
// The device's imaging component: a COM object makes a decoder over a stream, and the decoder
// pushes an image into the sink that its caller gives it. Each object is used by one thread at a
// time.

#include "ce.h"
#include <objidl.h>

// Pixel formats. The low byte counts, the second byte holds the bits of a pixel.
constexpr UINT PixelFormat1bppIndexed = 0x00030101;
constexpr UINT PixelFormat4bppIndexed = 0x00030402;
constexpr UINT PixelFormat8bppIndexed = 0x00030803;
constexpr UINT PixelFormat16bppGrayScale = 0x00101004;
constexpr UINT PixelFormat16bppRGB555 = 0x00021005;
constexpr UINT PixelFormat16bppRGB565 = 0x00021006;
constexpr UINT PixelFormat16bppARGB1555 = 0x00061007;
constexpr UINT PixelFormat24bppRGB = 0x00021808;   // bytes blue, green, red
constexpr UINT PixelFormat32bppRGB = 0x00022009;   // and one unused
constexpr UINT PixelFormat32bppARGB = 0x0026200A;  // bytes blue, green, red, alpha
constexpr UINT PixelFormat32bppPARGB = 0x000E200B; // the same, multiplied by alpha
constexpr UINT PixelFormat48bppRGB = 0x0010300C;
constexpr UINT PixelFormat64bppARGB = 0x0034400D;

// What a sink asks of the decoder, in ImageInfo::Flags.
constexpr UINT SinkFlagsTopDown = 0x00010000;
constexpr UINT SinkFlagsFullWidth = 0x00040000;

// In ColorPalette::Flags.
constexpr UINT PaletteFlagsHasAlpha = 1;
constexpr UINT PaletteFlagsGrayScale = 2;

constexpr GUID CLSID_ImagingFactory = {
    0x327ABDA8, 0x072B, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr GUID IID_IImagingFactory = {
    0x327ABDA7, 0x072B, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr GUID IID_IImageDecoder = {
    0x327ABDAB, 0x072B, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
// Pixels in memory, as against an encoded format.
constexpr GUID ImageFormatMemoryBMP = {
    0xB96B3CAA, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

struct ImageInfo {
    GUID RawDataFormat;
    UINT PixelFormat;
    UINT Width, Height;         // pixels
    UINT TileWidth, TileHeight; // pixels
    double Xdpi, Ydpi;
    UINT Flags;
};

// Rows of pixels. A negative stride goes upwards.
struct BitmapData {
    UINT Width, Height; // pixels
    INT Stride;         // bytes from one row to the next
    UINT PixelFormat;
    void* Scan0;
    UINT_PTR Reserved;
};

struct ColorPalette {
    UINT Flags;
    UINT Count;
    DWORD Entries[1]; // 0xAARRGGBB, Count of them
};

// Takes an image: BeginSink, SetPalette for a format with one, the pixels, EndSink. The pixels come
// either in buffers that the sink hands out or in buffers of the decoder's own, once or in several
// passes.
struct IImageSink : IUnknown {
    // The sink may change the info to what it wants, and fills in the part that it wants: the whole
    // image, or less. A null part is not asked for.
    virtual HRESULT STDMETHODCALLTYPE BeginSink(ImageInfo* info, RECT* subarea) = 0;
    virtual HRESULT STDMETHODCALLTYPE EndSink(HRESULT status) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPalette(const ColorPalette* palette) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPixelDataBuffer(const RECT* part, UINT pixelFormat,
                                                         BOOL lastPass, BitmapData* data) = 0;
    virtual HRESULT STDMETHODCALLTYPE ReleasePixelDataBuffer(const BitmapData* data) = 0;
    virtual HRESULT STDMETHODCALLTYPE PushRawData(const void* buffer, UINT size) = 0;
    virtual HRESULT STDMETHODCALLTYPE PushPixelData(const RECT* part, const BitmapData* data,
                                                    BOOL lastPass) = 0;
    // Asked by decoders of pictures with properties. A sink may answer that it has none of it.
    virtual HRESULT STDMETHODCALLTYPE NeedTransform(UINT* rotation) = 0;
    virtual HRESULT STDMETHODCALLTYPE NeedRawProperty() = 0;
    virtual HRESULT STDMETHODCALLTYPE PushRawInfo(void* info) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPropertyBuffer(UINT size, void** buffer) = 0;
    virtual HRESULT STDMETHODCALLTYPE PushPropertyItems(UINT count, UINT size, void* items) = 0;
};

struct IImageDecoder : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE InitDecoder(IStream* stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE TerminateDecoder() = 0;
    virtual HRESULT STDMETHODCALLTYPE BeginDecode(IImageSink* sink, IUnknown* propertyStorage) = 0;
    virtual HRESULT STDMETHODCALLTYPE Decode() = 0;
    virtual HRESULT STDMETHODCALLTYPE EndDecode(HRESULT status) = 0;
    // Queries of frames and properties follow, which the library does not ask.
};

struct IImagingFactory : IUnknown {
    // Making images and bitmaps, which the library does not do.
    virtual HRESULT STDMETHODCALLTYPE CreateImageFromStream(IStream* stream, void** image) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateImageFromFile(const WCHAR* path, void** image) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateImageFromBuffer(const void* buffer, UINT size,
                                                            UINT disposal, void** image) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateNewBitmap(UINT width, UINT height, UINT pixelFormat,
                                                      void** bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromImage(void* image, UINT width, UINT height,
                                                            UINT pixelFormat, UINT hints,
                                                            void** bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromBuffer(BitmapData* data, void** bitmap) = 0;
    // A decoder of the format that the stream holds; it keeps a reference to the stream.
    virtual HRESULT STDMETHODCALLTYPE CreateImageDecoder(IStream* stream, UINT flags,
                                                         IImageDecoder** decoder) = 0;
    // Encoders and the list of codecs follow, which the library does not use.
};

static_assert(sizeof(ImageInfo) == 64 && offsetof(ImageInfo, PixelFormat) == 16);
static_assert(offsetof(ImageInfo, TileWidth) == 28 && offsetof(ImageInfo, Xdpi) == 40);
static_assert(offsetof(ImageInfo, Flags) == 56);
static_assert(sizeof(BitmapData) == 24 && offsetof(BitmapData, Scan0) == 16);
static_assert(sizeof(ColorPalette) == 12 && offsetof(ColorPalette, Entries) == 8);
static_assert(sizeof(STATSTG) == 72 && offsetof(STATSTG, type) == 4);
static_assert(offsetof(STATSTG, cbSize) == 8);
