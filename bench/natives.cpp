// The plain things that the library's are measured against.

#include "natives.h"
#include "compare.h"
#include "control/control.h"
#include "display/callbacks.h"
#include "display/widget.h"

static constexpr jint selection = CB_SELECTION;

// The VM has loaded it.
HMODULE theLibrary() { return GetModuleHandleW(L"zemvolt11.dll"); }

void* exportOf(const std::string& name) {
    return reinterpret_cast<void*>(GetProcAddress(theLibrary(), name.c_str()));
}

extern "C" {

// Exported as it stands: what the VM's way to a native costs by itself.
__declspec(dllexport) jint JNICALL Java_com_nuvik_bench_Natives_empty(JNIEnv*, jclass, jint id) {
    return id;
}

// Calls the toolkit's native past whatever stands between Java and it.
__declspec(dllexport) jint JNICALL
    Java_com_nuvik_bench_Natives_red(JNIEnv* env, jclass, jint color) {
    return OS::Color_GetRed(env, color);
}

__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_callback(JNIEnv* env, jclass, jint widgetHandle) {
    auto* widget = reinterpret_cast<WidgetRecord*>(widgetHandle);
    auto* fire = entryPoint<void(DWORD, const char*, CallbackTarget*, ...)>("vaCallback");
    JavaVM* vm = nullptr;
    env->GetJavaVM(&vm);
    jobject receiver = widget->callbackTarget->object;
    jmethodID method = env->GetMethodID(env->GetObjectClass(receiver), "selected", "()V");
    return compare(
        env, 1000, [&] { fire(selection, "()V", widget->callbackTarget); },
        [&] {
            JNIEnv* current = nullptr;
            vm->GetEnv(reinterpret_cast<void**>(&current), JNI_VERSION_1_1);
            current->CallVoidMethod(receiver, method);
        });
}

static LRESULT CALLBACK bareProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto before = reinterpret_cast<WNDPROC>(GetWindowLongW(window, GWL_USERDATA));
    return CallWindowProcW(before, window, message, wParam, lParam);
}

__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_message(JNIEnv* env, jclass, jint controlHandle) {
    HWND ours = reinterpret_cast<ControlRecord*>(controlHandle)->hwnd;
    HWND bare = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD, 0, 0, 10, 10, GetParent(ours),
                                nullptr, nullptr, nullptr);
    LONG before = SetWindowLongW(bare, GWL_WNDPROC, reinterpret_cast<LONG>(bareProc));
    SetWindowLongW(bare, GWL_USERDATA, before);
    jintArray result = compare(
        env, 200, [&] { SendMessageW(ours, WM_USER + 50, 0, 0); },
        [&] { SendMessageW(bare, WM_USER + 50, 0, 0); });
    DestroyWindow(bare);
    return result;
}
}
