// The sizes that texts prefer.

#include "faults.h"
#include "text_fixture.h"

TEST_F(TextTest, prefers_the_size_of_its_text) {
    auto preferred = [&](jint text) { return minimumSize(text); };
    jint one = GetSystemMetrics(SM_CXBORDER);
    jint barWidth = GetSystemMetrics(SM_CXVSCROLL), barHeight = GetSystemMetrics(SM_CYHSCROLL);
    HDC context = GetDC(nullptr);
    HGDIOBJ before = SelectObject(context, GetStockObject(SYSTEM_FONT));
    RECT area = {};
    DrawTextW(context, L"some & text\r\nx", -1, &area, DT_CALCRECT | DT_NOPREFIX);
    SelectObject(context, before);
    ReleaseDC(nullptr, context);

    const struct {
        jint style, width, height;
    } rows[] = {
        {0, 0, 0},
        {border, 2 * one + 2, 2 * one + 2},
        {verticalBar, barWidth, 0},
        {horizontalBar, 0, barHeight},
        {border | horizontalBar | verticalBar, 2 * one + 3 + barWidth, 2 * one + 2 + barHeight},
        {multiLine | wraps, 0, 0},
    };
    for (const auto& row : rows)
        for (const auto& [kind, lines] : {std::pair<Maker, jint>{OS::TextField_New, 1},
                                          std::pair<Maker, jint>{OS::TextArea_New, 2}}) {
            jint text = newControl(kind, shell, row.style);
            jint margins = marginsOf(text);
            EXPECT_EQ(preferred(text),
                      (std::vector<jint>{64 + margins + row.width, 64 + row.height}))
                << kind << row.style << " empty";
            setText(text, u"some & text\nx");
            jint lineCount = sendTo(text, EM_GETLINECOUNT);
            bool isWrapping = row.style & multiLine;
            EXPECT_EQ(
                preferred(text),
                (std::vector<jint>{area.right + margins + row.width,
                                   (isWrapping ? area.bottom : lineCount * metrics().tmHeight) +
                                       row.height}))
                << kind << row.style;
            EXPECT_EQ(lineCount, lines);
        }
    jint empty = newArea();
    setText(empty, u"\n\n");
    EXPECT_EQ(preferred(empty), (std::vector<jint>{64 + marginsOf(empty), 3 * metrics().tmHeight}))
        << "lines without width";
}

static LRESULT WINAPI countNoLines(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == EM_GETLINECOUNT ? 0 : SendMessageW(window, message, wParam, lParam);
}

TEST_F(TextTest, prefers_a_height_of_its_own_when_it_counts_no_lines) {
    jint field = newField();
    setText(field, u"x");
    Faults faults;
    faults.replace("SendMessageW", reinterpret_cast<void*>(countNoLines));
    EXPECT_EQ(minimumSize(field)[1], 64);
}

TEST_F(TextTest, minimum_sizes_count_columns_and_rows) {
    jint one = GetSystemMetrics(SM_CXBORDER);
    jint barWidth = GetSystemMetrics(SM_CXVSCROLL), barHeight = GetSystemMetrics(SM_CYHSCROLL);
    TEXTMETRICW font = metrics();
    const struct {
        jint style, width, height;
    } rows[] = {
        {0, 0, 0},
        {border, 2 * one + 3, 2 * one + 3},
        {verticalBar, barWidth, 0},
        {horizontalBar, 0, barHeight},
        {border | horizontalBar | verticalBar, 2 * one + 4 + barWidth, 2 * one + 3 + barHeight},
    };
    for (const auto& row : rows) {
        jint field = newField(row.style), area = newArea(row.style);
        for (jint columns : {0, 1, 10, 1000}) {
            EXPECT_EQ(vm.ints(call(OS::TextField_GetMinimumSize, field, columns)),
                      (std::vector<jint>{font.tmAveCharWidth * 14 / 10 * columns +
                                             marginsOf(field) + row.width,
                                         font.tmHeight + row.height}));
            EXPECT_EQ(
                vm.ints(call(OS::TextArea_GetMinimumSize, area, 3, columns)),
                (std::vector<jint>{font.tmAveCharWidth * columns + marginsOf(area) + row.width,
                                   3 * font.tmHeight + row.height}));
        }
        EXPECT_EQ(vm.ints(call(OS::TextArea_GetMinimumSize, area, 0, 0))[1], row.height);
    }
}

// Answers the metrics of a font whose average width is the one wanted.
static LONG averageWidth;
static BOOL WINAPI fontOfWidth(HDC, TEXTMETRICW* metrics) {
    *metrics = {};
    metrics->tmAveCharWidth = averageWidth;
    return TRUE;
}

TEST_F(TextTest, a_column_of_a_field_is_14_tenths_of_a_character_cut_to_pixels) {
    jint field = newField();
    Faults faults;
    faults.replace("GetTextMetricsW", reinterpret_cast<void*>(fontOfWidth));
    const struct {
        LONG average, column;
    } rows[] = {{1, 1}, {2, 2}, {3, 4}, {4, 5}, {5, 7}, {6, 8}, {7, 9}, {8, 11}, {9, 12}, {10, 14}};
    for (const auto& row : rows) {
        averageWidth = row.average;
        EXPECT_EQ(vm.ints(call(OS::TextField_GetMinimumSize, field, 1))[0],
                  row.column + marginsOf(field));
    }
}

TEST_F(TextTest, sizes_follow_the_font) {
    jint field = newField();
    jint font = call(OS::Font_NewLogical, display, 2, 40, 0);
    call(OS::Control_SetFont, field, font);
    const TEXTMETRICW& large = reinterpret_cast<FontRecord*>(font)->metrics;
    EXPECT_EQ(vm.ints(call(OS::TextField_GetMinimumSize, field, 10))[1], large.tmHeight);
    setText(field, u"x");
    EXPECT_EQ(minimumSize(field)[1], large.tmHeight);
    call(OS::Control_SetFont, field, 0);
    call(OS::Font_Dispose, font);
}
