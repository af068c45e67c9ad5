#include "ce.h"
#include "emulator.h"
#include <algorithm>
#include <gtest/gtest.h>

TEST(HeapTest, gives_a_pointer_even_when_movable_memory_is_asked_for) {
    HLOCAL block = LocalAlloc(LMEM_MOVEABLE, 100);
    EXPECT_EQ(LocalLock(block), block);
    EXPECT_EQ(LocalFree(block), nullptr);
}

TEST(HeapTest, clears_memory_when_asked) {
    auto* bytes = static_cast<char*>(LocalAlloc(LPTR, 1000));
    EXPECT_TRUE(std::all_of(bytes, bytes + 1000, [](char byte) { return byte == 0; }));
    LocalFree(bytes);
}

TEST(HeapTest, gives_no_zeros_when_not_asked) {
    auto* bytes = static_cast<char*>(LocalAlloc(LMEM_FIXED, 1000));
    EXPECT_TRUE(std::all_of(bytes, bytes + 1000, [](char byte) { return byte != 0; }));
    LocalFree(bytes);
}

TEST(HeapTest, counts_the_blocks_that_live) {
    LONG before = Emulator_CountHeapBlocks();
    HLOCAL first = LocalAlloc(LMEM_FIXED, 1);
    HLOCAL second = LocalAlloc(LPTR, 0);
    EXPECT_EQ(Emulator_CountHeapBlocks(), before + 2);
    LocalFree(first);
    EXPECT_EQ(Emulator_CountHeapBlocks(), before + 1);
    LocalFree(second);
    LocalFree(nullptr);
    EXPECT_EQ(Emulator_CountHeapBlocks(), before);
}

static int damageReports;
static LONG WINAPI countDamage(EXCEPTION_POINTERS* fault) {
    constexpr DWORD heapIsDamaged = 0xC0000374;
    if (fault->ExceptionRecord->ExceptionCode != heapIsDamaged) return EXCEPTION_CONTINUE_SEARCH;
    ++damageReports;
    return EXCEPTION_CONTINUE_EXECUTION;
}

TEST(HeapTest, tells_of_a_byte_that_was_written_beyond_a_block) {
    PVOID handler = AddVectoredExceptionHandler(TRUE, countDamage);
    for (int beyond : {0, 1}) {
        damageReports = 0;
        auto* bytes = static_cast<char*>(LocalAlloc(LMEM_FIXED, 5));
        memset(bytes, 0, 5 + beyond);
        LocalFree(bytes);
        EXPECT_EQ(damageReports, beyond);
    }
    RemoveVectoredExceptionHandler(handler);
}

TEST(HeapTest, counts_no_block_that_could_not_be_had) {
    LONG before = Emulator_CountHeapBlocks();
    for (SIZE_T tooMuch : {SIZE_T(0x7FFFFFF0), SIZE_T(0xFFFFFFFF)})
        EXPECT_EQ(LocalAlloc(LPTR, tooMuch), nullptr);
    EXPECT_EQ(Emulator_CountHeapBlocks(), before);
}

TEST(HeapTest, counts_the_texts_of_system_errors) {
    LONG before = Emulator_CountHeapBlocks();
    LPWSTR text = nullptr;
    EXPECT_NE(FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM, nullptr,
                             ERROR_ACCESS_DENIED, 0x400, reinterpret_cast<LPWSTR>(&text), 0,
                             nullptr),
              0u);
    EXPECT_EQ(Emulator_CountHeapBlocks(), before + 1);
    LocalFree(text);
    EXPECT_EQ(Emulator_CountHeapBlocks(), before);
}
