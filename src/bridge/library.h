#pragma once

#include "ce.h"

// The instance handle under which the library registers its window classes and creates its
// windows. Set once when the process loads the library. Any thread.
HINSTANCE Library_GetInstance();
