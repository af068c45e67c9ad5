#pragma once
// What decoders push images into: it makes the section of the image, in the format nearest to the
// decoder's that images know, and hands its memory out or copies rows into it. A sink is used by
// one thread at a time.

#include "bridge/layout.h"
#include "imaging.h"

struct Sink;

// The slots of IImageSink.
struct SinkTable {
    HRESULT(STDMETHODCALLTYPE* queryInterface)(Sink* sink, REFIID id, void** out);
    ULONG(STDMETHODCALLTYPE* addRef)(Sink* sink);
    ULONG(STDMETHODCALLTYPE* release)(Sink* sink);
    HRESULT(STDMETHODCALLTYPE* beginSink)(Sink* sink, ImageInfo* info, RECT* subarea);
    HRESULT(STDMETHODCALLTYPE* endSink)(Sink* sink, HRESULT status);
    HRESULT(STDMETHODCALLTYPE* setPalette)(Sink* sink, const ColorPalette* palette);
    HRESULT(STDMETHODCALLTYPE* getPixelDataBuffer)
    (Sink* sink, const RECT* part, UINT pixelFormat, BOOL lastPass, BitmapData* data);
    HRESULT(STDMETHODCALLTYPE* releasePixelDataBuffer)(Sink* sink, const BitmapData* data);
    HRESULT(STDMETHODCALLTYPE* pushRawData)(Sink* sink, const void* buffer, UINT size);
    HRESULT(STDMETHODCALLTYPE* pushPixelData)
    (Sink* sink, const RECT* part, const BitmapData* data, BOOL lastPass);
    HRESULT(STDMETHODCALLTYPE* needTransform)(Sink* sink, void* rotation);
    HRESULT(STDMETHODCALLTYPE* needRawProperty)(Sink* sink);
    HRESULT(STDMETHODCALLTYPE* pushRawInfo)(Sink* sink, void* info);
    HRESULT(STDMETHODCALLTYPE* getPropertyBuffer)(Sink* sink, UINT size, void** buffer);
    HRESULT(STDMETHODCALLTYPE* pushPropertyItems)(Sink* sink, UINT count, UINT size, void* items);
};
ASSERT_OFFSET(SinkTable, beginSink, 12)
ASSERT_OFFSET(SinkTable, pushPixelData, 36)
ASSERT_OFFSET(SinkTable, pushPropertyItems, 56)

struct Sink {
    const SinkTable* table;
    ULONG refCount;
    HBITMAP bitmap; // null until the decoder begins; owned until it is taken
    BYTE* bits;
    LONG width, height; // pixels
    LONG stride;        // bytes from one row to the next
    UINT pixelFormat;   // the one that is accepted
    BOOL isDirect;
    BOOL hasAlpha;
    LONG transparentIndex;     // -1: none
    COLORREF transparentColor; // noTransparentColor: none
};
ASSERT_OFFSET(Sink, bitmap, 8)
ASSERT_OFFSET(Sink, stride, 24)
ASSERT_OFFSET(Sink, isDirect, 32)
ASSERT_OFFSET(Sink, transparentColor, 44)

// A sink with one reference, the caller's. Null when there is no memory.
Sink* createSink();

// The table has the slots of IImageSink.
inline IImageSink* asImageSink(Sink* sink) { return reinterpret_cast<IImageSink*>(sink); }
