#include "ce.h"
#include <gtest/gtest.h>

static COLORREF colorOf(HBRUSH brush) {
    LOGBRUSH description = {};
    EXPECT_EQ(GetObjectW(brush, sizeof(description), &description), int(sizeof(description)));
    return description.lbColor;
}

TEST(SystemColorTest, is_the_same_with_and_without_the_mark_of_the_index) {
    for (int index = 0; index <= COLOR_INFOBK; ++index)
        EXPECT_EQ(GetSysColor(index | SYS_COLOR_INDEX_FLAG), GetSysColor(index)) << index;
    EXPECT_NE(GetSysColor(COLOR_WINDOW | SYS_COLOR_INDEX_FLAG),
              GetSysColor(COLOR_WINDOWTEXT | SYS_COLOR_INDEX_FLAG));
}

TEST(SystemColorTest, of_static_controls_is_the_button_face_with_window_text) {
    EXPECT_EQ(GetSysColor(COLOR_STATIC | SYS_COLOR_INDEX_FLAG), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(GetSysColor(COLOR_STATICTEXT | SYS_COLOR_INDEX_FLAG), GetSysColor(COLOR_WINDOWTEXT));
}

TEST(SystemColorTest, has_its_brush) {
    EXPECT_EQ(colorOf(GetSysColorBrush(COLOR_WINDOW | SYS_COLOR_INDEX_FLAG)),
              GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(colorOf(GetSysColorBrush(COLOR_STATIC | SYS_COLOR_INDEX_FLAG)),
              GetSysColor(COLOR_BTNFACE));
}

TEST(SystemColorTest, is_that_of_the_device_and_not_of_the_desk) {
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), RGB(192, 192, 192));
    EXPECT_EQ(GetSysColor(COLOR_HIGHLIGHT), RGB(0, 0, 128));
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(255, 255, 255));
}
