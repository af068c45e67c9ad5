// Conversions and reads of pixels against copying as many bytes, and decoding against the system's
// decoder alone.

#include "compare.h"
#include "image/conversion.h"
#include "image/image.h"
#include "natives.h"
#include <random>
#include <vector>
#include <wincodec.h>

extern "C" HRESULT WINAPI WICCreateImagingFactory_Proxy(UINT version, IWICImagingFactory** factory);

static constexpr LONG width = 240, height = 320; // of the images that are converted
static constexpr LONG pixels = width * height;
static constexpr int conversions = 5; // of an image in one round

namespace {

// Java's pixels, a section's bytes, and what both are copied into by the plain way. Where they lie
// decides whether they hinder one another in the processor's cache, so it is elsewhere in each
// round.
class Buffers {
  public:
    const jint* colors(LONG y) { return intsOf(0) + y * width; }
    jint* out(LONG y) { return intsOf(1) + y * width; }
    const BYTE* alphas(LONG y) { return placeOf(2) + y * width; }
    BYTE* section(LONG y, LONG bits) { return placeOf(3) + y * strideOf(width, bits); }
    BYTE* copy() { return placeOf(4); }

    void move() {
        for (size_t& page : pages) page = random() % (pagesOfBuffer - pagesOfImage);
    }

  private:
    static constexpr size_t pageSize = 0x1000, buffers = 5, pagesOfBuffer = 0x200;
    static constexpr size_t pagesOfImage = pixels * sizeof(jint) / pageSize + 1;

    BYTE* placeOf(size_t buffer) {
        auto* start = reinterpret_cast<BYTE*>(memory.data());
        return start + (buffer * pagesOfBuffer + pages[buffer]) * pageSize;
    }
    jint* intsOf(size_t buffer) { return reinterpret_cast<jint*>(placeOf(buffer)); }

    std::vector<ULONG> memory =
        std::vector<ULONG>(buffers * pagesOfBuffer * pageSize / sizeof(ULONG), 0x12345678);
    size_t pages[buffers] = {};
    std::minstd_rand random;
};

} // namespace

// The larger of both sides' rows is what is copied.
template <class Row>
static jintArray measure(JNIEnv* env, Buffers* buffers, size_t bytesOfRow, Row convertRow) {
    auto convert = [&] {
        for (LONG y = 0; y < height; ++y) convertRow(y);
    };
    auto copy = [&] {
        auto* source = reinterpret_cast<const BYTE*>(buffers->colors(0));
        for (size_t y = 0; y < height; ++y)
            memcpy(buffers->copy() + y * bytesOfRow, source + y * bytesOfRow, bytesOfRow);
    };
    auto timeInCache = [](auto operation) {
        operation();
        return timeOf(conversions, operation);
    };
    return medianOf(
        env, rounds,
        [&] {
            buffers->move();
            return timeInCache(convert);
        },
        [&] { return timeInCache(copy); });
}

static jintArray measureConversion(JNIEnv* env, jint which) {
    Buffers b;
    constexpr size_t ofInts = width * sizeof(jint);
    constexpr size_t ofIndices = width / 2;
    switch (which) {
    case 0:
        return measure(env, &b, ofInts,
                       [&](LONG y) { storeHighColor(b.section(y, 16), b.colors(y), width); });
    case 1:
        return measure(env, &b, ofInts,
                       [&](LONG y) { storeTrueColor(b.section(y, 24), b.colors(y), width); });
    case 2:
        return measure(env, &b, ofInts,
                       [&](LONG y) { storeWithAlpha(b.section(y, 32), b.colors(y), width, 7); });
    case 3:
        return measure(env, &b, ofInts, [&](LONG y) {
            storeWithAlphas(b.section(y, 32), b.colors(y), width, b.alphas(y));
        });
    case 4:
        return measure(env, &b, ofInts, [&](LONG y) {
            storeWidenedWithAlphas(b.section(y, 32), b.colors(y), width, b.alphas(y));
        });
    case 5:
        return measure(env, &b, ofInts, [&](LONG y) {
            storeNarrowedWithAlpha(b.section(y, 32), b.colors(y), width, 7);
        });
    case 6:
        return measure(env, &b, ofIndices,
                       [&](LONG y) { storeIndexPairs(b.section(y, 4), b.alphas(y), width / 4); });
    case 7:
        return measure(env, &b, ofInts,
                       [&](LONG y) { loadHighColor(b.out(y), b.section(y, 16), width); });
    default:
        return measure(env, &b, ofInts,
                       [&](LONG y) { loadTrueColor(b.out(y), b.section(y, 24), width); });
    }
}

// The system's decoder as the component uses it, without the device's stream, decoder and sink.
static void decodePlainly(jbyte* data, jint length, bool toBgra, std::vector<BYTE>* into) {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    IWICImagingFactory* factory = nullptr;
    IWICStream* stream = nullptr;
    IWICBitmapDecoder* decoder = nullptr;
    IWICBitmapFrameDecode* frame = nullptr;
    IWICBitmapSource* source = nullptr;
    WICCreateImagingFactory_Proxy(WINCODEC_SDK_VERSION, &factory);
    factory->CreateStream(&stream);
    stream->InitializeFromMemory(reinterpret_cast<BYTE*>(data), length);
    factory->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnDemand, &decoder);
    decoder->GetFrame(0, &frame);
    UINT columns, rows;
    frame->GetSize(&columns, &rows);
    WICConvertBitmapSource(toBgra ? GUID_WICPixelFormat32bppBGRA : GUID_WICPixelFormat24bppBGR,
                           frame, &source);
    UINT stride = (columns * (toBgra ? 4 : 3) + 3) & ~3u;
    into->resize(stride * rows);
    source->CopyPixels(nullptr, stride, into->size(), into->data());
    source->Release();
    frame->Release();
    decoder->Release();
    stream->Release();
    factory->Release();
    CoUninitialize();
}

extern "C" {

// which: see Bench.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_conversion(JNIEnv* env, jclass, jint which) {
    return measureConversion(env, which);
}

// Reading the pixels of a 24-bit image into Java's array against copying as many bytes.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_read(JNIEnv* env, jclass, jint image, jintArray out) {
    const std::vector<jint> colors(pixels);
    return compare(
        env, 3, [&] { OS::Image_GetRGB(env, image, 0, 0, width, height, 0, width, out); },
        [&] {
            jint* elements = env->GetIntArrayElements(out, nullptr);
            memcpy(elements, colors.data(), pixels * sizeof(jint));
            env->ReleaseIntArrayElements(out, elements, 0);
        });
}

// Decoding a file's contents; of 32 bits or 24.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_decoding(JNIEnv* env, jclass, jbyteArray data, jboolean toBgra) {
    jint length = env->GetArrayLength(data);
    return compare(
        env, 1, [&] { OS::Image_Dispose(env, OS::Image_NewFromFileData(env, 0, data, length)); },
        [&] {
            std::vector<BYTE> into;
            jbyte* elements = env->GetByteArrayElements(data, nullptr);
            decodePlainly(elements, length, toBgra != 0, &into);
            env->ReleaseByteArrayElements(data, elements, 0);
        });
}
}
