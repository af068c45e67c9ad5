#include "factory.h"
#include "decoder.h"

static HRESULT notOffered(void** out) {
    if (out) *out = nullptr;
    return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE ImagingFactory::CreateImageFromStream(IStream*, void** image) {
    return notOffered(image);
}

HRESULT STDMETHODCALLTYPE ImagingFactory::CreateImageFromFile(const WCHAR*, void** image) {
    return notOffered(image);
}

HRESULT STDMETHODCALLTYPE ImagingFactory::CreateImageFromBuffer(const void*, UINT, UINT,
                                                                void** image) {
    return notOffered(image);
}

HRESULT STDMETHODCALLTYPE ImagingFactory::CreateNewBitmap(UINT, UINT, UINT, void** bitmap) {
    return notOffered(bitmap);
}

HRESULT STDMETHODCALLTYPE ImagingFactory::CreateBitmapFromImage(void*, UINT, UINT, UINT, UINT,
                                                                void** bitmap) {
    return notOffered(bitmap);
}

HRESULT STDMETHODCALLTYPE ImagingFactory::CreateBitmapFromBuffer(BitmapData*, void** bitmap) {
    return notOffered(bitmap);
}

HRESULT STDMETHODCALLTYPE ImagingFactory::CreateImageDecoder(IStream* stream, UINT,
                                                             IImageDecoder** decoder) try {
    if (!decoder) return E_POINTER;
    *decoder = nullptr;
    if (!stream) return E_POINTER;
    Reference<Decoder> made;
    made.reset(new Decoder);
    HRESULT result = made->InitDecoder(stream);
    if (FAILED(result)) return result;
    made->AddRef();
    *decoder = made.get();
    return S_OK;
} catch (const std::exception&) { // there is no memory for so long a stream
    return E_OUTOFMEMORY;
}

HRESULT STDMETHODCALLTYPE ImagingClass::CreateInstance(IUnknown* outer, REFIID id, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    Reference<ImagingFactory> factory;
    factory.reset(new ImagingFactory);
    return factory->QueryInterface(id, out);
}

HRESULT STDMETHODCALLTYPE ImagingClass::LockServer(BOOL) { return S_OK; }
