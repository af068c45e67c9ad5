// What controls of every kind answer to the messages that natives send them.

#include "declared/objects.h"

class ControlMessagesTest : public ObjectsTest {
  protected:
    static constexpr ObjectKind controls[] = {
        ObjectKind::shell,    ObjectKind::childShell, ObjectKind::composite, ObjectKind::button,
        ObjectKind::label,    ObjectKind::list,       ObjectKind::choice,    ObjectKind::textField,
        ObjectKind::textArea, ObjectKind::scrollBar};

    static LRESULT tell(jint control, UINT message, const void* subject) {
        ErrorRecord error = {};
        ErrorRecord* place = &error;
        return sendTo(control, message, reinterpret_cast<WPARAM>(subject),
                      reinterpret_cast<LPARAM>(&place));
    }
    static const void* flag(bool value) { return reinterpret_cast<const void*>(value); }
};

TEST_F(ControlMessagesTest, that_tell_something_are_answered_with_0) {
    RECT bounds = {1, 2, 101, 52};
    LONG filled[4];
    const struct {
        const char* name;
        UINT message;
        const void* subject;
    } rows[] = {{"order", controlMoveAbove, nullptr},
                {"hiding", controlSetVisible, flag(false)},
                {"showing", controlSetVisible, flag(true)},
                {"minimum size", controlGetMinimumSize, filled},
                {"insets", controlGetInsets, filled},
                {"bounds", controlSetBounds, &bounds},
                {"bounds of a child", controlChildMoves, &bounds},
                {"disabling", controlSetEnabled, flag(false)},
                {"enabling", controlSetEnabled, flag(true)},
                {"background", controlSetBackground, nullptr},
                {"foreground", controlSetForeground, nullptr},
                {"font", controlSetFont, nullptr}};
    for (ObjectKind kind : controls)
        for (const auto& row : rows)
            EXPECT_EQ(tell(objectOf(kind), row.message, row.subject), 0)
                << row.name << " of kind " << int(kind);
    for (jint orientation : {8, 16})
        EXPECT_EQ(sendTo(objectOf(ObjectKind::scrollBar), controlSetOrientation, orientation), 0);
    disposeOfObjects();
}

static void countWork(ControlRecord* control, void* count) {
    EXPECT_NE(control, nullptr);
    ++*static_cast<int*>(count);
}

TEST_F(ControlMessagesTest, that_bring_work_are_answered_with_0_when_it_is_done) {
    for (ObjectKind kind : controls) {
        int count = 0;
        EXPECT_EQ(sendTo(objectOf(kind), controlRun, reinterpret_cast<WPARAM>(countWork),
                         reinterpret_cast<LPARAM>(&count)),
                  0);
        EXPECT_EQ(count, 1) << int(kind);
    }
    disposeOfObjects();
}

// Who is told of its child's command leaves it to its class when the child answers 1.
TEST_F(ControlMessagesTest, that_are_commands_are_answered_with_0_by_whom_they_are_meant_for) {
    const struct {
        ObjectKind kind;
        WORD notification;
        LRESULT answer;
    } rows[] = {{ObjectKind::button, BN_CLICKED, 0},    {ObjectKind::button, BN_DISABLE, 0},
                {ObjectKind::list, LBN_SELCHANGE, 0},   {ObjectKind::list, LBN_DBLCLK, 0},
                {ObjectKind::list, LBN_SETFOCUS, 0},    {ObjectKind::choice, CBN_SELCHANGE, 1},
                {ObjectKind::choice, CBN_DROPDOWN, 1},  {ObjectKind::textField, EN_CHANGE, 1},
                {ObjectKind::textArea, EN_SETFOCUS, 1}, {ObjectKind::composite, 0, 1},
                {ObjectKind::label, STN_CLICKED, 1},    {ObjectKind::scrollBar, 0, 1}};
    for (const auto& row : rows) {
        jint control = objectOf(row.kind);
        EXPECT_EQ(sendTo(control, controlCommand, MAKEWPARAM(0, row.notification),
                         reinterpret_cast<LPARAM>(windowOf(control))),
                  row.answer)
            << int(row.kind) << " " << row.notification;
    }
    disposeOfObjects();
}
