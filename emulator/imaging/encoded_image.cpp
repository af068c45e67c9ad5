#include "encoded_image.h"
#include <algorithm>

// The headers leave it out.
extern "C" HRESULT WINAPI WICCreateImagingFactory_Proxy(UINT version, IWICImagingFactory** factory);

// The desk's formats that the device has, too, or stores in one of its own.
static const struct {
    const WICPixelFormatGUID* desk;
    UINT device;
    UINT greys; // of a palette that the desk leaves out
} formats[] = {
    {&GUID_WICPixelFormat1bppIndexed, PixelFormat1bppIndexed, 0},
    {&GUID_WICPixelFormatBlackWhite, PixelFormat1bppIndexed, 2},
    {&GUID_WICPixelFormat2bppIndexed, PixelFormat4bppIndexed, 0},
    {&GUID_WICPixelFormat2bppGray, PixelFormat4bppIndexed, 4},
    {&GUID_WICPixelFormat4bppIndexed, PixelFormat4bppIndexed, 0},
    {&GUID_WICPixelFormat4bppGray, PixelFormat4bppIndexed, 16},
    {&GUID_WICPixelFormat8bppIndexed, PixelFormat8bppIndexed, 0},
    {&GUID_WICPixelFormat8bppGray, PixelFormat8bppIndexed, 256},
    {&GUID_WICPixelFormat16bppGray, PixelFormat16bppGrayScale, 0},
    {&GUID_WICPixelFormat16bppBGR555, PixelFormat16bppRGB555, 0},
    {&GUID_WICPixelFormat16bppBGR565, PixelFormat16bppRGB565, 0},
    {&GUID_WICPixelFormat16bppBGRA5551, PixelFormat16bppARGB1555, 0},
    {&GUID_WICPixelFormat24bppBGR, PixelFormat24bppRGB, 0},
    {&GUID_WICPixelFormat24bppRGB, PixelFormat24bppRGB, 0},
    {&GUID_WICPixelFormat32bppBGR, PixelFormat32bppRGB, 0},
    {&GUID_WICPixelFormat32bppBGRA, PixelFormat32bppARGB, 0},
    {&GUID_WICPixelFormat32bppPBGRA, PixelFormat32bppPARGB, 0},
    {&GUID_WICPixelFormat48bppRGB, PixelFormat48bppRGB, 0},
    {&GUID_WICPixelFormat64bppRGBA, PixelFormat64bppARGB, 0},
};

static constexpr UINT longestPalette = 256;

static UINT bitsOf(UINT pixelFormat) { return pixelFormat >> 8 & 0xFF; }

static bool isIndexed(UINT pixelFormat) {
    constexpr UINT indexed = 0x00010000;
    return (pixelFormat & indexed) != 0;
}

// A device's stream need not tell its size, or tell the truth, and may call its end a fault.
HRESULT EncodedImage::read(IStream* stream) {
    constexpr ULONG atLeast = 0x1000, atMost = 0x1000000;
    STATSTG description = {};
    stream->Stat(&description, STATFLAG_NONAME);
    LARGE_INTEGER start = {};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    contents.resize(std::clamp(description.cbSize.LowPart, atLeast, atMost));
    ULONG filled = 0;
    for (ULONG count = 0;; filled += count) {
        if (filled == contents.size()) contents.resize(2 * filled);
        count = 0;
        HRESULT result = stream->Read(&contents[filled], contents.size() - filled, &count);
        if (FAILED(result) || count == 0) break;
    }
    contents.resize(filled);
    return filled ? S_OK : E_FAIL;
}

HRESULT EncodedImage::open(IStream* stream) {
    HRESULT result = read(stream);
    if (SUCCEEDED(result))
        result = WICCreateImagingFactory_Proxy(WINCODEC_SDK_VERSION, factory.out());
    if (SUCCEEDED(result)) result = factory->CreateStream(memory.out());
    if (SUCCEEDED(result)) result = memory->InitializeFromMemory(&contents[0], contents.size());
    Reference<IWICBitmapDecoder> decoder;
    if (SUCCEEDED(result))
        result = factory->CreateDecoderFromStream(memory.get(), nullptr,
                                                  WICDecodeMetadataCacheOnDemand, decoder.out());
    if (SUCCEEDED(result)) result = decoder->GetFrame(0, frame.out());
    return SUCCEEDED(result) ? describe() : result;
}

// A decoder of the desk's fails where the bytes of an image do not fit into its numbers. No device
// has memory for so many.
static bool isDecodable(const ImageInfo& info, UINT bits) {
    constexpr unsigned long long mostBytes = 0x7FFFFFFF;
    unsigned long long stride = (static_cast<unsigned long long>(info.Width) * bits + 31) / 32 * 4;
    return stride <= mostBytes && stride * info.Height <= mostBytes;
}

HRESULT EncodedImage::describe() {
    HRESULT result = frame->GetSize(&described.Width, &described.Height);
    if (SUCCEEDED(result)) result = frame->GetPixelFormat(&nativeFormat);
    if (FAILED(result)) return result;
    constexpr UINT deepest = 64;
    frame->GetResolution(&described.Xdpi, &described.Ydpi);
    described.TileWidth = described.Width;
    described.TileHeight = 1;
    const auto* known =
        std::find_if(std::begin(formats), std::end(formats),
                     [&](const auto& format) { return *format.desk == nativeFormat; });
    if (!isDecodable(described, known == std::end(formats) ? deepest : bitsOf(known->device)))
        return E_OUTOFMEMORY;
    if (known == std::end(formats)) {
        described.PixelFormat = PixelFormat32bppARGB;
        return S_OK;
    }
    described.PixelFormat = known->device;
    pairs = nativeFormat == GUID_WICPixelFormat2bppIndexed ||
            nativeFormat == GUID_WICPixelFormat2bppGray;
    if (!isIndexed(known->device)) return S_OK;
    if (!known->greys) return readPalette();
    greyPalette(known->greys);
    return S_OK;
}

HRESULT EncodedImage::readPalette() {
    Reference<IWICPalette> native;
    UINT count = 0;
    WICColor entries[longestPalette];
    HRESULT result = factory->CreatePalette(native.out());
    if (SUCCEEDED(result)) result = frame->CopyPalette(native.get());
    if (SUCCEEDED(result)) result = native->GetColors(longestPalette, entries, &count);
    if (FAILED(result)) return result;
    bool hasAlpha =
        std::any_of(entries, entries + count, [](WICColor color) { return color >> 24 != 0xFF; });
    colors = {hasAlpha ? PaletteFlagsHasAlpha : 0, count};
    colors.insert(colors.end(), entries, entries + count);
    return S_OK;
}

void EncodedImage::greyPalette(UINT count) {
    colors = {PaletteFlagsGrayScale, count};
    for (UINT i = 0; i < count; ++i) colors.push_back(0xFF000000 | i * 255 / (count - 1) * 0x10101);
}

const ColorPalette* EncodedImage::palette() const {
    return colors.empty() ? nullptr : reinterpret_cast<const ColorPalette*>(&colors[0]);
}

HRESULT EncodedImage::choose(UINT pixelFormat) {
    const WICPixelFormatGUID* format = nullptr;
    if (pixelFormat != PixelFormat32bppARGB && pixelFormat != described.PixelFormat)
        return E_NOTIMPL;
    if (pixelFormat == PixelFormat32bppARGB)
        format = &GUID_WICPixelFormat32bppBGRA;
    else if (pixelFormat == PixelFormat24bppRGB)
        format = &GUID_WICPixelFormat24bppBGR;
    else if (isIndexed(pixelFormat))
        format = &nativeFormat;
    else
        return E_NOTIMPL;
    constexpr UINT widest = 0x1000000; // pixels; no size of a row overflows
    if (described.Width > widest) return E_OUTOFMEMORY;
    bytesOfRow = (described.Width * bitsOf(pixelFormat) + 7) / 8;
    if (*format != nativeFormat) return WICConvertBitmapSource(*format, frame.get(), source.out());
    frame->AddRef();
    source.reset(frame.get());
    return S_OK;
}

// Four indices of two bits in a byte become two bytes of two indices.
HRESULT EncodedImage::copyPairs(LONG top, LONG bottom, UINT stride, BYTE* pixels) {
    UINT packedBytes = (described.Width + 3) / 4;
    std::vector<BYTE> packed(packedBytes);
    for (LONG row = top; row < bottom; ++row, pixels += stride) {
        const WICRect part = {0, row, static_cast<INT>(described.Width), 1};
        HRESULT result = source->CopyPixels(&part, packedBytes, packedBytes, &packed[0]);
        if (FAILED(result)) return result;
        for (UINT x = 0; x < described.Width; ++x) {
            UINT index = packed[x / 4] >> (6 - x % 4 * 2) & 3;
            BYTE& two = pixels[x / 2];
            two = static_cast<BYTE>(x % 2 ? two | index : index << 4);
        }
    }
    return S_OK;
}

HRESULT EncodedImage::copyRows(LONG top, LONG bottom, UINT stride, BYTE* pixels) {
    if (pairs && isIndexed(described.PixelFormat) && source.get() == frame.get())
        return copyPairs(top, bottom, stride, pixels);
    const WICRect part = {0, top, static_cast<INT>(described.Width), bottom - top};
    return source->CopyPixels(&part, stride, stride * (bottom - top), pixels);
}
