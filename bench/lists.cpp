// A list against a bare list box of the same style whose items are measured too, as they must be
// for the horizontal bar.

#include "compare.h"
#include "control/control.h"

template <class Add>
static double timeOfFilling(HWND list, int items, Add add) {
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    return timeOf(items, add);
}

static void addAndMeasure(HWND list, const wchar_t* text) {
    SendMessageW(list, LB_INSERTSTRING, -1, reinterpret_cast<LPARAM>(text));
    HDC context = GetDC(list);
    auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(list, WM_GETFONT, 0, 0));
    HGDIOBJ before = SelectObject(context, font);
    RECT area = {};
    DrawTextW(context, text, -1, &area, DT_CALCRECT | DT_NOPREFIX | DT_SINGLELINE);
    SelectObject(context, before);
    ReleaseDC(list, context);
    if (area.right > SendMessageW(list, LB_GETHORIZONTALEXTENT, 0, 0))
        SendMessageW(list, LB_SETHORIZONTALEXTENT, area.right, 0);
}

extern "C" {

// What one item costs while a list is filled, to be compared between few and many.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_listItem(JNIEnv* env, jclass, jint listHandle, jint items) {
    constexpr int fillings = 3;
    using Add = void(JNICALL*)(JNIEnv*, jclass, jint, jstring, jint);
    auto add = reinterpret_cast<Add>(
        reinterpret_cast<void*>(exported("Java_com_nuvik_wyx_dovr_OS_List_1Add")));
    static const wchar_t text[] = L"An item of a list";
    jstring item = env->NewString(reinterpret_cast<const jchar*>(text), wcslen(text));
    HWND ours = reinterpret_cast<ControlRecord*>(listHandle)->hwnd;
    HWND bare = CreateWindowExW(0, L"LISTBOX", nullptr, GetWindowLongW(ours, GWL_STYLE), 0, 0, 100,
                                100, GetParent(ours), nullptr, nullptr, nullptr);
    double best[2] = {1e12, 1e12};
    for (int i = 0; i < fillings; ++i) {
        best[0] = std::min(
            best[0], timeOfFilling(ours, items, [&] { add(env, nullptr, listHandle, item, -1); }));
        best[1] = std::min(best[1], timeOfFilling(bare, items, [&] { addAndMeasure(bare, text); }));
    }
    DestroyWindow(bare);
    return inTenths(env, best[0], best[1]);
}
}
