#pragma once
// One object of each kind that natives take, made when the first native asks for it.

#include "any_call.h"
#include "declared_natives.h"
#include "device.h"

class ObjectsTest : public DeviceTest {
  public:
    // Whether the native makes what somebody must dispose of: the display, which is there already,
    // apart.
    static bool makesAnObject(const DeclaredNative& native);

  protected:
    // A top shell is there already; whatever is made lies in it.
    jint objectOf(ObjectKind kind);

    // The argument that works; kind: which of its kinds an object is. Fails the test when it is not
    // known what the parameter means.
    DWORD usualWord(const DeclaredNative& native, const Parameter& parameter, size_t kind = 0);

    // Ends all of them, what was made last first.
    void disposeOfObjects();

    // Ends one of them before the others.
    void disposeFirst(jint object);

    // What a native that makes something gave to Java; does nothing for any other native.
    void disposeOfResult(const std::string& native, jint result);

    // Those that exist, what was made first first.
    std::vector<ObjectKind> kindsThatExist() const;
    std::vector<jint> images() const;

  private:
    jint make(ObjectKind kind);
    jint withItems(jint widget, const Native<void(jint, jstring, jint)>& add);
    void disposeOf(ObjectKind kind, jint object);

    std::vector<std::pair<ObjectKind, jint>> objects;
};
