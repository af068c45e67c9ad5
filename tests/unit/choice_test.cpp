#include "choice_fixture.h"
#include "faults.h"
#include "graphics/font.h"
#include "leaks.h"
#include "messages.h"
#include <algorithm>

// The styles that the window is asked for; the class keeps some of them from the window.
static DWORD styleAsked, extendedStyleAsked;
static HWND WINAPI recordStyles(DWORD extendedStyle, LPCWSTR name, LPCWSTR title, DWORD style,
                                int x, int y, int width, int height, HWND parent, HMENU menu,
                                HINSTANCE instance, LPVOID data) {
    styleAsked = style;
    extendedStyleAsked = extendedStyle;
    return CreateWindowExW(extendedStyle, name, title, style, x, y, width, height, parent, menu,
                           instance, data);
}

TEST_F(ChoiceTest, is_a_drop_down_list_of_seven_items) {
    Faults faults;
    faults.replace("CreateWindowExW", reinterpret_cast<void*>(recordStyles));
    jint choice = newChoice();
    EXPECT_EQ(styleAsked, 0x46210443u);
    EXPECT_EQ(extendedStyleAsked, 0u);
    EXPECT_EQ(record(choice)->style, 0x1000000u);
    EXPECT_EQ(record(choice)->dropDownList, TRUE);
    EXPECT_EQ(record(choice)->visibleItems, 7);
    EXPECT_EQ(record(choice)->ctlColorMessage, static_cast<UINT>(WM_CTLCOLOREDIT));
    EXPECT_EQ(reinterpret_cast<void*>(record(choice)->dispose), exportOf("_Dispose_Scrollable"));
    EXPECT_EQ(record(choice)->editProc, nullptr) << "it has no edit field";
}

// A device whose dropped list is a child of the choice.
static HWND listWithin;
static HWND WINAPI findListWithin(HWND, int id) { return id == 1000 ? listWithin : nullptr; }

TEST_F(ChoiceTest, the_list_within_it_is_its_own_as_long_as_it_has_its_window) {
    listWithin = CreateWindowExW(0, L"LISTBOX", nullptr, WS_POPUP, 0, 0, 30, 30, windowOf(shell),
                                 nullptr, nullptr, nullptr);
    Faults faults;
    faults.replace("GetDlgItem", reinterpret_cast<void*>(findListWithin));
    jint choice = newChoice(fruit);
    EXPECT_EQ(GetWindowLongW(listWithin, GWL_USERDATA), LONG(choice));
    EXPECT_EQ(record(choice)->listProc,
              reinterpret_cast<WNDPROC>(GetWindowLongW(listWithin, GWL_WNDPROC)));
    EXPECT_EQ(record(choice)->editProc, nullptr);
    dispose(choice);
    EXPECT_EQ(GetWindowLongW(listWithin, GWL_USERDATA), 0);
    DestroyWindow(listWithin);
}

TEST_F(ChoiceTest, adds_items_at_their_index) {
    jint choice = newChoice();
    add(choice, u"b", 0);
    add(choice, u"c", 1);
    add(choice, u"a", 0);
    add(choice, u"d", -1);
    call(OS::Choice_AddItem, choice, nullptr, 1);
    add(choice, u"\xD83D\xDE00", -1);
    EXPECT_EQ(items(choice),
              (std::vector<std::u16string>{u"a", u"", u"b", u"c", u"d", u"\xD83D\xDE00"}));
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ChoiceTest, keeps_long_items_whole) {
    jint choice = newChoice();
    std::u16string text(0x10000, u'x');
    add(choice, text);
    EXPECT_EQ(items(choice), std::vector<std::u16string>{text});
}

TEST_F(ChoiceTest, an_index_that_is_not_there_is_out_of_range_when_positive) {
    jint choice = newChoice(fruit);
    add(choice, u"x", 4);
    expectReport("Choice_AddItem", -3, u"Index is out of valid range for combo::");
    add(choice, u"x", -2);
    expectReport("Choice_AddItem", -3, u"Unable to add item to combo::");
    EXPECT_EQ(items(choice), fruit);
}

// Answers an insertion as a choice without room does; all else as ever.
static LRESULT WINAPI sendWithoutRoom(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != CB_INSERTSTRING) return SendMessageW(window, message, wParam, lParam);
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return CB_ERRSPACE;
}

TEST_F(ChoiceTest, an_item_without_room_is_reported) {
    jint empty = newChoice(), choice = newChoice(fruit);
    Faults faults;
    faults.replace("SendMessageW", reinterpret_cast<void*>(sendWithoutRoom));
    add(choice, u"x", -1);
    expectReport("Choice_AddItem", -4, u"Unable to add item to combo::");
    add(choice, u"x", 0);
    expectReport("Choice_AddItem", -4, u"Unable to add item to combo::");
    add(choice, u"x", 1);
    expectReport("Choice_AddItem", -4, u"Index is out of valid range for combo::");
    add(empty, u"x", 0);
    expectReport("Choice_AddItem", -4, u"Index is out of valid range for combo::");
}

TEST_F(ChoiceTest, removing_what_is_not_there_is_reported_beyond_the_end_only) {
    jint choice = newChoice({u"1", u"2", u"3", u"4", u"5"});
    remove(choice, 5);
    remove(choice, -1);
    EXPECT_TRUE(vm.reports.empty());
    remove(choice, 6);
    expectReport("Choice_RemoveItem", -3, u"Invalid range of item to remove from combo");
    EXPECT_EQ(items(choice).size(), 5u);
    remove(choice, 1);
    EXPECT_EQ(items(choice), (std::vector<std::u16string>{u"1", u"3", u"4", u"5"}));
}

TEST_F(ChoiceTest, removing_the_last_item_repaints_the_field_empty) {
    jint choice = newChoice({u"MMMM", u"two"});
    select(choice, 0);
    dispatchAll();
    auto isInked = [&] {
        RECT field = partsOf(choice).rcItem;
        for (int x = field.left + 2; x < field.right - 2; ++x)
            for (int y = field.top + 2; y < field.bottom - 2; ++y)
                if (pixelOf(choice, x, y) != pixelOf(choice, field.right - 3, field.top + 2))
                    return true;
        return false;
    };
    EXPECT_TRUE(isInked());
    remove(choice, 1);
    ValidateRect(windowOf(choice), nullptr);
    remove(choice, 0);
    EXPECT_TRUE(GetUpdateRect(windowOf(choice), nullptr, FALSE));
    dispatchAll();
    EXPECT_FALSE(isInked());
    EXPECT_EQ(selected(choice), -1);
}

TEST_F(ChoiceTest, selects_items_without_an_event) {
    jint choice = newChoice(fruit);
    listen(choice);
    EXPECT_EQ(selected(choice), -1);
    select(choice, 2);
    EXPECT_EQ(selected(choice), 2);
    EXPECT_EQ(windowText(choice), L"plum");
    EXPECT_TRUE(ownEvents().empty());
    call(OS::Choice_RemoveAllItems, choice);
    EXPECT_EQ(selected(choice), -1);
    EXPECT_TRUE(items(choice).empty());
}

TEST_F(ChoiceTest, selecting_what_is_not_there_clears_the_selection_and_is_reported) {
    jint choice = newChoice(fruit);
    for (jint missing : {-1, 3, 100, -2}) {
        select(choice, 1);
        EXPECT_TRUE(vm.reports.empty());
        select(choice, missing);
        expectReport("Choice_SelectItem", -3, u"Unable to select item in combo::");
        EXPECT_EQ(selected(choice), -1) << missing;
    }
}

TEST_F(ChoiceTest, an_item_is_selected_after_a_look_at_what_there_is) {
    jint choice = newChoice(fruit);
    MessageRecorder messages(vm, {{CB_GETCOUNT, "CB_GETCOUNT"},
                                  {CB_GETCURSEL, "CB_GETCURSEL"},
                                  {CB_SETCURSEL, "CB_SETCURSEL"}});
    messages.watch(windowOf(choice), "choice");
    select(choice, 1);
    expectSequence(vm.takeEvents(),
                   {{"choice CB_GETCOUNT"}, {"choice CB_GETCURSEL"}, {"choice CB_SETCURSEL"}});
}

static int boundsRequests;
static RECT requested;
static BOOL WINAPI recordPlace(HWND window, HWND after, int x, int y, int width, int height,
                               UINT flags) {
    if (!(flags & SWP_NOSIZE)) {
        ++boundsRequests;
        requested = {x, y, width, height};
    }
    return SetWindowPos(window, after, x, y, width, height, flags);
}

TEST_F(ChoiceTest, the_room_of_the_dropped_list_is_added_to_the_height) {
    jint choice = newChoice({u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8", u"9"});
    auto bounds = [&] { return boundsOf(choice); };
    jint closed = bounds()[3];
    EXPECT_LT(closed, 30) << "as high as its field";
    {
        Faults faults;
        faults.replace("SetWindowPos", reinterpret_cast<void*>(recordPlace));
        call(OS::Control_SetBounds, choice, 5, 6, 120, closed);
    }
    LRESULT itemHeight = sendTo(choice, CB_GETITEMHEIGHT);
    EXPECT_EQ(requested.bottom, closed + 7 * itemHeight + 2);
    EXPECT_EQ(bounds(), (std::vector<jint>{5, 6, 120, closed}));
    tapAt(choice, 50, 10);
    RECT list;
    GetClientRect(partsOf(choice).hwndList, &list);
    EXPECT_EQ(list.bottom, 7 * itemHeight);
}

TEST_F(ChoiceTest, a_notice_lets_it_take_its_own_bounds_again) {
    jint choice = newChoice(fruit);
    std::vector<jint> bounds = boundsOf(choice);
    Faults faults;
    faults.replace("SetWindowPos", reinterpret_cast<void*>(recordPlace));
    boundsRequests = 0;
    EXPECT_EQ(sendTo(choice, controlCommand, MAKEWPARAM(0, CBN_DROPDOWN)), 1) << "not handled";
    EXPECT_EQ(boundsRequests, 1);
    EXPECT_EQ(requested.left, bounds[0]);
    EXPECT_EQ(requested.top, bounds[1]);
    EXPECT_EQ(requested.right, bounds[2]);
    EXPECT_EQ(requested.bottom, bounds[3] + 7 * sendTo(choice, CB_GETITEMHEIGHT) + 2);
    EXPECT_EQ(boundsOf(choice), bounds);
}

TEST_F(ChoiceTest, bounds_that_cannot_be_taken_again_leave_nothing) {
    jint choice = newChoice(fruit);
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("SetWindowPos", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(sendTo(choice, controlCommand, MAKEWPARAM(0, CBN_DROPDOWN)), 1);
    EXPECT_TRUE(faults.hasFailed());
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ChoiceTest, only_the_selection_of_the_list_is_told) {
    jint choice = newChoice(fruit);
    select(choice, 1);
    listen(choice);
    constexpr WORD list = 1000, edit = 1001;
    for (WORD child : {WORD(0), edit})
        sendTo(choice, controlCommand, MAKEWPARAM(child, CBN_SELCHANGE));
    for (WORD code : {CBN_DROPDOWN, CBN_CLOSEUP, CBN_SELENDOK, CBN_DBLCLK})
        sendTo(choice, controlCommand, MAKEWPARAM(list, code));
    EXPECT_TRUE(ownEvents().empty());
    sendTo(choice, controlCommand, MAKEWPARAM(list, CBN_SELCHANGE));
    EXPECT_EQ(ownEvents(), Events{fired::chosen(1)});
}

// Answers that the first item of none is selected, as some systems do.
static LRESULT WINAPI sendFirstOfNone(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == CB_GETCURSEL) return 0;
    return SendMessageW(window, message, wParam, lParam);
}

TEST_F(ChoiceTest, the_first_of_no_items_is_none) {
    jint choice = newChoice();
    listen(choice);
    Faults faults;
    faults.replace("SendMessageW", reinterpret_cast<void*>(sendFirstOfNone));
    sendTo(choice, controlCommand, MAKEWPARAM(1000, CBN_SELCHANGE));
    EXPECT_EQ(ownEvents(), Events{fired::chosen(-1)});
    add(choice, u"item");
    sendTo(choice, controlCommand, MAKEWPARAM(1000, CBN_SELCHANGE));
    EXPECT_EQ(ownEvents(), Events{fired::chosen(0)});
}

TEST_F(ChoiceTest, the_dropped_list_has_the_choices_colours) {
    jint choice = newChoice(fruit);
    HWND list = partsOf(choice).hwndList;
    HDC context = GetDC(nullptr);
    ColorRecord red = {RGB(255, 0, 0), nullptr}, green = {RGB(0, 255, 0), nullptr};
    for (UINT message : {WM_CTLCOLOREDIT, WM_CTLCOLORLISTBOX}) {
        auto brush = [&] {
            return reinterpret_cast<HBRUSH>(sendTo(choice, message,
                                                   reinterpret_cast<WPARAM>(context),
                                                   reinterpret_cast<LPARAM>(list)));
        };
        SetTextColor(context, RGB(1, 2, 3));
        EXPECT_EQ(brush(), GetSysColorBrush(COLOR_WINDOW));
        EXPECT_EQ(GetTextColor(context), GetSysColor(COLOR_WINDOWTEXT));
        EXPECT_EQ(GetBkColor(context), GetSysColor(COLOR_WINDOW));
        record(choice)->foreground = &red;
        record(choice)->background = &green;
        LOGBRUSH description;
        GetObjectW(brush(), sizeof(description), &description);
        EXPECT_EQ(description.lbColor, green.color);
        EXPECT_EQ(GetTextColor(context), red.color);
        EXPECT_EQ(GetBkColor(context), green.color);
        record(choice)->foreground = record(choice)->background = nullptr;
    }
    ReleaseDC(nullptr, context);
    DeleteObject(green.brush);
}

TEST_F(ChoiceTest, is_as_wide_as_its_longest_item_unless_that_stands_out) {
    const struct {
        std::vector<size_t> lengths;
        size_t measured;
    } rows[] = {
        {{3, 4, 40}, 4},  // one item alone does not widen the choice
        {{3, 40, 4}, 3},  // what comes after the longest is not looked at
        {{40, 3, 4}, 40}, // nothing before it
        {{4, 19}, 19},    // 15 characters more are not much
        {{4, 20}, 4},     // 16 are
        {{5}, 5},
        {{5, 5, 5}, 5},
        {{0, 30}, 30}, // an empty item counts as none
        {{1, 2, 3, 4, 30}, 4},
    };
    for (const auto& row : rows) {
        std::vector<std::u16string> texts;
        for (size_t length : row.lengths)
            texts.push_back(std::u16string(length, static_cast<char16_t>(u'a' + texts.size())));
        jint choice = newChoice(texts);
        auto measured = std::find_if(texts.begin(), texts.end(), [&](const std::u16string& text) {
            return text.size() == row.measured;
        });
        COMBOBOXINFO parts = partsOf(choice);
        const RECT& button = parts.rcButton;
        EXPECT_EQ(minimumSize(choice), (std::vector<jint>{widthOf(*measured) + 10 + button.right -
                                                              button.left + parts.rcItem.left,
                                                          button.bottom - button.top + 3}))
            << row.measured;
    }
}

TEST_F(ChoiceTest, without_items_it_is_six_characters_wide) {
    jint choice = newChoice();
    const TEXTMETRICW& font =
        reinterpret_cast<FontRecord*>(call(OS::Control_GetDefaultFont, choice))->metrics;
    COMBOBOXINFO parts = partsOf(choice);
    EXPECT_EQ(minimumSize(choice)[0], 6 * font.tmAveCharWidth + parts.rcButton.right -
                                          parts.rcButton.left + parts.rcItem.left);
    add(choice, u"");
    EXPECT_EQ(minimumSize(choice)[0],
              10 + parts.rcButton.right - parts.rcButton.left + parts.rcItem.left);
}

// Knows no combo box information.
static LRESULT WINAPI sendWithoutInfo(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr UINT getComboBoxInfo = 0x162;
    return message == getComboBoxInfo ? 0 : SendMessageW(window, message, wParam, lParam);
}

TEST_F(ChoiceTest, is_64_by_64_when_its_parts_are_not_known) {
    jint choice = newChoice(fruit);
    Faults faults;
    faults.replace("SendMessageW", reinterpret_cast<void*>(sendWithoutInfo));
    EXPECT_EQ(minimumSize(choice), (std::vector<jint>{64, 64}));
}

TEST_F(ChoiceTest, sizes_follow_the_font) {
    jint choice = newChoice(fruit);
    std::vector<jint> before = minimumSize(choice);
    jint font = call(OS::Font_NewLogical, display, 2, 40, 0);
    call(OS::Control_SetFont, choice, font);
    EXPECT_GT(minimumSize(choice)[0], before[0]);
    EXPECT_GT(minimumSize(choice)[1], before[1]);
    call(OS::Control_SetFont, choice, 0);
    EXPECT_EQ(minimumSize(choice), before);
    call(OS::Font_Dispose, font);
}

TEST_F(ChoiceTest, measuring_leaves_nothing_whatever_fails) {
    jint choice = newChoice(fruit);
    int failures = forEachFailure([&](Faults&) {
        NoLeaks noLeaks;
        call(OS::Control_GetMinimumSize, choice);
    });
    EXPECT_GT(failures, 3);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ChoiceTest, a_choice_that_cannot_be_made_is_an_error_and_leaves_nothing) {
    expectFailedCreationsReported([&] { return call(OS::Choice_New, shell); });
}

TEST_F(ChoiceTest, choices_leave_nothing_behind) {
    auto round = [&] {
        jint choice = call(OS::Choice_New, shell);
        add(choice, u"item");
        add(choice, u"another item", 0);
        select(choice, 1);
        remove(choice, 0);
        call(OS::Control_GetMinimumSize, choice);
        dispose(choice);
    };
    round(); // what the system keeps from the first one on
    NoLeaks noLeaks;
    for (int i = 0; i < leakRounds(); ++i) round();
    dispatchAll();
}
