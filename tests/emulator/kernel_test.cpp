#include "ce.h"
#include "emulator.h"
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

class WaitTest : public testing::Test {
  protected:
    ~WaitTest() override {
        for (HANDLE event : events) CloseHandle(event);
    }
    static void expectRefused(DWORD result) {
        EXPECT_EQ(result, DWORD(WAIT_FAILED));
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
    }

    HANDLE events[2] = {CreateEventW(nullptr, TRUE, TRUE, nullptr),
                        CreateEventW(nullptr, TRUE, TRUE, nullptr)};
};

TEST_F(WaitTest, ends_with_the_first_of_several) {
    EXPECT_EQ(WaitForMultipleObjects(2, events, FALSE, 0), DWORD(WAIT_OBJECT_0));
    EXPECT_EQ(MsgWaitForMultipleObjectsEx(2, events, 0, 0x7F, MWMO_INPUTAVAILABLE),
              DWORD(WAIT_OBJECT_0));
}

TEST_F(WaitTest, is_counted_when_there_is_something_to_wait_for) {
    LONG before = Emulator_CountWaits();
    MsgWaitForMultipleObjectsEx(2, events, 1, 0x7F, MWMO_INPUTAVAILABLE);  // ends at once
    MsgWaitForMultipleObjectsEx(0, nullptr, 0, 0x7F, MWMO_INPUTAVAILABLE); // waits for nothing
    EXPECT_EQ(Emulator_CountWaits(), before);
    MsgWaitForMultipleObjectsEx(0, nullptr, 1, 0x7F, MWMO_INPUTAVAILABLE);
    EXPECT_EQ(Emulator_CountWaits(), before + 1);
}

TEST_F(WaitTest, is_never_for_all_of_several) {
    SetLastError(0);
    expectRefused(WaitForMultipleObjects(2, events, TRUE, 0));
    SetLastError(0);
    expectRefused(MsgWaitForMultipleObjectsEx(2, events, 0, 0x7F, MWMO_WAITALL));
}

TEST_F(WaitTest, is_for_the_devices_kinds_of_input_only) {
    for (DWORD kind = 1; kind; kind <<= 1) {
        SetLastError(0);
        DWORD result = MsgWaitForMultipleObjectsEx(2, events, 0, kind, 0);
        if (kind > QS_SENDMESSAGE) {
            expectRefused(result);
            continue;
        }
        EXPECT_EQ(result, DWORD(WAIT_OBJECT_0)) << kind;
    }
}

TEST(AllocationTest, takes_the_devices_flags_only) {
    for (UINT flag = 1; flag; flag <<= 1) {
        SetLastError(0);
        HLOCAL block = LocalAlloc(flag, 10);
        bool known = flag == LMEM_MOVEABLE || flag == LMEM_ZEROINIT;
        EXPECT_EQ(block != nullptr, known) << flag;
        EXPECT_EQ(GetLastError(), known ? ERROR_SUCCESS : DWORD(ERROR_INVALID_PARAMETER)) << flag;
        LocalFree(block);
    }
    EXPECT_EQ(LocalAlloc(LHND, 10), nullptr);
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
