#pragma once
// The numbers that Java and the library know each other's meanings by. Every enumeration is a class
// of the Java package com.nuvik.wyx with the same name, and each of its enumerators one of that
// class's constants: styleTitle is Style.TITLE, WindowEvent::minimized is WindowEvent.MINIMIZED.
// The callback ids alone are constants of the base layer's class of natives, under their own names.
// The build compares all of them with the Java classes.

#include "ce.h"
#include <jni.h>

enum CallbackId : DWORD {
    CB_SELECTION = 0,
    CB_LIST_SELECTION = 1,
    CB_WINDOW_EVENT = 2,
    CB_SCROLL = 3,
    CB_CHOICE_SELECTION = 4,
    CB_KEY = 5,
    CB_TEXT_MODIFIED = 6,
    CB_POINTER = 7,
    CB_MENU_SELECTION = 8,
    CB_FOCUS = 9,
    CB_PAINT = 10,
    CB_RESIZE = 11,
    CB_MOVE = 12,
    CB_WHEEL = 17,
    // Java registers this one by its value, so the value must stay.
    CB_POINTER_DOWN_QUERY = 0x56EB4ABE,
};

enum ErrorCode : LONG {
    errorNone = 0,
    errorNotSupported = -1,
    errorFailed = -3,
    errorOutOfMemory = -4,
    errorNoDecoder = -6,
    errorDecodingFailed = -8,
};

// The bits with which widgets are made. What each kind of widget knows of them its operations say;
// one value may mean different things to different kinds.
enum Style : DWORD {
    styleCloseBox = 0x1,
    styleCenteredLine = 0x2,
    styleRadioItem = 0x10,
    styleTitle = 0x20,
    styleModal = 0x40,
    styleWrap = 0x100,
    styleBorder = 0x800,
    styleSave = 0x2000,
    styleHorizontalScroll = 0x10000,
    styleVerticalScroll = 0x20000,
    styleMultiple = 0x800000,
};

// Bits of the same word that only the library sets.
constexpr DWORD ownStyleStateItem = 0x20;
constexpr DWORD ownStyleDropDownList = 0x1000000;

// Also bits of the style of buttons. Which counts when several are set differs.
enum Alignment : DWORD { alignLeft = 1, alignCenter = 2, alignRight = 4 };

enum Orientation : jint { orientationVertical = 8, orientationHorizontal = 16 };

enum Key : WORD {
    keyBackspace = 1000,
    keyTab = 1001,
    keyEnter = 1002,
    keyEscape = 1003,
    keyPrintScreen = 1005,
    keyPause = 1006,
    keyHome = 1007,
    keyEnd = 1008,
    keyPageUp = 1009,
    keyPageDown = 1010,
    keyInsert = 1011,
    keyDelete = 1012,
    keyLeft = 1013,
    keyRight = 1014,
    keyUp = 1015,
    keyDown = 1016,
    keyShift = 1017,
    keyAlt = 1018,
    keyControl = 1019,
    keyCapsLock = 1020,
    keyNumLock = 1021,
    keyScrollLock = 1022,
    keyF1 = 1023,
    keyF2 = 1024,
    keyF3 = 1025,
    keyF4 = 1026,
    keyF5 = 1027,
    keyF6 = 1028,
    keyF7 = 1029,
    keyF8 = 1030,
    keyF9 = 1031,
    keyF10 = 1032,
    keyF11 = 1033,
    keyF12 = 1034,
    keyF13 = 1035,
    keyF14 = 1036,
    keyF15 = 1037,
    keyNumpadMultiply = 1067,
    keyNumpadAdd = 1068,
    keyNumpadSubtract = 1069,
    keyNumpadDecimal = 1070,
    keyNumpadDivide = 1071,
    keyNumpad0 = 1072,
    keyNumpad1 = 1073,
    keyNumpad2 = 1074,
    keyNumpad3 = 1075,
    keyNumpad4 = 1076,
    keyNumpad5 = 1077,
    keyNumpad6 = 1078,
    keyNumpad7 = 1079,
    keyNumpad8 = 1080,
    keyNumpad9 = 1081,
    keyNumpadEnter = 1082,
};

enum Modifier : jint {
    modifierAlt = 1,
    modifierShift = 2,
    modifierControl = 4,
    modifierLeftButton = 8,
    modifierMiddleButton = 16,
    modifierRightButton = 32,
    modifierContextGesture = 64,
};

enum PointerButton : jint { buttonNone = 0, buttonLeft = 8, buttonMiddle = 16, buttonRight = 32 };

enum PointerType : jint {
    pointerPress = 1,
    pointerRelease = 2,
    pointerMove = 3,
    pointerEnter = 4,
    pointerExit = 5,
    pointerDrag = 6,
    pointerDoubleClick = 7,
};

enum WheelType : jint { wheelByPage = 8, wheelByLines = 9 };

// Java's answers to CB_POINTER_DOWN_QUERY. Any other number is as good as recognizeNone.
enum GestureAnswer : jint { recognizeByTime = 0, recognizeByShell = 1, recognizeNone = 2 };

enum class KeyKind { pressed = 1, released = 2 };
enum class FocusChange { gained = 1, lost = 2 };
enum class ListSelection { changed = 1, doubleClicked = 2 };
enum class ScrollKind { lineUp, lineDown, pageUp, pageDown, thumbDrag, top, bottom };
enum class WindowEvent {
    closeRequested = 201,
    minimized = 203,
    activated = 205,
    deactivated = 206,
};

enum FontFamily : jint { familySansSerif = 2, familySerif = 3, familyFixedPitch = 4 };

enum FontStyle : jint {
    fontPlain = 0,
    fontBold = 2,
    fontItalic = 4,
    fontUnderline = 8,
    fontStrikeOut = 16,
};

enum TextFlag : jint {
    textBreakLines = 1,
    textExpandTabs = 2,
    textMnemonics = 4,
    textLeaveBackground = 8,
};

enum CursorType : jint {
    cursorArrow = 1,
    cursorCross = 2,
    cursorText = 3,
    cursorWait = 4,
    cursorResizeNorth = 5,
    cursorResizeEast = 6,
    cursorResizeSouth = 7,
    cursorResizeWest = 8,
    cursorResizeNortheast = 9,
    cursorResizeNorthwest = 10,
    cursorResizeSouthwest = 11,
    cursorResizeSoutheast = 12,
    cursorHand = 13,
};

enum class SystemColor {
    desktop,
    activeCaption,
    activeCaptionText,
    activeCaptionBorder,
    inactiveCaption,
    inactiveCaptionText,
    inactiveCaptionBorder,
    window,
    windowFrame,
    windowText,
    menu,
    menuText,
    textField,
    textFieldText,
    highlight,
    highlightText,
    disabledText,
    control,
    controlText,
    controlLight,
    controlHighlight,
    controlShadow,
    controlDarkShadow,
    scrollBar,
    toolTip,
    toolTipText,
};
