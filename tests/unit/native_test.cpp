// The convention of all natives, tried with operations made for it.

#include "bridge/natives/native.h"
#include "display/widget.h"
#include "graphics/graphics.h"
#include "leaks.h"
#include "test_vm.h"
#include <algorithm>
#include <gtest/gtest.h>

using Events = std::vector<std::string>;

static std::wstring seenText;
static bool sawNull;
static int operations;

static void reset() {
    seenText.clear();
    sawNull = false;
    operations = 0;
}

static void takeText(const wchar_t* text, ErrorRecord*) {
    ++operations;
    sawNull = text == nullptr;
    if (text) seenText = text;
}

static void takeTwoTexts(const wchar_t* first, const wchar_t* second, ErrorRecord*) {
    ++operations;
    seenText = std::wstring(first) + L"|" + second;
}

static jint failWithEverything(jint, const wchar_t*, IntArguments, ErrorRecord* error) {
    Error_Set(error, errorFailed, L"it failed", FALSE);
    return 99;
}

static jint sumAndDouble(IntArguments ints, ErrorRecord*) {
    jint sum = 0;
    sawNull = ints.values == nullptr;
    for (jint i = 0; i < ints.count; ++i) {
        sum += ints.values[i];
        ints.values[i] *= 2;
    }
    return sum;
}

static jint sumBytes(ByteArguments bytes, ErrorRecord*) {
    jint sum = 0;
    for (jint i = 0; i < bytes.count; ++i) sum += bytes.values[i];
    return sum;
}

static jint sumOfTwo(IntArguments ints, ByteArguments bytes, ErrorRecord* error) {
    ++operations;
    return sumAndDouble(ints, error) + sumBytes(bytes, error);
}

static bool negate(bool flag, ErrorRecord*) { return !flag; }
static ErrorRecord* sameHandle(ErrorRecord* handle, ErrorRecord*) { return handle; }
static jint characterCode(jchar character, ErrorRecord*) { return character; }
static Bounds someBounds(ErrorRecord*) { return {1, 2, 3, 4}; }
static Insets someInsets(ErrorRecord*) { return {5, 6, 7, 8}; }
static ColorMasks someMasks(ErrorRecord*) { return {9, 10, 11, 12}; }
static PixelPair somePoint(ErrorRecord*) { return {13, 14}; }

static wchar_t* copyOf(const wchar_t* text) {
    wchar_t* copy = allocateArray<wchar_t>(wcslen(text) + 1);
    return wcscpy(copy, text);
}

static NativeString ownedText(bool fails, ErrorRecord* error) {
    if (fails) Error_SetCode(error, errorFailed);
    return {copyOf(L"owned"), true};
}

static NativeString noText(ErrorRecord*) { return {nullptr, false}; }

static const wchar_t* const keptTexts[] = {L"kept", nullptr};
static NativeStringList keptList(ErrorRecord*) { return {const_cast<wchar_t**>(keptTexts), false}; }

static NativeIntArray keptInts(ErrorRecord*) {
    static jint values[] = {3, 4};
    return {values, 2, false};
}

static NativeByteArray keptBytes(ErrorRecord*) {
    static jbyte values[] = {5, 6};
    return {values, 2, false};
}

static NativeString answerTo(const wchar_t*, ErrorRecord*) {
    ++operations;
    return {L"answer", false};
}

static jint textAndInts(const wchar_t*, IntArguments ints, ErrorRecord*) {
    ++operations;
    return ints.count;
}

static NativeStringList ownedList(jint count, bool fails, ErrorRecord* error) {
    if (fails) Error_SetCode(error, errorFailed);
    wchar_t** list = allocateArray<wchar_t*>(count + 1);
    for (jint i = 0; i < count; ++i) list[i] = copyOf(i ? L"more" : L"first");
    return {list, true};
}

static NativeStringList absentList(ErrorRecord*) { return {nullptr, true}; }

static NativeIntArray ownedInts(jint count, bool fails, ErrorRecord* error) {
    if (fails) Error_SetCode(error, errorFailed);
    jint* values = allocateArray<jint>(count + 1);
    for (jint i = 0; i < count; ++i) values[i] = i * i;
    return {values, count, true};
}

static TestVm* hearing;
static int disposals;

static int failingDisposal(WidgetRecord*, ErrorRecord* error) {
    ++disposals;
    EXPECT_TRUE(hearing->reports.empty()) << "Java hears after it";
    Win32Error_SetError(error, ERROR_ACCESS_DENIED, L"nobody hears this");
    return 0;
}

static WidgetRecord* madeAndFailed(bool isMade, ErrorRecord* error) {
    Error_Set(error, errorFailed, L"it failed", FALSE);
    if (!isMade) return nullptr;
    auto* widget = allocate<WidgetRecord>();
    widget->dispose = failingDisposal;
    return widget;
}

static GraphicsRecord* graphicsAndFailed(bool isMade, ErrorRecord* error) {
    Error_Set(error, errorFailed, L"it failed", FALSE);
    return isMade ? allocate<GraphicsRecord>() : nullptr;
}

class NativeTest : public testing::Test {
  protected:
    template <auto Operation, class... Java>
    auto run(Java... java) {
        NATIVE_DESCRIPTION(description, Operation, "Java_com_nuvik_wyx_k4tr_OS_Class_1Method");
        return native::call<Operation>(vm.env(), description, java...);
    }
    NativeTest() { reset(); }
    ~NativeTest() override {
        // The library's objects are part of this program, so the device's heap is counted as it is.
        vm.clearException();
        EXPECT_EQ(countHeapBlocks(), blocks);
    }
    long blocks = countHeapBlocks();
    TestVm vm;
};

TEST_F(NativeTest, a_null_string_is_a_null_pointer) {
    run<takeText>(static_cast<jstring>(nullptr));
    EXPECT_TRUE(sawNull);
    EXPECT_TRUE(vm.calls.empty());
}

TEST_F(NativeTest, a_string_is_terminated_although_the_vms_is_not) {
    run<takeText>(vm.newString(u"exact"));
    EXPECT_EQ(seenText, L"exact");
    EXPECT_EQ(vm.calls, (Events{"GetStringChars", "ExceptionCheck", "GetStringLength",
                                "ReleaseStringChars"}));
}

TEST_F(NativeTest, an_exception_while_taking_a_string_ends_the_native) {
    vm.failCall("GetStringChars");
    run<takeText>(vm.newString(u"text"));
    EXPECT_EQ(operations, 0);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(NativeTest, an_exception_at_the_second_string_releases_the_first_and_takes_no_more) {
    vm.failCall("GetStringChars", 2);
    run<takeTwoTexts>(vm.newString(u"a"), vm.newString(u"b"));
    EXPECT_EQ(operations, 0);
    EXPECT_EQ(vm.unreleased, 0);
}

TEST_F(NativeTest, after_an_argument_that_was_not_got_the_vm_is_asked_for_none) {
    vm.failCall("GetStringChars");
    run<takeTwoTexts>(vm.newString(u"a"), vm.newString(u"b"));
    EXPECT_EQ(vm.calls, (Events{"GetStringChars", "ExceptionCheck"}));
    vm.clearException();
    vm.calls.clear();
    vm.failCall("GetIntArrayElements");
    EXPECT_EQ(run<sumOfTwo>(vm.newInts({1}), vm.newBytes({2})), 0);
    EXPECT_EQ(vm.calls, (Events{"GetIntArrayElements", "ExceptionCheck"}));
    EXPECT_EQ(operations, 0);
}

TEST_F(NativeTest, strings_reach_the_operation_in_order) {
    run<takeTwoTexts>(vm.newString(u"a"), vm.newString(u"b"));
    EXPECT_EQ(seenText, L"a|b");
}

TEST_F(NativeTest, an_error_is_reported_once_after_the_arguments_are_released) {
    jint result = run<failWithEverything>(jint(1), vm.newString(u"x"), vm.newInts({1}));
    EXPECT_EQ(result, 0);
    ASSERT_EQ(vm.reports.size(), 1u);
    EXPECT_EQ(vm.reports[0].function, "Class_Method");
    EXPECT_EQ(vm.reports[0].message, u"it failed");
    auto at = [&](const char* name) { return std::find(vm.calls.begin(), vm.calls.end(), name); };
    EXPECT_LT(at("ReleaseStringChars"), at("FindClass"));
    EXPECT_LT(at("ReleaseIntArrayElements"), at("FindClass"));
}

TEST_F(NativeTest, changes_to_an_int_array_are_seen_by_java) {
    jintArray array = vm.newInts({1, 2, 3});
    EXPECT_EQ(run<sumAndDouble>(array), 6);
    EXPECT_EQ(vm.ints(array), (std::vector<jint>{2, 4, 6}));
}

TEST_F(NativeTest, a_null_array_is_a_null_pointer_of_length_0) {
    EXPECT_EQ(run<sumAndDouble>(static_cast<jintArray>(nullptr)), 0);
    EXPECT_TRUE(sawNull);
}

TEST_F(NativeTest, an_exception_while_taking_an_array_ends_the_native) {
    vm.failCall("GetIntArrayElements");
    EXPECT_EQ(run<sumAndDouble>(vm.newInts({1})), 0);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    vm.clearException();
    vm.failCall("GetByteArrayElements");
    EXPECT_EQ(run<sumBytes>(vm.newBytes({1})), 0);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
}

TEST_F(NativeTest, byte_arrays_are_taken) { EXPECT_EQ(run<sumBytes>(vm.newBytes({10, -3})), 7); }

TEST_F(NativeTest, plain_values_pass) {
    EXPECT_EQ(jboolean(run<negate>(jboolean(JNI_TRUE))), JNI_FALSE);
    EXPECT_EQ(jboolean(run<negate>(jboolean(JNI_FALSE))), JNI_TRUE);
    EXPECT_EQ(run<sameHandle>(jint(0x1234)), 0x1234);
    EXPECT_EQ(run<characterCode>(jchar(0xFFFF)), 0xFFFF);
}

TEST_F(NativeTest, rectangles_insets_masks_and_points_become_int_arrays) {
    EXPECT_EQ(vm.ints(run<someBounds>()), (std::vector<jint>{1, 2, 3, 4}));
    EXPECT_EQ(vm.ints(run<someInsets>()), (std::vector<jint>{5, 6, 7, 8}));
    EXPECT_EQ(vm.ints(run<someMasks>()), (std::vector<jint>{9, 10, 11, 12}));
    EXPECT_EQ(vm.ints(run<somePoint>()), (std::vector<jint>{13, 14}));
}

TEST_F(NativeTest, an_owned_string_is_converted_and_freed) {
    EXPECT_EQ(vm.text(run<ownedText>(jboolean(JNI_FALSE))), u"owned");
}

TEST_F(NativeTest, an_owned_string_of_a_failed_operation_is_freed_and_not_seen) {
    EXPECT_EQ(run<ownedText>(jboolean(JNI_TRUE)), nullptr);
}

TEST_F(NativeTest, no_string_is_null) { EXPECT_EQ(run<noText>(), nullptr); }

TEST_F(NativeTest, a_string_list_is_converted_and_freed) {
    EXPECT_EQ(vm.texts(run<ownedList>(jint(3), jboolean(JNI_FALSE))),
              (std::vector<std::u16string>{u"first", u"more", u"more"}));
}

TEST_F(NativeTest, an_empty_string_list_is_an_array_of_length_0) {
    jobjectArray array = run<ownedList>(jint(0), jboolean(JNI_FALSE));
    ASSERT_NE(array, nullptr);
    EXPECT_TRUE(vm.texts(array).empty());
}

TEST_F(NativeTest, an_absent_string_list_is_an_array_of_length_0) {
    jobjectArray array = run<absentList>();
    ASSERT_NE(array, nullptr);
    EXPECT_TRUE(vm.texts(array).empty());
}

TEST_F(NativeTest, a_string_list_of_a_failed_operation_is_freed) {
    EXPECT_EQ(run<ownedList>(jint(2), jboolean(JNI_TRUE)), nullptr);
}

TEST_F(NativeTest, a_string_list_that_cannot_be_converted_is_freed) {
    for (const char* failing : {"FindClass", "NewObjectArray", "PushLocalFrame", "NewString"}) {
        vm.failCall(failing);
        EXPECT_EQ(run<ownedList>(jint(2), jboolean(JNI_FALSE)), nullptr) << failing;
        EXPECT_NE(vm.pendingException, "") << failing;
        vm.clearException();
    }
}

TEST_F(NativeTest, a_string_list_is_converted_in_a_frame_of_its_own) {
    run<ownedList>(jint(1), jboolean(JNI_FALSE));
    EXPECT_EQ(vm.calls, (Events{"FindClass", "NewObjectArray", "ExceptionCheck", "PushLocalFrame",
                                "NewString", "SetObjectArrayElement", "PopLocalFrame"}));
}

TEST_F(NativeTest, an_int_array_is_written_at_once_and_freed) {
    jintArray array = run<ownedInts>(jint(4), jboolean(JNI_FALSE));
    EXPECT_EQ(vm.ints(array), (std::vector<jint>{0, 1, 4, 9}));
    EXPECT_EQ(vm.calls, (Events{"NewIntArray", "SetIntArrayRegion[0+4]"}));
}

TEST_F(NativeTest, a_count_of_0_is_an_empty_array) {
    jintArray array = run<ownedInts>(jint(0), jboolean(JNI_FALSE));
    ASSERT_NE(array, nullptr);
    EXPECT_TRUE(vm.ints(array).empty());
    EXPECT_EQ(vm.calls, Events{"NewIntArray"});
}

TEST_F(NativeTest, an_int_array_of_a_failed_operation_is_freed) {
    EXPECT_EQ(run<ownedInts>(jint(4), jboolean(JNI_TRUE)), nullptr);
}

TEST_F(NativeTest, a_widget_that_java_never_learns_of_is_disposed_of) {
    hearing = &vm;
    for (bool isMade : {true, false}) {
        disposals = 0;
        EXPECT_EQ(run<madeAndFailed>(jboolean(isMade)), 0);
        EXPECT_EQ(disposals, isMade);
        ASSERT_EQ(vm.reports.size(), 1u);
        EXPECT_EQ(vm.reports[0].message, u"it failed");
        vm.reports.clear();
    }
}

TEST_F(NativeTest, a_graphics_context_that_java_never_learns_of_is_disposed_of) {
    for (bool isMade : {true, false}) {
        EXPECT_EQ(run<graphicsAndFailed>(jboolean(isMade)), 0);
        EXPECT_EQ(countHeapBlocks(), blocks) << isMade;
        ASSERT_EQ(vm.reports.size(), 1u);
        vm.reports.clear();
    }
}

TEST_F(NativeTest, a_widget_with_nothing_to_end_is_only_freed) {
    auto* widget = allocate<WidgetRecord>();
    ErrorRecord error = {};
    Widget_Dispose(widget, &error);
    EXPECT_EQ(error.code, 0);
}

TEST_F(NativeTest, an_error_is_told_by_a_name_with_all_its_digits) {
    NATIVE_DESCRIPTION(description, failWithEverything,
                       "Java_com_nuvik_wyx_k4tr_OS_Class1_1Method21");
    native::call<failWithEverything>(vm.env(), description, jint(1), vm.newString(u"x"),
                                     vm.newInts({1}));
    ASSERT_EQ(vm.reports.size(), 1u);
    EXPECT_EQ(vm.reports[0].function, "Class1_Method21");
}

TEST_F(NativeTest, what_the_operation_keeps_is_converted_and_left_alone) {
    EXPECT_EQ(vm.texts(run<keptList>()), (std::vector<std::u16string>{u"kept"}));
    EXPECT_EQ(vm.ints(run<keptInts>()), (std::vector<jint>{3, 4}));
    EXPECT_EQ(vm.bytes(run<keptBytes>()), (std::vector<jbyte>{5, 6}));
}

TEST_F(NativeTest, an_exception_while_taking_what_a_text_comes_of_gives_none) {
    EXPECT_EQ(vm.text(run<answerTo>(vm.newString(u"text"))), u"answer");
    operations = 0;
    vm.failCall("GetStringChars");
    EXPECT_EQ(run<answerTo>(vm.newString(u"text")), nullptr);
    EXPECT_EQ(operations, 0);
    EXPECT_EQ(vm.countCalls("NewString"), 1);
}

TEST_F(NativeTest, no_array_is_taken_after_a_string_that_was_not) {
    vm.failCall("GetStringChars");
    EXPECT_EQ(run<textAndInts>(vm.newString(u"text"), vm.newInts({1})), 0);
    EXPECT_EQ(operations, 0);
    EXPECT_EQ(vm.countCalls("GetIntArrayElements"), 0);
}

TEST_F(NativeTest, a_string_list_gives_its_elements_to_be_looked_at) {
    for (const wchar_t* const* list : {keptTexts, static_cast<decltype(&keptTexts[0])>(nullptr)}) {
        BYTE mustFree = 9;
        EXPECT_EQ(stringListGet(list, 0, &mustFree), list ? keptTexts[0] : nullptr);
        EXPECT_EQ(mustFree, 0);
    }
}

TEST_F(NativeTest, an_error_that_nobody_asked_for_is_set_nowhere) {
    EXPECT_EQ(Error_Set(nullptr, errorFailed, L"text", FALSE), nullptr);
}

TEST_F(NativeTest, an_int_array_that_cannot_be_made_is_null_and_its_buffer_freed) {
    vm.failCall("NewIntArray");
    EXPECT_EQ(run<ownedInts>(jint(4), jboolean(JNI_FALSE)), nullptr);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
}
