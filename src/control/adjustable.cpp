#include "control/adjustable.h"
#include "bridge/arithmetic.h"
#include "bridge/memory.h"
#include "control/scrollable.h"

static constexpr UINT allValues = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

void Adjustable_Push(AdjustableRecord* bar, UINT mask, bool redraw) {
    bar->info.fMask = mask;
    SCROLLINFO values = bar->info;
    SetScrollInfo(bar->hwnd, bar->barKind, &values, redraw);
}

// Whether the window has this bar still, after a listener may have run.
static bool hasBar(HWND window, int kind, const AdjustableRecord* bar) {
    const ControlRecord* control = controlOf(window);
    if (!control || kind == SB_CTL) return control == bar;
    auto* scrollable = static_cast<const ScrollableRecord*>(control);
    return bar == (kind == SB_HORZ ? scrollable->horizontalBar : scrollable->verticalBar);
}

// False when the window does not answer, or the bar is gone by then.
static bool pull(AdjustableRecord* bar, UINT mask) {
    HWND window = bar->hwnd;
    int kind = bar->barKind;
    SCROLLINFO values = bar->info;
    values.fMask = mask;
    if (!GetScrollInfo(window, kind, &values) || !hasBar(window, kind, bar)) return false;
    bar->info = values;
    return true;
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
    // Quirk: the thumb stands for one step more than the visible amount, which is read back as one
    // less. Pinned by AdjustableTest.a_visible_amount_is_kept_as_a_page_one_larger.
    bar->info.nPage = amount ? amount + 1 : 0;
    HWND window = bar->hwnd;
    pushIfLive(bar, SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL);
    // The focus mark has the size of the thumb.
    if (GetFocus() == window) PostMessageW(window, WM_SETFOCUS, 0, 0);
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

void Bar_Nudge(HWND window, int kind) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL;
    GetScrollInfo(window, kind, &info);
    if (static_cast<LONG>(info.nPage) != info.nMax - info.nMin + 1) return;
    LONG maximum = info.nMax;
    info.nMax = saturatingAdd(maximum, 1);
    SetScrollInfo(window, kind, &info, FALSE);
    info.nMax = maximum;
    SetScrollInfo(window, kind, &info, TRUE);
}

AdjustableRecord* Bar_New(ScrollableRecord* owner, int kind, ErrorRecord* error) {
    auto* bar = allocate<AdjustableRecord>();
    if (!bar) {
        Win32Error_SetError(error, errorOutOfMemory, L"Unable to create scroll bar");
        return nullptr;
    }
    Widget_SetDisplay(bar, Control_GetDisplay(owner));
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
    bar->info.fMask = allValues;
    GetScrollInfo(bar->hwnd, kind, &bar->info);
    return bar;
}

void Bar_Free(AdjustableRecord* bar) {
    if (bar) Widget_Free(bar);
}

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

// A range of at least one, and a page within it.
static SCROLLINFO shownValues(const SCROLLINFO& kept) {
    SCROLLINFO shown = kept;
    shown.fMask = allValues | SIF_DISABLENOSCROLL;
    if (shown.nMax <= shown.nMin) shown.nMax = saturatingAdd(shown.nMin, 1);
    UINT range = shown.nMax - shown.nMin;
    if (shown.nPage > range) shown.nPage = range;
    return shown;
}

// The record keeps what Java sets, also while the window is being told. False when the bar is gone.
static bool pushShown(AdjustableRecord* bar) {
    HWND window = bar->hwnd;
    int kind = bar->barKind;
    SCROLLINFO shown = shownValues(bar->info);
    bool adapted = shown.nMax != bar->info.nMax || shown.nPage != bar->info.nPage;
    SetScrollInfo(window, kind, &shown, bar->enabled);
    if (!hasBar(window, kind, bar)) return false;
    if (adapted) Adjustable_Push(bar, SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL, bar->enabled);
    return hasBar(window, kind, bar);
}

void Bar_SetVisible(AdjustableRecord* bar, bool visible) {
    bar->visible = visible;
    if (visible && !pushShown(bar)) return;
    if (isLive(bar)) return;
    if (bar->visible)
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

// The top end is the window's to clamp.
// Quirk: the minimum is added to the thumb's position, so that a dragged thumb jumps where the
// minimum is not 0. Pinned by ScrollTest.the_thumb_moves_the_value_to_its_place_above_the_minimum.
static ScrollStep stepOf(const AdjustableRecord* bar, UINT code) {
    const SCROLLINFO& info = bar->info;
    LONG old = info.nPos;
    switch (code) {
    case SB_LINEUP:
        return {greater(saturatingSubtract(old, bar->unitIncrement), info.nMin), old, true,
                ScrollKind::lineUp};
    case SB_LINEDOWN:
        return {saturatingAdd(old, bar->unitIncrement), old, true, ScrollKind::lineDown};
    case SB_PAGEUP:
        return {greater(saturatingSubtract(old, bar->blockIncrement), info.nMin), old, true,
                ScrollKind::pageUp};
    case SB_PAGEDOWN:
        return {saturatingAdd(old, bar->blockIncrement), old, true, ScrollKind::pageDown};
    case SB_THUMBPOSITION:
        return {saturatingAdd(info.nTrackPos, info.nMin), saturatingAdd(old, info.nMin), false, {}};
    case SB_THUMBTRACK:
        return {saturatingAdd(info.nTrackPos, info.nMin), saturatingAdd(old, info.nMin), true,
                ScrollKind::thumbDrag};
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
    HWND window = bar->hwnd;
    int kind = bar->barKind;
    Adjustable_Push(bar, SIF_POS, code != SB_THUMBTRACK);
    if (!step.fires) return false;
    if (!hasBar(window, kind, bar) || !pull(bar, SIF_POS)) return false;
    LONG position = bar->info.nPos;
    fireScroll(bar->callbackTarget, position, step.kind);
    return position != step.before;
}
