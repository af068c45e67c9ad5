#pragma once
// A display on the emulated device with a recording VM: what most tests start from.

#include "control/control.h"
#include "library.h"
#include "test_vm.h"
#include <gtest/gtest.h>

using Events = std::vector<std::string>;

class DeviceTest : public testing::Test {
  protected:
    DeviceTest();
    ~DeviceTest() override;

    TestVm vm;
    jint display = 0;

    template <class Signature, class... Arguments>
    auto call(const std::string& nativeName, Arguments... arguments) {
        return nativeMethod<Signature>(nativeName)(vm.env(), arguments...);
    }

    // A top shell; shown when asked for. Disposed at the end of the test with all that is left.
    jint newShell(bool shown = true, jint style = 0);
    jint newButton(jint parent, const char* kind = "PushButton");

    // Lets the widget's events be recorded: "selected()", "pointer(1, 5, 5, 8, 0)" and so on.
    void listen(jint widget);

    // Drops the widget's listener and disposes of it.
    void dispose(jint widget);

    // Dispatches until the queue is empty.
    void dispatchAll();

    static HWND windowOf(jint control) { return reinterpret_cast<ControlRecord*>(control)->hwnd; }

    // The one error that was reported since the last look; fails the test when there is not one.
    TestVm::Report onlyReport();

  private:
    std::vector<jint> shells;
};
