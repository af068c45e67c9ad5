#include <gtest/gtest.h>
#include <windows.h>

TEST(TextsTest, without_a_context_nothing_is_measured) {
    RECT area = {1, 2, 3, 4};
    EXPECT_EQ(DrawTextW(nullptr, L"text", -1, &area, DT_CALCRECT), 0);
    EXPECT_EQ(area.left, 1);
    EXPECT_EQ(area.top, 2);
    EXPECT_EQ(area.right, 3);
    EXPECT_EQ(area.bottom, 4);
}
