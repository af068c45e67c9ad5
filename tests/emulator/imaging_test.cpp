// The device's imaging component: how it is reached, and how its decoders fill a sink.

#include "emulator.h"
#include "imaging.h"
#include "png.h"
#include <gtest/gtest.h>
#include <string>
#include <thread>

using Contents = std::vector<uint8_t>;
using Events = std::vector<std::string>;

namespace {

// A stream as small as the device's decoders have to do with.
struct SmallStream : IStream {
    Contents contents;
    size_t position = 0;
    LONG count = 1;
    bool tellsSize = true;
    ULONG exaggeration = 0;
    bool failsAtEnd = true;
    ULONG most = 0xFFFFFFFF; // bytes of one read

    explicit SmallStream(const Contents& bytes) : contents(bytes) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
    ULONG STDMETHODCALLTYPE Release() override { return --count; }
    HRESULT STDMETHODCALLTYPE Read(void* out, ULONG length, ULONG* taken) override {
        ULONG left = static_cast<ULONG>(contents.size() - position);
        *taken = std::min({length, left, most});
        std::copy_n(contents.begin() + position, *taken, static_cast<uint8_t*>(out));
        position += *taken;
        return *taken || !failsAtEnd ? S_OK : STG_E_READFAULT;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER offset, DWORD origin, ULARGE_INTEGER*) override {
        if (origin != STREAM_SEEK_SET) return E_NOTIMPL;
        position = offset.LowPart;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*,
                                     ULARGE_INTEGER*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* out, DWORD) override {
        if (!tellsSize) return E_NOTIMPL;
        *out = {};
        out->cbSize.LowPart = contents.size() | exaggeration;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }
};

// A sink that writes down what it is given, and answers as the test wants.
struct RecordingSink : IImageSink {
    Events events;
    ImageInfo info = {};
    UINT wanted = 0; // 0: what the decoder offers
    bool hasBuffers = true;
    std::string failing; // fails there
    LONG count = 1;
    UINT bits = 0;
    LONG stride = 0;
    Contents pixels;
    std::vector<DWORD> palette;
    int held = 0;
    bool asksForPart = true;
    Events properties; // that it was offered
    BYTE room[64];
    bool hasRoom = false;

    HRESULT answer(const std::string& event) {
        events.push_back(event);
        return event.substr(0, event.find(' ')) == failing ? E_ACCESSDENIED : S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
    ULONG STDMETHODCALLTYPE Release() override { return --count; }
    HRESULT STDMETHODCALLTYPE BeginSink(ImageInfo* offered, RECT* part) override {
        info = *offered;
        if (asksForPart) *part = {0, 0, LONG(info.Width), LONG(info.Height)};
        if (wanted) offered->PixelFormat = wanted;
        bits = offered->PixelFormat >> 8 & 0xFF;
        stride = static_cast<LONG>((info.Width * bits + 31) / 32 * 4);
        pixels.assign(stride * info.Height, 0);
        return answer("begin");
    }
    HRESULT STDMETHODCALLTYPE EndSink(HRESULT status) override {
        return answer("end " + std::to_string(status));
    }
    HRESULT STDMETHODCALLTYPE SetPalette(const ColorPalette* colors) override {
        palette.assign(colors->Entries, colors->Entries + colors->Count);
        return answer("palette");
    }
    HRESULT STDMETHODCALLTYPE GetPixelDataBuffer(const RECT* part, UINT format, BOOL last,
                                                 BitmapData* data) override {
        if (!hasBuffers) return E_NOTIMPL;
        EXPECT_TRUE(last);
        EXPECT_EQ(part->left, 0);
        EXPECT_EQ(part->right, LONG(info.Width));
        ++held;
        *data = {info.Width, UINT(part->bottom - part->top), INT(stride),
                 format,     &pixels[part->top * stride],    0};
        return answer("buffer " + std::to_string(part->top) + "-" + std::to_string(part->bottom));
    }
    HRESULT STDMETHODCALLTYPE ReleasePixelDataBuffer(const BitmapData*) override {
        --held;
        return answer("release");
    }
    HRESULT STDMETHODCALLTYPE PushRawData(const void*, UINT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE PushPixelData(const RECT* part, const BitmapData* data,
                                            BOOL last) override {
        EXPECT_EQ(data->Width, info.Width);
        EXPECT_EQ(data->Height, UINT(part->bottom - part->top));
        auto* source = static_cast<const uint8_t*>(data->Scan0);
        LONG length = std::min(stride, LONG(data->Stride));
        for (LONG row = part->top; row < part->bottom; ++row, source += data->Stride)
            std::copy_n(source, length, pixels.begin() + row * stride);
        return answer((last ? "push " : "coarse ") + std::to_string(part->top) + "-" +
                      std::to_string(part->bottom));
    }
    HRESULT STDMETHODCALLTYPE NeedTransform(UINT*) override {
        properties.push_back("transform");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE NeedRawProperty() override {
        properties.push_back("raw");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PushRawInfo(void*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPropertyBuffer(UINT size, void** buffer) override {
        EXPECT_LE(size, sizeof(room));
        properties.push_back("buffer");
        if (hasRoom) *buffer = room;
        return hasRoom ? S_OK : E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PushPropertyItems(UINT, UINT, void* items) override {
        EXPECT_EQ(items, room);
        properties.push_back("items");
        return S_OK;
    }
    // The bytes of pixels without the rows' padding.
    Contents packed() const {
        Contents out;
        size_t length = (info.Width * bits + 7) / 8;
        for (UINT row = 0; row < info.Height; ++row)
            out.insert(out.end(), &pixels[row * stride], &pixels[row * stride] + length);
        return out;
    }
};

} // namespace

class ImagingTest : public testing::Test {
  protected:
    ImagingTest() { enter(COINIT_MULTITHREADED); }
    ~ImagingTest() override {
        Emulator_SetImageDelivery(deliverWhole);
        leave();
    }
    void enter(DWORD apartment) {
        EXPECT_EQ(CoInitializeEx(nullptr, apartment), S_OK);
        EXPECT_EQ(CoCreateInstance(CLSID_ImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                   IID_IImagingFactory, reinterpret_cast<void**>(&factory)),
                  S_OK);
    }
    void leave() {
        if (factory) factory->Release();
        factory = nullptr;
        CoUninitialize();
    }
    HRESULT decode(SmallStream* stream, RecordingSink* sink) {
        IImageDecoder* decoder = nullptr;
        HRESULT result = factory->CreateImageDecoder(stream, 0, &decoder);
        if (FAILED(result)) return result;
        EXPECT_EQ(stream->count, 2);
        EXPECT_EQ(decoder->BeginDecode(sink, nullptr), S_OK);
        EXPECT_EQ(sink->count, 2);
        result = decoder->Decode();
        EXPECT_EQ(decoder->EndDecode(result), S_OK);
        EXPECT_EQ(sink->count, 1);
        EXPECT_EQ(decoder->Release(), 0u);
        EXPECT_EQ(stream->count, 1);
        EXPECT_EQ(sink->held, 0);
        return result;
    }
    HRESULT decode(const Contents& file, RecordingSink* sink) {
        SmallStream stream(file);
        return decode(&stream, sink);
    }
    // Twenty rows of two pixels of red, green and blue.
    static Png twentyRows() {
        Png png = {2, 20, 8, 2, {}, {}, {}};
        for (uint8_t i = 0; i < 120; ++i) png.rows.push_back(i);
        return png;
    }
    static Contents twentyRowsBlueFirst() {
        Contents rows = twentyRows().rows;
        for (size_t i = 0; i < rows.size(); i += 3) std::swap(rows[i], rows[i + 2]);
        return rows;
    }

    IImagingFactory* factory = nullptr;
};

TEST_F(ImagingTest, is_reached_from_both_kinds_of_apartments) {
    for (DWORD apartment : {COINIT_MULTITHREADED, COINIT_APARTMENTTHREADED}) {
        leave();
        enter(apartment);
        RecordingSink sink;
        EXPECT_EQ(decode(encode(twentyRows()), &sink), S_OK);
        EXPECT_EQ(sink.packed(), twentyRowsBlueFirst());
    }
    leave();
    enter(COINIT_MULTITHREADED);
}

TEST_F(ImagingTest, stays_through_the_ends_of_com) {
    HMODULE before = GetModuleHandleW(L"imaging.dll");
    EXPECT_NE(before, nullptr);
    leave();
    CoFreeUnusedLibraries();
    EXPECT_EQ(GetModuleHandleW(L"imaging.dll"), before);
    enter(COINIT_MULTITHREADED);
}

TEST_F(ImagingTest, offers_what_it_is_and_nothing_else) {
    void* other = nullptr;
    EXPECT_EQ(factory->QueryInterface(IID_IUnknown, &other), S_OK);
    EXPECT_EQ(other, factory);
    EXPECT_EQ(factory->Release(), 1u);
    EXPECT_EQ(factory->QueryInterface(IID_IImageDecoder, &other), E_NOINTERFACE);
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(factory->CreateImageFromFile(L"", &other), E_NOTIMPL);
    EXPECT_EQ(
        CoCreateInstance(CLSID_ImagingFactory, factory, CLSCTX_INPROC_SERVER, IID_IUnknown, &other),
        CLASS_E_NOAGGREGATION);
}

TEST_F(ImagingTest, reads_any_stream_from_its_start) {
    for (bool tellsSize : {false, true})
        for (bool failsAtEnd : {false, true})
            for (ULONG most : {1ul, 100ul, 0xFFFFFFFFul}) {
                SmallStream stream(encode(twentyRows()));
                stream.position = 7;
                stream.tellsSize = tellsSize;
                stream.failsAtEnd = failsAtEnd;
                stream.most = most;
                RecordingSink sink;
                EXPECT_EQ(decode(&stream, &sink), S_OK);
                EXPECT_EQ(sink.packed(), twentyRowsBlueFirst());
            }
}

TEST_F(ImagingTest, does_not_believe_in_sizes) {
    SmallStream stream(encode(twentyRows()));
    stream.exaggeration = 0xFFFF0000;
    RecordingSink sink;
    EXPECT_EQ(decode(&stream, &sink), S_OK);
    EXPECT_EQ(sink.packed(), twentyRowsBlueFirst());
}

TEST_F(ImagingTest, offers_properties_whatever_the_sink_answers) {
    RecordingSink without, with;
    with.hasRoom = true;
    EXPECT_EQ(decode(encode(twentyRows()), &without), S_OK);
    EXPECT_EQ(decode(encode(twentyRows()), &with), S_OK);
    EXPECT_EQ(without.properties, (Events{"transform", "raw", "buffer"}));
    EXPECT_EQ(with.properties, (Events{"transform", "raw", "buffer", "items"}));
}

TEST_F(ImagingTest, wants_to_know_which_part_the_sink_takes) {
    RecordingSink sink;
    sink.asksForPart = false;
    EXPECT_EQ(decode(encode(twentyRows()), &sink), E_INVALIDARG);
    EXPECT_EQ(sink.events, (Events{"begin", "end " + std::to_string(E_INVALIDARG)}));
}

// The desk's own decoder would run over.
TEST_F(ImagingTest, takes_no_image_whose_bytes_cannot_be_counted) {
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof(header);
    header.biWidth = 0x10000;
    header.biHeight = 0x4001;
    header.biPlanes = 1;
    header.biBitCount = 32;
    BITMAPFILEHEADER start = {};
    start.bfType = 0x4D42;
    start.bfOffBits = sizeof(start) + sizeof(header);
    Contents file(sizeof(start) + sizeof(header) + 64);
    memcpy(&file[0], &start, sizeof(start));
    memcpy(&file[sizeof(start)], &header, sizeof(header));
    for (auto delivery : {deliverWhole, deliverInBands, deliverRows, deliverPasses}) {
        Emulator_SetImageDelivery(delivery);
        RecordingSink sink;
        EXPECT_EQ(decode(file, &sink), E_OUTOFMEMORY);
        EXPECT_TRUE(sink.events.empty());
    }
}

TEST_F(ImagingTest, describes_the_image) {
    RecordingSink sink;
    decode(encode(twentyRows()), &sink);
    EXPECT_EQ(sink.info.Width, 2u);
    EXPECT_EQ(sink.info.Height, 20u);
    EXPECT_EQ(sink.info.PixelFormat, PixelFormat24bppRGB);
    EXPECT_GT(sink.info.Xdpi, 0);
}

TEST_F(ImagingTest, delivers_in_every_way) {
    const struct {
        EmulatorDelivery delivery;
        Events events;
    } ways[] = {
        {deliverWhole, {"begin", "buffer 0-20", "release", "end 0"}},
        {deliverInBands, {"begin", "buffer 0-16", "release", "buffer 16-20", "release", "end 0"}},
        {deliverRows, {"begin", "push 0-16", "push 16-20", "end 0"}},
        {deliverPasses,
         {"begin", "coarse 0-16", "coarse 16-20", "push 0-16", "push 16-20", "end 0"}},
    };
    for (const auto& way : ways) {
        Emulator_SetImageDelivery(way.delivery);
        RecordingSink sink;
        EXPECT_EQ(decode(encode(twentyRows()), &sink), S_OK);
        EXPECT_EQ(sink.events, way.events);
        EXPECT_EQ(sink.packed(), twentyRowsBlueFirst());
    }
}

TEST_F(ImagingTest, pushes_rows_to_a_sink_without_buffers) {
    for (EmulatorDelivery delivery : {deliverWhole, deliverInBands}) {
        Emulator_SetImageDelivery(delivery);
        RecordingSink sink;
        sink.hasBuffers = false;
        EXPECT_EQ(decode(encode(twentyRows()), &sink), S_OK);
        EXPECT_EQ(sink.events, (Events{"begin", "push 0-16", "push 16-20", "end 0"}));
        EXPECT_EQ(sink.packed(), twentyRowsBlueFirst());
    }
}

TEST_F(ImagingTest, gives_the_palette_before_the_pixels) {
    RecordingSink sink;
    EXPECT_EQ(decode(encode({2, 1, 8, 3, {1, 0}, {1, 2, 3, 4, 5, 6}, {0, 128}}), &sink), S_OK);
    EXPECT_EQ(sink.events, (Events{"begin", "palette", "buffer 0-1", "release", "end 0"}));
    EXPECT_EQ(sink.palette, (std::vector<DWORD>{0x00010203, 0x80040506}));
    EXPECT_EQ(sink.packed(), (Contents{1, 0}));
}

TEST_F(ImagingTest, stores_indices_of_2_bits_with_4) {
    Png png = {5, 2, 2, 3, {0x1B, 0x40, 0xE4, 0xC0}, {}, {}};
    png.palette.resize(12);
    for (EmulatorDelivery delivery : {deliverWhole, deliverRows}) {
        Emulator_SetImageDelivery(delivery);
        RecordingSink sink;
        EXPECT_EQ(decode(encode(png), &sink), S_OK);
        EXPECT_EQ(sink.info.PixelFormat, PixelFormat4bppIndexed);
        EXPECT_EQ(sink.packed(), (Contents{0x01, 0x23, 0x10, 0x32, 0x10, 0x30}));
    }
}

TEST_F(ImagingTest, gives_greys_a_palette) {
    for (uint8_t bits : {1, 2, 4, 8}) {
        RecordingSink sink;
        EXPECT_EQ(decode(encode({1, 1, bits, 0, {0x80}, {}, {}}), &sink), S_OK);
        ASSERT_EQ(sink.palette.size(), 1u << bits);
        for (UINT i = 0; i < 1u << bits; ++i)
            EXPECT_EQ(sink.palette[i], 0xFF000000 | i * 255 / ((1 << bits) - 1) * 0x10101);
    }
}

TEST_F(ImagingTest, gives_32_bits_to_a_sink_that_wants_them) {
    const Contents file = encode({1, 1, 16, 6, {0x12, 0, 0x34, 0, 0x56, 0, 0x78, 0}, {}, {}});
    RecordingSink sink;
    sink.wanted = PixelFormat32bppARGB;
    EXPECT_EQ(decode(file, &sink), S_OK);
    EXPECT_EQ(sink.info.PixelFormat, PixelFormat64bppARGB);
    EXPECT_EQ(sink.packed(), (Contents{0x56, 0x34, 0x12, 0x78}));
}

TEST_F(ImagingTest, gives_no_other_format) {
    for (UINT format : {PixelFormat8bppIndexed, PixelFormat16bppRGB565, PixelFormat64bppARGB}) {
        RecordingSink sink;
        sink.wanted = format;
        EXPECT_EQ(decode(encode(twentyRows()), &sink), E_NOTIMPL);
        EXPECT_EQ(sink.events, (Events{"begin", "end " + std::to_string(E_NOTIMPL)}));
    }
}

TEST_F(ImagingTest, ends_with_the_failure_of_its_sink) {
    for (const char* failing : {"begin", "palette", "buffer", "release", "push", "coarse"}) {
        RecordingSink sink;
        sink.failing = failing;
        std::string where = failing;
        Emulator_SetImageDelivery(where == "push"     ? deliverRows
                                  : where == "coarse" ? deliverPasses
                                                      : deliverWhole);
        SmallStream stream(encode({1, 1, 8, 3, {0}, {1, 2, 3}, {}}));
        IImageDecoder* decoder = nullptr;
        ASSERT_EQ(factory->CreateImageDecoder(&stream, 0, &decoder), S_OK);
        decoder->BeginDecode(&sink, nullptr);
        EXPECT_EQ(decoder->Decode(), E_ACCESSDENIED) << failing;
        EXPECT_EQ(sink.events.back().find(failing), 0u) << "nothing after it";
        decoder->EndDecode(E_ACCESSDENIED);
        decoder->Release();
        EXPECT_EQ(sink.count, 1);
    }
}

TEST_F(ImagingTest, keeps_to_its_order) {
    SmallStream stream(encode(twentyRows()));
    IImageDecoder* decoder = nullptr;
    ASSERT_EQ(factory->CreateImageDecoder(&stream, 0, &decoder), S_OK);
    RecordingSink sink;
    EXPECT_EQ(decoder->Decode(), E_FAIL) << "without a sink";
    EXPECT_EQ(decoder->EndDecode(S_OK), E_FAIL);
    EXPECT_EQ(decoder->BeginDecode(nullptr, nullptr), E_FAIL);
    EXPECT_EQ(decoder->BeginDecode(&sink, nullptr), S_OK);
    EXPECT_EQ(decoder->BeginDecode(&sink, nullptr), E_FAIL) << "one at a time";
    EXPECT_EQ(decoder->Release(), 0u) << "without an end";
    EXPECT_EQ(sink.count, 1);
    EXPECT_EQ(stream.count, 1);
}

TEST_F(ImagingTest, has_no_decoder_for_what_is_no_image) {
    IImageDecoder* decoder = reinterpret_cast<IImageDecoder*>(1);
    for (const Contents& file : {Contents(), Contents(1, 'x'), Contents(5000, 'x')}) {
        SmallStream stream(file);
        EXPECT_TRUE(FAILED(factory->CreateImageDecoder(&stream, 0, &decoder)));
        EXPECT_EQ(decoder, nullptr);
        EXPECT_EQ(stream.count, 1);
    }
    EXPECT_EQ(factory->CreateImageDecoder(nullptr, 0, &decoder), E_POINTER);
    SmallStream stream({});
    EXPECT_EQ(factory->CreateImageDecoder(&stream, 0, nullptr), E_POINTER);
}
