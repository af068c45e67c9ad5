#include "widgets/line_breaks.h"
#include "bridge/memory.h"

static constexpr wchar_t lineFeed = L'\n';
static constexpr wchar_t carriageReturn = L'\r';

static UINT countLineFeeds(const wchar_t* text) {
    UINT count = 0;
    for (; *text; ++text) count += *text == lineFeed;
    return count;
}

// Only the first break is looked at: where breaks are mixed, a later CR LF gets a second CR.
static bool needsConversion(const wchar_t* text) {
    const wchar_t* first = wcschr(text, lineFeed);
    return first && (first == text || first[-1] != carriageReturn);
}

const wchar_t* withControlLineBreaks(const wchar_t* text) {
    if (!needsConversion(text)) return text;
    wchar_t* converted = allocateArray<wchar_t>(wcslen(text) + countLineFeeds(text) + 1);
    if (!converted) return nullptr;
    for (wchar_t* to = converted; *text; ++text) {
        if (*text == lineFeed) *to++ = carriageReturn;
        *to++ = *text;
    }
    return converted;
}
