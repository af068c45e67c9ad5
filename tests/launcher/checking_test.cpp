// What the checked mode knows of every native, and what it says of a call.

#include "declared/declared_natives.h"
#include "rules.h"
#include <gtest/gtest.h>
#include <set>

namespace {

constexpr uint32_t ownThread = 1, otherThread = 2, companionsHandle = 0x70000000;
constexpr uint32_t rubbish = 0x12345678, noHandle = 0;
constexpr uint32_t array = 0x5000;

class FakeSurroundings : public Surroundings {
  public:
    uint32_t thread() override { return runsOn; }
    int lengthOf(uint32_t) override { return arrayLength; }
    bool isCompanionsControl(uint32_t handle, uint32_t* display) override {
        if (handle != companionsControlIs) return false;
        *display = companionsDisplay;
        return true;
    }

    uint32_t runsOn = ownThread;
    int arrayLength = 4;
    uint32_t companionsControlIs = noHandle;
    uint32_t companionsDisplay = noHandle;
};

Place place(int* what) {
    return {what, [](void*) {}};
}

} // namespace

class CheckingTest : public testing::Test {
  protected:
    Handles handles;
    FakeSurroundings surroundings;
    int making = 0, ending = 0;
    uint32_t lastHandle = 0x1000;
    uint32_t display = make("DisplayRecord");
    uint32_t scrollable = make("CompositeRecord");

    uint32_t makeOf(int kind) {
        Object object;
        object.handle = lastHandle += 0x10;
        object.kind = kind;
        object.thread = ownThread;
        bool isDisplay = isA(kind, kindOf("DisplayRecord"));
        if (isA(kind, kindOf("WidgetRecord"))) {
            object.display = display;
            object.displayNumber = handles.find(display).number;
        }
        if (isDisplay) object.display = object.handle;
        if (kind == kindOf("OwnBarRecord")) {
            object.owner = scrollable;
            object.ownerNumber = handles.find(scrollable).number;
            object.isLent = true;
        }
        handles.add(object, place(&making));
        return object.handle;
    }
    uint32_t make(const char* record) { return makeOf(kindOf(record)); }
    void end(uint32_t handle) { handles.end(handles.find(handle), place(&ending)); }

    std::optional<Misuse> check(const CheckedNative& native, std::vector<uint32_t> arguments) {
        return findMisuse(native, arguments.data(), &handles, &surroundings);
    }
    std::optional<Misuse> check(const char* name, std::vector<uint32_t> arguments) {
        return check(*findCheckedNative(name), std::move(arguments));
    }
    std::string sentence(const char* name, std::vector<uint32_t> arguments) {
        auto misuse = check(name, std::move(arguments));
        return misuse ? misuse->sentence : "";
    }
    // The native's result, made of the arguments.
    uint32_t call(const char* name, std::vector<uint32_t> arguments) {
        const CheckedNative& native = *findCheckedNative(name);
        uint32_t handle = lastHandle += 0x10;
        arguments.push_back(0);
        handles.add(madeBy(native, arguments.data(), handle, &handles, surroundings.runsOn),
                    place(&making));
        return handle;
    }

    // Arguments that are right.
    std::vector<uint32_t> right(const CheckedNative& native) {
        std::vector<uint32_t> arguments;
        for (const CheckedParameter& parameter : native.parameters)
            arguments.push_back(parameter.role == Role::handle ? rightFor(native, parameter) : 0);
        return arguments;
    }
    uint32_t rightFor(const CheckedNative& native, const CheckedParameter& parameter) {
        bool isOwner =
            parameter.index == kindOf("ScrollableRecord") && native.parameters.size() > 1;
        return isOwner ? scrollable : given(parameter.index);
    }
    // What goes with all else that is there: of the same display.
    uint32_t given(int kind) { return kind == kindOf("DisplayRecord") ? display : makeOf(kind); }

    template <class Look>
    void forEveryHandle(Look look) {
        forEvery(Role::handle, look);
    }
    template <class Look>
    void forEvery(Role role, Look look) {
        for (const CheckedNative& native : checkedNatives())
            for (size_t i = 0; i < native.parameters.size(); ++i) {
                if (native.parameters[i].role != role) continue;
                SCOPED_TRACE(std::string(native.name) + " " + native.parameters[i].name);
                look(native, i);
            }
    }
};

TEST_F(CheckingTest, every_native_is_known_with_its_arguments) {
    ASSERT_EQ(declaredNatives().size(), checkedNatives().size());
    for (const DeclaredNative& declared : declaredNatives()) {
        SCOPED_TRACE(declared.name);
        const CheckedNative* native = findCheckedNative(declared.name);
        ASSERT_TRUE(native);
        ASSERT_EQ(declared.parameters.size(), native->parameters.size());
        ASSERT_GE(mostParameters, native->parameters.size());
        for (size_t i = 0; i < declared.parameters.size(); ++i) {
            const Parameter& parameter = declared.parameters[i];
            bool isArray = parameter.type.find("[]") != std::string::npos;
            EXPECT_EQ(isArray, native->parameters[i].role == Role::array) << parameter.name;
            if (parameter.type != "int") continue;
            const Meaning* meaning = meaningOf(declared.name, parameter.name);
            ASSERT_TRUE(meaning) << parameter.name;
            EXPECT_EQ(!meaning->isNumber(), native->parameters[i].role == Role::handle)
                << parameter.name;
            EXPECT_TRUE(native->parameters[i].maybeNone || !meaning->maybeNone) << parameter.name;
        }
    }
}

TEST_F(CheckingTest, every_handle_that_a_native_wants_can_be_made_by_one) {
    std::set<int> made;
    for (const CheckedNative& native : checkedNatives())
        for (int kind = native.made; kind >= 0; kind = kinds()[kind].base) made.insert(kind);
    forEveryHandle([&](const CheckedNative& native, size_t index) {
        EXPECT_TRUE(made.count(native.parameters[index].index));
    });
}

TEST_F(CheckingTest, whatever_is_made_is_ended_by_a_native_or_goes_with_its_owner) {
    std::set<int> ended;
    for (const CheckedNative& native : checkedNatives())
        if (native.ends) ended.insert(native.parameters[0].index);
    for (const CheckedNative& native : checkedNatives()) {
        if (native.made < 0 || native.isLent) continue;
        bool isEnded = false;
        for (int kind = native.made; kind >= 0; kind = kinds()[kind].base)
            isEnded |= ended.count(kind) != 0;
        EXPECT_TRUE(isEnded) << native.name;
    }
}

TEST_F(CheckingTest, right_arguments_are_no_misuse) {
    for (const CheckedNative& native : checkedNatives()) {
        auto misuse = check(native, right(native));
        EXPECT_FALSE(misuse) << misuse->sentence;
    }
}

TEST_F(CheckingTest, none_is_misuse_where_the_declaration_does_not_allow_it) {
    forEveryHandle([&](const CheckedNative& native, size_t index) {
        auto arguments = right(native);
        arguments[index] = noHandle;
        auto misuse = check(native, arguments);
        EXPECT_EQ(!native.parameters[index].maybeNone, misuse.has_value());
        if (!misuse) return;
        EXPECT_NE(std::string::npos, misuse->sentence.find(" is 0; ")) << misuse->sentence;
        EXPECT_FALSE(misuse->mayGoOn);
    });
}

TEST_F(CheckingTest, what_was_never_a_handle_is_misuse) {
    forEveryHandle([&](const CheckedNative& native, size_t index) {
        auto arguments = right(native);
        arguments[index] = rubbish;
        auto misuse = check(native, arguments);
        ASSERT_TRUE(misuse);
        EXPECT_NE(std::string::npos, misuse->sentence.find(" was never a handle; "));
        EXPECT_FALSE(misuse->mayGoOn);
    });
}

TEST_F(CheckingTest, what_was_disposed_of_is_misuse_with_the_place_of_its_end) {
    forEveryHandle([&](const CheckedNative& native, size_t index) {
        if (kinds()[native.parameters[index].index].isSystems) return;
        auto arguments = right(native);
        uint32_t gone = makeOf(native.parameters[index].index);
        end(gone);
        arguments[index] = gone;
        auto misuse = check(native, arguments);
        ASSERT_TRUE(misuse);
        EXPECT_NE(std::string::npos, misuse->sentence.find(", was disposed of"));
        EXPECT_EQ(&ending, misuse->place.get());
        EXPECT_FALSE(misuse->mayGoOn);
    });
}

TEST_F(CheckingTest, another_kind_is_misuse_with_the_place_of_its_making) {
    forEveryHandle([&](const CheckedNative& native, size_t index) {
        int wanted = native.parameters[index].index;
        for (int kind = 0; kind < static_cast<int>(kinds().size()); ++kind) {
            SCOPED_TRACE(kinds()[kind].name);
            if (native.ends && kind == kindOf("OwnBarRecord")) continue;
            auto arguments = right(native);
            if (arguments[index] == scrollable) continue;
            arguments[index] = given(kind);
            auto misuse = check(native, arguments);
            ASSERT_EQ(!isA(kind, wanted), misuse.has_value());
            if (!misuse) continue;
            EXPECT_NE(std::string::npos, misuse->sentence.find(" is wanted")) << misuse->sentence;
            EXPECT_EQ(&making, misuse->place.get());
            EXPECT_FALSE(misuse->mayGoOn);
        }
    });
}

TEST_F(CheckingTest, says_what_is_wrong_with_a_handle) {
    uint32_t button = make("ButtonRecord");
    std::string number = std::to_string(button);
    EXPECT_EQ("List_Add: list is 0; a list is wanted", sentence("List_Add", {0, 0, 0}));
    EXPECT_EQ("List_Add: list -1 was never a handle; a list is wanted",
              sentence("List_Add", {0xFFFFFFFF, 0, 0}));
    EXPECT_EQ("List_Add: list " + number + " is a button; a list is wanted",
              sentence("List_Add", {button, 0, 0}));
    end(button);
    EXPECT_EQ("Button_SetLabel: button " + number + ", a button, was disposed of",
              sentence("Button_SetLabel", {button, 0}));
    EXPECT_EQ("Image_GetBounds: image is 0; an image is wanted", sentence("Image_GetBounds", {0}));
}

TEST_F(CheckingTest, an_address_that_is_used_again_is_the_new_object) {
    uint32_t handle = make("ButtonRecord");
    Object first = handles.find(handle);
    end(handle);
    Object second = first;
    second.kind = kindOf("ListRecord");
    handles.add(second, place(&making));
    EXPECT_EQ("", sentence("List_RemoveAll", {handle}));
    handles.end(first, place(&ending)); // that of the one before comes late
    EXPECT_EQ("", sentence("List_RemoveAll", {handle}));
}

TEST_F(CheckingTest, what_belongs_to_another_display_is_misuse) {
    uint32_t first = call("Shell_New", {display, 0});
    uint32_t otherDisplay = make("DisplayRecord");
    uint32_t other = call("Shell_New", {otherDisplay, 0});
    auto misuse = check("Control_MoveAbove", {first, other});
    ASSERT_TRUE(misuse);
    EXPECT_EQ("Control_MoveAbove: other " + std::to_string(other) +
                  " belongs to another display than what stands before it",
              misuse->sentence);
    EXPECT_EQ(&making, misuse->place.get());
    EXPECT_TRUE(misuse->mayGoOn);
    EXPECT_EQ("", sentence("Control_MoveAbove", {other, other}));
    // Those without a display go with any.
    EXPECT_EQ("", sentence("Control_SetFont", {other, call("Font_New", {display, 0, 9, 0})}));
}

TEST_F(CheckingTest, what_a_display_leaves_behind_may_only_be_disposed_of) {
    uint32_t shell = call("Shell_New", {display, 0});
    Object old = handles.find(display);
    end(display);
    auto told = [&](const char* native, const char* parameter) {
        return std::string(native) + ": " + parameter + " " + std::to_string(shell) +
               ", a shell, belongs to a display that was disposed of";
    };
    auto misuse = check("Shell_SetText", {shell, 0});
    ASSERT_TRUE(misuse);
    EXPECT_EQ(told("Shell_SetText", "shell"), misuse->sentence);
    EXPECT_EQ(&ending, misuse->place.get());
    EXPECT_TRUE(misuse->mayGoOn);
    EXPECT_EQ("", sentence("Widget_Dispose", {shell}));

    handles.add(old, place(&making)); // another display at the address of the old one
    uint32_t other = call("Shell_New", {display, 0});
    EXPECT_EQ(told("Shell_SetText", "shell"), sentence("Shell_SetText", {shell, 0}));
    EXPECT_EQ(told("Control_MoveAbove", "other"), sentence("Control_MoveAbove", {other, shell}));
    EXPECT_FALSE(check("Shell_SetText", {shell, 0})->place) << "where it ended is not known now";
    EXPECT_EQ("", sentence("Shell_SetText", {other, 0}));
    EXPECT_EQ("", sentence("Widget_Dispose", {shell}));
}

TEST_F(CheckingTest, what_is_made_of_something_belongs_to_its_display) {
    uint32_t shell = call("Shell_New", {display, 0});
    uint32_t menu = call("DropDownMenu_New", {shell});
    uint32_t item = call("CascadeMenuItem_New", {menu, 0});
    for (uint32_t handle : {display, shell, menu, item})
        EXPECT_EQ(display, handles.find(handle).display);
}

TEST_F(CheckingTest, the_event_loop_is_its_own_threads) {
    surroundings.runsOn = otherThread;
    for (const char* native : {"Display_ReadAndDispatch", "Display_Sleep"}) {
        auto misuse = check(native, {display});
        ASSERT_TRUE(misuse);
        EXPECT_EQ(std::string(native) + ": display " + std::to_string(display) +
                      " belongs to the thread that made it, which alone may call",
                  misuse->sentence);
    }
    EXPECT_EQ("", sentence("Display_Wake", {display}));
}

TEST_F(CheckingTest, drawing_on_what_was_disposed_of_is_misuse_and_its_end_is_not) {
    uint32_t image = call("Image_NewFromSize", {0, 8, 8, 0});
    uint32_t graphics = call("Image_NewGraphics", {image});
    EXPECT_EQ("", sentence("Graphics_DrawLine", {graphics, 0, 0, 1, 1}));
    end(image);
    auto misuse = check("Graphics_DrawLine", {graphics, 0, 0, 1, 1});
    ASSERT_TRUE(misuse);
    EXPECT_EQ("Graphics_DrawLine: graphics " + std::to_string(graphics) +
                  " draws on an image that was disposed of",
              misuse->sentence);
    EXPECT_EQ(&ending, misuse->place.get());
    EXPECT_TRUE(misuse->mayGoOn);
    EXPECT_EQ("", sentence("Graphics_Dispose", {graphics}));
}

TEST_F(CheckingTest, every_array_that_is_too_short_is_misuse_unless_any_will_do) {
    constexpr uint32_t number = 2;
    forEvery(Role::array, [&](const CheckedNative& native, size_t index) {
        auto arguments = right(native);
        for (size_t i = 0; i < arguments.size(); ++i)
            if (native.parameters[i].role == Role::other) arguments[i] = number;
        arguments[index] = array;
        surroundings.arrayLength = 0;
        auto misuse = check(native, arguments);
        ASSERT_EQ(native.parameters[index].extent != Extent::any, misuse.has_value());
        if (!misuse) return;
        EXPECT_NE(std::string::npos, misuse->sentence.find(" has a length of 0; "));
        EXPECT_TRUE(misuse->mayGoOn);
        arguments[index] = 0;
        EXPECT_FALSE(check(native, arguments)) << "no array at all";
        arguments[index] = array;
        surroundings.arrayLength = 100;
        EXPECT_FALSE(check(native, arguments));
    });
}

TEST_F(CheckingTest, what_is_told_of_an_array_is_its_length_and_what_that_follows_from) {
    uint32_t list = make("ListRecord"), image = call("Image_NewFromSize", {0, 8, 8, 0});
    const auto minus = [](int number) { return static_cast<uint32_t>(-number); };
    const struct {
        const char* native;
        std::vector<uint32_t> arguments;
        int wanted;
        const char* told; // with an element less
    } rows[] = {
        {"List_SelectIndices",
         {list, array, 5},
         5,
         "indices has a length of 4; 5 is wanted (count 5)"},
        {"List_SelectIndices", {list, array, minus(1)}, 0, ""},
        {"Image_NewFromFileData",
         {0, array, 3},
         3,
         "data has a length of 2; 3 is wanted (length 3)"},
        {"Image_NewFromIntData",
         {0, 3, 2, array, 24, 0, 0, 0},
         6,
         "pixels has a length of 5; 6 is wanted (width 3, height 2)"},
        {"Image_NewFromIntData",
         {0, 3, 2, 0, 24, 0, 0, array},
         6,
         "alphaData has a length of 5; 6 is wanted (width 3, height 2)"},
        {"Image_NewFromIntData", {0, minus(3), minus(2), array, 24, 0, 0, 0}, 0, ""},
        // Rows are padded, the last one need not be.
        {"Image_NewFromByteData",
         {0, 9, 3, array, 4, 1, 0, 0, 0, 0, 0},
         10,
         "data has a length of 9; 10 is wanted (width 9, height 3, bytesPerLine 4, depth 1)"},
        {"Image_NewFromByteData",
         {0, 9, 3, array, 1, 8, 0, 0, 0, 0, 0},
         3,
         "data has a length of 2; 3 is wanted (width 9, height 3, bytesPerLine 1, depth 8)"},
        {"Image_NewFromByteData", {0, 9, 0, array, 4, 8, 0, 0, 0, 0, 0}, 0, ""},
        {"Image_NewFromByteData",
         {0, 1, 1, 0, 1, 8, array, 0, 0, 7, 0},
         7,
         "red has a length of 6; 7 is wanted (paletteSize 7)"},
        {"Image_NewFromByteData",
         {0, 1, 1, 0, 1, 8, 0, 0, array, 7, 0},
         7,
         "blue has a length of 6; 7 is wanted (paletteSize 7)"},
        {"Image_GetRGB",
         {image, 0, 0, 3, 2, 1, 10, array},
         14,
         "out has a length of 13; 14 is wanted (width 3, height 2, offset 1, scanSize 10)"},
        {"Image_GetRGB",
         {image, 0, 0, 3, 2, 10, minus(10), array},
         13,
         "out has a length of 12; 13 is wanted (width 3, height 2, offset 10, scanSize -10)"},
        {"Image_GetRGB", {image, 0, 0, 3, 0, 1, 10, array}, 0, ""},
        {"Image_GetRGB",
         {image, 0, 0, 0x10000, 0x10000, 0, 0x10000, array},
         0x7FFFFFFF,
         "out has a length of 2147483646; 4294967296 is wanted (width 65536, height 65536, "
         "offset 0, scanSize 65536)"},
    };
    for (const auto& row : rows) {
        std::string told = *row.told ? std::string(row.native) + ": " + row.told : "";
        SCOPED_TRACE(told);
        surroundings.arrayLength = row.wanted - (*row.told != 0);
        EXPECT_EQ(told, sentence(row.native, row.arguments));
        if (row.wanted == 0x7FFFFFFF) continue; // no array is as long as that
        surroundings.arrayLength = row.wanted;
        EXPECT_EQ("", sentence(row.native, row.arguments));
    }
    EXPECT_EQ(
        "Image_GetRGB: out is wanted from index -7 (width 3, height 2, offset 3, scanSize -10)",
        sentence("Image_GetRGB", {image, 0, 0, 3, 2, 3, minus(10), array}));
}

TEST_F(CheckingTest, what_is_lent_goes_with_its_owner_alone) {
    uint32_t shell = call("Shell_New", {display, 0});
    uint32_t bar = call("Scrollable_GetHorizontalBar", {shell});
    uint32_t font = call("Control_GetDefaultFont", {shell});
    EXPECT_EQ("Widget_Dispose: widget " + std::to_string(bar) +
                  ", a scrollable's bar, goes with what it belongs to and cannot be disposed of",
              sentence("Widget_Dispose", {bar}));
    end(shell);
    EXPECT_NE("", sentence("Adjustable_GetValue", {bar}));
    EXPECT_EQ("", sentence("Font_GetStyle", {font}));
    end(display);
    EXPECT_NE("", sentence("Font_GetStyle", {font}));
}

TEST_F(CheckingTest, another_scrollables_bar_is_misuse) {
    uint32_t shell = call("Shell_New", {display, 0});
    uint32_t bar = call("Scrollable_GetHorizontalBar", {shell});
    EXPECT_EQ("", sentence("Scrollable_SetAdjustableVisible", {shell, bar, 1}));
    EXPECT_EQ("Scrollable_SetAdjustableVisible: bar " + std::to_string(bar) +
                  " belongs to another scrollable",
              sentence("Scrollable_SetAdjustableVisible", {scrollable, bar, 1}));
}

TEST_F(CheckingTest, a_companion_librarys_control_is_found_where_a_control_is_wanted) {
    surroundings.companionsControlIs = companionsHandle;
    surroundings.companionsDisplay = display;
    EXPECT_EQ("", sentence("Control_GetBounds", {companionsHandle}));
    EXPECT_NE("", sentence("List_RemoveAll", {companionsHandle}));
    end(companionsHandle);
    EXPECT_EQ("", sentence("Control_GetBounds", {companionsHandle})) << "another has come there";
    surroundings.companionsControlIs = noHandle;
    end(companionsHandle);
    EXPECT_NE("", sentence("Control_GetBounds", {companionsHandle}));
}

TEST_F(CheckingTest, what_java_does_not_end_is_not_left) {
    uint32_t shell = call("Shell_New", {display, 0});
    call("Scrollable_GetHorizontalBar", {shell});
    call("Cursor_New", {0, 1});
    uint32_t image = call("Image_NewFromSize", {0, 8, 8, 0});
    end(shell);
    std::vector<uint32_t> left;
    for (const auto& one : handles.left()) left.push_back(one.object.handle);
    EXPECT_EQ((std::vector<uint32_t>{display, scrollable, image}), left);
}

TEST_F(CheckingTest, the_events_have_the_signatures_that_they_are_fired_with) {
    EXPECT_EQ(15u, checkedEvents().size());
    EXPECT_STREQ("(ICII)Z", findCheckedEvent(5)->signature);
    EXPECT_FALSE(findCheckedEvent(99));
}
