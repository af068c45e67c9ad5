#include "control/control.h"
#include "device.h"
#include "faults.h"
#include "graphics/font.h"
#include "leaks.h"
#include "widgets/button.h"
#include <algorithm>

class ButtonTest : public DeviceTest {
  protected:
    struct Measured {
        LONG width, line, average; // pixels, in the default font
    };
    static Measured textOf(const wchar_t* text) {
        HDC context = GetDC(nullptr);
        HGDIOBJ before = SelectObject(context, GetStockObject(SYSTEM_FONT));
        TEXTMETRICW metrics;
        GetTextMetricsW(context, &metrics);
        SIZE size;
        GetTextExtentPoint32W(context, text, static_cast<int>(wcslen(text)), &size);
        SelectObject(context, before);
        ReleaseDC(nullptr, context);
        return {size.cx, metrics.tmHeight, metrics.tmAveCharWidth};
    }

    static LRESULT checkState(jint button) {
        return SendMessageW(windowOf(button), BM_GETCHECK, 0, 0);
    }

    int countSelections() {
        Events events = vm.takeEvents();
        return static_cast<int>(std::count(events.begin(), events.end(), fired::selected()));
    }
    void setLabel(jint button, const std::u16string& label) {
        call(OS::Button_SetLabel, button, vm.newString(label));
    }
};

TEST_F(ButtonTest, a_tap_on_a_push_button_fires_one_selection) {
    jint button = newButton(newShell());
    listen(button);
    tap(button);
    EXPECT_EQ(countSelections(), 1);
}

TEST_F(ButtonTest, a_click_on_a_checked_check_box_clears_it_and_fires_one_selection) {
    jint box = newButton(newShell(), OS::Checkbox_New);
    call(OS::Button_SetSelection, box, true);
    listen(box);
    tap(box);
    EXPECT_EQ(checkState(box), BST_UNCHECKED);
    EXPECT_EQ(countSelections(), 1);
}

TEST_F(ButtonTest, a_click_on_a_checked_radio_button_clears_it_and_fires_one_selection) {
    jint radio = newButton(newShell(), OS::RadioButton_New);
    call(OS::Button_SetSelection, radio, true);
    listen(radio);
    tap(radio);
    EXPECT_EQ(checkState(radio), BST_UNCHECKED);
    EXPECT_EQ(countSelections(), 1);
}

TEST_F(ButtonTest, a_radio_button_that_is_given_the_focus_ignores_the_click_of_that) {
    jint shell = newShell();
    jint radio = newButton(shell, OS::RadioButton_New);
    listen(radio);
    EXPECT_TRUE(call(OS::Control_ForceFocus, radio));
    EXPECT_EQ(vm.takeEvents(), Events{fired::focus(FocusChange::gained)});
    EXPECT_EQ(checkState(radio), BST_UNCHECKED);
    SetFocus(windowOf(shell));
    SetFocus(windowOf(radio));
    EXPECT_EQ(countSelections(), 1) << "focus from elsewhere is a click";
    EXPECT_EQ(checkState(radio), BST_CHECKED);
}

TEST_F(ButtonTest, a_radio_button_that_its_listener_gives_the_focus_once_more_is_not_selected) {
    jint shell = newShell();
    jint radio = newButton(shell, OS::RadioButton_New);
    jint other = newButton(shell);
    listen(radio);
    bool asked = false;
    vm.behavior["focus"] = [&](const std::vector<jint>&) {
        if (asked) return 0;
        asked = true;
        call(OS::Control_ForceFocus, other);
        call(OS::Control_ForceFocus, radio);
        return 0;
    };
    call(OS::Control_ForceFocus, radio);
    vm.behavior.clear();
    EXPECT_TRUE(asked);
    EXPECT_EQ(countSelections(), 0);
    EXPECT_EQ(checkState(radio), BST_UNCHECKED);
}

TEST_F(ButtonTest, other_buttons_are_given_the_focus_too) {
    jint shell = newShell();
    for (const Maker& kind : {OS::PushButton_New, OS::Checkbox_New}) {
        jint button = newButton(shell, kind);
        EXPECT_TRUE(call(OS::Control_ForceFocus, button));
        EXPECT_EQ(GetFocus(), windowOf(button));
    }
}

TEST_F(ButtonTest, a_button_may_be_disposed_of_by_who_hears_of_its_focus) {
    jint radio = newButton(newShell(), OS::RadioButton_New);
    listen(radio);
    vm.behavior["focus"] = [&](const std::vector<jint>&) {
        vm.behavior.clear();
        dispose(radio);
        return 0;
    };
    call(OS::Control_ForceFocus, radio);
    EXPECT_TRUE(vm.behavior.empty());
}

TEST_F(ButtonTest, window_styles_follow_the_kind_and_the_java_style) {
    jint shell = newShell();
    const struct {
        Maker native;
        DWORD type;
    } kinds[] = {{OS::PushButton_New, 0}, {OS::RadioButton_New, 0x4}, {OS::Checkbox_New, 0x2}};
    const struct {
        jint java;
        DWORD alignment;
    } alignments[] = {{0, 0}, {1, 0x100}, {2, 0x300}, {4, 0x200}, {7, 0x100}, {6, 0x300}};
    for (const auto& kind : kinds) {
        for (const auto& row : alignments)
            EXPECT_EQ(styleOf(newControl(kind.native, shell, row.java)),
                      0x46010000u | kind.type | row.alignment)
                << kind.native.name << " " << row.java;
        auto extended = [&](jint style) {
            return GetWindowLongW(windowOf(newControl(kind.native, shell, style)), GWL_EXSTYLE);
        };
        EXPECT_EQ(extended(0) & WS_EX_CLIENTEDGE, 0);
        EXPECT_EQ(extended(0x800) & WS_EX_CLIENTEDGE, WS_EX_CLIENTEDGE);
    }
}

TEST_F(ButtonTest, only_boxes_and_radio_buttons_inherit_their_background) {
    jint shell = newShell();
    auto inherits = [&](const Maker& kind) {
        return call(OS::Control_InheritsBackground, newButton(shell, kind));
    };
    EXPECT_FALSE(inherits(OS::PushButton_New));
    EXPECT_TRUE(inherits(OS::Checkbox_New));
    EXPECT_TRUE(inherits(OS::RadioButton_New));
}

TEST_F(ButtonTest, backgrounds_are_the_button_face_or_what_the_parent_has) {
    jint composite = newControl(OS::Composite_New, newShell());
    auto background = [](jint control) {
        return static_cast<COLORREF>(SendMessageW(windowOf(control), controlGetBackground, 0, 0));
    };
    COLORREF face = 0xFFFFFF & GetSysColor(COLOR_BTNFACE);
    ColorRecord blue = {RGB(0, 0, 255), nullptr};
    reinterpret_cast<ControlRecord*>(composite)->background = &blue;
    EXPECT_EQ(background(newButton(composite)), face);
    for (const Maker& kind : {OS::Checkbox_New, OS::RadioButton_New})
        EXPECT_EQ(background(newButton(composite, kind)), blue.color);
    jint drawn = newButton(composite, OS::Checkbox_New);
    SetWindowLongW(windowOf(drawn), GWL_STYLE,
                   (GetWindowLongW(windowOf(drawn), GWL_STYLE) & ~0xF) | BS_OWNERDRAW);
    EXPECT_EQ(background(drawn), face);
    reinterpret_cast<ControlRecord*>(composite)->background = nullptr;
    DeleteObject(blue.brush);
}

TEST_F(ButtonTest, notifications_other_than_clicks_are_nothing) {
    jint shell = newShell();
    jint box = newButton(shell, OS::Checkbox_New);
    listen(box);
    for (WORD code : {BN_PAINT, BN_DOUBLECLICKED, BN_SETFOCUS, BN_KILLFOCUS})
        EXPECT_EQ(SendMessageW(windowOf(shell), WM_COMMAND, MAKEWPARAM(0, code),
                               reinterpret_cast<LPARAM>(windowOf(box))),
                  0);
    EXPECT_TRUE(vm.takeEvents().empty());
    EXPECT_EQ(checkState(box), BST_UNCHECKED);
}

TEST_F(ButtonTest, setting_the_selection_keeps_the_window_style) {
    jint radio = newButton(newShell(), OS::RadioButton_New);
    SetWindowLongW(windowOf(radio), GWL_STYLE,
                   GetWindowLongW(windowOf(radio), GWL_STYLE) & ~WS_TABSTOP);
    LONG style = GetWindowLongW(windowOf(radio), GWL_STYLE);
    call(OS::Button_SetSelection, radio, true);
    EXPECT_EQ(GetWindowLongW(windowOf(radio), GWL_STYLE), style);
    EXPECT_EQ(checkState(radio), BST_CHECKED);
}

TEST_F(ButtonTest, the_label_is_shown_as_given) {
    jint button = newButton(newShell());
    call(OS::Button_SetLabel, button, vm.newString(u"line\nbreak & all"));
    wchar_t text[40];
    GetWindowTextW(windowOf(button), text, 40);
    EXPECT_STREQ(text, L"line\nbreak & all");
    setLabel(button, std::u16string(0x10000, u'x'));
    EXPECT_EQ(windowText(button), std::wstring(0x10000, L'x'));
    setLabel(button, u"\xD83D\xDE00");
    EXPECT_EQ(windowText(button), L"\xD83D\xDE00");
}

TEST_F(ButtonTest, a_null_label_is_the_empty_text) {
    jint button = newButton(newShell());
    call(OS::Button_SetLabel, button, vm.newString(u"text"));
    call(OS::Button_SetLabel, button, nullptr);
    EXPECT_EQ(GetWindowTextLengthW(windowOf(button)), 0);
}

TEST_F(ButtonTest, an_empty_check_box_is_as_high_as_its_box) {
    jint box = newButton(newShell(), OS::Checkbox_New);
    EXPECT_EQ(minimumSize(box), (std::vector<jint>{GetSystemMetrics(SM_CXSMICON),
                                                   GetSystemMetrics(SM_CYSMICON) + 3}));
}

TEST_F(ButtonTest, an_empty_push_button_is_a_line_and_its_margins_high) {
    jint button = call(OS::PushButton_New, newShell(), 0x800);
    int edge = GetSystemMetrics(SM_CXEDGE);
    EXPECT_EQ(minimumSize(button),
              (std::vector<jint>{12 + 2 * edge, textOf(L"").line + 10 + 2 * edge}));
}

TEST_F(ButtonTest, a_push_button_is_its_text_and_margins) {
    jint button = newButton(newShell());
    setLabel(button, u"Some text");
    Measured text = textOf(L"Some text");
    EXPECT_EQ(minimumSize(button), (std::vector<jint>{text.width + 12, text.line + 10}));
}

TEST_F(ButtonTest, a_box_stands_apart_from_its_text_by_a_character) {
    jint shell = newShell();
    Measured text = textOf(L"Some text");
    for (const Maker& kind : {OS::Checkbox_New, OS::RadioButton_New}) {
        jint button = newButton(shell, kind);
        setLabel(button, u"Some text");
        LONG spacing = std::max<LONG>(8, text.average);
        EXPECT_EQ(
            minimumSize(button),
            (std::vector<jint>{text.width + GetSystemMetrics(SM_CXSMICON) + spacing,
                               std::max<LONG>(text.line, GetSystemMetrics(SM_CYSMICON) + 3)}));
    }
    jint big = newButton(shell, OS::Checkbox_New);
    setLabel(big, u"M");
    jint font = call(OS::Font_NewLogical, display, 2, 40, 0);
    call(OS::Control_SetFont, big, font);
    const TEXTMETRICW& metrics = reinterpret_cast<FontRecord*>(font)->metrics;
    EXPECT_GT(metrics.tmAveCharWidth, 8);
    EXPECT_EQ(minimumSize(big)[1], metrics.tmHeight);
    EXPECT_GT(minimumSize(big)[0], GetSystemMetrics(SM_CXSMICON) + metrics.tmAveCharWidth);
    call(OS::Control_SetFont, big, 0);
    call(OS::Font_Dispose, font);
}

TEST_F(ButtonTest, a_button_with_an_image_is_its_size) {
    jint shell = newShell();
    jint image = call(OS::Image_NewFromSize, display, 30, 50, 0);
    jint push = newButton(shell), box = newButton(shell, OS::Checkbox_New);
    for (jint button : {push, box}) {
        setLabel(button, u"Some text");
        reinterpret_cast<ButtonRecord*>(button)->image = reinterpret_cast<ImageRecord*>(image);
    }
    constexpr jint spacing = 8;
    EXPECT_EQ(minimumSize(push), (std::vector<jint>{30 + 12, 50 + 10}));
    EXPECT_EQ(minimumSize(box),
              (std::vector<jint>{30 + GetSystemMetrics(SM_CXSMICON) + spacing, 50}));
    call(OS::Image_Dispose, image);
}

TEST_F(ButtonTest, a_button_that_cannot_be_made_is_an_error_and_leaves_nothing) {
    jint shell = newShell();
    for (const Maker& kind : {OS::PushButton_New, OS::Checkbox_New, OS::RadioButton_New})
        expectFailedCreationsReported([&] { return call(kind, shell, 0x800); });
}

TEST_F(ButtonTest, buttons_leave_nothing_behind) {
    jint shell = newShell();
    NoLeaks noLeaks;
    for (int i = 0; i < leakRounds(); ++i) {
        const Maker kinds[] = {OS::PushButton_New, OS::Checkbox_New, OS::RadioButton_New};
        jint button = call(kinds[i % 3], shell, i % 5);
        setLabel(button, u"text");
        call(OS::Button_SetSelection, button, i % 2 != 0);
        dispose(button);
    }
    dispatchAll();
}

TEST_F(ButtonTest, a_failed_creation_reports_once_and_gives_no_handle) {
    jint shell = newShell();
    Faults faults;
    faults.fail("CreateWindowExW", 1, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(call(OS::RadioButton_New, shell, 0), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "RadioButton_New");
    EXPECT_EQ(report.code, -4);
    EXPECT_EQ(report.message.find(u"Unable to create handle for widget::"), 0u);
}
