#pragma once
// The handles that natives gave to Java, alive and gone. Any thread: a lock is held for the length
// of each call here, and no native runs meanwhile.

#include <memory>
#include <stdint.h>
#include <unordered_map>
#include <vector>
#include <windows.h>

// Where something happened: whatever the caller makes of it. Null: nobody knows.
using Place = std::shared_ptr<void>;

// What a handle stands for. An address is used again when what had it is gone: the number tells
// apart those that had it one after the other.
struct Object {
    uint32_t handle = 0;
    uint32_t number = 0; // 0: nothing has ever had the handle
    int kind = -1;
    bool isGone = false;
    bool isLent = false;  // its owner ends it
    uint32_t display = 0; // the handle of the display that it belongs to, or is; 0: none
    uint32_t displayNumber = 0;
    uint32_t owner = 0; // who lends it, or what a graphics context draws on; 0: none
    uint32_t ownerNumber = 0;
    uint32_t thread = 0; // that made it
};

// Where it was made and where it was ended.
struct Places {
    Place made, ended;
};

class Handles {
  public:
    Handles() = default;
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;

    // Java was given the handle of an object, which gets its number here.
    void add(Object object, Place made);

    // What has the handle, or had it last.
    Object find(uint32_t handle);

    // Whether a native that gives one object again and again has given this one before.
    bool hasAlready(const Object& object);
    Places placesOf(uint32_t handle);

    // The object is gone with all that it lends, unless another has its address by now.
    void end(const Object& object, const Place& place);

    struct Left {
        Object object;
        Place made;
    };
    // What Java still has to end, in the order of its making.
    std::vector<Left> left();

  private:
    struct Entry {
        Object object;
        Places places;
        std::vector<Object> lent;
    };
    void endLocked(const Object& object, const Place& place);

    SRWLOCK lock = SRWLOCK_INIT;
    std::unordered_map<uint32_t, Entry> entries;
    uint32_t lastNumber = 0;
};
