// A list against a bare list box of the same kind whose items are measured too, as they must be
// for the horizontal bar.

#include "compare.h"
#include "control/control.h"
#include "natives.h"

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

// Of the same size, and with the same font to measure with.
static HWND newBareList(HWND like) {
    RECT area;
    GetWindowRect(like, &area);
    DWORD style =
        GetWindowLongW(like, GWL_STYLE) | WS_HSCROLL | WS_VSCROLL; // an empty one hides them
    HWND list = CreateWindowExW(0, L"LISTBOX", nullptr, style, 0, 0, area.right - area.left,
                                area.bottom - area.top, GetParent(like), nullptr, nullptr, nullptr);
    SendMessageW(list, WM_SETFONT, SendMessageW(like, WM_GETFONT, 0, 0), FALSE);
    return list;
}

extern "C" {

// What one item costs while a list is filled, to be compared between few and many.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_listItem(JNIEnv* env, jclass, jint listHandle, jint items) {
    constexpr int fillings = 9;
    static const wchar_t text[] = L"An item of a list";
    jstring item = env->NewString(reinterpret_cast<const jchar*>(text), wcslen(text));
    HWND ours = reinterpret_cast<ControlRecord*>(listHandle)->hwnd;
    HWND bare = newBareList(ours);
    jintArray result = medianOf(
        env, fillings,
        [&] {
            return timeOfFilling(ours, items, [&] { OS::List_Add(env, listHandle, item, -1); });
        },
        [&] { return timeOfFilling(bare, items, [&] { addAndMeasure(bare, text); }); });
    DestroyWindow(bare);
    return result;
}
}
