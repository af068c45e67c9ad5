#include "widgets/adjustable.h"
#include "bridge/memory.h"
#include "control/bar_hooks.h"
#include "control/scrollable.h"

static constexpr UINT allValues = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

void Adjustable_Push(AdjustableRecord* bar, UINT mask, bool redraw) {
    bar->info.fMask = mask;
    SetScrollInfo(bar->hwnd, bar->barKind, &bar->info, redraw);
}

static bool pull(AdjustableRecord* bar, UINT mask) {
    bar->info.fMask = mask;
    return GetScrollInfo(bar->hwnd, bar->barKind, &bar->info);
}

static bool isLive(const AdjustableRecord* bar) { return bar->enabled && bar->visible; }

static void pushIfLive(AdjustableRecord* bar, UINT mask) {
    if (isLive(bar)) Adjustable_Push(bar, mask, true);
}

static void pushBlank(const AdjustableRecord* bar, UINT mask, UINT page) {
    SCROLLINFO blank = {};
    blank.cbSize = sizeof(blank);
    blank.fMask = mask;
    blank.nPage = page;
    SetScrollInfo(bar->hwnd, bar->barKind, &blank, TRUE);
}

jint Adjustable_GetMinimum(AdjustableRecord* bar, ErrorRecord*) { return bar->info.nMin; }

jint Adjustable_GetMaximum(AdjustableRecord* bar, ErrorRecord*) { return bar->info.nMax; }

jint Adjustable_GetValue(AdjustableRecord* bar, ErrorRecord*) {
    if (isLive(bar) && !pull(bar, SIF_POS)) return 0;
    return bar->info.nPos;
}

jint Adjustable_GetVisibleAmount(AdjustableRecord* bar, ErrorRecord*) {
    return bar->info.nPage ? bar->info.nPage - 1 : 0;
}

void Adjustable_SetMinimum(AdjustableRecord* bar, jint value, ErrorRecord*) {
    bar->info.nMin = value;
    pushIfLive(bar, SIF_RANGE | SIF_DISABLENOSCROLL);
}

void Adjustable_SetMaximum(AdjustableRecord* bar, jint value, ErrorRecord*) {
    bar->info.nMax = value;
    pushIfLive(bar, SIF_RANGE | SIF_DISABLENOSCROLL);
}

void Adjustable_SetValue(AdjustableRecord* bar, jint value, ErrorRecord*) {
    bar->info.nPos = value;
    pushIfLive(bar, SIF_POS);
}

void Adjustable_SetVisibleAmount(AdjustableRecord* bar, jint amount, ErrorRecord*) {
    // One more than was asked for, on purpose; read back as one less.
    bar->info.nPage = amount ? amount + 1 : 0;
    pushIfLive(bar, SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL);
    // The focus mark has the size of the thumb.
    if (GetFocus() == bar->hwnd) PostMessageW(bar->hwnd, WM_SETFOCUS, 0, 0);
}

void Adjustable_SetUnitIncrement(AdjustableRecord* bar, jint value, ErrorRecord*) {
    bar->unitIncrement = value;
}

void Adjustable_SetBlockIncrement(AdjustableRecord* bar, jint value, ErrorRecord*) {
    if (value >= 1) bar->blockIncrement = value;
}

int Adjustable_Dispose(WidgetRecord* widget, ErrorRecord* error) {
    auto* bar = static_cast<AdjustableRecord*>(widget);
    if (bar->barKind == SB_CTL) return _Dispose_Control(bar, error);
    Win32Error_SetError(error, errorFailed, L"Invalid disposal of a scrollable's scrollbars");
    return disposalRefused;
}

// Where the page fills the range the bar would not be drawn in its proper state.
static void nudge(const AdjustableRecord* bar) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL;
    GetScrollInfo(bar->hwnd, bar->barKind, &info);
    if (static_cast<LONG>(info.nPage) != info.nMax - info.nMin + 1) return;
    ++info.nMax;
    SetScrollInfo(bar->hwnd, bar->barKind, &info, FALSE);
    --info.nMax;
    SetScrollInfo(bar->hwnd, bar->barKind, &info, TRUE);
}

AdjustableRecord* Bar_New(ScrollableRecord* owner, int kind, ErrorRecord* error) {
    auto* bar = allocate<AdjustableRecord>();
    if (!bar) {
        Win32Error_SetError(error, errorOutOfMemory, L"Unable to create scroll bar");
        return nullptr;
    }
    bar->display = Control_GetDisplay(owner);
    bar->dispose = Adjustable_Dispose;
    bar->hwnd = owner->hwnd;
    bar->parent = owner;
    bar->unitIncrement = 1;
    bar->blockIncrement = 10;
    bar->orientation = kind;
    bar->barKind = kind;
    bar->visible = TRUE;
    bar->enabled = TRUE;
    bar->info.cbSize = sizeof(bar->info);
    pull(bar, allValues);
    nudge(bar);
    return bar;
}

void Bar_Free(AdjustableRecord* bar) { freeBlock(bar); }

AdjustableRecord* Bar_Of(ControlRecord* control) {
    bool isBar = control && control->dispose == Adjustable_Dispose;
    return isBar ? static_cast<AdjustableRecord*>(control) : nullptr;
}

void Bar_SetEnabled(AdjustableRecord* bar, bool enabled) {
    bar->enabled = enabled;
    if (!bar->visible) return;
    if (enabled)
        Adjustable_Push(bar, allValues, true);
    else
        pushBlank(bar, allValues | SIF_DISABLENOSCROLL, 0);
}

// The window shows a range of at least one and a page within it; the record keeps what Java set.
static void pushShown(AdjustableRecord* bar) {
    SCROLLINFO& info = bar->info;
    int maximum = info.nMax;
    UINT page = info.nPage;
    if (info.nMax <= info.nMin) info.nMax = info.nMin + 1;
    UINT range = info.nMax - info.nMin;
    if (info.nPage > range) info.nPage = range;
    bool adapted = info.nMax != maximum || info.nPage != page;
    Adjustable_Push(bar, allValues | SIF_DISABLENOSCROLL, bar->enabled);
    if (!adapted) return;
    info.nMax = maximum;
    info.nPage = page;
    Adjustable_Push(bar, SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL, bar->enabled);
}

void Bar_SetVisible(AdjustableRecord* bar, bool visible) {
    bar->visible = visible;
    if (visible) pushShown(bar);
    if (isLive(bar)) return;
    if (visible)
        pushBlank(bar, allValues | SIF_DISABLENOSCROLL, 1);
    else
        pushBlank(bar, allValues, 0);
}

namespace {

// What a scroll code does to the value.
struct ScrollStep {
    LONG position;
    LONG before;
    bool fires;
    ScrollKind kind;
};

} // namespace

static LONG notBelow(LONG value, LONG least) { return value < least ? least : value; }

// The top end is the window's to clamp. That the minimum is added to the thumb's position is
// meant.
static ScrollStep stepOf(const AdjustableRecord* bar, UINT code) {
    const SCROLLINFO& info = bar->info;
    LONG old = info.nPos;
    switch (code) {
    case SB_LINEUP:
        return {notBelow(old - bar->unitIncrement, info.nMin), old, true, ScrollKind::lineUp};
    case SB_LINEDOWN:
        return {old + bar->unitIncrement, old, true, ScrollKind::lineDown};
    case SB_PAGEUP:
        return {notBelow(old - bar->blockIncrement, info.nMin), old, true, ScrollKind::pageUp};
    case SB_PAGEDOWN:
        return {old + bar->blockIncrement, old, true, ScrollKind::pageDown};
    case SB_THUMBPOSITION:
        return {info.nTrackPos + info.nMin, old + info.nMin, false, {}};
    case SB_THUMBTRACK:
        return {info.nTrackPos + info.nMin, old + info.nMin, true, ScrollKind::thumbDrag};
    case SB_TOP:
        return {info.nMin, old, true, ScrollKind::top};
    case SB_BOTTOM:
        return {info.nMax, old, true, ScrollKind::bottom};
    default:
        return {old, old, false, {}};
    }
}

bool Bar_Scroll(AdjustableRecord* bar, WPARAM wParam) {
    if (!pull(bar, SIF_RANGE | SIF_POS | SIF_TRACKPOS)) return false;
    UINT code = LOWORD(wParam);
    ScrollStep step = stepOf(bar, code);
    bar->info.nPos = step.position;
    Adjustable_Push(bar, SIF_POS, code != SB_THUMBTRACK);
    if (!step.fires) return false;
    if (!pull(bar, SIF_POS)) return false;
    LONG position = bar->info.nPos;
    fireScroll(bar->callbackTarget, position, step.kind);
    return position != step.before;
}
