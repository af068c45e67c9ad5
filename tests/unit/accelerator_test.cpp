#include "control/shell.h"
#include "faults.h"
#include "menu_fixture.h"

// Keys that choose items.
class AcceleratorTest : public MenuTest {
  protected:
    ShellAccelerators& accelerators() {
        return reinterpret_cast<ShellRecord*>(shell)->accelerators;
    }
    std::vector<jint> newItems(int count) {
        std::vector<jint> items;
        for (int i = 0; i < count; ++i) items.push_back(newItem(OS::PushMenuItem_New, menu, i));
        return items;
    }
    void press(BYTE key) { keybd_event(key, 0, 0, 0); }
    void release(BYTE key) { keybd_event(key, 0, KEYEVENTF_KEYUP, 0); }
    Events typed(std::vector<BYTE> keys) {
        vm.takeEvents();
        for (BYTE key : keys) press(key);
        for (auto key = keys.rbegin(); key != keys.rend(); ++key) release(*key);
        dispatchAll();
        return fired::only(vm.takeEvents(), {"menu"});
    }
    static constexpr jint alt = 1 << 16, shift = 2 << 16, control = 4 << 16;
    jint menu = newMenu(OS::PopupMenu_New, newButton(shell));
};

TEST_F(AcceleratorTest, belongs_to_the_shell_above_the_menus_owner) {
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    setAccelerator(item, alt | control | shift | 1023);
    ASSERT_EQ(accelerators().count, 1);
    EXPECT_EQ(accelerators().entries[0].fVirt, FVIRTKEY | FALT | FCONTROL | FSHIFT);
    EXPECT_EQ(accelerators().entries[0].key, VK_F1);
    EXPECT_EQ(accelerators().entries[0].cmd, itemOf(item)->id);
}

TEST_F(AcceleratorTest, set_twice_is_one) {
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    setAccelerator(item, control | 'a');
    setAccelerator(item, shift | 1012);
    ASSERT_EQ(accelerators().count, 1);
    EXPECT_EQ(accelerators().entries[0].fVirt, FVIRTKEY | FSHIFT);
    EXPECT_EQ(accelerators().entries[0].key, VK_DELETE);
}

TEST_F(AcceleratorTest, the_11th_and_the_16th_grow_the_table) {
    int count = 0;
    std::vector<jint> items = newItems(16);
    setAccelerator(items.front(), 'A');
    long blocks = countHeapBlocks();
    for (jint item : items) {
        setAccelerator(item, 'A' + count++);
        EXPECT_EQ(accelerators().count, count);
        EXPECT_EQ(accelerators().capacity, count <= 10 ? 10 : count <= 15 ? 15 : 20);
        EXPECT_EQ(countHeapBlocks(), blocks) << "the smaller table is gone";
    }
    for (int i = 0; i < 16; ++i) EXPECT_EQ(accelerators().entries[i].key, 'A' + i);
}

TEST_F(AcceleratorTest, removed_leaves_the_others_in_order) {
    std::vector<jint> items = newItems(3);
    for (int i = 0; i < 3; ++i) setAccelerator(items[i], 'A' + i);
    setAccelerator(items[0], 0);
    ASSERT_EQ(accelerators().count, 2);
    EXPECT_EQ(accelerators().entries[0].key, 'B');
    setAccelerator(items[0], 0);
    EXPECT_EQ(accelerators().count, 2) << "without one nothing changes";
    dispose(items[2]);
    made.pop_back();
    EXPECT_EQ(accelerators().count, 1) << "it goes with its item";
}

TEST_F(AcceleratorTest, no_memory_for_the_table_is_an_error_that_adds_nothing) {
    std::vector<jint> items = newItems(11);
    {
        Faults faults;
        faults.fail("LocalAlloc");
        setAccelerator(items[0], 'A');
        expectReport("LabeledMenuItem_SetAccelerator", -4,
                     u"Not enough space to create accelerator table");
        EXPECT_EQ(accelerators().count, 0);
    }
    for (int i = 0; i < 10; ++i) setAccelerator(items[i], 'A' + i);
    Faults faults;
    faults.fail("LocalAlloc");
    setAccelerator(items[10], 'Z');
    expectReport("LabeledMenuItem_SetAccelerator", -4,
                 u"Not enough space to grow accelerator table");
    EXPECT_EQ(accelerators().count, 10);
    EXPECT_EQ(accelerators().capacity, 10);
}

TEST_F(AcceleratorTest, the_table_is_built_when_a_key_arrives_and_anew_after_a_change) {
    std::vector<jint> items = newItems(2);
    setAccelerator(items[0], control | 'a');
    EXPECT_EQ(accelerators().table, nullptr);
    typed({'Q'});
    EXPECT_NE(accelerators().table, nullptr);
    setAccelerator(items[1], control | 'b');
    EXPECT_EQ(accelerators().table, nullptr);
    typed({'Q'});
    setAccelerator(items[1], 0);
    EXPECT_EQ(accelerators().table, nullptr) << "it would dangle";
}

TEST_F(AcceleratorTest, its_keys_choose_the_item) {
    std::vector<jint> items = newItems(3);
    for (jint item : items) listen(item);
    setAccelerator(items[0], control | 'a');
    setAccelerator(items[1], 1025);
    setAccelerator(items[2], control | shift | 'a');
    EXPECT_EQ(typed({VK_CONTROL, 'A'}), Events{fired::menu()});
    EXPECT_EQ(typed({VK_F3}), Events{fired::menu()});
    EXPECT_EQ(typed({VK_CONTROL, VK_SHIFT, 'A'}), Events{fired::menu()});
    EXPECT_TRUE(typed({'A'}).empty());
    EXPECT_TRUE(typed({VK_CONTROL, 'B'}).empty());
    EXPECT_TRUE(typed({VK_SHIFT, VK_F3}).empty());
}

TEST_F(AcceleratorTest, ctrl_and_shift_choose_no_item_of_another_key_or_of_ctrl_alone) {
    std::vector<jint> items = newItems(2);
    for (jint item : items) listen(item);
    setAccelerator(items[0], control | shift | 'a');
    setAccelerator(items[1], control | 'b');
    EXPECT_TRUE(typed({VK_CONTROL, VK_SHIFT, 'B'}).empty());
    EXPECT_TRUE(typed({VK_CONTROL, VK_SHIFT, 'C'}).empty());
    EXPECT_TRUE(typed({VK_SHIFT, 'A'}).empty()) << "without Ctrl";
}

// What the system makes of them is its own.
TEST_F(AcceleratorTest, ctrl_and_shift_alone_are_left_to_the_system) {
    std::vector<jint> items = newItems(2);
    for (jint item : items) listen(item);
    setAccelerator(items[0], control | shift | keyControl);
    setAccelerator(items[1], control | shift | keyShift);
    Faults faults;
    faults.fail("TranslateAcceleratorW", 0);
    EXPECT_TRUE(typed({VK_CONTROL, VK_SHIFT}).empty());
    EXPECT_TRUE(typed({VK_SHIFT, VK_CONTROL}).empty());
}

TEST_F(AcceleratorTest, of_another_shell_is_not_taken) {
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    listen(item);
    setAccelerator(item, control | 'a');
    newShell();
    EXPECT_TRUE(typed({VK_CONTROL, 'A'}).empty());
}
