#include "decoder.h"
#include <algorithm>

static constexpr LONG rowsOfBand = 16;

HRESULT STDMETHODCALLTYPE Decoder::InitDecoder(IStream* source) {
    source->AddRef();
    stream.reset(source);
    return image.open(source);
}

HRESULT STDMETHODCALLTYPE Decoder::TerminateDecoder() {
    stream.reset();
    return S_OK;
}

HRESULT STDMETHODCALLTYPE Decoder::BeginDecode(IImageSink* target, IUnknown*) {
    if (sink || !target) return E_FAIL;
    target->AddRef();
    sink.reset(target);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE Decoder::EndDecode(HRESULT status) {
    if (!sink) return E_FAIL;
    HRESULT result = sink->EndSink(status);
    sink.reset();
    return result;
}

// The part that the sink wants: all that sinks may ask for here is the whole image. Until the sink
// has filled it in it holds anything.
HRESULT Decoder::begin() {
    constexpr LONG anything = 0x55555555;
    ImageInfo info = image.info();
    RECT part = {anything, anything, anything, anything};
    HRESULT result = sink->BeginSink(&info, &part);
    if (FAILED(result)) return result;
    pixelFormat = info.PixelFormat;
    const RECT whole = rows(0, height());
    return EqualRect(&part, &whole) ? S_OK : E_INVALIDARG;
}

// As the device's decoders of pictures with properties do. Nothing depends on the answers.
void Decoder::offerProperties() {
    constexpr UINT sizeOfProperties = 64;
    UINT rotation = 0;
    sink->NeedTransform(&rotation);
    sink->NeedRawProperty();
    void* buffer = nullptr;
    if (SUCCEEDED(sink->GetPropertyBuffer(sizeOfProperties, &buffer)) && buffer)
        sink->PushPropertyItems(0, sizeOfProperties, buffer);
}

HRESULT STDMETHODCALLTYPE Decoder::Decode() try {
    if (!sink) return E_FAIL;
    offerProperties();
    HRESULT result = begin();
    if (SUCCEEDED(result)) result = image.choose(pixelFormat);
    if (SUCCEEDED(result) && image.palette()) result = sink->SetPalette(image.palette());
    return SUCCEEDED(result) ? deliver(Emulator_ImageDelivery()) : result;
} catch (const std::exception&) { // there is no memory for rows so long
    return E_OUTOFMEMORY;
}

HRESULT Decoder::deliver(EmulatorDelivery delivery) {
    if (delivery == deliverRows) return pushRows();
    if (delivery == deliverPasses) {
        HRESULT result = pushCoarsely();
        return SUCCEEDED(result) ? pushRows() : result;
    }
    LONG step = delivery == deliverInBands ? rowsOfBand : std::max(height(), 1L);
    for (LONG top = 0; top < height(); top += step) {
        HRESULT result = fillBuffer(top, std::min(top + step, height()));
        if (result == E_NOTIMPL && top == 0) return pushRows(); // a sink without buffers
        if (FAILED(result)) return result;
    }
    return S_OK;
}

RECT Decoder::rows(LONG top, LONG bottom) const {
    return {0, top, static_cast<LONG>(image.info().Width), bottom};
}

HRESULT Decoder::fillBuffer(LONG top, LONG bottom) {
    const RECT part = rows(top, bottom);
    BitmapData data = {};
    HRESULT result = sink->GetPixelDataBuffer(&part, pixelFormat, TRUE, &data);
    if (FAILED(result)) return result;
    result = image.copyRows(top, bottom, data.Stride, static_cast<BYTE*>(data.Scan0));
    HRESULT released = sink->ReleasePixelDataBuffer(&data);
    return FAILED(result) ? result : released;
}

HRESULT Decoder::push(LONG top, LONG bottom, UINT stride, BYTE* pixels, BOOL lastPass) {
    const RECT part = rows(top, bottom);
    const BitmapData data = {image.info().Width,
                             static_cast<UINT>(bottom - top),
                             static_cast<INT>(stride),
                             pixelFormat,
                             pixels,
                             0};
    return sink->PushPixelData(&part, &data, lastPass);
}

// Bands by turns with the padding that bitmaps have and with more of it.
HRESULT Decoder::pushRows() {
    UINT padded = (image.rowBytes() + 3) & ~3u;
    std::vector<BYTE> pixels((padded + 4) * rowsOfBand);
    for (LONG top = 0; top < height(); top += rowsOfBand) {
        UINT stride = top / rowsOfBand % 2 ? padded + 4 : padded;
        LONG bottom = std::min(top + rowsOfBand, height());
        HRESULT result = image.copyRows(top, bottom, stride, &pixels[0]);
        if (SUCCEEDED(result)) result = push(top, bottom, stride, &pixels[0], TRUE);
        if (FAILED(result)) return result;
    }
    return S_OK;
}

// The first row of each band stands for all of the band.
HRESULT Decoder::pushCoarsely() {
    UINT stride = (image.rowBytes() + 3) & ~3u;
    std::vector<BYTE> pixels(stride * rowsOfBand);
    for (LONG top = 0; top < height(); top += rowsOfBand) {
        LONG bottom = std::min(top + rowsOfBand, height());
        HRESULT result = image.copyRows(top, top + 1, stride, &pixels[0]);
        for (LONG row = 1; row < bottom - top; ++row)
            std::copy_n(pixels.begin(), stride, pixels.begin() + row * stride);
        if (SUCCEEDED(result)) result = push(top, bottom, stride, &pixels[0], FALSE);
        if (FAILED(result)) return result;
    }
    return S_OK;
}
