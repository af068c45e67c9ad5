#include "bridge/leaf_lock.h"

static CRITICAL_SECTION section;

void LeafLock::initialize() { InitializeCriticalSection(&section); }

LeafLock::LeafLock() : lock(&section) {}

LeafLock::~LeafLock() = default;
