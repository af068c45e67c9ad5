#include "faults.h"
#include "menu_fixture.h"

class PopupTest : public MenuTest {
  protected:
    // How high each item of the menu is while it is shown.
    std::vector<LONG> heightsOf(jint menu) {
        looked = menuOf(menu)->menuHandle;
        heights.clear();
        SetTimer(windowOf(shell), 1, USER_TIMER_MINIMUM, look);
        show(menu, 10, 10);
        return heights;
    }
    static void CALLBACK look(HWND window, UINT, UINT_PTR timer, DWORD) {
        KillTimer(window, timer);
        for (int i = 0; i < GetMenuItemCount(looked); ++i) {
            RECT place = {};
            GetMenuItemRect(nullptr, looked, i, &place);
            heights.push_back(place.bottom - place.top);
        }
        typeKey(VK_ESCAPE);
    }
    static inline HMENU looked;
    static inline std::vector<LONG> heights;

    void show(jint menu, jint x, jint y) { call(OS::PopupMenu_Show, menu, x, y); }
    static void typeKey(BYTE key) {
        keybd_event(key, 0, 0, 0);
        keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    }
};

// Where the menu was shown.
static POINT shownAt;
static HWND shownFor;
static BOOL WINAPI recordTracking(HMENU, UINT flags, int x, int y, HWND window, LPTPMPARAMS extra) {
    EXPECT_EQ(flags, 0u);
    EXPECT_EQ(extra, nullptr);
    shownAt = {x, y};
    shownFor = window;
    return TRUE;
}

TEST_F(PopupTest, appears_in_the_owners_client_area) {
    jint button = newButton(shell);
    jint menu = newMenu(OS::PopupMenu_New, button);
    Faults faults;
    faults.replace("TrackPopupMenuEx", reinterpret_cast<void*>(recordTracking));
    show(menu, 5, 6);
    POINT expected = {5, 6};
    ClientToScreen(windowOf(button), &expected);
    EXPECT_EQ(shownAt.x, expected.x);
    EXPECT_EQ(shownAt.y, expected.y);
    EXPECT_EQ(shownFor, windowOf(button));
}

TEST_F(PopupTest, a_separator_takes_less_room_than_an_item) {
    jint menu = newMenu(OS::PopupMenu_New, shell);
    setText(newItem(OS::PushMenuItem_New, menu, 0), u"Open");
    newItem(OS::SeparatorItem_New, menu, 1);
    std::vector<LONG> heights = heightsOf(menu);
    ASSERT_EQ(heights.size(), 2u);
    EXPECT_GT(heights[1], 0);
    EXPECT_LT(heights[1], heights[0]);
}

TEST_F(PopupTest, the_item_that_is_chosen_by_keys_fires) {
    jint menu = newMenu(OS::PopupMenu_New, shell);
    jint first = newItem(OS::PushMenuItem_New, menu, 0);
    jint second = newItem(OS::PushMenuItem_New, menu, 1);
    setText(first, u"First");
    setText(second, u"Second");
    listen(first);
    listen(second);
    typeKey(VK_DOWN);
    typeKey(VK_DOWN);
    typeKey(VK_RETURN);
    show(menu, 10, 10);
    dispatchAll();
    Events events = vm.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), fired::menu()), 1)
        << testing::PrintToString(events);
}

TEST_F(PopupTest, nothing_fires_when_the_menu_is_left) {
    jint menu = newMenu(OS::PopupMenu_New, shell);
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    listen(item);
    typeKey(VK_DOWN);
    typeKey(VK_ESCAPE);
    show(menu, 10, 10);
    dispatchAll();
    EXPECT_TRUE(vm.takeEvents().empty());
}
