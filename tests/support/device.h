#pragma once
// A display on the emulated device with a recording VM: what most tests start from.

#include "control/control.h"
#include "events.h"
#include "natives.h"
#include "test_vm.h"
#include <gtest/gtest.h>

// A native that makes a widget in a parent.
using Maker = Native<jint(jint parent, jint style)>;

// The listener's method that a callback id is registered with; null for none.
const char* listenerMethod(jint id);

class DeviceTest : public testing::Test {
  protected:
    DeviceTest();
    ~DeviceTest() override;

    TestVm vm;
    jint display = 0; // 0 when it was disposed of

    // Makes it, with a method for every callback.
    void openDisplay();
    // A method for every callback of a display without any.
    void registerCallbacks(jint ofDisplay);

    template <class Signature, class... Arguments>
    auto call(const Native<Signature>& native, Arguments... arguments) {
        return native(vm.env(), arguments...);
    }

    // A top shell; shown when asked for. Disposed at the end of the test with all that is left.
    jint newShell(bool shown = true, jint style = 0);
    jint newButton(jint parent, const Maker& kind = OS::PushButton_New);

    // A shown control.
    jint newControl(const Maker& kind, jint parent, jint style = 0, RECT place = {20, 30, 120, 70});
    jint newControl(const Native<jint(jint parent)>& kind, jint parent,
                    RECT place = {20, 30, 120, 70});

    // Lets the widget's events be recorded, as events.h has them.
    void listen(jint widget);

    // Drops the widget's listener and disposes of it.
    void dispose(jint widget);

    // Dispatches until the queue is empty.
    void dispatchAll();

    // A person's tap in the middle of the control, or at a point of its client area.
    void tap(jint control);
    void tapAt(jint control, int x, int y);

    // A person's keys: lower-case letters, digits, spaces. The control with the focus gets them.
    void type(const std::string& characters);
    // The key of the toolkit's code (Key, or a character) goes down and up, Shift being held when
    // asked for.
    void pressKey(jint key, bool withShift = false);

    // left, top, width, height
    std::vector<jint> boundsOf(jint control);
    std::vector<jint> minimumSize(jint control);

    static HWND windowOf(jint control) { return reinterpret_cast<ControlRecord*>(control)->hwnd; }
    static std::wstring windowText(jint control);
    // The system's, but for whether it is shown.
    static DWORD styleOf(jint control);
    static LRESULT sendTo(jint control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // Of the control's client area, as 0x00BBGGRR.
    static COLORREF pixelOf(jint control, int x, int y);

    // The one error that was reported since the last look; fails the test when there is not one.
    TestVm::Report onlyReport();
    // Fails the test unless it is this one. A message that ends in "::" is followed by a text of
    // the system's, and no other is.
    void expectReport(const char* function, jint code, const std::u16string& message);

    // Lets one platform call after the other fail while the widget is made. Each time it is made
    // all the same, or there is no handle and one report of its failed window; nothing is left.
    void expectFailedCreationsReported(const std::function<jint()>& create);

  private:
    void placeAndShow(jint control, RECT place);

    std::vector<jint> shells;
};
