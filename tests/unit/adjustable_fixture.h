#pragma once
// A scroll bar, and what its window is told.

#include "control/adjustable.h"
#include "device.h"
#include "faults.h"

// What the window was told.
struct Told {
    int kind;
    UINT mask;
    int minimum, maximum;
    UINT page;
    int position;
    BOOL redraw;
    bool operator==(const Told&) const = default;
};
inline void PrintTo(const Told& told, std::ostream* out) {
    *out << "{kind " << told.kind << ", mask " << told.mask << ", " << told.minimum << ".."
         << told.maximum << ", page " << told.page << ", position " << told.position << ", redraw "
         << told.redraw << "}";
}
inline std::vector<Told> told;
inline int WINAPI recordScrollInfo(HWND window, int kind, const SCROLLINFO* info, BOOL redraw) {
    EXPECT_EQ(info->cbSize, 28u);
    told.push_back({kind, info->fMask, info->nMin, info->nMax, info->nPage, info->nPos, redraw});
    return SetScrollInfo(window, kind, info, redraw);
}

class AdjustableTest : public DeviceTest {
  protected:
    AdjustableTest() {
        shell = newShell();
        bar = call(OS::Scrollbar_New, shell);
        call(OS::Control_SetBounds, bar, 20, 30, 13, 150);
    }
    static AdjustableRecord* record(jint handle) {
        return reinterpret_cast<AdjustableRecord*>(handle);
    }
    void show(jint control, bool shown = true) {
        call(OS::Control_SetVisible, control, shown);
        dispatchAll();
    }
    jint get(const Native<jint(jint)>& property) { return call(property, bar); }
    void set(const Native<void(jint, jint)>& property, jint value) { call(property, bar, value); }
    SCROLLINFO infoOf(jint handle) {
        SCROLLINFO info = {};
        info.cbSize = sizeof(info);
        info.fMask = SIF_ALL;
        GetScrollInfo(windowOf(handle), record(handle)->barKind, &info);
        return info;
    }
    // A scroll message of the bar, as its window sends it to the parent.
    Events scroll(WORD code) {
        listen(bar);
        SendMessageW(windowOf(shell), WM_VSCROLL, code, reinterpret_cast<LPARAM>(windowOf(bar)));
        return vm.takeEvents();
    }
    std::vector<Told> recordWhile(const std::function<void()>& work) {
        Faults faults;
        faults.replace("SetScrollInfo", reinterpret_cast<void*>(recordScrollInfo));
        told.clear();
        work();
        return told;
    }

    jint shell, bar;
};
