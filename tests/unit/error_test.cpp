#include "bridge/error.h"
#include "device.h"
#include "faults.h"
#include "leaks.h"
#include "variety.h"

using SetError = void(ErrorRecord*, LONG, const wchar_t*);
using GetError = LONG(const ErrorRecord*);
using Handle = void(JNIEnv*, const char*, ErrorRecord*);

static void setError(ErrorRecord* record, LONG code, const wchar_t* message) {
    entryPoint<SetError>("Win32Error_SetError")(record, code, message);
}

static void handle(JNIEnv* env, const char* function, ErrorRecord* record) {
    entryPoint<Handle>("WYX_ErrorHandler")(env, function, record);
}

class ErrorTest : public testing::Test {
  protected:
    TestVm vm;
    ErrorRecord record = {};
};

TEST_F(ErrorTest, the_code_of_no_record_is_none) {
    EXPECT_EQ(entryPoint<GetError>("WYX_GetError")(nullptr), 0);
}

TEST_F(ErrorTest, the_code_of_a_record_is_its_code) {
    record.code = -3;
    EXPECT_EQ(entryPoint<GetError>("WYX_GetError")(&record), -3);
}

TEST_F(ErrorTest, the_toolkits_own_code_keeps_its_literal_message) {
    static const wchar_t literal[] = L"Argument invalid, need parent";
    setError(&record, -3, literal);
    EXPECT_EQ(record.code, -3);
    EXPECT_EQ(record.message, literal);
    EXPECT_FALSE(record.ownsMessage);
}

TEST_F(ErrorTest, a_system_code_becomes_failure_with_the_systems_text_kept_exactly) {
    setError(&record, ERROR_ACCESS_DENIED, L"Unable");
    EXPECT_EQ(record.code, -3);
    EXPECT_TRUE(record.ownsMessage);
    EXPECT_EQ(record.message, L"Unable::" + systemText(ERROR_ACCESS_DENIED));
    handle(vm.env(), "X", &record);
}

TEST_F(ErrorTest, both_memory_codes_of_the_system_become_out_of_memory) {
    for (LONG code : {ERROR_NOT_ENOUGH_MEMORY, ERROR_OUTOFMEMORY}) {
        setError(&record, code, L"Unable");
        EXPECT_EQ(record.code, -4);
        handle(vm.env(), "X", &record);
    }
}

TEST_F(ErrorTest, a_code_that_the_system_does_not_know_says_so) {
    setError(&record, 0x12345678, L"Unable");
    EXPECT_EQ(record.code, -3);
    EXPECT_STREQ(record.message, L"Unable::FormatMessage failed");
    handle(vm.env(), "X", &record);
}

TEST_F(ErrorTest, without_memory_for_the_text_the_prefix_is_told) {
    Faults faults;
    faults.fail("LocalAlloc", 1, ERROR_NOT_ENOUGH_MEMORY);
    setError(&record, ERROR_ACCESS_DENIED, L"Unable");
    EXPECT_EQ(record.code, -3);
    EXPECT_STREQ(record.message, L"Unable");
    EXPECT_FALSE(record.ownsMessage);
}

TEST_F(ErrorTest, without_the_functions_name_nothing_is_told_and_the_message_is_freed) {
    NoLeaks noLeaks;
    setError(&record, ERROR_ACCESS_DENIED, L"Unable");
    EXPECT_TRUE(record.ownsMessage);
    handle(vm.env(), nullptr, &record);
    EXPECT_TRUE(vm.reports.empty());
    EXPECT_EQ(vm.countCalls("NewStringUTF"), 0);
    EXPECT_EQ(vm.countCalls("GetObjectClass"), 0);
}

TEST_F(ErrorTest, the_report_carries_name_code_and_message) {
    setError(&record, -4, L"Not enough memory to allocate font");
    handle(vm.env(), "Font_New", &record);
    ASSERT_EQ(vm.reports.size(), 1u);
    EXPECT_EQ(vm.reports[0].function, "Font_New");
    EXPECT_EQ(vm.reports[0].code, -4);
    EXPECT_EQ(vm.reports[0].message, u"Not enough memory to allocate font");
}

TEST_F(ErrorTest, an_error_without_message_is_reported_with_a_null_message) {
    record.code = -1;
    handle(vm.env(), "Device_CopyArea", &record);
    ASSERT_EQ(vm.reports.size(), 1u);
    EXPECT_EQ(vm.reports[0].code, -1);
    EXPECT_FALSE(vm.reports[0].hasMessage);
}

TEST_F(ErrorTest, a_report_calls_the_vm_in_a_fixed_order) {
    record = {-3, L"message", FALSE};
    handle(vm.env(), "X", &record);
    EXPECT_EQ(vm.calls, (Events{"ExceptionCheck", "FindClass", "GetStaticFieldID",
                                "GetStaticObjectField", "NewStringUTF", "NewString",
                                "GetObjectClass", "GetMethodID", "CallVoidMethodA"}));
}

TEST_F(ErrorTest, an_owned_message_is_freed_once_whether_or_not_the_report_arrives) {
    for (const char* failing : {"", "FindClass", "GetStaticFieldID", "NewStringUTF", "NewString",
                                "GetObjectClass", "GetMethodID"}) {
        NoLeaks noLeaks;
        setError(&record, ERROR_ACCESS_DENIED, L"Unable");
        if (*failing) vm.failCall(failing);
        handle(vm.env(), "X", &record);
        vm.clearException();
    }
    EXPECT_EQ(vm.reports.size(), 1u);
}

TEST_F(ErrorTest, an_owned_message_is_freed_when_there_is_no_handler) {
    NoLeaks noLeaks;
    vm.hasErrorHandler = false;
    setError(&record, ERROR_ACCESS_DENIED, L"Unable");
    handle(vm.env(), "X", &record);
}

TEST_F(ErrorTest, a_later_error_takes_the_place_of_an_earlier_one_and_frees_its_message) {
    const struct {
        LONG first, second;
        const wchar_t* told;
    } rows[] = {
        {ERROR_ACCESS_DENIED, 0x12345678, L"second::FormatMessage failed"},
        {ERROR_ACCESS_DENIED, -3, L"second"},
        {-4, 0x12345678, L"second::FormatMessage failed"},
        {-4, -3, L"second"},
    };
    for (const auto& row : rows) {
        NoLeaks noLeaks;
        setError(&record, row.first, L"first");
        setError(&record, row.second, L"second");
        EXPECT_EQ(record.code, -3);
        EXPECT_STREQ(record.message, row.told);
        handle(vm.env(), "X", &record);
    }
}

TEST_F(ErrorTest, a_record_that_was_reported_can_be_filled_again) {
    NoLeaks noLeaks;
    for (int i = 0; i < 3; ++i) {
        setError(&record, ERROR_ACCESS_DENIED, L"Unable");
        handle(vm.env(), "X", &record);
    }
    EXPECT_EQ(vm.reports.size(), 3u);
}

TEST_F(ErrorTest, without_a_record_nothing_is_made) {
    NoLeaks noLeaks;
    setError(nullptr, ERROR_ACCESS_DENIED, L"Unable");
    setError(nullptr, -3, L"Unable");
}

TEST_F(ErrorTest, a_pending_exception_is_left_to_java_instead_of_the_report) {
    NoLeaks noLeaks;
    setError(&record, ERROR_ACCESS_DENIED, L"Unable");
    vm.pendingException = "java/lang/IllegalStateException";
    handle(vm.env(), "X", &record);
    EXPECT_EQ(vm.calls, Events{"ExceptionCheck"});
    EXPECT_EQ(vm.pendingException, "java/lang/IllegalStateException");
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ErrorTest, a_missing_handler_is_fatal) {
    vm.hasErrorHandler = false;
    record = {-3, L"message", FALSE};
    handle(vm.env(), "X", &record);
    EXPECT_EQ(vm.fatalError, "Error occured and no error handler has been set");
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ErrorTest, what_fails_on_the_way_drops_the_report_and_leaves_the_exception) {
    for (const char* failing : {"FindClass", "GetStaticFieldID", "NewStringUTF", "NewString",
                                "GetObjectClass", "GetMethodID"}) {
        record = {-3, L"message", FALSE};
        vm.failCall(failing);
        handle(vm.env(), "X", &record);
        EXPECT_TRUE(vm.reports.empty()) << failing;
        EXPECT_TRUE(vm.fatalError.empty()) << failing;
        vm.clearException();
    }
}
