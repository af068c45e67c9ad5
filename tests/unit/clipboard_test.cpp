#include "device.h"
#include "faults.h"
#include "leaks.h"

class ClipboardTest : public DeviceTest {
  protected:
    ClipboardTest() { clear(); }
    ~ClipboardTest() override { clear(); }

    jstring getText() { return static_cast<jstring>(call(OS::Clipboard_GetText)); }
    void setText(const std::u16string& text) { call(OS::Clipboard_SetText, vm.newString(text)); }
    static HWND newWindow() {
        return CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                               nullptr);
    }
    static void clear() {
        EXPECT_TRUE(OpenClipboard(nullptr));
        EmptyClipboard();
        CloseClipboard();
    }
    // As another program of the desk does.
    static void copyOnDesk(UINT format, const void* data, size_t size) {
        HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
        memcpy(GlobalLock(block), data, size);
        GlobalUnlock(block);
        EXPECT_TRUE(OpenClipboard(nullptr));
        EmptyClipboard();
        EXPECT_NE(SetClipboardData(format, block), nullptr);
        CloseClipboard();
    }
    static std::wstring textOnDesk() {
        EXPECT_TRUE(OpenClipboard(nullptr));
        HGLOBAL block = GetClipboardData(CF_UNICODETEXT);
        std::wstring text = block ? static_cast<const wchar_t*>(GlobalLock(block)) : L"none";
        if (block) GlobalUnlock(block);
        CloseClipboard();
        return text;
    }
};

TEST_F(ClipboardTest, an_empty_clipboard_has_no_text) {
    EXPECT_EQ(getText(), nullptr);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ClipboardTest, a_clipboard_with_something_else_has_no_text) {
    const DWORD number = 42;
    copyOnDesk(RegisterClipboardFormatW(L"A number"), &number, sizeof(number));
    EXPECT_EQ(getText(), nullptr);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ClipboardTest, text_comes_back_as_it_was_set) {
    for (const char16_t* text : {u"text", u"two\r\nlines\t\xE4\xD83D\xDE00", u"x"}) {
        setText(text);
        EXPECT_EQ(vm.text(getText()), text);
        EXPECT_EQ(vm.text(getText()), text) << "a second time";
    }
    std::u16string longText(100000, u'm');
    setText(longText);
    EXPECT_EQ(vm.text(getText()), longText);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ClipboardTest, an_empty_text_is_a_text) {
    setText(u"before");
    setText(u"");
    jstring text = getText();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(vm.text(text), u"");
    call(OS::Clipboard_SetText, nullptr);
    text = getText();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(vm.text(text), u"");
}

TEST_F(ClipboardTest, is_shared_with_the_desks_programs) {
    static const wchar_t text[] = L"from the desk";
    copyOnDesk(CF_UNICODETEXT, text, sizeof(text));
    EXPECT_EQ(vm.text(getText()), u"from the desk");
    setText(u"from the device");
    EXPECT_EQ(textOnDesk(), L"from the device");
}

TEST_F(ClipboardTest, a_text_that_is_set_takes_the_place_of_everything) {
    const DWORD number = 42;
    UINT format = RegisterClipboardFormatW(L"A number");
    copyOnDesk(format, &number, sizeof(number));
    setText(u"text");
    EXPECT_FALSE(IsClipboardFormatAvailable(format));
}

TEST_F(ClipboardTest, a_clipboard_that_is_held_open_is_an_error) {
    setText(u"kept");
    HWND holder = newWindow();
    EXPECT_TRUE(OpenClipboard(holder));
    EXPECT_EQ(getText(), nullptr);
    expectReport("Clipboard_GetText", -3, u"Unabled to open clipboard::");
    setText(u"other");
    expectReport("Clipboard_SetText", -3, u"Unable to open the clipboard::");
    CloseClipboard();
    DestroyWindow(holder);
    EXPECT_EQ(vm.text(getText()), u"kept");
}

TEST_F(ClipboardTest, failing_reads_are_errors) {
    setText(u"text");
    const struct {
        const char* call;
        DWORD lastError;
        jint code;
        const char16_t* message;
    } rows[] = {
        {"OpenClipboard", ERROR_ACCESS_DENIED, -3, u"Unabled to open clipboard::"},
        {"GetClipboardData", ERROR_OUTOFMEMORY, -4, u"Unable to copy text from clipboard::"},
        {"LocalAlloc", ERROR_GEN_FAILURE, -4, u"Cannot create copy of global string"},
        {"CloseClipboard", ERROR_CLIPBOARD_NOT_OPEN, -3, u"Unable to close the clipboard::"},
    };
    for (const auto& row : rows) {
        NoLeaks noLeaks;
        Faults faults;
        faults.fail(row.call, 1, row.lastError);
        EXPECT_EQ(getText(), nullptr);
        expectReport("Clipboard_GetText", row.code, row.message);
        CloseClipboard();
    }
    EXPECT_EQ(vm.text(getText()), u"text");
}

TEST_F(ClipboardTest, failing_writes_are_errors) {
    const struct {
        const char* call;
        int nth;
        DWORD lastError;
        jint code;
        const char16_t* message;
    } rows[] = {
        {"OpenClipboard", 1, ERROR_ACCESS_DENIED, -3, u"Unable to open the clipboard::"},
        {"EmptyClipboard", 1, ERROR_ACCESS_DENIED, -3, u"Unable to empty the clipboard::"},
        {"LocalAlloc", 2, ERROR_GEN_FAILURE, -4, u"Unable to allocate global copy of text"},
        {"SetClipboardData", 1, ERROR_OUTOFMEMORY, -4, u"Unable to set text in clipboard::"},
        {"CloseClipboard", 1, ERROR_CLIPBOARD_NOT_OPEN, -3, u"Unable to close the clipboard::"},
    };
    for (const auto& row : rows) {
        NoLeaks noLeaks;
        Faults faults;
        faults.fail(row.call, row.nth, row.lastError);
        setText(u"text");
        expectReport("Clipboard_SetText", row.code, row.message);
        CloseClipboard();
    }
}

TEST_F(ClipboardTest, is_closed_after_a_failure) {
    for (const char* failing : {"EmptyClipboard", "SetClipboardData", "GetClipboardData"}) {
        setText(u"text");
        Faults faults;
        faults.fail(failing);
        if (failing == std::string("GetClipboardData"))
            getText();
        else
            setText(u"other");
        EXPECT_EQ(onlyReport().code, -3);
        EXPECT_EQ(faults.countCalls("CloseClipboard"), 1);
        HWND other = newWindow();
        EXPECT_TRUE(OpenClipboard(other));
        CloseClipboard();
        DestroyWindow(other);
    }
}

TEST_F(ClipboardTest, a_failing_close_takes_the_place_of_the_error_before) {
    setText(u"text");
    const struct {
        const char* failing;
        std::function<void()> use;
    } rows[] = {
        {"GetClipboardData", [&] { getText(); }},
        {"EmptyClipboard", [&] { setText(u"other"); }},
        {"SetClipboardData", [&] { setText(u"other"); }},
    };
    for (const auto& row : rows) {
        NoLeaks noLeaks;
        Faults faults;
        faults.fail(row.failing);
        faults.fail("CloseClipboard");
        row.use();
        EXPECT_EQ(onlyReport().message.find(u"Unable to close the clipboard::"), 0u);
        CloseClipboard();
    }
}

TEST_F(ClipboardTest, a_text_that_java_cannot_take_is_not_leaked) {
    setText(u"text");
    NoLeaks noLeaks;
    vm.failCall("NewString");
    EXPECT_EQ(getText(), nullptr);
    EXPECT_FALSE(vm.pendingException.empty());
    vm.clearException();
}

TEST_F(ClipboardTest, texts_leave_nothing_behind) {
    setText(u"before");
    NoLeaks noLeaks;
    for (int i = 0; i < leakRounds(); ++i) {
        setText(i % 2 ? u"some text" : u"");
        EXPECT_NE(getText(), nullptr);
    }
}
