#include "ce.h"
#include <gtest/gtest.h>

class EventTest : public testing::Test {
  protected:
    ~EventTest() override { CloseHandle(event); }
    bool isSet() { return WaitForSingleObject(event, 0) == WAIT_OBJECT_0; }

    HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
};

TEST_F(EventTest, is_set_and_reset) {
    EXPECT_TRUE(EventModify(event, EVENT_SET));
    EXPECT_TRUE(isSet());
    EXPECT_TRUE(EventModify(event, EVENT_RESET));
    EXPECT_FALSE(isSet());
}

TEST_F(EventTest, is_not_set_after_a_pulse) {
    EventModify(event, EVENT_SET);
    EXPECT_TRUE(EventModify(event, EVENT_PULSE));
    EXPECT_FALSE(isSet());
}

TEST_F(EventTest, refuses_another_action) {
    SetLastError(0);
    EXPECT_FALSE(EventModify(event, 4));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
    EXPECT_FALSE(isSet());
}

TEST(ExportTest, is_found_by_its_wide_name) {
    HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    EXPECT_EQ(GetProcAddressW(kernel, L"GetTickCount"), GetProcAddress(kernel, "GetTickCount"));
    EXPECT_NE(GetProcAddressW(kernel, L"GetTickCount"), nullptr);
}

TEST(ExportTest, is_null_when_there_is_none) {
    EXPECT_EQ(GetProcAddressW(GetModuleHandleW(L"kernel32.dll"), L"NoSuchCall"), nullptr);
    EXPECT_NE(GetLastError(), 0u);
}

static std::vector<std::string> exportedNames(HMODULE module) {
    auto* image = reinterpret_cast<const char*>(module);
    auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
    auto* table = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
        image + headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    auto* addresses = reinterpret_cast<const DWORD*>(image + table->AddressOfNames);
    std::vector<std::string> names;
    for (DWORD i = 0; i < table->NumberOfNames; ++i) names.push_back(image + addresses[i]);
    return names;
}

TEST(ExportTest, of_the_core_system_leads_to_a_function_each) {
    HMODULE coredll = GetModuleHandleW(L"coredll.dll");
    std::vector<std::string> names = exportedNames(coredll);
    EXPECT_GT(names.size(), 150u);
    for (const std::string& name : names)
        EXPECT_TRUE(GetProcAddress(coredll, name.c_str())) << name;
}
