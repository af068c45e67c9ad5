#include "control/adjustable.h"
#include "bridge/arithmetic.h"
#include "bridge/memory.h"
#include "control/scrollable.h"

static constexpr UINT allValues = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

void Adjustable_Push(AdjustableRecord* adjustable, UINT mask, bool redraw) {
    adjustable->info.fMask = mask;
    SCROLLINFO values = adjustable->info;
    SetScrollInfo(adjustable->hwnd, adjustable->barKind, &values, redraw);
}

// Whether the window has this bar still, after a listener may have run.
static bool hasBar(HWND window, int kind, const AdjustableRecord* adjustable) {
    const ControlRecord* control = controlOf(window);
    if (!control || kind == SB_CTL) return control == adjustable;
    auto* scrollable = static_cast<const ScrollableRecord*>(control);
    return adjustable == (kind == SB_HORZ ? scrollable->horizontalBar : scrollable->verticalBar);
}

// False when the window does not answer, or the bar is gone by then.
static bool pull(AdjustableRecord* adjustable, UINT mask) {
    HWND window = adjustable->hwnd;
    int kind = adjustable->barKind;
    SCROLLINFO values = adjustable->info;
    values.fMask = mask;
    if (!GetScrollInfo(window, kind, &values) || !hasBar(window, kind, adjustable)) return false;
    adjustable->info = values;
    return true;
}

static bool isLive(const AdjustableRecord* adjustable) {
    return adjustable->enabled && adjustable->visible;
}

static void pushIfLive(AdjustableRecord* adjustable, UINT mask) {
    if (isLive(adjustable)) Adjustable_Push(adjustable, mask, true);
}

static void pushBlank(const AdjustableRecord* adjustable, UINT mask, UINT page) {
    SCROLLINFO blank = {};
    blank.cbSize = sizeof(blank);
    blank.fMask = mask;
    blank.nPage = page;
    SetScrollInfo(adjustable->hwnd, adjustable->barKind, &blank, TRUE);
}

jint Adjustable_GetMinimum(AdjustableRecord* adjustable, ErrorRecord*) {
    return adjustable->info.nMin;
}

jint Adjustable_GetMaximum(AdjustableRecord* adjustable, ErrorRecord*) {
    return adjustable->info.nMax;
}

jint Adjustable_GetValue(AdjustableRecord* adjustable, ErrorRecord*) {
    if (isLive(adjustable) && !pull(adjustable, SIF_POS)) return 0;
    return adjustable->info.nPos;
}

jint Adjustable_GetVisibleAmount(AdjustableRecord* adjustable, ErrorRecord*) {
    return adjustable->info.nPage ? adjustable->info.nPage - 1 : 0;
}

void Adjustable_SetMinimum(AdjustableRecord* adjustable, jint value, ErrorRecord*) {
    adjustable->info.nMin = value;
    pushIfLive(adjustable, SIF_RANGE | SIF_DISABLENOSCROLL);
}

void Adjustable_SetMaximum(AdjustableRecord* adjustable, jint value, ErrorRecord*) {
    adjustable->info.nMax = value;
    pushIfLive(adjustable, SIF_RANGE | SIF_DISABLENOSCROLL);
}

void Adjustable_SetValue(AdjustableRecord* adjustable, jint value, ErrorRecord*) {
    adjustable->info.nPos = value;
    pushIfLive(adjustable, SIF_POS);
}

void Adjustable_SetVisibleAmount(AdjustableRecord* adjustable, jint amount, ErrorRecord*) {
    // Quirk: the thumb stands for one step more than the visible amount, which is read back as one
    // less. Pinned by AdjustableTest.a_visible_amount_is_kept_as_a_page_one_larger.
    adjustable->info.nPage = amount ? amount + 1 : 0;
    HWND window = adjustable->hwnd;
    pushIfLive(adjustable, SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL);
    // The focus mark has the size of the thumb.
    if (GetFocus() == window) PostMessageW(window, WM_SETFOCUS, 0, 0);
}

void Adjustable_SetUnitIncrement(AdjustableRecord* adjustable, jint value, ErrorRecord*) {
    adjustable->unitIncrement = value;
}

void Adjustable_SetBlockIncrement(AdjustableRecord* adjustable, jint value, ErrorRecord*) {
    if (value >= 1) adjustable->blockIncrement = value;
}

int Adjustable_Dispose(WidgetRecord* widget, ErrorRecord* error) {
    auto* adjustable = static_cast<AdjustableRecord*>(widget);
    if (adjustable->barKind == SB_CTL) return _Dispose_Control(adjustable, error);
    Win32Error_SetError(error, errorFailed, L"Invalid disposal of a scrollable's scrollbars");
    return disposalRefused;
}

void Adjustable_Nudge(HWND window, int kind) {
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

void Adjustable_SetFirstValues(AdjustableRecord* adjustable, int kind, jint orientation) {
    adjustable->dispose = Adjustable_Dispose;
    adjustable->unitIncrement = 1;
    adjustable->blockIncrement = 10;
    adjustable->orientation = orientation;
    adjustable->barKind = kind;
    adjustable->enabled = TRUE;
    adjustable->info.cbSize = sizeof(adjustable->info);
}

AdjustableRecord* Adjustable_New(ScrollableRecord* owner, int kind, ErrorRecord* error) {
    auto* adjustable = allocate<AdjustableRecord>();
    if (!adjustable) {
        Win32Error_SetError(error, errorOutOfMemory, L"Unable to create scroll bar");
        return nullptr;
    }
    Widget_SetDisplay(adjustable, Control_GetDisplay(owner));
    Adjustable_SetFirstValues(adjustable, kind, kind);
    adjustable->hwnd = owner->hwnd;
    adjustable->parent = owner;
    adjustable->visible = TRUE;
    adjustable->info.fMask = allValues;
    GetScrollInfo(adjustable->hwnd, kind, &adjustable->info);
    return adjustable;
}

void Adjustable_Free(AdjustableRecord* adjustable) {
    if (adjustable) Widget_Free(adjustable);
}

AdjustableRecord* Adjustable_Of(ControlRecord* control) {
    bool isBar = control && control->dispose == Adjustable_Dispose;
    return isBar ? static_cast<AdjustableRecord*>(control) : nullptr;
}

void Adjustable_SetEnabled(AdjustableRecord* adjustable, bool enabled) {
    adjustable->enabled = enabled;
    if (!adjustable->visible) return;
    if (enabled)
        Adjustable_Push(adjustable, allValues, true);
    else
        pushBlank(adjustable, allValues | SIF_DISABLENOSCROLL, 0);
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
static bool pushShown(AdjustableRecord* adjustable) {
    HWND window = adjustable->hwnd;
    int kind = adjustable->barKind;
    SCROLLINFO shown = shownValues(adjustable->info);
    bool adapted = shown.nMax != adjustable->info.nMax || shown.nPage != adjustable->info.nPage;
    SetScrollInfo(window, kind, &shown, adjustable->enabled);
    if (!hasBar(window, kind, adjustable)) return false;
    if (adapted)
        Adjustable_Push(adjustable, SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL,
                        adjustable->enabled);
    return hasBar(window, kind, adjustable);
}

void Adjustable_SetVisible(AdjustableRecord* adjustable, bool visible) {
    adjustable->visible = visible;
    if (visible && !pushShown(adjustable)) return;
    if (isLive(adjustable)) return;
    if (adjustable->visible)
        pushBlank(adjustable, allValues | SIF_DISABLENOSCROLL, 1);
    else
        pushBlank(adjustable, allValues, 0);
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
static ScrollStep stepOf(const AdjustableRecord* adjustable, UINT code) {
    const SCROLLINFO& info = adjustable->info;
    LONG old = info.nPos;
    switch (code) {
    case SB_LINEUP:
        return {greater(saturatingSubtract(old, adjustable->unitIncrement), info.nMin), old, true,
                ScrollKind::lineUp};
    case SB_LINEDOWN:
        return {saturatingAdd(old, adjustable->unitIncrement), old, true, ScrollKind::lineDown};
    case SB_PAGEUP:
        return {greater(saturatingSubtract(old, adjustable->blockIncrement), info.nMin), old, true,
                ScrollKind::pageUp};
    case SB_PAGEDOWN:
        return {saturatingAdd(old, adjustable->blockIncrement), old, true, ScrollKind::pageDown};
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

bool Adjustable_Scroll(AdjustableRecord* adjustable, Message message) {
    if (!pull(adjustable, SIF_RANGE | SIF_POS | SIF_TRACKPOS)) return false;
    UINT code = message.command();
    ScrollStep step = stepOf(adjustable, code);
    adjustable->info.nPos = step.position;
    HWND window = adjustable->hwnd;
    int kind = adjustable->barKind;
    Adjustable_Push(adjustable, SIF_POS, code != SB_THUMBTRACK);
    if (!step.fires) return false;
    if (!hasBar(window, kind, adjustable) || !pull(adjustable, SIF_POS)) return false;
    LONG position = adjustable->info.nPos;
    fireScroll(adjustable->callbackTarget, position, step.kind);
    return position != step.before;
}
