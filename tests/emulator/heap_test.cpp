#include "ce.h"
#include "emulator.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

TEST(HeapTest, gives_a_pointer_even_when_movable_memory_is_asked_for) {
    auto* bytes = static_cast<char*>(LocalAlloc(LMEM_MOVEABLE, 100));
    EXPECT_EQ(bytes[0], bytes[99]) << "the pattern of fresh memory";
    EXPECT_EQ(LocalFree(bytes), nullptr);
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
    if (Emulator_GetVariety()->hasNoSystemTexts) GTEST_SKIP() << "this device has none";
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

// Blocks on pages of their own. This program runs a second time with the setting that asks for
// them.
class HeapOfPagesTest : public testing::Test {
  protected:
    void SetUp() override {
        const char* heap = getenv("ZEMVOLT_HEAP");
        if (!heap || strcmp(heap, "pages") != 0) GTEST_SKIP() << "the heap is the usual one";
    }
    static bool canTouch(const void* address) {
        MEMORY_BASIC_INFORMATION memory;
        VirtualQuery(address, &memory, sizeof(memory));
        return memory.State == MEM_COMMIT && memory.Protect == PAGE_READWRITE;
    }
};

TEST_F(HeapOfPagesTest, what_lies_behind_a_block_of_words_cannot_be_touched) {
    for (SIZE_T size : {4, 8, 100, 4096, 4100, 100000}) {
        auto* bytes = static_cast<char*>(LocalAlloc(LMEM_FIXED, size));
        memset(bytes, 0, size);
        EXPECT_TRUE(canTouch(bytes + size - 1)) << size;
        EXPECT_FALSE(canTouch(bytes + size)) << size;
        LocalFree(bytes);
    }
}

TEST_F(HeapOfPagesTest, blocks_begin_on_a_word) {
    for (SIZE_T size = 0; size < 10; ++size) {
        auto* bytes = static_cast<char*>(LocalAlloc(LMEM_FIXED, size));
        EXPECT_EQ(reinterpret_cast<uintptr_t>(bytes) % 4, 0u);
        EXPECT_FALSE(canTouch(bytes + (size + 3) / 4 * 4)) << size;
        EXPECT_EQ(LocalFree(bytes), nullptr);
    }
}

TEST_F(HeapOfPagesTest, a_freed_block_can_never_be_touched_again) {
    auto* freed = static_cast<char*>(LocalAlloc(LPTR, 100));
    LocalFree(freed);
    EXPECT_FALSE(canTouch(freed));
    for (int i = 0; i < 100; ++i) LocalFree(LocalAlloc(LPTR, 100));
    EXPECT_FALSE(canTouch(freed)) << "blocks that came later lie elsewhere";
}

TEST_F(HeapOfPagesTest, a_block_is_freed_once) {
    LONG before = Emulator_CountHeapBlocks();
    HLOCAL block = LocalAlloc(LPTR, 100);
    EXPECT_EQ(LocalFree(block), nullptr);
    EXPECT_EQ(LocalFree(block), block);
    EXPECT_EQ(Emulator_CountHeapBlocks(), before);
}

TEST_F(HeapOfPagesTest, pages_are_used_again_in_the_end_but_those_of_live_blocks) {
    constexpr SIZE_T large = 16 << 20;
    constexpr int moreThanThereIsRoomFor = 40;
    auto* kept = static_cast<char*>(LocalAlloc(LMEM_FIXED, 4));
    memcpy(kept, "kept", 4);
    for (int i = 0; i < moreThanThereIsRoomFor; ++i) {
        auto* block = static_cast<char*>(LocalAlloc(LPTR, large));
        ASSERT_NE(block, nullptr) << i;
        ASSERT_FALSE(block <= kept && kept < block + large) << i;
        ASSERT_EQ(LocalFree(block), nullptr) << i;
    }
    EXPECT_EQ(memcmp(kept, "kept", 4), 0);
    LocalFree(kept);
}
