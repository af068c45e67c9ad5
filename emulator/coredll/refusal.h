#pragma once
// How the device refuses what it does not know.

#include <windows.h>

// Whether it is allowed; sets the last error when it is not.
inline bool isAllowed(bool allowed) {
    if (!allowed) SetLastError(ERROR_INVALID_PARAMETER);
    return allowed;
}
