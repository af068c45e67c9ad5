#include "device.h"
#include "display/callbacks.h"
#include "faults.h"

using ToString = jstring(JNIEnv*, const wchar_t*);
using ToRect = jintArray(JNIEnv*, jint, jint, jint, jint);
using ToPoint = jintArray(JNIEnv*, jint, jint);
using GetEnv = jint(CallbackLookup*, JNIEnv**, jint*);

class JavaValuesTest : public testing::Test {
  protected:
    TestVm vm;
};

TEST_F(JavaValuesTest, no_text_is_null_and_the_vm_is_not_asked) {
    EXPECT_EQ(entryPoint<ToString>("convertToJavaString")(vm.env(), nullptr), nullptr);
    EXPECT_TRUE(vm.calls.empty());
}

TEST_F(JavaValuesTest, an_empty_text_is_a_string_of_length_0) {
    EXPECT_EQ(vm.text(entryPoint<ToString>("convertToJavaString")(vm.env(), L"")), u"");
}

TEST_F(JavaValuesTest, a_text_keeps_its_surrogates) {
    EXPECT_EQ(vm.text(entryPoint<ToString>("convertToJavaString")(vm.env(), L"a\xD83D\xDE00")),
              u"a\xD83D\xDE00");
}

TEST_F(JavaValuesTest, a_string_that_cannot_be_made_is_null_with_the_exception_pending) {
    vm.failCall("NewString");
    EXPECT_EQ(entryPoint<ToString>("convertToJavaString")(vm.env(), L"x"), nullptr);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    vm.clearException();
}

TEST_F(JavaValuesTest, a_rectangle_is_written_element_by_element_in_order) {
    jintArray array = entryPoint<ToRect>("createJavaRect")(vm.env(), 1, 2, 3, 4);
    EXPECT_EQ(vm.ints(array), (std::vector<jint>{1, 2, 3, 4}));
    EXPECT_EQ(vm.calls, (Events{"NewIntArray", "ExceptionCheck", "SetIntArrayRegion[0+1]",
                                "SetIntArrayRegion[1+1]", "SetIntArrayRegion[2+1]",
                                "SetIntArrayRegion[3+1]"}));
}

TEST_F(JavaValuesTest, a_point_is_x_then_y) {
    EXPECT_EQ(vm.ints(entryPoint<ToPoint>("createJavaPoint")(vm.env(), 7, -8)),
              (std::vector<jint>{7, -8}));
}

TEST_F(JavaValuesTest, an_array_that_cannot_be_made_is_null_with_the_exception_pending) {
    vm.failCall("NewIntArray");
    EXPECT_EQ(entryPoint<ToRect>("createJavaRect")(vm.env(), 1, 2, 3, 4), nullptr);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    vm.clearException();
}

TEST_F(JavaValuesTest, a_thread_that_the_vm_knows_is_not_attached_again) {
    CallbackLookup lookup = {nullptr, vm.vm(), nullptr};
    JNIEnv* env = nullptr;
    jint attached = 7;
    EXPECT_EQ(entryPoint<GetEnv>("getEnv")(&lookup, &env, &attached), JNI_OK);
    EXPECT_EQ(env, vm.env());
    EXPECT_EQ(attached, 0);
    EXPECT_EQ(vm.attachments, 0);
}

TEST_F(JavaValuesTest, a_thread_that_the_vm_does_not_know_is_attached) {
    vm.attachedThreads.clear();
    CallbackLookup lookup = {nullptr, vm.vm(), nullptr};
    JNIEnv* env = nullptr;
    jint attached = 0;
    EXPECT_EQ(entryPoint<GetEnv>("getEnv")(&lookup, &env, &attached), JNI_OK);
    EXPECT_EQ(env, vm.env());
    EXPECT_EQ(attached, 1);
    EXPECT_EQ(vm.attachments, 1);
}

TEST_F(JavaValuesTest, a_refusal_to_attach_is_passed_on) {
    vm.attachedThreads.clear();
    vm.refusesToAttach = true;
    CallbackLookup lookup = {nullptr, vm.vm(), nullptr};
    JNIEnv* env = nullptr;
    jint attached = 0;
    EXPECT_EQ(entryPoint<GetEnv>("getEnv")(&lookup, &env, &attached), JNI_ERR);
}

TEST_F(JavaValuesTest, a_string_that_there_is_no_memory_for_is_told_by_an_exception) {
    Faults faults;
    faults.fail("LocalAlloc");
    OS::Clipboard_SetText(vm.env(), vm.newString(u"text"));
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    EXPECT_EQ(vm.pendingMessage, "Failed to allocate space for string");
    EXPECT_EQ(faults.countCalls("OpenClipboard"), 0);
    EXPECT_TRUE(vm.reports.empty());
}
