#include "recorder.h"

class ClipboardTest : public RecorderTest {
  protected:
    ClipboardTest() {
        EXPECT_TRUE(OpenClipboard(newWindow(wholeScreen)));
        EXPECT_TRUE(EmptyClipboard());
    }
    ~ClipboardTest() override { CloseClipboard(); }

    static HLOCAL newText(const wchar_t* text) {
        HLOCAL block = LocalAlloc(LMEM_MOVEABLE, (wcslen(text) + 1) * sizeof(wchar_t));
        return wcscpy(static_cast<wchar_t*>(block), text);
    }
};

TEST_F(ClipboardTest, gives_text_back_as_a_plain_pointer) {
    EXPECT_NE(SetClipboardData(CF_UNICODETEXT, newText(L"A text")), nullptr);
    EXPECT_STREQ(static_cast<wchar_t*>(GetClipboardData(CF_UNICODETEXT)), L"A text");
}

TEST_F(ClipboardTest, owns_the_block_that_it_was_given) {
    LONG before = Emulator_CountHeapBlocks();
    SetClipboardData(CF_UNICODETEXT, newText(L"A text"));
    EXPECT_EQ(Emulator_CountHeapBlocks(), before);
}

TEST_F(ClipboardTest, keeps_the_text_when_it_was_closed) {
    SetClipboardData(CF_UNICODETEXT, newText(L"Kept"));
    EXPECT_TRUE(CloseClipboard());
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    EXPECT_TRUE(OpenClipboard(nullptr));
    EXPECT_STREQ(static_cast<wchar_t*>(GetClipboardData(CF_UNICODETEXT)), L"Kept");
}

TEST_F(ClipboardTest, gives_null_when_it_is_empty) {
    EXPECT_EQ(GetClipboardData(CF_UNICODETEXT), nullptr);
}

TEST_F(ClipboardTest, leaves_a_refused_block_with_its_owner) {
    CloseClipboard();
    HLOCAL block = newText(L"Mine");
    EXPECT_EQ(SetClipboardData(CF_UNICODETEXT, block), nullptr);
    EXPECT_STREQ(static_cast<wchar_t*>(block), L"Mine");
    EXPECT_EQ(LocalFree(block), nullptr);
}
