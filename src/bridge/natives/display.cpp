#include "display/display.h"
#include "bridge/native.h"
#include "display/services.h"

BASE_NATIVE(jint, Display, New, (), ())
BASE_NATIVE(jboolean, Display, ReadAndDispatch, (jint display), (display))
BASE_NATIVE(jint, Display, Sleep, (jint display), (display))
BASE_NATIVE(jint, Display, Wake, (jint display), (display))
WIDGET_NATIVE(void, Display, Beep, (jint display), (display))
WIDGET_NATIVE(jint, Display, GetSystemColor, (jint device, jint id), (device, id))
WIDGET_NATIVE(jintArray, Display, GetInsets, (jint display), (display))
WIDGET_NATIVE(jboolean, Display, PostKeyEvent, (jint display, jint type, jint key, jchar character),
              (display, type, key, character))
WIDGET_NATIVE(jboolean, Display, PostPointerEvent, (jint display, jint type, jint button),
              (display, type, button))
WIDGET_NATIVE(jboolean, Display, PostPointerMoveEvent, (jint display, jint x, jint y),
              (display, x, y))
WIDGET_NATIVE(void, Display, ClearFocus, (jint display), (display))
WIDGET_NATIVE(void, Display, SetFullScreenShell, (jint display, jint shell), (display, shell))

extern "C" void JNICALL Java_com_nuvik_wyx_k4tr_OS_Display_1InitCallbacks(JNIEnv* env, jclass,
                                                                          jint display,
                                                                          jobject target) {
    Display_InitCallbacks(env, reinterpret_cast<DisplayRecord*>(display), target);
}

extern "C" void JNICALL Java_com_nuvik_wyx_k4tr_OS_Display_1RegisterCallback(JNIEnv* env, jclass,
                                                                             jint display, jint id,
                                                                             jstring className,
                                                                             jstring methodName) {
    Display_RegisterCallback(env, reinterpret_cast<DisplayRecord*>(display), id, className,
                             methodName);
}
