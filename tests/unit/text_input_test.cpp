// What a person does to a text, and what its listener is told of it.

#include "text_fixture.h"

TEST_F(TextTest, a_text_that_is_set_is_told_as_modified) {
    for (jint text : {newField(), newArea()}) {
        listen(text);
        setText(text, u"text");
        EXPECT_EQ(countModified(), 1);
        setText(text, u"text");
        EXPECT_EQ(countModified(), 1) << "the same again";
        setText(text, u"");
        EXPECT_EQ(countModified(), 1);
    }
}

TEST_F(TextTest, a_replaced_part_is_not_told_as_modified) {
    for (jint text : {newField(), newArea()}) {
        setText(text, u"some text");
        listen(text);
        replace(text, u"any", 0, 4);
        EXPECT_EQ(textIn(text), u"any text");
        EXPECT_EQ(selection(text), (std::vector<jint>{3, 3})) << "behind the new part";
        EXPECT_EQ(countModified(), 0);
        EXPECT_TRUE(sendTo(text, EM_CANUNDO));
        sendTo(text, EM_UNDO);
        EXPECT_EQ(textIn(text), u"some text");
        EXPECT_GT(countModified(), 0) << "what happens later is told again";
    }
}

TEST_F(TextTest, other_notices_of_the_control_are_not_told) {
    jint field = newField();
    listen(field);
    for (WORD code : {EN_UPDATE, EN_SETFOCUS, EN_KILLFOCUS, EN_MAXTEXT, EN_HSCROLL})
        SendMessageW(windowOf(shell), WM_COMMAND, MAKEWPARAM(0, code),
                     reinterpret_cast<LPARAM>(windowOf(field)));
    EXPECT_EQ(countModified(), 0);
}

TEST_F(TextTest, typing_goes_from_the_key_over_the_text_to_the_listener) {
    for (jint text : {newField(), newArea()}) {
        listen(text);
        focus(text);
        type("a");
        EXPECT_EQ(eventsButPaints(),
                  (Events{fired::key(KeyKind::pressed, 'a', 'A'), fired::modified(),
                          fired::key(KeyKind::released, 'a', 'A')}));
        EXPECT_EQ(textIn(text), u"a");
        type("b 1");
        EXPECT_EQ(textIn(text), u"ab 1");
        EXPECT_EQ(countModified(), 3);
        pressKey(keyBackspace);
        EXPECT_EQ(textIn(text), u"ab ");
        pressKey(keyHome);
        pressKey(keyDelete);
        EXPECT_EQ(textIn(text), u"b ");
        EXPECT_EQ(countModified(), 2);
    }
}

TEST_F(TextTest, a_key_that_java_handles_does_not_reach_the_text) {
    jint field = newField();
    listen(field);
    focus(field);
    vm.behavior["key"] = [](const std::vector<jint>&) { return 1; };
    type("a");
    EXPECT_EQ(textIn(field), u"");
    EXPECT_EQ(countModified(), 0);
    vm.behavior.clear();
    type("a");
    EXPECT_EQ(textIn(field), u"a");
}

TEST_F(TextTest, may_be_disposed_of_by_who_hears_of_a_change) {
    jint field = newField();
    HWND window = windowOf(field);
    listen(field);
    vm.behavior["modified"] = [&](const std::vector<jint>&) {
        vm.behavior.clear();
        dispose(field);
        return 0;
    };
    SendMessageW(window, controlCommand, MAKEWPARAM(0, EN_CHANGE),
                 reinterpret_cast<LPARAM>(window));
    EXPECT_TRUE(vm.behavior.empty());
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(TextTest, what_is_pasted_is_told_as_modified) {
    jint field = newField();
    setText(field, u"text");
    selectAll(field);
    sendTo(field, WM_COPY);
    call(OS::AbstractTextComponent_SetCaretPosition, field, 4);
    listen(field);
    sendTo(field, WM_PASTE);
    EXPECT_EQ(textIn(field), u"texttext");
    EXPECT_EQ(countModified(), 1);
}

TEST_F(TextTest, the_enter_key_breaks_a_line_of_an_area_only) {
    jint field = newField(), area = newArea();
    for (jint text : {field, area}) {
        focus(text);
        type("a");
        pressKey(keyEnter);
        type("b");
    }
    EXPECT_EQ(textIn(field), u"ab");
    EXPECT_EQ(textIn(area), u"a\r\nb");
}

TEST_F(TextTest, keys_select_and_typing_replaces_the_selection) {
    jint field = newField();
    setText(field, u"text");
    focus(field);
    pressKey(keyEnd);
    pressKey(keyLeft, true);
    pressKey(keyLeft, true);
    EXPECT_EQ(selection(field), (std::vector<jint>{2, 4}));
    EXPECT_EQ(selectionText(field), u"xt");
    type("n");
    EXPECT_EQ(textIn(field), u"ten");
}

TEST_F(TextTest, a_tap_places_the_caret_and_a_drag_selects) {
    jint field = newField();
    setText(field, u"text");
    tapAt(field, 95, 8);
    EXPECT_EQ(GetFocus(), windowOf(field));
    EXPECT_EQ(selection(field), (std::vector<jint>{4, 4}));
    tapAt(field, 1, 8);
    EXPECT_EQ(selection(field), (std::vector<jint>{0, 0}));

    RECT place;
    GetWindowRect(windowOf(field), &place);
    auto move = [&](int x) {
        call(OS::Display_PostPointerMoveEvent, display, place.left + x, place.top + 8);
        dispatchAll();
    };
    auto post = [&](jint type) {
        call(OS::Display_PostPointerEvent, display, type, buttonLeft);
        dispatchAll();
    };
    move(95);
    post(pointerPress);
    move(1);
    EXPECT_EQ(selection(field), (std::vector<jint>{0, 4}));
    post(pointerRelease);
    move(95);
    EXPECT_EQ(selection(field), (std::vector<jint>{0, 4})) << "the button is up";
}

TEST_F(TextTest, a_double_click_selects_a_word) {
    jint field = newField();
    setText(field, u"some text");
    listen(field);
    sendTo(field, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(3, 8));
    EXPECT_EQ(selection(field)[0], 0);
    EXPECT_GE(selection(field)[1], 4);
    EXPECT_EQ(vm.takeEvents(), Events{fired::pointer(pointerDoubleClick, 3, 8, buttonLeft)});
}

TEST_F(TextTest, a_double_click_that_is_not_passed_on_is_a_press) {
    jint field = newField();
    setText(field, u"some text");
    listen(field);
    record(field)->passDoubleClicks = 0;
    EXPECT_EQ(sendTo(field, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(3, 8)), 0);
    EXPECT_EQ(vm.takeEvents(),
              Events{fired::pointer(pointerPress, 3, 8, buttonMiddle, modifierLeftButton)});
    EXPECT_EQ(selection(field), (std::vector<jint>{0, 0}));
}
