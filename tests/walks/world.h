#pragma once
// What exists in a walk, by the steps that made it, and what may be done with it.

#include "declared/declared_natives.h"
#include "rules.h"
#include "step.h"
#include <map>

inline constexpr int anyKind = -1;

class World : public Surroundings {
  public:
    explicit World(jint display);

    // Of what the step made and what is still there; nothing otherwise.
    std::optional<Object> find(int step);

    // Whatever is there and is of the kind, by its step, oldest first.
    std::vector<int> allOf(int kind);
    size_t countAll();

    // What goes with it.
    std::vector<Object> lentBy(const Object& owner);

    // What has the handle, or had it last.
    Object at(uint32_t handle) { return handles.find(handle); }
    bool isLent(uint32_t handle) { return handles.find(handle).isLent; }

    // A native's result, which the step may be called by from now on; nothing for one that makes
    // nothing.
    void enter(int step, const CheckedNative& native, const std::vector<uint32_t>& words,
               uint32_t result);
    void end(const Object& object) { handles.end(object, nullptr); }

    // Whether the library stands the call: nothing in it is gone, or of another kind.
    bool isSurvived(const CheckedNative& native, const std::vector<uint32_t>& words);
    // Whether it is a program's right to make it.
    bool isRight(const CheckedNative& native, const std::vector<uint32_t>& words);

    uint32_t thread() override { return GetCurrentThreadId(); }
    int lengthOf(uint32_t array) override;
    bool isCompanionsControl(uint32_t, uint32_t*) override { return false; }

    // What the arguments that are arrays hold.
    std::map<uint32_t, int> lengths;

  private:
    std::optional<Misuse> misuseOf(const CheckedNative& native, const std::vector<uint32_t>& words);

    Handles handles;
    std::map<int, Object> named; // as they were when they were made
};

// A native as Java declares it and as its operation is declared.
struct KnownNative {
    const DeclaredNative& declared;
    const CheckedNative& checked;
};
const std::vector<KnownNative>& knownNatives();
const KnownNative* findNative(const std::string& name); // null when there is none
