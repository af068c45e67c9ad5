// Images out of files, through the device's imaging component. Each decode has its own objects and
// its own use of COM, on the calling thread.

#include "image/image.h"
#include "image/sink.h"
#include "image/stream.h"

namespace {

struct DecodedImage {
    HBITMAP bitmap; // null: the error was set
    bool isDirect;
    LONG transparentIndex;
    COLORREF transparentColor;
};

// Releases a COM object.
template <class Interface>
class Reference {
  public:
    Reference() = default;
    explicit Reference(Interface* object) : object(object) {}
    ~Reference() {
        if (object) object->Release();
    }
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
    Interface* operator->() const { return object; }
    explicit operator bool() const { return object != nullptr; }
    Interface* get() const { return object; }
    Interface** out() { return &object; }

  private:
    Interface* object = nullptr;
};

// COM for the calling thread.
class ComUse {
  public:
    ComUse() : result(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
    ~ComUse() {
        if (*this) CoUninitialize();
    }
    ComUse(const ComUse&) = delete;
    ComUse& operator=(const ComUse&) = delete;
    explicit operator bool() const { return result == S_OK || result == S_FALSE; }

  private:
    HRESULT result;
};

} // namespace

// The sink's image; its bitmap is the caller's from here on.
static DecodedImage takeImage(Sink* sink) {
    DecodedImage image = {sink->bitmap, sink->isDirect != FALSE, sink->transparentIndex,
                          sink->transparentColor};
    sink->bitmap = nullptr;
    return image;
}

static DecodedImage decodeInto(Sink* sink, IImageDecoder* decoder, ErrorRecord* error) {
    if (FAILED(decoder->BeginDecode(asImageSink(sink), nullptr))) {
        Win32Error_SetError(error, errorDecodingFailed, L"Failed to begin decoding");
        return {};
    }
    HRESULT result = decoder->Decode();
    if (result == S_OK && !sink->bitmap) result = E_OUTOFMEMORY; // nobody looked at it so far
    if (result != S_OK) {
        Win32Error_SetError(error, errorDecodingFailed, L"Failed to decode image");
        decoder->EndDecode(result);
        return {};
    }
    DecodedImage image = takeImage(sink);
    decoder->EndDecode(S_OK);
    return image;
}

static DecodedImage decodeWith(IImagingFactory* factory, IStream* stream, ErrorRecord* error) {
    Reference<IImageSink> sinkReference; // ends after the decoder, which may still refer to it
    Reference<IImageDecoder> decoder;
    if (FAILED(factory->CreateImageDecoder(stream, 0, decoder.out())) || !decoder) {
        Win32Error_SetError(error, errorNoDecoder, L"Failed to create IImageDecoder from IStream");
        return {};
    }
    Sink* sink = createSink();
    if (!sink) {
        Error_SetCode(error, errorOutOfMemory);
        return {};
    }
    *sinkReference.out() = asImageSink(sink);
    return decodeInto(sink, decoder.get(), error);
}

static DecodedImage decode(IStream* stream, ErrorRecord* error) {
    ComUse com;
    if (!com) {
        Win32Error_SetError(error, errorFailed, L"Failed to initialize COM");
        return {};
    }
    Reference<IImagingFactory> factory;
    if (FAILED(CoCreateInstance(CLSID_ImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IImagingFactory, reinterpret_cast<void**>(factory.out()))) ||
        !factory) {
        Win32Error_SetError(error, errorFailed, L"Failed to create IImagingFactory");
        return {};
    }
    return decodeWith(factory.get(), stream, error);
}

// Whether the decoded pixels have alpha shows in their depth.
static ImageRecord* newFromStream(IStream* source, ErrorRecord* error) {
    Reference<IStream> stream(source);
    if (!stream) {
        // Quirk: a file that is not there is reported as a memory location. Pinned by
        // DecodingTest.file_that_is_not_there.
        Win32Error_SetError(error, errorFailed,
                            L"Failed to create an IStream from a memory location");
        return nullptr;
    }
    DecodedImage image = decode(stream.get(), error);
    if (!image.bitmap) return nullptr;
    return Image_FromBitmap(image.bitmap, image.isDirect, static_cast<BYTE>(image.transparentIndex),
                            image.transparentColor, error);
}

ImageRecord* Image_NewFromFileData(DeviceRecord*, ByteArguments data, jint length,
                                   ErrorRecord* error) {
    if (length > data.count) length = data.count;
    if (length < 0) length = 0;
    return newFromStream(createMemoryStream(data.values, length), error);
}

ImageRecord* Image_NewFromFile(DeviceRecord*, const wchar_t* path, ErrorRecord* error) {
    return newFromStream(createFileStream(path), error);
}
