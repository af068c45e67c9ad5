// What a person does to a choice, and what its listener is told of it.

#include "choice_fixture.h"
#include <algorithm>

TEST_F(ChoiceTest, a_tap_drops_the_list_and_one_on_an_item_chooses_it) {
    jint choice = newChoice(fruit);
    tapAt(choice, 50, 10);
    EXPECT_TRUE(isDropped(choice));
    EXPECT_EQ(GetFocus(), windowOf(choice));
    listen(choice);
    tapItem(choice, 1);
    EXPECT_EQ(ownEvents(), Events{fired::chosen(1)});
    EXPECT_FALSE(isDropped(choice));
    EXPECT_EQ(selected(choice), 1);
    EXPECT_EQ(windowText(choice), L"pear");
    EXPECT_EQ(GetFocus(), windowOf(choice));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ChoiceTest, a_tap_is_told_before_the_focus) {
    jint choice = newChoice(fruit);
    listen(choice);
    tapAt(choice, 50, 10);
    Events events = vm.takeEvents();
    auto place = [&](const std::string& event) {
        return std::find(events.begin(), events.end(), event) - events.begin();
    };
    long last = static_cast<long>(events.size()) - 1;
    EXPECT_LT(place(fired::pointer(pointerPress, 50, 10, buttonLeft)),
              place(fired::focus(FocusChange::gained)));
    EXPECT_LT(place(fired::focus(FocusChange::gained)),
              place(fired::pointer(pointerRelease, 50, 10, buttonLeft)));
    EXPECT_LE(place(fired::pointer(pointerRelease, 50, 10, buttonLeft)), last);
}

TEST_F(ChoiceTest, a_tap_elsewhere_closes_the_list_without_a_choice) {
    jint choice = newChoice(fruit);
    tapAt(choice, 50, 10);
    listen(choice);
    tapAt(shell, 200, 250);
    EXPECT_FALSE(isDropped(choice));
    EXPECT_EQ(selected(choice), -1);
    Events events = ownEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), fired::chosen(-1)), 0);
}

TEST_F(ChoiceTest, arrow_keys_choose_items_one_after_the_other) {
    jint choice = newChoice(fruit);
    call(OS::Control_ForceFocus, choice);
    listen(choice);
    pressKey(keyDown);
    pressKey(keyDown);
    pressKey(keyUp);
    EXPECT_EQ(ownEvents(),
              (Events{fired::key(KeyKind::pressed, fired::noCharacter, keyDown), fired::chosen(0),
                      fired::key(KeyKind::released, VK_DOWN, keyDown),
                      fired::key(KeyKind::pressed, fired::noCharacter, keyDown), fired::chosen(1),
                      fired::key(KeyKind::released, VK_DOWN, keyDown),
                      fired::key(KeyKind::pressed, fired::noCharacter, keyUp), fired::chosen(0),
                      fired::key(KeyKind::released, VK_UP, keyUp)}));
    EXPECT_EQ(selected(choice), 0);
}

TEST_F(ChoiceTest, a_key_that_java_handles_chooses_nothing) {
    jint choice = newChoice(fruit);
    call(OS::Control_ForceFocus, choice);
    listen(choice);
    vm.behavior["key"] = [](const std::vector<jint>&) { return 1; };
    pressKey(keyDown);
    EXPECT_EQ(selected(choice), -1);
}

TEST_F(ChoiceTest, the_first_letter_chooses_an_item) {
    jint choice = newChoice({u"apple", u"banana", u"cherry"});
    call(OS::Control_ForceFocus, choice);
    listen(choice);
    type("c");
    EXPECT_EQ(ownEvents(), (Events{fired::key(KeyKind::pressed, 'c', 'C'), fired::chosen(2),
                                   fired::key(KeyKind::released, 'c', 'C')}));
}

TEST_F(ChoiceTest, may_be_disposed_of_by_who_hears_of_a_choice) {
    jint choice = newChoice(fruit);
    call(OS::Control_ForceFocus, choice);
    listen(choice);
    vm.behavior["chosen"] = [&](const std::vector<jint>&) {
        vm.behavior.clear();
        HWND window = windowOf(choice);
        dispose(choice);
        EXPECT_FALSE(IsWindow(window));
        return 0;
    };
    sendTo(choice, controlCommand, MAKEWPARAM(1000, CBN_SELCHANGE));
    EXPECT_TRUE(vm.behavior.empty());
}

TEST_F(ChoiceTest, focus_that_comes_from_elsewhere_is_told) {
    jint choice = newChoice(fruit), button = newButton(shell);
    listen(choice);
    EXPECT_TRUE(call(OS::Control_ForceFocus, choice));
    EXPECT_EQ(ownEvents(), Events{fired::focus(FocusChange::gained)});
    call(OS::Control_ForceFocus, button);
    EXPECT_EQ(ownEvents(), Events{fired::focus(FocusChange::lost)});
}
