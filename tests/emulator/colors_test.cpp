#include "ce.h"
#include <gtest/gtest.h>

static COLORREF colorOf(HBRUSH brush) {
    LOGBRUSH description = {};
    EXPECT_EQ(GetObjectW(brush, sizeof(description), &description), int(sizeof(description)));
    return description.lbColor;
}

static COLORREF systemColor(int index) { return GetSysColor(index | SYS_COLOR_INDEX_FLAG); }

static HBRUSH systemBrush(int index) { return GetSysColorBrush(index | SYS_COLOR_INDEX_FLAG); }

TEST(SystemColorTest, is_found_by_a_marked_index_only) {
    for (int index = 0; index <= COLOR_STATICTEXT; ++index) {
        EXPECT_NE(systemBrush(index), nullptr) << index;
        SetLastError(0);
        EXPECT_EQ(GetSysColor(index), 0u) << index;
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
        SetLastError(0);
        EXPECT_EQ(GetSysColorBrush(index), nullptr) << index;
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
    }
    EXPECT_NE(systemColor(COLOR_WINDOW), systemColor(COLOR_WINDOWTEXT));
}

TEST(SystemColorTest, of_static_controls_is_the_button_face_with_window_text) {
    EXPECT_EQ(systemColor(COLOR_STATIC), systemColor(COLOR_BTNFACE));
    EXPECT_EQ(systemColor(COLOR_STATICTEXT), systemColor(COLOR_WINDOWTEXT));
}

TEST(SystemColorTest, has_its_brush) {
    EXPECT_EQ(colorOf(systemBrush(COLOR_WINDOW)), systemColor(COLOR_WINDOW));
    EXPECT_EQ(colorOf(systemBrush(COLOR_STATIC)), systemColor(COLOR_BTNFACE));
}

TEST(SystemColorTest, is_that_of_the_device_and_not_of_the_desk) {
    EXPECT_EQ(systemColor(COLOR_BTNFACE), RGB(192, 192, 192));
    EXPECT_EQ(systemColor(COLOR_HIGHLIGHT), RGB(0, 0, 128));
    EXPECT_EQ(systemColor(COLOR_WINDOW), RGB(255, 255, 255));
}
