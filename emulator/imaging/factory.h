#pragma once
// The component's factory, and the class object that makes it.

#include "counted.h"

class ImagingFactory final : public Counted<ImagingFactory, IImagingFactory> {
  public:
    ImagingFactory() : Counted(IID_IImagingFactory) {}

    HRESULT STDMETHODCALLTYPE CreateImageFromStream(IStream* stream, void** image) override;
    HRESULT STDMETHODCALLTYPE CreateImageFromFile(const WCHAR* path, void** image) override;
    HRESULT STDMETHODCALLTYPE CreateImageFromBuffer(const void* buffer, UINT size, UINT disposal,
                                                    void** image) override;
    HRESULT STDMETHODCALLTYPE CreateNewBitmap(UINT width, UINT height, UINT pixelFormat,
                                              void** bitmap) override;
    HRESULT STDMETHODCALLTYPE CreateBitmapFromImage(void* image, UINT width, UINT height,
                                                    UINT pixelFormat, UINT hints,
                                                    void** bitmap) override;
    HRESULT STDMETHODCALLTYPE CreateBitmapFromBuffer(BitmapData* data, void** bitmap) override;
    HRESULT STDMETHODCALLTYPE CreateImageDecoder(IStream* stream, UINT flags,
                                                 IImageDecoder** decoder) override;
};

class ImagingClass final : public Counted<ImagingClass, IClassFactory> {
  public:
    ImagingClass() : Counted(IID_IClassFactory) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** out) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;
};
