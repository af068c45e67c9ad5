#pragma once
// Line breaks as the system's text controls want them. Any thread.

#include "ce.h"

// The text with every LF as CR LF. Texts without LF, and those whose first LF follows a CR and so
// count as converted, come back as they are; every other as a block that the caller frees. Null
// when there is no memory for it.
const wchar_t* withControlLineBreaks(const wchar_t* text);
