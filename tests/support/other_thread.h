#pragma once
// A second thread at work, as Java's other threads are, while the display's thread dispatches.

#include "library.h"
#include "test_vm.h"
#include <atomic>
#include <thread>

// Returns when the work has ended. Called on the display's thread.
template <class Work>
void onOtherThread(TestVm& vm, jint display, Work work) {
    auto wake = nativeMethod<jint(jint)>("Display_Wake");
    auto readAndDispatch = nativeMethod<jboolean(jint)>("Display_ReadAndDispatch");
    auto sleep = nativeMethod<jint(jint)>("Display_Sleep");
    std::atomic<bool> done = false;
    std::thread thread([&] {
        work();
        done = true;
        wake(vm.env(), display);
    });
    while (!done)
        if (!readAndDispatch(vm.env(), display)) sleep(vm.env(), display);
    thread.join();
}
