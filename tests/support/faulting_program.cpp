// Programs of tests that must not live: each test makes a fault where the system would swallow it.
// Run by faults_end_programs, one at a time.

#include "device.h"
#include <cstdio>
#include <thread>

class Faulting : public DeviceTest {
  protected:
    Faulting() {
        shell = newShell();
        button = newButton(shell);
        listen(button);
    }
    void faultIn(const char* callback) {
        vm.behavior[callback] = [](const std::vector<jint>&) {
            *reinterpret_cast<volatile int*>(8) = 1;
            return 0;
        };
    }
    ~Faulting() override {
        vm.behavior.clear();
        std::printf("it went on\n");
    }
    void setBounds(jint width) { call(OS::Control_SetBounds, button, 1, 2, width, 22); }

    jint shell, button;
};

TEST_F(Faulting, in_a_paint_listener) {
    faultIn("paint");
    InvalidateRect(windowOf(button), nullptr, TRUE);
    UpdateWindow(windowOf(button));
}

TEST_F(Faulting, in_a_focus_listener) {
    faultIn("focus");
    SetFocus(windowOf(button));
}

TEST_F(Faulting, in_a_resize_listener) {
    listen(shell);
    faultIn("resize");
    call(OS::Control_SetBounds, shell, 0, 0, 100, 100);
}

TEST_F(Faulting, on_another_thread) {
    std::thread thread([] { *reinterpret_cast<volatile int*>(8) = 1; });
    thread.join();
}

TEST_F(Faulting, by_a_jump_to_nowhere) { reinterpret_cast<void (*)()>(0x10)(); }

// The record of a disposed control leads a native to memory that was given up.
TEST_F(Faulting, in_the_library_with_a_control_that_is_gone) {
    jint gone = button;
    dispose(button);
    setBounds(33);
    button = gone;
}

namespace {

// Blocks of the device's own heap.
struct DeviceHeap {
    static void* find(const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("coredll.dll"), name));
    }
    BYTE* alloc(SIZE_T size) {
        auto localAlloc = reinterpret_cast<HLOCAL(WINAPI*)(UINT, SIZE_T)>(find("LocalAlloc"));
        return static_cast<BYTE*>(localAlloc(LPTR, size));
    }
    void free(HLOCAL block) { reinterpret_cast<HLOCAL(WINAPI*)(HLOCAL)>(find("LocalFree"))(block); }
};

jint handleOf(const BYTE* address) {
    return static_cast<jint>(reinterpret_cast<uintptr_t>(address));
}

} // namespace

// A colour's record begins with its first byte.
TEST_F(Faulting, in_the_library_with_the_byte_behind_a_block) {
    auto* block = DeviceHeap().alloc(4);
    call(OS::Color_GetRed, handleOf(block + 3));
    std::printf("the last byte was read\n");
    std::fflush(stdout);
    call(OS::Color_GetRed, handleOf(block + 4));
}

TEST_F(Faulting, in_the_library_with_a_byte_of_a_block_that_was_freed) {
    DeviceHeap heap;
    auto* block = heap.alloc(4);
    heap.free(block);
    call(OS::Color_GetRed, handleOf(block));
}

// The system is handed memory that was given up, and catches the fault by itself.
TEST_F(Faulting, in_the_system_with_memory_that_was_given_up) {
    void* block = VirtualAlloc(nullptr, 0x1000, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    VirtualFree(block, 0x1000, MEM_DECOMMIT);
    lstrlenW(static_cast<LPCWSTR>(block));
}

// What is expected where it is met ends nothing.
TEST_F(Faulting, in_the_system_that_only_looks) {
    EXPECT_EQ(lstrlenW(reinterpret_cast<LPCWSTR>(8)), 0);
}
