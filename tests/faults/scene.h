#pragma once
// A display with what a scenario asks for, open to scenarios.

#include "declared/objects.h"
#include <type_traits>

class Scene : public ObjectsTest {
  public:
    Scene() { emptyClipboard(); }
    void TestBody() override {}

    using DeviceTest::dispatchAll;
    using DeviceTest::display;
    using DeviceTest::dispose;
    using DeviceTest::listen;
    using DeviceTest::pressKey;
    using DeviceTest::sendTo;
    using DeviceTest::vm;
    using DeviceTest::windowOf;
    using ObjectsTest::disposeOfObjects;
    using ObjectsTest::disposeOfResult;
    using ObjectsTest::kindsThatExist;
    using ObjectsTest::usualWord;

    // Made when it is first asked for.
    jint the(ObjectKind kind) { return objectOf(kind); }

    // A native's result as a word; 0 of one without.
    template <class Signature, class... Arguments>
    DWORD tell(const Native<Signature>& native, Arguments... arguments) {
        if constexpr (std::is_void_v<decltype(call(native, arguments...))>) {
            call(native, arguments...);
            return 0;
        } else {
            return (DWORD)(call(native, arguments...));
        }
    }

    // What `before` made for the act.
    jint made = 0, owner = 0;

  private:
    // Of what a program before left there on the same device.
    static void emptyClipboard() {
        if (!OpenClipboard(nullptr)) return;
        EmptyClipboard();
        CloseClipboard();
    }
};
