#include "faults.h"
#include "leaks.h"
#include "text_fixture.h"

TEST_F(TextTest, a_field_scrolls_by_itself_and_never_has_bars) {
    EXPECT_EQ(styleOf(newField()), 0x46010080u);
    EXPECT_EQ(styleOf(newField(border)), 0x46810080u);
    EXPECT_EQ(styleOf(newField(horizontalBar | verticalBar | wraps)), 0x46010080u);
    EXPECT_EQ(GetWindowLongW(windowOf(newField(border)), GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
}

TEST_F(TextTest, an_area_scrolls_by_itself_where_it_has_no_bar) {
    const struct {
        jint java;
        DWORD window;
    } rows[] = {
        {0, 0x1C4},
        {horizontalBar, 0x100144},
        {verticalBar, 0x200184},
        {horizontalBar | verticalBar, 0x300104},
        {wraps, 0x144},
        {wraps | horizontalBar, 0x144},
        {wraps | verticalBar, 0x200104},
        {wraps | horizontalBar | verticalBar, 0x200104},
        {border, 0x8001C4},
    };
    for (const auto& row : rows)
        EXPECT_EQ(styleOf(newArea(row.java)), 0x46010000u | row.window) << std::hex << row.java;
}

TEST_F(TextTest, is_a_scrollable_with_the_colours_of_text_and_no_limit) {
    for (jint text : {newField(), newArea()}) {
        EXPECT_EQ(reinterpret_cast<void*>(record(text)->dispose), exportOf("_Dispose_Scrollable"));
        EXPECT_EQ(record(text)->ctlColorMessage, static_cast<UINT>(WM_CTLCOLOREDIT));
        EXPECT_EQ(record(text)->passDoubleClicks, 1);
        EXPECT_EQ(record(text)->replacing, 0);
        EXPECT_GT(static_cast<DWORD>(sendTo(text, EM_GETLIMITTEXT)), 0x10000u);
        COLORREF window = GetSysColor(COLOR_WINDOW);
        EXPECT_EQ(call(OS::Control_GetBackgroundRGB, text),
                  GetRValue(window) << 16 | GetGValue(window) << 8 | GetBValue(window));
    }
}

TEST_F(TextTest, insets_count_border_and_bars) {
    jint one = GetSystemMetrics(SM_CXBORDER);
    auto insets = [&](jint text) { return vm.ints(call(OS::Scrollable_GetInsets, text)); };
    EXPECT_EQ(insets(newField()), (std::vector<jint>{0, 0, 0, 0}));
    EXPECT_EQ(insets(newField(border)), (std::vector<jint>{one, one, one, one}));
    EXPECT_EQ(insets(newArea(border | horizontalBar | verticalBar)),
              (std::vector<jint>{one, one, one + GetSystemMetrics(SM_CXVSCROLL),
                                 one + GetSystemMetrics(SM_CYHSCROLL)}));
}

TEST_F(TextTest, keeps_texts_of_every_kind) {
    const std::u16string texts[] = {
        u"text", u"", u"\xD83D\xDE00\xD83D", u"a\tb & c", u"\x3B1\x5D0\x4E2D", u" "};
    for (jint text : {newField(), newArea()})
        for (const std::u16string& characters : texts) {
            setText(text, characters);
            EXPECT_EQ(textIn(text), characters);
            EXPECT_EQ(countChars(text), static_cast<jint>(characters.size()));
        }
}

TEST_F(TextTest, a_null_text_is_the_empty_one) {
    jint field = newField();
    setText(field, u"text");
    call(OS::AbstractTextComponent_Replace, field, nullptr, 1, 3);
    EXPECT_EQ(textIn(field), u"tt");
    call(OS::AbstractTextComponent_SetText, field, nullptr);
    EXPECT_EQ(textIn(field), u"");
}

TEST_F(TextTest, an_empty_text_is_read_without_a_copy) {
    jint field = newField();
    Faults faults;
    EXPECT_EQ(textIn(field), u"");
    EXPECT_EQ(faults.countCalls("LocalAlloc"), 0);
    EXPECT_EQ(faults.countCalls("LocalFree"), 0);
}

// Only the first break decides whether the text counts as converted.
static const struct {
    const char16_t* given;
    const char16_t* kept;
} breaks[] = {
    {u"x\ny", u"x\r\ny"},
    {u"x\r\ny\nz", u"x\r\ny\nz"},
    {u"a\nb\r\nc", u"a\r\nb\r\r\nc"},
    {u"\n", u"\r\n"},
    {u"\nx", u"\r\nx"},
    {u"x\n", u"x\r\n"},
    {u"\n\n", u"\r\n\r\n"},
    {u"\r\n", u"\r\n"},
    {u"x\ry", u"x\ry"},
    {u"\r\r\n", u"\r\r\n"},
    {u"\xD83D\xDE00\n\xD83D\xDE00", u"\xD83D\xDE00\r\n\xD83D\xDE00"},
};

TEST_F(TextTest, line_breaks_become_those_of_the_control) {
    jint area = newArea();
    for (const auto& row : breaks) {
        setText(area, row.given);
        EXPECT_EQ(textIn(area), row.kept);
        setText(area, u"");
        replace(area, row.given, 0, 0);
        EXPECT_EQ(textIn(area), row.kept);
    }
}

TEST_F(TextTest, the_copy_with_other_line_breaks_is_freed) {
    jint area = newArea();
    NoLeaks noLeaks;
    for (const auto& row : breaks) {
        setText(area, row.given);
        replace(area, row.given, 0, 1);
    }
    setText(area, u"");
}

TEST_F(TextTest, long_texts_are_kept_whole) {
    std::u16string given, kept;
    while (given.size() < 0x10000) {
        given += u"a line of a long text, \xD83D\xDE00\n";
        kept += u"a line of a long text, \xD83D\xDE00\r\n";
    }
    jint area = newArea(verticalBar);
    setText(area, given);
    EXPECT_EQ(textIn(area), kept);
    jint length = static_cast<jint>(kept.size());
    EXPECT_EQ(countChars(area), length);
    selectAll(area);
    EXPECT_EQ(selection(area), (std::vector<jint>{0, length}));
    EXPECT_EQ(selectionText(area), kept);
    replace(area, u"\n", 0x8000, length);
    EXPECT_EQ(textIn(area), kept.substr(0, 0x8000) + u"\r\n");
    replace(area, given, 0x8002, 0x8002);
    EXPECT_EQ(countChars(area), 0x8002 + length);
}

TEST_F(TextTest, selections_are_cut_at_the_end) {
    jint field = newField();
    setText(field, u"text");
    const struct {
        jint start, end;
        std::vector<jint> expected;
    } rows[] = {{1, 3, {1, 3}}, {0, 4, {0, 4}}, {2, 100, {2, 4}}, {100, 200, {4, 4}},
                {3, 3, {3, 3}}, {3, 1, {1, 3}}, {0, -1, {0, 4}}};
    for (const auto& row : rows) {
        select(field, row.start, row.end);
        EXPECT_EQ(selection(field), row.expected) << row.start << " " << row.end;
    }
    call(OS::AbstractTextComponent_SetCaretPosition, field, 2);
    EXPECT_EQ(selection(field), (std::vector<jint>{2, 2}));
    call(OS::AbstractTextComponent_SetCaretPosition, field, 100);
    EXPECT_EQ(selection(field), (std::vector<jint>{4, 4}));
    selectAll(field);
    EXPECT_EQ(selection(field), (std::vector<jint>{0, 4}));
}

TEST_F(TextTest, selecting_scrolls_to_the_caret_and_selecting_all_does_not) {
    jint area = newArea();
    setText(area, lines(100));
    auto firstLine = [&] { return sendTo(area, EM_GETFIRSTVISIBLELINE); };
    EXPECT_EQ(firstLine(), 0);
    selectAll(area);
    EXPECT_EQ(firstLine(), 0);
    call(OS::AbstractTextComponent_SetCaretPosition, area, 600);
    EXPECT_GT(firstLine(), 90);
    select(area, 6, 10);
    EXPECT_LE(firstLine(), 1);
    replace(area, u"", 594, 600);
    EXPECT_GT(firstLine(), 90);
}

TEST_F(TextTest, an_empty_selection_is_the_empty_text_without_a_look_at_the_text) {
    jint field = newField();
    setText(field, u"text");
    select(field, 2, 2);
    Faults faults;
    EXPECT_EQ(selectionText(field), u"");
    EXPECT_EQ(faults.countCalls("GetWindowTextW"), 0);
    EXPECT_EQ(faults.countCalls("LocalAlloc"), 0);
}

TEST_F(TextTest, the_selected_text_is_a_part_of_the_text) {
    jint area = newArea();
    setText(area, u"\xD83D\xDE00\nsome text");
    select(area, 2, 8);
    EXPECT_EQ(selectionText(area), u"\r\nsome");
    select(area, 0, 1);
    EXPECT_EQ(selectionText(area), u"\xD83D") << "positions count UTF-16 units";
    selectAll(area);
    EXPECT_EQ(selectionText(area), u"\xD83D\xDE00\r\nsome text");
}

TEST_F(TextTest, without_its_window_nothing_is_selected) {
    jint field = newField();
    setText(field, u"abc");
    selectAll(field);
    DestroyWindow(windowOf(field));
    EXPECT_EQ(selection(field), (std::vector<jint>{0, 0}));
    dispose(field);
}

// Its window may tell less of the text than it has selected.
static int WINAPI tellLess(HWND, wchar_t* text, int) {
    memcpy(text, L"a\0bc", 5 * sizeof(wchar_t));
    return 1;
}

TEST_F(TextTest, a_selection_beyond_what_is_told_of_the_text_is_empty) {
    jint field = newField();
    setText(field, u"abcd");
    selectAll(field);
    Faults faults;
    faults.replace("GetWindowTextW", reinterpret_cast<void*>(tellLess));
    EXPECT_EQ(selectionText(field), u"");
}

// The copy of the whole text is the one thing that is meant to be left behind.
TEST_F(TextTest, a_selection_that_is_read_leaves_one_copy_of_the_whole_text) {
    jint field = newField();
    setText(field, u"some text");
    select(field, 0, 4);
    LiveCounts before = countLive();
    for (int i = 0; i < 10; ++i) EXPECT_EQ(selectionText(field), u"some");
    LiveCounts after = countLive();
    EXPECT_EQ(after.heapBlocks, before.heapBlocks + 10);
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
}

TEST_F(TextTest, what_finds_no_memory_is_reported) {
    jint area = newArea();
    setText(area, u"some text");
    select(area, 0, 4);
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(call(OS::AbstractTextComponent_GetText, area), nullptr);
    expectReport("AbstractTextComponent_GetText", -3, u"Unable to allocate memory for text");
    faults.fail("LocalAlloc");
    EXPECT_EQ(call(OS::AbstractTextComponent_GetSelectionText, area), nullptr);
    expectReport("AbstractTextComponent_GetSelectionText", -3,
                 u"Unable to allocate memory for text");
    faults.fail("LocalAlloc", 2);
    EXPECT_EQ(call(OS::AbstractTextComponent_GetSelectionText, area), nullptr);
    expectReport("AbstractTextComponent_GetSelectionText", -3,
                 u"Unable to allocate memory to substring selection text");

    constexpr int conversion = 2; // the first is the argument's copy
    listen(area);
    faults.fail("LocalAlloc", conversion);
    setText(area, u"x\ny");
    expectReport("AbstractTextComponent_SetText", -3, u"Unable to allocate memory for text");
    faults.fail("LocalAlloc", conversion);
    replace(area, u"x\ny", 0, 2);
    expectReport("AbstractTextComponent_Replace", -3, u"Unable to allocate memory for text");
    EXPECT_EQ(textIn(area), u"some text") << "nothing was changed";
    EXPECT_EQ(selection(area), (std::vector<jint>{0, 4}));
    EXPECT_EQ(countModified(), 0);
    EXPECT_EQ(record(area)->replacing, 0);
}

TEST_F(TextTest, whatever_fails_the_texts_leave_nothing) {
    jint area = newArea(border | multiLine | wraps);
    const std::function<void()> operations[] = {
        [&] { setText(area, u"x\ny"); },
        [&] { replace(area, u"\n", 1, 2); },
        [&] { call(OS::AbstractTextComponent_GetText, area); },
        [&] { call(OS::Control_GetMinimumSize, area); },
        [&] { call(OS::TextArea_GetMinimumSize, area, 2, 10); },
    };
    setText(area, u"text");
    for (const auto& operation : operations) {
        int failures = forEachFailure([&](Faults&) {
            NoLeaks noLeaks;
            operation();
            EXPECT_LE(vm.reports.size(), 1u);
            vm.reports.clear();
            vm.clearException();
        });
        EXPECT_GT(failures, 0);
    }
}

TEST_F(TextTest, an_echo_character_hides_the_text_until_it_is_zero) {
    jint field = newField();
    setText(field, u"text");
    setEcho(field, u'*');
    EXPECT_EQ(styleOf(field), 0x46010080u | ES_PASSWORD);
    EXPECT_EQ(sendTo(field, EM_GETPASSWORDCHAR), '*');
    EXPECT_EQ(textIn(field), u"text");
    setEcho(field, u'\x25CF');
    EXPECT_EQ(sendTo(field, EM_GETPASSWORDCHAR), 0x25CF);
    ValidateRect(windowOf(field), nullptr);
    setEcho(field, 0);
    EXPECT_EQ(styleOf(field), 0x46010080u);
    EXPECT_EQ(sendTo(field, EM_GETPASSWORDCHAR), 0);
    EXPECT_TRUE(GetUpdateRect(windowOf(field), nullptr, FALSE)) << "it is redrawn";
}

TEST_F(TextTest, a_hidden_text_looks_the_same_whatever_it_is) {
    jint field = newField();
    auto picture = [&](const std::u16string& text) {
        setText(field, text);
        call(OS::Control_SetRedraw, field, true);
        dispatchAll();
        std::vector<COLORREF> pixels;
        for (int x = 0; x < 100; ++x) pixels.push_back(pixelOf(field, x, 8));
        return pixels;
    };
    EXPECT_NE(picture(u"text"), picture(u"more"));
    setEcho(field, u'*');
    EXPECT_EQ(picture(u"text"), picture(u"more"));
}

TEST_F(TextTest, a_text_that_is_not_editable_takes_no_keys) {
    for (jint text : {newField(), newArea()}) {
        listen(text);
        setEditable(text, false);
        EXPECT_TRUE(styleOf(text) & ES_READONLY);
        focus(text);
        type("a");
        EXPECT_EQ(textIn(text), u"");
        EXPECT_EQ(countModified(), 0);
        setText(text, u"text");
        EXPECT_EQ(textIn(text), u"text") << "programs may change it";
        setEditable(text, true);
        EXPECT_FALSE(styleOf(text) & ES_READONLY);
        sendTo(text, EM_SETSEL, 0, 0);
        type("a");
        EXPECT_EQ(textIn(text), u"atext");
    }
}

TEST_F(TextTest, a_switch_of_mode_keeps_everything_else) {
    jint font = call(OS::Font_NewLogical, display, 2, 12, 0);
    jint field = newField(), area = newArea();
    setText(field, u"some text");
    setText(area, lines(100));
    for (jint text : {field, area}) {
        call(OS::Control_SetFont, text, font);
        focus(text);
        select(text, text == area ? 301 : 2, text == area ? 303 : 6);
        std::vector<jint> selected = selection(text);
        std::u16string characters = textIn(text);
        LRESULT line = sendTo(text, EM_GETFIRSTVISIBLELINE);
        auto expectKept = [&] {
            EXPECT_EQ(GetFocus(), windowOf(text));
            EXPECT_EQ(selection(text), selected);
            EXPECT_EQ(textIn(text), characters);
            EXPECT_EQ(sendTo(text, EM_GETFIRSTVISIBLELINE), line);
            EXPECT_EQ(reinterpret_cast<HFONT>(sendTo(text, WM_GETFONT)),
                      reinterpret_cast<FontRecord*>(font)->font);
        };
        EXPECT_TRUE(text == field || line > 10);
        for (bool editable : {false, true}) {
            setEditable(text, editable);
            expectKept();
        }
        for (jchar echo : {u'*', u'\0'}) {
            setEcho(text, echo);
            expectKept();
        }
        call(OS::Control_SetFont, text, 0);
    }
    call(OS::Font_Dispose, font);
}

TEST_F(TextTest, a_text_that_cannot_be_made_is_an_error_and_leaves_nothing) {
    for (const Maker& kind : {OS::TextField_New, OS::TextArea_New})
        expectFailedCreationsReported([&] { return call(kind, shell, border); });
}

TEST_F(TextTest, texts_leave_nothing_behind) {
    NoLeaks noLeaks;
    for (int i = 0; i < leakRounds(); ++i) {
        const Maker& kind = i % 2 ? OS::TextField_New : OS::TextArea_New;
        jint text = call(kind, shell, i % 3 ? border : verticalBar);
        setText(text, u"some\ntext");
        replace(text, u"\n", 1, 2);
        select(text, 2, 1);
        textIn(text);
        setEcho(text, u'*');
        dispose(text);
    }
    dispatchAll();
}
