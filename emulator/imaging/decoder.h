#pragma once
// The device's decoder: pushes an encoded image into a sink.

#include "emulator.h"
#include "encoded_image.h"

class Decoder final : public Counted<Decoder, IImageDecoder> {
  public:
    Decoder() : Counted(IID_IImageDecoder) {}

    HRESULT STDMETHODCALLTYPE InitDecoder(IStream* stream) override;
    HRESULT STDMETHODCALLTYPE TerminateDecoder() override;
    HRESULT STDMETHODCALLTYPE BeginDecode(IImageSink* sink, IUnknown* propertyStorage) override;
    HRESULT STDMETHODCALLTYPE Decode() override;
    HRESULT STDMETHODCALLTYPE EndDecode(HRESULT status) override;

  private:
    HRESULT begin();
    void offerProperties();
    HRESULT deliver(EmulatorDelivery delivery);
    HRESULT fillBuffer(LONG top, LONG bottom);
    HRESULT push(LONG top, LONG bottom, UINT stride, BYTE* pixels, BOOL lastPass);
    HRESULT pushRows();
    HRESULT pushCoarsely();
    LONG height() const { return static_cast<LONG>(image.info().Height); }
    RECT rows(LONG top, LONG bottom) const;

    EncodedImage image;
    Reference<IStream> stream;
    Reference<IImageSink> sink;
    UINT pixelFormat = 0; // that the sink takes
};
