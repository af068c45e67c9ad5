// A widget that the toolkit does not have, added by a library of its own: a gauge, which shows how
// full something is and which a person sets by a tap. It fires the selection callback then.

#include "zemvolt11.h"

namespace {

constexpr int fullLevel = 100;
constexpr wchar_t className[] = L"Gauge";

struct GaugeRecord {
    ControlRecord control;
    BYTE toolkit[WYX_CONTROL_RECORD_SIZE - sizeof(ControlRecord)]; // the toolkit's own
    int level;                                                     // 0 to fullLevel
};

// The toolkit keeps a window's record behind its user data.
GaugeRecord* gaugeOf(HWND window) {
    return reinterpret_cast<GaugeRecord*>(GetWindowLongW(window, GWL_USERDATA));
}

GaugeRecord* gaugeOf(jint handle) { return reinterpret_cast<GaugeRecord*>(handle); }

int widthOf(HWND window) {
    RECT client;
    return GetClientRect(window, &client) ? client.right : 0;
}

COLORREF colorOf(HWND window, const ColorRecord* own, UINT defaultMessage) {
    if (own) return own->color;
    return static_cast<COLORREF>(SendMessageW(window, defaultMessage, 0, 0));
}

void fill(HDC context, const RECT& area, COLORREF color) {
    HBRUSH brush = CreateSolidBrush(color);
    if (!brush) return;
    FillRect(context, &area, brush);
    DeleteObject(brush);
}

LRESULT paint(HWND window, const GaugeRecord* gauge) {
    PAINTSTRUCT painting;
    HDC context = BeginPaint(window, &painting);
    RECT area;
    GetClientRect(window, &area);
    RECT empty = area;
    empty.left = area.right = area.right * gauge->level / fullLevel;
    fill(context, area, colorOf(window, gauge->control.foreground, WYX_GET_FOREGROUND));
    fill(context, empty, colorOf(window, gauge->control.background, WYX_GET_BACKGROUND));
    EndPaint(window, &painting);
    return 0;
}

void setLevel(GaugeRecord* gauge, int level) {
    if (level < 0) level = 0;
    if (level > fullLevel) level = fullLevel;
    gauge->level = level;
    InvalidateRect(gauge->control.hwnd, nullptr, FALSE);
}

LRESULT tapped(HWND window, GaugeRecord* gauge, WPARAM wParam, LPARAM lParam) {
    LRESULT result = _Control_Proc(window, WM_LBUTTONUP, wParam, lParam);
    int width = widthOf(window);
    if (width == 0) return result;
    setLevel(gauge, static_cast<short>(LOWORD(lParam)) * fullLevel / width);
    vaCallback(WYX_CB_SELECTION, "()V", gauge->control.callbackTarget);
    return result;
}

LRESULT tellMinimumSize(POINT* size) {
    constexpr POINT smallest = {50, 12};
    *size = smallest;
    return 0;
}

LRESULT CALLBACK gaugeProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    GaugeRecord* gauge = gaugeOf(window);
    if (!gauge) return DefWindowProcW(window, message, wParam, lParam);
    switch (message) {
    case WM_PAINT:
        return paint(window, gauge);
    case WM_LBUTTONUP:
        return tapped(window, gauge, wParam, lParam);
    case WYX_GET_MINIMUM_SIZE:
        return tellMinimumSize(reinterpret_cast<POINT*>(wParam));
    default:
        return _Control_Proc(window, message, wParam, lParam);
    }
}

// The toolkit makes the window, so the class must not be this module's alone. Registering it again
// does nothing.
void registerClass() {
    WNDCLASSW description = {};
    description.style = CS_GLOBALCLASS;
    description.lpfnWndProc = DefWindowProcW;
    description.lpszClassName = className;
    RegisterClassW(&description);
}

ControlRecord* makeGauge(jint parent, jint style, ErrorRecord* error) {
    if (!parent) {
        Win32Error_SetError(error, WYX_ERROR_FAILED, L"A gauge needs a parent");
        return nullptr;
    }
    registerClass();
    return _Control_New(className, sizeof(GaugeRecord), gaugeProc,
                        reinterpret_cast<ControlRecord*>(parent), style,
                        _Control_Style() | WS_BORDER, 0, error);
}

} // namespace

extern "C" {

JNIEXPORT jint JNICALL Java_com_nuvik_examples_Gauge_Gauge_1New(JNIEnv* env, jclass, jint parent,
                                                                jint style) {
    ErrorRecord error = {};
    ControlRecord* gauge = makeGauge(parent, style, &error);
    if (!error.code) return reinterpret_cast<jint>(gauge);
    WYX_ErrorHandler(env, "Gauge_New", &error);
    return 0;
}

JNIEXPORT void JNICALL Java_com_nuvik_examples_Gauge_Gauge_1SetLevel(JNIEnv*, jclass, jint gauge,
                                                                     jint level) {
    setLevel(gaugeOf(gauge), level);
}

JNIEXPORT jint JNICALL Java_com_nuvik_examples_Gauge_Gauge_1GetLevel(JNIEnv*, jclass, jint gauge) {
    return gaugeOf(gauge)->level;
}

BOOL WINAPI DllMain(HINSTANCE, DWORD, void*) { return TRUE; }
}
