// The tests' natives take what their Java classes declare, and nothing that C++ would make of it.

#include "natives.h"
#include <gtest/gtest.h>

template <class... Arguments, class Signature>
static constexpr bool takes(const Native<Signature>&) {
    return std::is_invocable_v<Native<Signature>, JNIEnv*, Arguments...>;
}

enum Number : jint { one };
enum class Opaque : jint { one };

TEST(NativeTypesTest, as_many_arguments_are_taken_as_are_declared) {
    EXPECT_TRUE((takes<jint, jint>(OS::Shell_New)));
    EXPECT_FALSE((takes<jint>(OS::Shell_New)));
    EXPECT_FALSE((takes<jint, jint, jint>(OS::Shell_New)));
    EXPECT_TRUE(takes<>(OS::Display_New));
    EXPECT_FALSE(takes<jint>(OS::Display_New));
}

TEST(NativeTypesTest, an_int_is_a_number_of_a_word) {
    EXPECT_TRUE(takes<int>(OS::Display_Wake));
    EXPECT_TRUE(takes<DWORD>(OS::Display_Wake));
    EXPECT_TRUE(takes<char>(OS::Display_Wake));
    EXPECT_TRUE(takes<Number>(OS::Display_Wake));
    EXPECT_FALSE(takes<Opaque>(OS::Display_Wake));
    EXPECT_FALSE(takes<bool>(OS::Display_Wake));
    EXPECT_FALSE(takes<jboolean>(OS::Display_Wake));
    EXPECT_FALSE(takes<jlong>(OS::Display_Wake));
    EXPECT_FALSE(takes<float>(OS::Display_Wake));
    EXPECT_FALSE(takes<void*>(OS::Display_Wake));
    EXPECT_FALSE(takes<std::nullptr_t>(OS::Display_Wake));
}

TEST(NativeTypesTest, a_boolean_is_a_truth) {
    EXPECT_TRUE((takes<jint, bool>(OS::Control_SetVisible)));
    EXPECT_TRUE((takes<jint, jboolean>(OS::Control_SetVisible)));
    EXPECT_FALSE((takes<jint, jint>(OS::Control_SetVisible)));
    EXPECT_FALSE((takes<jint, jchar>(OS::Control_SetVisible)));
    EXPECT_FALSE((takes<jint, void*>(OS::Control_SetVisible)));
}

TEST(NativeTypesTest, a_char_is_a_character) {
    EXPECT_TRUE((takes<jint, jint, jint, jchar>(OS::Display_PostKeyEvent)));
    EXPECT_TRUE((takes<jint, jint, jint, char16_t>(OS::Display_PostKeyEvent)));
    EXPECT_FALSE((takes<jint, jint, jint, jint>(OS::Display_PostKeyEvent)));
    EXPECT_FALSE((takes<jint, jint, jint, char>(OS::Display_PostKeyEvent)));
    EXPECT_FALSE((takes<jint, jint, jint, bool>(OS::Display_PostKeyEvent)));
}

TEST(NativeTypesTest, a_reference_is_one_to_the_declared_class_or_null) {
    EXPECT_TRUE((takes<jint, jstring>(OS::Button_SetLabel)));
    EXPECT_TRUE((takes<jint, std::nullptr_t>(OS::Button_SetLabel)));
    EXPECT_FALSE((takes<jint, jobject>(OS::Button_SetLabel)));
    EXPECT_FALSE((takes<jint, jintArray>(OS::Button_SetLabel)));
    EXPECT_FALSE((takes<jint, const char16_t*>(OS::Button_SetLabel)));
    EXPECT_FALSE((takes<jint, jint>(OS::Button_SetLabel)));
    EXPECT_TRUE((takes<jint, jstring>(OS::Widget_SetData)));
    EXPECT_TRUE((takes<jint, jobject>(OS::Widget_SetData)));
}
