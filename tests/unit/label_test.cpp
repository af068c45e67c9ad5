#include "device.h"
#include "faults.h"
#include "graphics/font.h"
#include "leaks.h"
#include "widgets/label.h"

class LabelTest : public DeviceTest {
  protected:
    LabelRecord* record(jint label) { return reinterpret_cast<LabelRecord*>(label); }
    jint newLabel(jint style = 0) { return newControl(OS::Label_New, shell, style); }
    void setText(jint label, const std::u16string& text) {
        call(OS::Label_SetText, label, vm.newString(text));
    }
    void align(jint label, jint alignment) {
        call(OS::Label_SetAlignment, label, alignment);
        dispatchAll();
    }
    // An image label has its type in the window style.
    static void setType(jint label, DWORD type) {
        SetWindowLongW(windowOf(label), GWL_STYLE,
                       (GetWindowLongW(windowOf(label), GWL_STYLE) & ~0xF) | type);
    }
    // The columns of the label in which anything but the colour of its corner is seen.
    static std::pair<int, int> inkedColumns(jint label) {
        RECT client;
        GetClientRect(windowOf(label), &client);
        COLORREF ground = pixelOf(label, 0, 0);
        std::pair<int, int> columns = {-1, -1};
        for (int x = 0; x < client.right; ++x)
            for (int y = 0; y < client.bottom; ++y) {
                if (pixelOf(label, x, y) == ground) continue;
                if (columns.first < 0) columns.first = x;
                columns.second = x;
            }
        return columns;
    }
    static bool shows(jint label, COLORREF color) {
        RECT client;
        GetClientRect(windowOf(label), &client);
        for (int x = 0; x < client.right; ++x)
            for (int y = 0; y < client.bottom; ++y)
                if (pixelOf(label, x, y) == color) return true;
        return false;
    }

    jint shell = newShell();
};

TEST_F(LabelTest, window_styles_follow_the_java_style) {
    EXPECT_EQ(styleOf(newLabel()), 0x46000000u | 0x180 | 0xC);
    EXPECT_EQ(styleOf(newLabel(0x100)), 0x46000000u | 0x180);
    EXPECT_EQ(styleOf(newLabel(0x2)), 0x46000000u | 0x180 | 0xC | 0x200);
    EXPECT_EQ(GetWindowLongW(windowOf(newLabel()), GWL_EXSTYLE) & WS_EX_STATICEDGE, 0);
    EXPECT_EQ(GetWindowLongW(windowOf(newLabel(0x800)), GWL_EXSTYLE) & WS_EX_STATICEDGE,
              WS_EX_STATICEDGE);
}

TEST_F(LabelTest, a_new_label_inherits_its_background_and_has_the_default_font) {
    jint label = newLabel();
    EXPECT_TRUE(call(OS::Control_InheritsBackground, label));
    EXPECT_EQ(record(label)->font, GetStockObject(SYSTEM_FONT));
}

TEST_F(LabelTest, keeps_the_class_procedure_behind_its_own_painting) {
    jint label = newLabel();
    WNDCLASSW description;
    GetClassInfoW(nullptr, L"STATIC", &description);
    EXPECT_EQ(record(label)->staticProc, description.lpfnWndProc);
    EXPECT_NE(record(label)->classProc, description.lpfnWndProc);
}

TEST_F(LabelTest, remembers_the_font_that_it_was_given_last) {
    jint label = newLabel();
    jint font = call(OS::Font_NewLogical, display, 2, 20, 0);
    call(OS::Control_SetFont, label, font);
    EXPECT_EQ(record(label)->font, reinterpret_cast<FontRecord*>(font)->font);
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(windowOf(label), WM_GETFONT, 0, 0)),
              record(label)->font);
    call(OS::Control_SetFont, label, 0);
    call(OS::Font_Dispose, font);
}

TEST_F(LabelTest, alignments_are_looked_for_in_order) {
    const struct {
        jint alignment;
        DWORD type, wrappingType;
    } rows[] = {{1, 0xC, 0x0}, {4, 0x2, 0x2}, {2, 0x1, 0x1}, {7, 0xC, 0x0},
                {6, 0x2, 0x2}, {0, 0xC, 0x0}, {8, 0xC, 0x0}};
    jint plain = newLabel(), wrapping = newLabel(0x100), centered = newLabel(0x2);
    for (const auto& row : rows) {
        for (jint label : {plain, wrapping, centered}) {
            align(label, 4 - row.alignment);
            align(label, row.alignment);
            EXPECT_EQ(record(label)->alignment, static_cast<DWORD>(row.alignment));
        }
        EXPECT_EQ(styleOf(plain), 0x46000180u | row.type) << row.alignment;
        EXPECT_EQ(styleOf(wrapping), 0x46000180u | row.wrappingType) << row.alignment;
        EXPECT_EQ(styleOf(centered), 0x46000380u | row.type) << row.alignment;
    }
}

TEST_F(LabelTest, a_new_alignment_redraws_and_the_same_one_does_not) {
    jint label = newLabel();
    align(label, 2);
    auto isDirtyAfter = [&](jint alignment) {
        ValidateRect(windowOf(label), nullptr);
        call(OS::Label_SetAlignment, label, alignment);
        return GetUpdateRect(windowOf(label), nullptr, FALSE) != 0;
    };
    EXPECT_TRUE(isDirtyAfter(4));
    EXPECT_FALSE(isDirtyAfter(4));
}

TEST_F(LabelTest, an_image_label_keeps_its_place_and_stores_the_alignment) {
    for (DWORD type : {SS_BITMAP, SS_ICON}) {
        jint label = newLabel();
        setType(label, type);
        DWORD style = styleOf(label);
        ValidateRect(windowOf(label), nullptr);
        call(OS::Label_SetAlignment, label, 4);
        EXPECT_EQ(record(label)->alignment, 4u);
        EXPECT_EQ(styleOf(label), style);
        EXPECT_FALSE(GetUpdateRect(windowOf(label), nullptr, FALSE));
    }
}

TEST_F(LabelTest, stores_texts_of_every_kind) {
    jint label = newLabel();
    for (const char16_t* text : {u"text", u"a\nb & c\td", u"\xD83D\xDE00", u""}) {
        setText(label, text);
        std::u16string expected = text;
        EXPECT_EQ(windowText(label), std::wstring(expected.begin(), expected.end()));
    }
    setText(label, std::u16string(0x10000, u'x'));
    EXPECT_EQ(windowText(label), std::wstring(0x10000, L'x'));
    setText(label, u"text");
    call(OS::Label_SetText, label, nullptr);
    EXPECT_EQ(windowText(label), L"");
}

// The style that the window has while its text is set.
static DWORD styleAtSetText;
static BOOL WINAPI recordStyle(HWND window, LPCWSTR text) {
    styleAtSetText = GetWindowLongW(window, GWL_STYLE);
    return SetWindowTextW(window, text);
}

TEST_F(LabelTest, an_image_label_stores_a_text_without_taking_it_for_an_image) {
    jint label = newLabel();
    setType(label, SS_BITMAP);
    DWORD style = styleOf(label);
    Faults faults;
    faults.replace("SetWindowTextW", reinterpret_cast<void*>(recordStyle));
    setText(label, u"name");
    EXPECT_EQ(styleAtSetText & 0xF, 0u);
    EXPECT_EQ(styleOf(label), style);
    EXPECT_EQ(windowText(label), L"name");
}

TEST_F(LabelTest, a_vertically_centred_line_is_drawn_where_its_alignment_says) {
    jint label = newLabel(0x2);
    setText(label, u"MM");
    align(label, 1);
    auto left = inkedColumns(label);
    align(label, 4);
    auto right = inkedColumns(label);
    align(label, 2);
    auto center = inkedColumns(label);
    EXPECT_LT(left.first, 5);
    EXPECT_GT(right.second, 95);
    EXPECT_NEAR(center.first + center.second, 100, 4);
    EXPECT_GT(center.first, left.second);
}

TEST_F(LabelTest, a_vertically_centred_line_has_the_labels_colours) {
    jint label = newLabel(0x2);
    setText(label, u"MM");
    ColorRecord red = {RGB(255, 0, 0), nullptr}, green = {RGB(0, 255, 0), nullptr};
    auto set = [&](const Native<void(jint, jint)>& property, ColorRecord* color) {
        call(property, label, reinterpret_cast<jint>(color));
        dispatchAll();
    };
    constexpr COLORREF staticGround = RGB(0xC0, 0xC0, 0xC0), gray = RGB(0x80, 0x80, 0x80);
    EXPECT_EQ(pixelOf(label, 0, 0), staticGround);
    EXPECT_TRUE(shows(label, RGB(0, 0, 0)));
    set(OS::Control_SetForeground, &red);
    EXPECT_TRUE(shows(label, red.color));
    set(OS::Control_SetBackground, &green);
    EXPECT_EQ(pixelOf(label, 0, 0), green.color);
    EXPECT_FALSE(shows(label, gray));
    call(OS::Control_SetEnabled, label, false);
    call(OS::Control_SetRedraw, label, true);
    dispatchAll();
    EXPECT_TRUE(shows(label, gray));
    EXPECT_FALSE(shows(label, red.color));
    set(OS::Control_SetForeground, nullptr);
    set(OS::Control_SetBackground, nullptr);
    DeleteObject(green.brush);
}

TEST_F(LabelTest, drawing_leaves_nothing_selected) {
    jint label = newLabel(0x2);
    setText(label, u"MM");
    NoLeaks noLeaks;
    for (int i = 0; i < 100; ++i) {
        InvalidateRect(windowOf(label), nullptr, TRUE);
        UpdateWindow(windowOf(label));
    }
}

TEST_F(LabelTest, an_empty_or_plain_label_is_drawn_by_its_class) {
    jint empty = newLabel(0x2), plain = newLabel(), centered = newLabel(0x2);
    setText(plain, u"text");
    setText(centered, u"text");
    auto drawnLines = [&](jint label) {
        Faults faults;
        InvalidateRect(windowOf(label), nullptr, TRUE);
        UpdateWindow(windowOf(label));
        return faults.countCalls("DrawTextW");
    };
    EXPECT_EQ(drawnLines(empty), 0);
    EXPECT_EQ(drawnLines(plain), 0);
    EXPECT_EQ(drawnLines(centered), 1);
}

TEST_F(LabelTest, erases_an_image_with_its_ground) {
    jint label = newLabel();
    setType(label, SS_BITMAP);
    ColorRecord blue = {RGB(0, 0, 255), nullptr};
    HDC context = GetDC(windowOf(label));
    auto erase = [&] {
        return SendMessageW(windowOf(label), WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0);
    };
    SetPixel(context, 5, 5, RGB(1, 2, 3));
    EXPECT_EQ(erase(), 1);
    EXPECT_EQ(GetPixel(context, 5, 5), RGB(0xC0, 0xC0, 0xC0));
    record(label)->background = &blue;
    EXPECT_EQ(erase(), 1);
    EXPECT_EQ(GetPixel(context, 5, 5), blue.color);
    SetROP2(context, R2_XORPEN);
    EXPECT_EQ(erase(), 1);
    EXPECT_EQ(GetPixel(context, 5, 5), RGB(0, 0, 0)) << "inverted";
    EXPECT_EQ(SetROP2(context, R2_COPYPEN), R2_XORPEN) << "the mode stays";
    record(label)->background = nullptr;
    ReleaseDC(windowOf(label), context);
    DeleteObject(blue.brush);
}

TEST_F(LabelTest, is_drawn_anew_when_it_gets_another_size) {
    jint label = newLabel();
    ValidateRect(windowOf(label), nullptr);
    SendMessageW(windowOf(label), WM_SIZE, 0, MAKELPARAM(100, 40));
    RECT update = {};
    EXPECT_TRUE(GetUpdateRect(windowOf(label), &update, FALSE));
    EXPECT_EQ(update.right, 100);
    EXPECT_EQ(update.bottom, 40);
}

TEST_F(LabelTest, a_tap_is_reported_and_kept_from_the_class) {
    jint label = newLabel();
    listen(label);
    tap(label);
    Events events = vm.takeEvents();
    EXPECT_EQ(
        std::count(events.begin(), events.end(), fired::pointer(pointerPress, 50, 20, buttonLeft)),
        1);
    EXPECT_EQ(std::count(events.begin(), events.end(),
                         fired::pointer(pointerRelease, 50, 20, buttonLeft)),
              1);
    EXPECT_EQ(std::count(events.begin(), events.end(), fired::selected()), 0);
    for (UINT message : {WM_MOUSEMOVE, WM_LBUTTONUP})
        EXPECT_EQ(CallWindowProcW(record(label)->classProc, windowOf(label), message, 0, 0), 0);
}

TEST_F(LabelTest, measures_its_text) {
    jint label = newLabel();
    HDC context = GetDC(windowOf(label));
    HGDIOBJ before = SelectObject(context, GetStockObject(SYSTEM_FONT));
    TEXTMETRICW metrics;
    GetTextMetricsW(context, &metrics);
    RECT line = {0, 0, 1, 0}, lines = {0, 0, 1, 0};
    DrawTextW(context, L"some\ttext", -1, &line, DT_CALCRECT | DT_EXPANDTABS);
    DrawTextW(context, L"some\nmore text", -1, &lines, DT_CALCRECT | DT_EXPANDTABS);
    SelectObject(context, before);
    ReleaseDC(windowOf(label), context);

    EXPECT_EQ(minimumSize(label), (std::vector<jint>{2, metrics.tmHeight}));
    setText(label, u"some\ttext");
    EXPECT_EQ(minimumSize(label), (std::vector<jint>{line.right + 2, line.bottom}));
    setText(label, u"some\nmore text");
    EXPECT_EQ(minimumSize(label), (std::vector<jint>{lines.right + 2, lines.bottom}));
    EXPECT_EQ(lines.bottom, 2 * metrics.tmHeight);

    jint bordered = newLabel(0x800);
    int borders = 2 * GetSystemMetrics(SM_CXBORDER);
    EXPECT_EQ(minimumSize(bordered), (std::vector<jint>{2 + borders, metrics.tmHeight + borders}));
}

TEST_F(LabelTest, an_image_label_without_image_is_its_border) {
    jint label = newLabel(0x800);
    setText(label, u"text");
    for (DWORD type : {SS_BITMAP, SS_ICON}) {
        setType(label, type);
        int borders = 2 * GetSystemMetrics(SM_CXBORDER);
        EXPECT_EQ(minimumSize(label), (std::vector<jint>{borders, borders}));
    }
}

TEST_F(LabelTest, an_image_label_is_its_image_and_border) {
    jint label = newLabel(0x800);
    jint image = call(OS::Image_NewFromSize, display, 30, 50, 0);
    record(label)->image = reinterpret_cast<ImageRecord*>(image);
    int borders = 2 * GetSystemMetrics(SM_CXBORDER);
    for (DWORD type : {SS_BITMAP, SS_ICON}) {
        setType(label, type);
        EXPECT_EQ(minimumSize(label), (std::vector<jint>{30 + borders, 50 + borders}));
    }
    call(OS::Image_Dispose, image);
}

TEST_F(LabelTest, a_label_that_cannot_be_made_is_an_error_and_leaves_nothing) {
    expectFailedCreationsReported([&] { return call(OS::Label_New, shell, 0x800); });
}

TEST_F(LabelTest, labels_leave_nothing_behind) {
    NoLeaks noLeaks;
    for (int i = 0; i < leakRounds(); ++i) {
        jint label = call(OS::Label_New, shell, i % 2 ? 0x2 : 0x900);
        setText(label, u"text");
        call(OS::Label_SetAlignment, label, i % 5);
        dispose(label);
    }
    dispatchAll();
}
