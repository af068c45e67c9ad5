#pragma once
// Companion libraries and window words rely on where a record keeps its fields.

#include <stddef.h>

static_assert(sizeof(void*) == 4, "handles cross to Java as 32-bit integers");

// Records that extend another one are laid out behind it; the compilers warn of offsetof there
// although both define it.
#define ASSERT_OFFSET(Record, field, offset)                                                       \
    _Pragma("GCC diagnostic push")                                                                 \
        _Pragma("GCC diagnostic ignored \"-Winvalid-offsetof\"") static_assert(                    \
            offsetof(Record, field) == (offset), #Record "::" #field " has moved");                \
    _Pragma("GCC diagnostic pop")
