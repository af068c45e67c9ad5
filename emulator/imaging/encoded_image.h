#pragma once
// An encoded image: the desk's own decoders, seen through the device's pixel formats.

#include "counted.h"
#include <vector>
#include <wincodec.h>

class EncodedImage {
  public:
    // Reads the stream from its start to its end, and finds a decoder for what it holds.
    HRESULT open(IStream* stream);

    // The image's own size and format.
    const ImageInfo& info() const { return described; }

    // The palette of an indexed format, else null.
    const ColorPalette* palette() const;

    // Chooses the format of the pixels: the image's own when it is indexed or has 24 bits, or 32
    // bits with alpha.
    HRESULT choose(UINT pixelFormat);

    // Bytes of a row in the chosen format, without padding.
    UINT rowBytes() const { return bytesOfRow; }

    // Rows top to bottom - 1 in the chosen format. The stride is at least a row's bytes.
    HRESULT copyRows(LONG top, LONG bottom, UINT stride, BYTE* pixels);

  private:
    HRESULT read(IStream* stream);
    HRESULT describe();
    HRESULT readPalette();
    void greyPalette(UINT count);
    HRESULT copyPairs(LONG top, LONG bottom, UINT stride, BYTE* pixels);

    std::vector<BYTE> contents;
    Reference<IWICImagingFactory> factory;
    Reference<IWICStream> memory;
    Reference<IWICBitmapFrameDecode> frame;
    Reference<IWICBitmapSource> source; // of the chosen format
    ImageInfo described = {};
    WICPixelFormatGUID nativeFormat = {};
    bool pairs = false;        // indices of 2 bits, which the device stores with 4
    std::vector<DWORD> colors; // a ColorPalette in words
    UINT bytesOfRow = 0;
};
