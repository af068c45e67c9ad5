// Conversions and reads of pixels against copying as many bytes, and decoding against the system's
// decoder alone.

#include "compare.h"
#include "image/conversion.h"
#include "image/image.h"
#include <vector>
#include <wincodec.h>

extern "C" HRESULT WINAPI WICCreateImagingFactory_Proxy(UINT version, IWICImagingFactory** factory);

static constexpr LONG width = 240, height = 320; // of the images that are converted
static constexpr LONG pixels = width * height;
static constexpr int conversions = 5; // of an image in one round

namespace {

// Buffers of whole pages must not hinder one another in the processor's cache.
constexpr LONG apart = 516;

// Java's pixels, a section's bytes, and what both are copied into by the plain way.
struct Buffers {
    std::vector<jint> colors = std::vector<jint>(pixels, 0x12345678);
    std::vector<jint> out = std::vector<jint>(pixels);
    std::vector<ULONG> section = std::vector<ULONG>(pixels + apart, 0x12345678);
    std::vector<BYTE> alphas = std::vector<BYTE>(pixels, 0x55);
    std::vector<ULONG> copy = std::vector<ULONG>(pixels);

    BYTE* row(LONG y, LONG bits) {
        return reinterpret_cast<BYTE*>(section.data() + apart) + y * strideOf(width, bits);
    }
};

} // namespace

// The larger of both sides' rows is what is copied.
template <class Row>
static jintArray measure(JNIEnv* env, Buffers* buffers, size_t bytesOfRow, Row convertRow) {
    auto* target = reinterpret_cast<BYTE*>(buffers->copy.data());
    auto* source = reinterpret_cast<const BYTE*>(buffers->colors.data());
    return compare(
        env, conversions,
        [&] {
            for (LONG y = 0; y < height; ++y) convertRow(y);
        },
        [&] {
            for (LONG y = 0; y < height; ++y)
                memcpy(target + y * bytesOfRow, source + y * bytesOfRow, bytesOfRow);
        });
}

static jintArray measureConversion(JNIEnv* env, jint which) {
    Buffers b;
    constexpr size_t ofInts = width * sizeof(jint);
    constexpr size_t ofIndices = width / 2;
    auto colors = [&](LONG y) { return b.colors.data() + y * width; };
    auto out = [&](LONG y) { return b.out.data() + y * width; };
    auto alphas = [&](LONG y) { return b.alphas.data() + y * width; };
    switch (which) {
    case 0:
        return measure(env, &b, ofInts,
                       [&](LONG y) { storeHighColor(b.row(y, 16), colors(y), width); });
    case 1:
        return measure(env, &b, ofInts,
                       [&](LONG y) { storeTrueColor(b.row(y, 24), colors(y), width); });
    case 2:
        return measure(env, &b, ofInts,
                       [&](LONG y) { storeWithAlpha(b.row(y, 32), colors(y), width, 7); });
    case 3:
        return measure(env, &b, ofInts,
                       [&](LONG y) { storeWithAlphas(b.row(y, 32), colors(y), width, alphas(y)); });
    case 4:
        return measure(env, &b, ofInts, [&](LONG y) {
            storeWidenedWithAlphas(b.row(y, 32), colors(y), width, alphas(y));
        });
    case 5:
        return measure(env, &b, ofInts,
                       [&](LONG y) { storeNarrowedWithAlpha(b.row(y, 32), colors(y), width, 7); });
    case 6:
        return measure(env, &b, ofIndices,
                       [&](LONG y) { storeIndexPairs(b.row(y, 4), alphas(y), width / 4); });
    case 7:
        return measure(env, &b, ofInts,
                       [&](LONG y) { loadHighColor(out(y), b.row(y, 16), width); });
    default:
        return measure(env, &b, ofInts,
                       [&](LONG y) { loadTrueColor(out(y), b.row(y, 24), width); });
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
    using GetRgb =
        void(JNICALL*)(JNIEnv*, jclass, jint, jint, jint, jint, jint, jint, jint, jintArray);
    auto read = reinterpret_cast<GetRgb>(
        reinterpret_cast<void*>(exported("Java_com_nuvik_wyx_k4tr_OS_Image_1GetRGB")));
    Buffers b;
    return compare(
        env, 3, [&] { read(env, nullptr, image, 0, 0, width, height, 0, width, out); },
        [&] {
            jint* elements = env->GetIntArrayElements(out, nullptr);
            memcpy(elements, b.colors.data(), pixels * sizeof(jint));
            env->ReleaseIntArrayElements(out, elements, 0);
        });
}

// Decoding a file's contents; of 32 bits or 24.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_decoding(JNIEnv* env, jclass, jbyteArray data, jboolean toBgra) {
    using NewImage = jint(JNICALL*)(JNIEnv*, jclass, jint, jbyteArray, jint);
    using Dispose = void(JNICALL*)(JNIEnv*, jclass, jint);
    auto decode = reinterpret_cast<NewImage>(
        reinterpret_cast<void*>(exported("Java_com_nuvik_wyx_k4tr_OS_Image_1NewFromFileData")));
    auto dispose = reinterpret_cast<Dispose>(
        reinterpret_cast<void*>(exported("Java_com_nuvik_wyx_k4tr_OS_Image_1Dispose")));
    jint length = env->GetArrayLength(data);
    return compare(
        env, 1, [&] { dispose(env, nullptr, decode(env, nullptr, 0, data, length)); },
        [&] {
            std::vector<BYTE> into;
            jbyte* elements = env->GetByteArrayElements(data, nullptr);
            decodePlainly(elements, length, toBgra != 0, &into);
            env->ReleaseByteArrayElements(data, elements, 0);
        });
}
}
