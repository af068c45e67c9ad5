#include "bridge/leaf_lock.h"

static CRITICAL_SECTION section;

void LeafLock::Initialize() { InitializeCriticalSection(&section); }

LeafLock::LeafLock() { EnterCriticalSection(&section); }

LeafLock::~LeafLock() { LeaveCriticalSection(&section); }
