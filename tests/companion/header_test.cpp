// The public header says of the library what is so.

#include "bridge/error.h"
#include "control/control.h"
#include "display/callbacks.h"
#include "public_layout.h"
#include <gtest/gtest.h>

#pragma GCC diagnostic ignored "-Winvalid-offsetof"

TEST(HeaderTest, error_records_have_the_librarys_layout) {
    EXPECT_EQ(publicLayout.errorCode, offsetof(ErrorRecord, code));
    EXPECT_EQ(publicLayout.errorMessage, offsetof(ErrorRecord, message));
    EXPECT_EQ(publicLayout.errorOwnsMessage, offsetof(ErrorRecord, ownsMessage));
}

TEST(HeaderTest, control_records_have_the_librarys_layout) {
    EXPECT_EQ(publicLayout.display, offsetof(ControlRecord, display));
    EXPECT_EQ(publicLayout.callbackTarget, offsetof(ControlRecord, callbackTarget));
    EXPECT_EQ(publicLayout.style, offsetof(ControlRecord, style));
    EXPECT_EQ(publicLayout.dispose, offsetof(ControlRecord, dispose));
    EXPECT_EQ(publicLayout.window, offsetof(ControlRecord, hwnd));
    EXPECT_EQ(publicLayout.classProc, offsetof(ControlRecord, classProc));
    EXPECT_EQ(publicLayout.parent, offsetof(ControlRecord, parent));
    EXPECT_EQ(publicLayout.redraw, offsetof(ControlRecord, redraw));
    EXPECT_EQ(publicLayout.background, offsetof(ControlRecord, background));
    EXPECT_EQ(publicLayout.foreground, offsetof(ControlRecord, foreground));
    EXPECT_EQ(publicLayout.controlRecordSize, sizeof(ControlRecord));
    EXPECT_EQ(publicLayout.color, offsetof(ColorRecord, color));
}

TEST(HeaderTest, messages_are_the_librarys) {
    EXPECT_EQ(publicLayout.getMinimumSize, controlGetMinimumSize);
    EXPECT_EQ(publicLayout.getForeground, controlGetForeground);
    EXPECT_EQ(publicLayout.getBackground, controlGetBackground);
}

TEST(HeaderTest, error_codes_are_the_librarys) {
    EXPECT_EQ(publicLayout.notSupported, errorNotSupported);
    EXPECT_EQ(publicLayout.failed, errorFailed);
    EXPECT_EQ(publicLayout.outOfMemory, errorOutOfMemory);
}

TEST(HeaderTest, callbacks_are_the_librarys) {
    EXPECT_EQ(publicLayout.selection, CB_SELECTION);
    EXPECT_EQ(publicLayout.windowEvent, CB_WINDOW_EVENT);
    EXPECT_EQ(publicLayout.scroll, CB_SCROLL);
    EXPECT_EQ(publicLayout.paint, CB_PAINT);
}
