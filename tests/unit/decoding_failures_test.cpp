// Every way in which decoding fails.

#include "decoding_fixture.h"
#include "faults.h"
#include "leaks.h"

TEST_F(DecodingTest, elements_are_released_with_their_changes) {
    jint image = fromData(bytesOf(onePixel));
    EXPECT_EQ(vm.countCalls("GetByteArrayElements"), 1);
    EXPECT_EQ(vm.countCalls("ReleaseByteArrayElements"), 1);
    disposeImage(image);
}

TEST_F(DecodingTest, nothing_gives_no_image) {
    expectNoImage({}, -6, noDecoder);
    EXPECT_EQ(call(OS::Image_NewFromFileData, display, nullptr, 10), 0);
    expectReport("Image_NewFromFileData", -6, noDecoder);
    EXPECT_EQ(call(OS::Image_NewFromFile, display, nullptr), 0);
    expectReport("Image_NewFromFile", -3, noStream);
}

TEST_F(DecodingTest, what_is_no_image_has_no_decoder) {
    expectNoImage(Bytes(1000, 'x'), -6, noDecoder);
}

TEST_F(DecodingTest, file_that_is_not_there) {
    EXPECT_EQ(fromFile(u"\\no such folder\\image.png"), 0);
    expectReport("Image_NewFromFile", -3, noStream);
}

TEST_F(DecodingTest, without_memory_for_the_stream) {
    Faults faults;
    faults.fail("LocalAlloc");
    expectNoImage(bytesOf(onePixel), -3, noStream);
}

TEST_F(DecodingTest, without_memory_for_the_stream_the_file_is_closed) {
    const std::string path = SUITE_FOLDER "/" + suite()[0].name;
    jstring name = vm.newString({path.begin(), path.end()});
    Faults faults;
    faults.fail("LocalAlloc", 2); // the first is the path
    EXPECT_EQ(call(OS::Image_NewFromFile, display, name), 0);
    expectReport("Image_NewFromFile", -3, noStream);
    EXPECT_EQ(faults.countCalls("CreateFileW"), 1);
    EXPECT_EQ(faults.countCalls("CloseHandle"), 1);
}

TEST_F(DecodingTest, without_com) {
    Faults faults;
    faults.fail("CoInitializeEx");
    expectNoImage(bytesOf(onePixel), -3, noCom);
    EXPECT_EQ(faults.countCalls("CoUninitialize"), 0);
    EXPECT_EQ(faults.countCalls("CoCreateInstance"), 0);
}

TEST_F(DecodingTest, on_a_thread_of_an_apartment_of_its_own_there_is_no_com) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    expectNoImage(bytesOf(onePixel), -3, noCom);
    CoUninitialize();
}

TEST_F(DecodingTest, on_a_thread_that_uses_com_already) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    Faults faults;
    jint image = fromData(bytesOf(onePixel));
    EXPECT_NE(image, 0);
    EXPECT_EQ(faults.countCalls("CoUninitialize"), 1);
    disposeImage(image);
    CoUninitialize();
}

TEST_F(DecodingTest, without_the_component) {
    Faults faults;
    faults.fail("CoCreateInstance");
    expectNoImage(bytesOf(onePixel), -3, noFactory);
    EXPECT_EQ(faults.countCalls("CoUninitialize"), 1);
}

static HRESULT WINAPI makeNothing(REFCLSID, IUnknown*, DWORD, REFIID, void** made) {
    *made = nullptr;
    return S_OK;
}

TEST_F(DecodingTest, with_a_component_that_makes_nothing) {
    Faults faults;
    faults.replace("CoCreateInstance", reinterpret_cast<void*>(makeNothing));
    expectNoImage(bytesOf(onePixel), -3, noFactory);
}

TEST_F(DecodingTest, without_memory_for_the_section) {
    Faults faults;
    faults.fail("CreateDIBSection");
    expectNoImage(bytesOf(onePixel), -8, notDecoded);
}

TEST_F(DecodingTest, without_memory_for_the_sink_or_the_record) {
    newShell();
    const Bytes data = bytesOf(onePixel);
    NoLeaks noLeaks;
    for (int nth : {2, 3}) {
        Faults faults;
        faults.fail("LocalAlloc", nth);
        EXPECT_EQ(fromData(data), 0);
        expectReportWithoutMessage("Image_NewFromFileData", -4);
    }
}

// A component that answers what the test wants, and what was asked of it.
namespace {

struct Script {
    HRESULT createDecoder = S_OK, begin = S_OK, decode = S_OK;
    bool makesDecoder = true, makesImage = true;
    Events calls;
};
Script* script;

struct ScriptedDecoder : IImageDecoder {
    IImageSink* sink = nullptr;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override {
        script->calls.push_back("release decoder");
        return 0;
    }
    HRESULT STDMETHODCALLTYPE InitDecoder(IStream*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE TerminateDecoder() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE BeginDecode(IImageSink* target, IUnknown* properties) override {
        EXPECT_EQ(properties, nullptr);
        script->calls.push_back("begin");
        sink = target;
        return script->begin;
    }
    HRESULT STDMETHODCALLTYPE Decode() override {
        script->calls.push_back("decode");
        ImageInfo info = {};
        info.PixelFormat = PixelFormat24bppRGB;
        info.Width = info.Height = 1;
        if (script->makesImage) sink->BeginSink(&info, nullptr);
        return script->decode;
    }
    HRESULT STDMETHODCALLTYPE EndDecode(HRESULT status) override {
        script->calls.push_back("end " + std::to_string(status));
        return sink->EndSink(status);
    }
} scriptedDecoder;

struct ScriptedFactory : IImagingFactory {
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override {
        script->calls.push_back("release factory");
        return 0;
    }
    HRESULT STDMETHODCALLTYPE CreateImageFromStream(IStream*, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateImageFromFile(const WCHAR*, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateImageFromBuffer(const void*, UINT, UINT, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateNewBitmap(UINT, UINT, UINT, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateBitmapFromImage(void*, UINT, UINT, UINT, UINT,
                                                    void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateBitmapFromBuffer(BitmapData*, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateImageDecoder(IStream* stream, UINT flags,
                                                 IImageDecoder** decoder) override {
        EXPECT_NE(stream, nullptr);
        EXPECT_EQ(flags, 0u);
        script->calls.push_back("create decoder");
        bool makes = SUCCEEDED(script->createDecoder) && script->makesDecoder;
        *decoder = makes ? &scriptedDecoder : nullptr;
        return script->createDecoder;
    }
} scriptedFactory;

HRESULT WINAPI createScripted(REFCLSID type, IUnknown* outer, DWORD context, REFIID id,
                              void** out) {
    EXPECT_TRUE(type == CLSID_ImagingFactory && id == IID_IImagingFactory);
    EXPECT_EQ(outer, nullptr);
    EXPECT_EQ(context, DWORD(CLSCTX_INPROC_SERVER));
    *out = &scriptedFactory;
    return S_OK;
}

} // namespace

class ScriptedDecodingTest : public DecodingTest {
  protected:
    ScriptedDecodingTest() {
        newShell();
        before = countLive();
        script = &answers;
        faults.replace("CoCreateInstance", reinterpret_cast<void*>(createScripted));
    }
    ~ScriptedDecodingTest() override {
        expectLive(before);
        EXPECT_EQ(faults.countCalls("CoUninitialize"), 1);
    }
    Script answers;
    Faults faults;

  private:
    LiveCounts before;
};

TEST_F(ScriptedDecodingTest, decoder_is_led_through_its_steps) {
    jint image = fromData({1});
    EXPECT_EQ(answers.calls, (Events{"create decoder", "begin", "decode", "end 0",
                                     "release decoder", "release factory"}));
    EXPECT_EQ(highColorOf(image), (Ints{0}));
    disposeImage(image);
}

TEST_F(ScriptedDecodingTest, decoder_that_cannot_be_made) {
    answers.createDecoder = E_OUTOFMEMORY;
    expectNoImage({1}, -6, noDecoder);
    EXPECT_EQ(answers.calls, (Events{"create decoder", "release factory"}));
}

TEST_F(ScriptedDecodingTest, decoder_that_is_not_made_all_the_same) {
    answers.makesDecoder = false;
    expectNoImage({1}, -6, noDecoder);
    EXPECT_EQ(answers.calls, (Events{"create decoder", "release factory"}));
}

TEST_F(ScriptedDecodingTest, decoder_that_does_not_begin) {
    answers.begin = E_FAIL;
    expectNoImage({1}, -8, notBegun);
    EXPECT_EQ(answers.calls,
              (Events{"create decoder", "begin", "release decoder", "release factory"}));
}

TEST_F(ScriptedDecodingTest, decoder_that_fails_ends_with_its_failure) {
    answers.decode = E_ABORT;
    expectNoImage({1}, -8, notDecoded);
    EXPECT_EQ(answers.calls,
              (Events{"create decoder", "begin", "decode", "end " + std::to_string(E_ABORT),
                      "release decoder", "release factory"}));
}

// Only S_OK is success; the sink's bitmap goes with the sink.
TEST_F(ScriptedDecodingTest, decoder_that_has_half_succeeded_has_failed) {
    answers.decode = S_FALSE;
    expectNoImage({1}, -8, notDecoded);
    EXPECT_EQ(answers.calls[3], "end 1");
}

TEST_F(ScriptedDecodingTest, decoder_that_delivers_nothing_has_failed) {
    answers.makesImage = false;
    expectNoImage({1}, -8, notDecoded);
}

TEST_F(DecodingTest, any_failing_call_is_reported_once_and_leaves_nothing) {
    const Bytes data = bytesOf({3, 1, 8, 3, {0, 1, 2}, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {0}});
    const std::string path = SUITE_FOLDER "/" + suite()[0].name;
    newShell();
    jint warm = fromData(data);
    disposeImage(warm);
    NoLeaks noLeaks;
    int failures = forEachFailure([&](Faults&) {
        for (int i = 0; i < 2; ++i) {
            jint image = i ? fromFile({path.begin(), path.end()}) : fromData(data);
            EXPECT_LE(vm.reports.size(), image ? 0u : 1u);
            EXPECT_TRUE(image || !vm.reports.empty() || !vm.pendingException.empty());
            vm.reports.clear();
            vm.clearException();
            if (image) disposeImage(image);
        }
    });
    EXPECT_GT(failures, 10);
}
