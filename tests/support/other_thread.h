#pragma once
// A second thread at work, as Java's other threads are, while the display's thread dispatches.

#include "natives.h"
#include "test_vm.h"
#include <atomic>
#include <thread>

// Returns when the work has ended. Called on the display's thread.
template <class Work>
void onOtherThread(TestVm& vm, jint display, Work work) {
    std::atomic<bool> done = false;
    std::thread thread([&] {
        work();
        done = true;
        OS::Display_Wake(vm.env(), display);
    });
    while (!done)
        if (!OS::Display_ReadAndDispatch(vm.env(), display)) OS::Display_Sleep(vm.env(), display);
    thread.join();
}
