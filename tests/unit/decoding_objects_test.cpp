// The objects that decoders get: the streams that they read and the sink that they fill.

#include "device.h"
#include "image/sink.h"
#include "image/stream.h"
#include "leaks.h"
#include <fstream>

using Contents = std::vector<BYTE>;

class StreamTest : public DeviceTest {
  protected:
    static constexpr BYTE bytes[] = {10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21};
    static constexpr ULONG length = sizeof(bytes);

    StreamTest() {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        GetTempFileNameW(folder, L"str", 0, path);
        HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written;
        WriteFile(file, bytes, length, &written, nullptr);
        CloseHandle(file);
    }
    ~StreamTest() override { DeleteFileW(path); }

    static Contents read(IStream* stream, ULONG count, HRESULT expected = S_OK) {
        Contents out(count);
        ULONG taken = 99;
        EXPECT_EQ(stream->Read(out.data(), count, &taken), expected);
        out.resize(taken);
        return out;
    }
    static HRESULT seek(IStream* stream, LONG offset, DWORD origin, ULONG* reached = nullptr) {
        LARGE_INTEGER move = {};
        move.LowPart = offset;
        move.HighPart = 0x1234; // not looked at
        ULARGE_INTEGER position;
        position.QuadPart = 0x5555555555555555;
        HRESULT result = stream->Seek(move, origin, reached ? &position : nullptr);
        if (reached && result == S_OK) {
            EXPECT_EQ(position.HighPart, 0u);
            *reached = position.LowPart;
        }
        return result;
    }
    wchar_t path[MAX_PATH] = {};
};

TEST_F(StreamTest, read_to_the_end_which_is_a_fault) {
    for (IStream* stream : {createMemoryStream(bytes, length), createFileStream(path)}) {
        EXPECT_EQ(read(stream, 5), (Contents{10, 11, 12, 13, 14}));
        EXPECT_EQ(read(stream, 100), (Contents{15, 16, 17, 18, 19, 20, 21}));
        EXPECT_EQ(read(stream, 1, STG_E_READFAULT), Contents());
        EXPECT_EQ(stream->Release(), 0u);
    }
}

TEST_F(StreamTest, end_is_no_fault_where_it_is_not_meant_to_be) {
    for (IStream* stream : {createMemoryStream(bytes, 0), createFileStream(path)}) {
        auto* record = reinterpret_cast<ReadStream*>(stream);
        EXPECT_EQ(record->failAtEnd, 1);
        record->failAtEnd = FALSE;
        read(stream, length);
        EXPECT_EQ(read(stream, 1), Contents());
        stream->Release();
    }
}

TEST_F(StreamTest, reads_without_being_asked_how_much_it_was) {
    for (IStream* stream : {createMemoryStream(bytes, length), createFileStream(path)}) {
        BYTE out[2] = {};
        EXPECT_EQ(stream->Read(out, 2, nullptr), S_OK);
        EXPECT_EQ(out[1], 11);
        stream->Release();
    }
}

TEST_F(StreamTest, memory_is_not_read_to_nowhere) {
    IStream* stream = createMemoryStream(bytes, length);
    EXPECT_EQ(stream->Read(nullptr, 1, nullptr), STG_E_INVALIDPOINTER);
    EXPECT_EQ(read(stream, 1), (Contents{10}));
    stream->Release();
}

TEST_F(StreamTest, memory_is_sought_within_its_size) {
    IStream* stream = createMemoryStream(bytes, length);
    ULONG reached = 0;
    EXPECT_EQ(seek(stream, 4, STREAM_SEEK_SET, &reached), S_OK);
    EXPECT_EQ(reached, 4u);
    EXPECT_EQ(seek(stream, 3, STREAM_SEEK_CUR, &reached), S_OK);
    EXPECT_EQ(reached, 7u);
    EXPECT_EQ(seek(stream, -2, STREAM_SEEK_CUR, &reached), S_OK);
    EXPECT_EQ(reached, 5u);
    EXPECT_EQ(seek(stream, 10, STREAM_SEEK_END, &reached), S_OK);
    EXPECT_EQ(reached, length - 10) << "back from the end";
    EXPECT_EQ(seek(stream, 1, STREAM_SEEK_SET), S_OK) << "without being asked where it went";
    EXPECT_EQ(read(stream, 1), (Contents{11}));
    EXPECT_EQ(seek(stream, length, STREAM_SEEK_SET, &reached), S_OK);
    EXPECT_EQ(reached, length);
    stream->Release();
}

TEST_F(StreamTest, memory_stays_where_it_is_when_sought_outside) {
    IStream* stream = createMemoryStream(bytes, length);
    read(stream, 3);
    EXPECT_EQ(seek(stream, length + 1, STREAM_SEEK_SET), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream, length, STREAM_SEEK_CUR), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream, -4, STREAM_SEEK_CUR), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream, length + 1, STREAM_SEEK_END), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream, -1, STREAM_SEEK_END), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream, 0, 3), E_NOTIMPL);
    EXPECT_EQ(read(stream, 1), (Contents{13}));
    stream->Release();
}

TEST_F(StreamTest, file_is_sought_before_its_end) {
    IStream* stream = createFileStream(path);
    ULONG reached = 0;
    EXPECT_EQ(seek(stream, 4, STREAM_SEEK_SET, &reached), S_OK);
    EXPECT_EQ(reached, 4u);
    EXPECT_EQ(seek(stream, 3, STREAM_SEEK_CUR, &reached), S_OK);
    EXPECT_EQ(reached, 7u);
    EXPECT_EQ(seek(stream, -2, STREAM_SEEK_END, &reached), S_OK);
    EXPECT_EQ(reached, length - 2) << "from the end, unlike memory";
    EXPECT_EQ(read(stream, 1), (Contents{20}));
    EXPECT_EQ(seek(stream, 0, STREAM_SEEK_END, &reached), STG_E_INVALIDFUNCTION)
        << "the end itself, unlike memory";
    EXPECT_EQ(seek(stream, length + 5, STREAM_SEEK_SET), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream, -1, STREAM_SEEK_SET), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream, 0, 3), E_NOTIMPL);
    stream->Release();
}

TEST_F(StreamTest, file_that_cannot_be_read_says_so_without_an_error_code) {
    IStream* stream = createFileStream(path);
    auto* record = reinterpret_cast<FileStream*>(stream);
    CloseHandle(record->file);
    record->file = INVALID_HANDLE_VALUE;
    BYTE out;
    ULONG taken = 99;
    EXPECT_EQ(stream->Read(&out, 1, &taken), S_FALSE);
    EXPECT_EQ(taken, 0u);
    stream->Release();
}

TEST_F(StreamTest, describes_nothing_but_its_kind_and_size) {
    for (IStream* stream : {createMemoryStream(bytes, length), createFileStream(path)}) {
        STATSTG description;
        memset(&description, 0x55, sizeof(description));
        EXPECT_EQ(stream->Stat(&description, STATFLAG_DEFAULT), S_OK);
        STATSTG expected = {};
        expected.type = STGTY_STREAM;
        expected.cbSize.QuadPart = length;
        EXPECT_EQ(memcmp(&description, &expected, sizeof(expected)), 0);
        EXPECT_EQ(reinterpret_cast<ReadStream*>(stream)->table->size(
                      reinterpret_cast<ReadStream*>(stream)),
                  length);
        stream->Release();
    }
}

TEST_F(StreamTest, offers_nothing_else) {
    for (IStream* stream : {createMemoryStream(bytes, length), createFileStream(path)}) {
        void* other = nullptr;
        EXPECT_EQ(stream->QueryInterface(IID_IStream, &other), E_NOINTERFACE);
        EXPECT_EQ(stream->QueryInterface(IID_IUnknown, &other), E_NOINTERFACE);
        EXPECT_EQ(stream->Write(bytes, 1, nullptr), E_NOTIMPL);
        EXPECT_EQ(stream->SetSize({}), E_NOTIMPL);
        EXPECT_EQ(stream->CopyTo(nullptr, {}, nullptr, nullptr), E_NOTIMPL);
        EXPECT_EQ(stream->Commit(0), E_NOTIMPL);
        EXPECT_EQ(stream->Revert(), E_NOTIMPL);
        EXPECT_EQ(stream->LockRegion({}, {}, 0), E_NOTIMPL);
        EXPECT_EQ(stream->UnlockRegion({}, {}, 0), E_NOTIMPL);
        EXPECT_EQ(stream->Clone(nullptr), E_NOTIMPL);
        stream->Release();
    }
}

TEST_F(StreamTest, lives_as_long_as_it_is_referred_to) {
    long blocks = countHeapBlocks();
    for (IStream* stream : {createMemoryStream(bytes, length), createFileStream(path)}) {
        EXPECT_EQ(reinterpret_cast<ReadStream*>(stream)->refCount, 1u);
        EXPECT_EQ(stream->AddRef(), 2u);
        EXPECT_EQ(stream->Release(), 1u);
        EXPECT_EQ(read(stream, 1), (Contents{10}));
        EXPECT_EQ(stream->Release(), 0u);
    }
    EXPECT_EQ(countHeapBlocks(), blocks);
    EXPECT_TRUE(DeleteFileW(path)) << "the file is closed";
}

TEST_F(StreamTest, ends_what_it_reads_without_being_freed_where_that_is_not_asked_for) {
    for (IStream* stream : {createMemoryStream(bytes, length), createFileStream(path)}) {
        auto* record = reinterpret_cast<ReadStream*>(stream);
        long blocks = countHeapBlocks();
        record->table->destroy(record, 0);
        EXPECT_EQ(countHeapBlocks(), blocks);
        record->table->destroy(record, 1);
        EXPECT_EQ(countHeapBlocks(), blocks - 1);
    }
}

TEST_F(StreamTest, without_a_file_there_is_none) {
    EXPECT_EQ(createFileStream(L"\\no such folder\\file"), nullptr);
}

class SinkTest : public DeviceTest {
  protected:
    SinkTest() : sink(createSink()), pushed(asImageSink(sink)) {}
    ~SinkTest() override {
        if (sink) pushed->Release();
    }

    ImageInfo begin(UINT format, UINT width = 5, UINT height = 3) {
        ImageInfo info = {};
        info.PixelFormat = format;
        info.Width = width;
        info.Height = height;
        EXPECT_EQ(pushed->BeginSink(&info, nullptr), S_OK);
        return info;
    }
    DIBSECTION section() {
        DIBSECTION described = {};
        EXPECT_EQ(GetObjectW(sink->bitmap, sizeof(described), &described), int(sizeof(described)));
        return described;
    }
    HRESULT setPalette(const std::vector<DWORD>& entries) {
        std::vector<DWORD> palette = {0, static_cast<DWORD>(entries.size())};
        palette.insert(palette.end(), entries.begin(), entries.end());
        return pushed->SetPalette(reinterpret_cast<const ColorPalette*>(palette.data()));
    }
    HRESULT push(const RECT& part, BitmapData data, BOOL lastPass = TRUE) {
        return pushed->PushPixelData(&part, &data, lastPass);
    }
    // Rows of 24-bit pixels whose every byte is the number of its row, counted from first.
    static Contents rowsOf(int stride, int count, BYTE first = 1) {
        Contents rows;
        for (int row = 0; row < count; ++row) rows.insert(rows.end(), stride, BYTE(first + row));
        return rows;
    }
    static BitmapData dataOf(Contents& rows, int stride) {
        return {5, UINT(rows.size() / stride), stride, PixelFormat24bppRGB, rows.data(), 0};
    }
    // The first byte of each row.
    Contents firsts() {
        Contents found;
        for (LONG row = 0; row < sink->height; ++row)
            found.push_back(sink->bits[row * sink->stride]);
        return found;
    }

    Sink* sink;
    IImageSink* pushed;
};

TEST_F(SinkTest, starts_with_nothing) {
    EXPECT_EQ(sink->refCount, 1u);
    EXPECT_EQ(sink->bitmap, nullptr);
    EXPECT_EQ(sink->bits, nullptr);
    EXPECT_EQ(sink->transparentIndex, -1);
    EXPECT_EQ(sink->transparentColor, 0xFFFFFFFF);
}

TEST_F(SinkTest, lives_as_long_as_it_is_referred_to) {
    begin(PixelFormat24bppRGB);
    EXPECT_EQ(pushed->AddRef(), 2u);
    EXPECT_EQ(pushed->Release(), 1u);
    EXPECT_EQ(firsts(), (Contents{0, 0, 0}));
}

TEST_F(SinkTest, takes_its_bitmap_along) {
    newShell();
    NoLeaks noLeaks;
    IImageSink* other = asImageSink(createSink());
    ImageInfo info = {};
    info.Width = info.Height = 1;
    other->BeginSink(&info, nullptr);
    EXPECT_EQ(other->Release(), 0u);
}

TEST_F(SinkTest, is_nothing_else) {
    void* other = nullptr;
    EXPECT_EQ(pushed->QueryInterface(IID_IUnknown, &other), E_NOINTERFACE);
    BYTE byte = 0;
    EXPECT_EQ(pushed->PushRawData(&byte, 1), E_NOTIMPL);
    EXPECT_EQ(pushed->ReleasePixelDataBuffer(nullptr), S_OK);
}

TEST_F(SinkTest, has_no_properties_or_transforms) {
    UINT rotation = 7;
    void* buffer = this;
    EXPECT_EQ(pushed->NeedTransform(&rotation), E_NOTIMPL);
    EXPECT_EQ(pushed->NeedRawProperty(), E_NOTIMPL);
    EXPECT_EQ(pushed->PushRawInfo(&rotation), E_NOTIMPL);
    EXPECT_EQ(pushed->GetPropertyBuffer(4, &buffer), E_NOTIMPL);
    EXPECT_EQ(pushed->PushPropertyItems(1, 4, buffer), E_NOTIMPL);
}

TEST_F(SinkTest, takes_the_whole_image) {
    ImageInfo info = {};
    info.PixelFormat = PixelFormat24bppRGB;
    info.Width = 5;
    info.Height = 3;
    RECT part = {9, 9, 9, 9};
    EXPECT_EQ(pushed->BeginSink(&info, &part), S_OK);
    const RECT whole = {0, 0, 5, 3};
    EXPECT_TRUE(EqualRect(&part, &whole));
}

TEST_F(SinkTest, takes_every_format_or_asks_for_32_bits) {
    const struct {
        UINT offered, taken;
        int bits;
        BOOL direct, alpha;
    } rows[] = {
        {PixelFormat1bppIndexed, PixelFormat1bppIndexed, 1, FALSE, FALSE},
        {PixelFormat4bppIndexed, PixelFormat4bppIndexed, 4, FALSE, FALSE},
        {PixelFormat8bppIndexed, PixelFormat8bppIndexed, 8, FALSE, FALSE},
        {PixelFormat24bppRGB, PixelFormat24bppRGB, 24, TRUE, FALSE},
        {PixelFormat16bppRGB555, PixelFormat32bppARGB, 32, TRUE, TRUE},
        {PixelFormat16bppRGB565, PixelFormat32bppARGB, 32, TRUE, TRUE},
        {PixelFormat16bppGrayScale, PixelFormat32bppARGB, 32, TRUE, TRUE},
        {PixelFormat32bppRGB, PixelFormat32bppARGB, 32, TRUE, TRUE},
        {PixelFormat32bppARGB, PixelFormat32bppARGB, 32, TRUE, TRUE},
        {PixelFormat32bppPARGB, PixelFormat32bppARGB, 32, TRUE, TRUE},
        {PixelFormat48bppRGB, PixelFormat32bppARGB, 32, TRUE, TRUE},
        {PixelFormat64bppARGB, PixelFormat32bppARGB, 32, TRUE, TRUE},
        {0, PixelFormat32bppARGB, 32, TRUE, TRUE},
    };
    // What it was told before, whatever it was, makes no difference.
    for (UINT width : {1u, 5u, 8u, 33u})
        for (const auto& row : rows) {
            ImageInfo info = begin(row.offered, width);
            EXPECT_EQ(info.PixelFormat, row.taken);
            EXPECT_EQ(sink->pixelFormat, row.taken);
            EXPECT_EQ(sink->isDirect, row.direct);
            EXPECT_EQ(sink->hasAlpha, row.alpha);
            EXPECT_TRUE(info.RawDataFormat == ImageFormatMemoryBMP);
            EXPECT_EQ(info.Flags, 0x50000u);
            DIBSECTION described = section();
            EXPECT_EQ(described.dsBm.bmBitsPixel, row.bits);
            EXPECT_EQ(described.dsBm.bmWidth, LONG(width));
            EXPECT_EQ(described.dsBm.bmHeight, 3);
            EXPECT_EQ(described.dsBm.bmWidthBytes, sink->stride);
            EXPECT_EQ(sink->stride, LONG(width * row.bits + 31) / 32 * 4);
            EXPECT_EQ(described.dsBm.bmBits, sink->bits);
        }
}

TEST_F(SinkTest, keeps_the_flags_that_are_set) {
    ImageInfo info = {};
    info.Flags = 3;
    info.Width = info.Height = 1;
    pushed->BeginSink(&info, nullptr);
    EXPECT_EQ(info.Flags, 0x50003u);
}

TEST_F(SinkTest, beginning_again_drops_the_bitmap) {
    newShell();
    begin(PixelFormat24bppRGB);
    NoLeaks noLeaks;
    begin(PixelFormat8bppIndexed, 9, 9);
}

TEST_F(SinkTest, drops_its_bitmap_only_when_the_end_is_a_failure) {
    begin(PixelFormat24bppRGB);
    EXPECT_EQ(pushed->EndSink(S_OK), S_OK);
    EXPECT_NE(sink->bitmap, nullptr);
    EXPECT_EQ(pushed->EndSink(S_FALSE), S_OK);
    EXPECT_NE(sink->bitmap, nullptr);
    EXPECT_EQ(pushed->EndSink(E_FAIL), S_OK);
    EXPECT_EQ(sink->bitmap, nullptr);
    EXPECT_EQ(pushed->EndSink(E_FAIL), S_OK);
}

TEST_F(SinkTest, palette_is_in_the_section) {
    begin(PixelFormat4bppIndexed);
    EXPECT_EQ(setPalette({0xFF102030, 0xFF405060}), S_OK);
    HDC context = CreateCompatibleDC(nullptr);
    HGDIOBJ before = SelectObject(context, sink->bitmap);
    sink->bits[0] = 0x10;
    EXPECT_EQ(GetPixel(context, 0, 0), RGB(0x40, 0x50, 0x60));
    EXPECT_EQ(GetPixel(context, 1, 0), RGB(0x10, 0x20, 0x30));
    SelectObject(context, before);
    DeleteDC(context);
    EXPECT_EQ(sink->transparentIndex, -1);
    EXPECT_EQ(sink->transparentColor, 0xFFFFFFFF);
}

TEST_F(SinkTest, last_entry_without_opacity_is_transparent) {
    begin(PixelFormat8bppIndexed);
    setPalette({0xFF000000, 0x00112233, 0x01FFFFFF, 0x00445566, 0x80000000});
    EXPECT_EQ(sink->transparentIndex, 3);
    EXPECT_EQ(sink->transparentColor, RGB(0x44, 0x55, 0x66));
}

TEST_F(SinkTest, palette_longer_than_any_is_cut) {
    begin(PixelFormat8bppIndexed);
    std::vector<DWORD> entries(300, 0xFF000000);
    entries[255] = 0x00010203;
    entries[256] = 0;
    EXPECT_EQ(setPalette(entries), S_OK);
    EXPECT_EQ(sink->transparentIndex, 255);
}

TEST_F(SinkTest, hands_its_own_memory_out) {
    begin(PixelFormat24bppRGB);
    BitmapData data = {};
    const RECT part = {0, 1, 5, 3};
    EXPECT_EQ(pushed->GetPixelDataBuffer(&part, PixelFormat24bppRGB, TRUE, &data), S_OK);
    EXPECT_EQ(data.Width, 5u);
    EXPECT_EQ(data.Height, 2u);
    EXPECT_EQ(data.Stride, 16);
    EXPECT_EQ(data.PixelFormat, PixelFormat24bppRGB);
    EXPECT_EQ(data.Scan0, sink->bits + 16);
}

TEST_F(SinkTest, hands_out_whole_rows_of_its_format_only) {
    begin(PixelFormat24bppRGB);
    BitmapData data = {};
    const RECT whole = {0, 0, 5, 3};
    EXPECT_EQ(pushed->GetPixelDataBuffer(&whole, PixelFormat32bppARGB, TRUE, &data), E_NOTIMPL);
    for (const RECT& part : {RECT{1, 0, 5, 3}, RECT{0, 0, 4, 3}, RECT{0, 0, 6, 3}})
        EXPECT_EQ(pushed->GetPixelDataBuffer(&part, PixelFormat24bppRGB, TRUE, &data), E_NOTIMPL);
    EXPECT_EQ(data.Scan0, nullptr);
}

TEST_F(SinkTest, hands_out_nothing_beyond_its_rows) {
    BitmapData data = {};
    const RECT nothing = {0, 0, 0, 0};
    EXPECT_EQ(pushed->GetPixelDataBuffer(&nothing, 0, TRUE, &data), E_FAIL) << "before the begin";
    begin(PixelFormat24bppRGB);
    for (const RECT& part :
         {RECT{0, -1, 5, 2}, RECT{0, 0, 5, 4}, RECT{0, 2, 5, 1}, RECT{0, INT_MAX, 5, INT_MIN}})
        EXPECT_EQ(pushed->GetPixelDataBuffer(&part, PixelFormat24bppRGB, TRUE, &data), E_FAIL);
    EXPECT_EQ(data.Scan0, nullptr);
}

TEST_F(SinkTest, copies_rows_of_any_stride) {
    begin(PixelFormat24bppRGB);
    for (int stride : {15, 16, 20}) {
        memset(sink->bits, 0, sink->stride * sink->height);
        Contents rows = rowsOf(stride, 2);
        EXPECT_EQ(push({0, 1, 5, 3}, dataOf(rows, stride)), S_OK);
        EXPECT_EQ(firsts(), (Contents{0, 1, 2})) << stride;
        EXPECT_EQ(sink->bits[16 + 14], 1);
        EXPECT_EQ(sink->bits[16 + 15], stride == 15 ? 0 : 1) << "as much as there is";
    }
}

TEST_F(SinkTest, copies_rows_that_run_upwards) {
    begin(PixelFormat24bppRGB);
    Contents rows = rowsOf(16, 3);
    BitmapData data = dataOf(rows, 16);
    data.Stride = -16;
    data.Scan0 = rows.data() + 32;
    EXPECT_EQ(push({0, 0, 5, 3}, data), S_OK);
    EXPECT_EQ(firsts(), (Contents{3, 2, 1}));
}

TEST_F(SinkTest, keeps_the_last_pass_only) {
    begin(PixelFormat24bppRGB);
    Contents coarse = rowsOf(16, 3, 50), fine = rowsOf(16, 3, 1);
    EXPECT_EQ(push({0, 0, 5, 3}, dataOf(coarse, 16), FALSE), S_OK);
    EXPECT_EQ(firsts(), (Contents{0, 0, 0}));
    EXPECT_EQ(push({1, 0, 4, 3}, dataOf(coarse, 16), FALSE), S_OK) << "whatever it spans";
    EXPECT_EQ(push({0, 0, 5, 3}, dataOf(fine, 16), TRUE), S_OK);
    EXPECT_EQ(firsts(), (Contents{1, 2, 3}));
    EXPECT_EQ(push({0, 0, 5, 3}, dataOf(coarse, 16), FALSE), S_OK);
    EXPECT_EQ(firsts(), (Contents{1, 2, 3}));
}

TEST_F(SinkTest, copies_whole_rows_of_its_format_only) {
    begin(PixelFormat24bppRGB);
    Contents rows = rowsOf(16, 3);
    BitmapData other = dataOf(rows, 16);
    other.PixelFormat = PixelFormat32bppARGB;
    EXPECT_EQ(push({0, 0, 5, 3}, other), E_NOTIMPL);
    EXPECT_EQ(push({0, 0, 5, 3}, other, FALSE), E_NOTIMPL);
    EXPECT_EQ(push({1, 0, 5, 3}, dataOf(rows, 16)), E_NOTIMPL);
    EXPECT_EQ(push({0, 0, 4, 3}, dataOf(rows, 16)), E_NOTIMPL);
    EXPECT_EQ(firsts(), (Contents{0, 0, 0}));
}

TEST_F(SinkTest, copies_nothing_beyond_its_rows) {
    begin(PixelFormat24bppRGB);
    Contents rows = rowsOf(16, 4);
    for (const RECT& part : {RECT{0, -1, 5, 2}, RECT{0, 1, 5, 4}, RECT{0, 2, 5, 1}})
        EXPECT_EQ(push(part, dataOf(rows, 16)), E_FAIL);
    EXPECT_EQ(firsts(), (Contents{0, 0, 0}));
}
