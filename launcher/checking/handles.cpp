#include "handles.h"
#include "checked_natives.h"
#include <algorithm>

namespace {

class Locked {
  public:
    explicit Locked(SRWLOCK* lock) : lock(lock) { AcquireSRWLockExclusive(lock); }
    ~Locked() { ReleaseSRWLockExclusive(lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

  private:
    SRWLOCK* lock;
};

} // namespace

static bool isSystems(const Object& object) { return kinds()[object.kind].isSystems; }

void Handles::add(Object object, Place made) {
    Entry before; // its places go without the lock
    Locked locked(&lock);
    object.number = ++lastNumber;
    if (object.display == object.handle) object.displayNumber = object.number;
    Entry& entry = entries[object.handle];
    std::swap(before, entry);
    entry.object = object;
    entry.places.made = std::move(made);
    auto owner = entries.find(object.owner);
    if (object.isLent && owner != entries.end()) owner->second.lent.push_back(object);
}

Object Handles::find(uint32_t handle) {
    Locked locked(&lock);
    auto found = entries.find(handle);
    return found == entries.end() ? Object() : found->second.object;
}

bool Handles::hasAlready(const Object& object) {
    if (!object.isLent && !isSystems(object)) return false;
    Object known = find(object.handle);
    return known.number && !known.isGone && known.kind == object.kind &&
           known.owner == object.owner;
}

Places Handles::placesOf(uint32_t handle) {
    Locked locked(&lock);
    auto found = entries.find(handle);
    return found == entries.end() ? Places() : found->second.places;
}

void Handles::endLocked(const Object& object, const Place& place) {
    if (isSystems(object)) return;
    Entry& entry = entries[object.handle];
    if (entry.object.number != object.number || entry.object.isGone) return;
    entry.object.isGone = true;
    entry.places.ended = place;
    for (const Object& taken : entry.lent) endLocked(taken, place);
    entry.lent.clear();
}

void Handles::end(const Object& object, const Place& place) {
    Locked locked(&lock);
    endLocked(object, place);
}

std::vector<Handles::Left> Handles::left() {
    std::vector<Left> all;
    Locked locked(&lock);
    for (const auto& [handle, entry] : entries) {
        const Object& object = entry.object;
        if (!object.isGone && !object.isLent && !isSystems(object))
            all.push_back({object, entry.places.made});
    }
    std::sort(all.begin(), all.end(), [](const Left& left, const Left& right) {
        return left.object.number < right.object.number;
    });
    return all;
}
