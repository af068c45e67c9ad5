#include "bridge/widget.h"
#include "bridge/native.h"

BASE_NATIVE(void, Widget, Dispose, (jint widget), (widget))

extern "C" void JNICALL Java_com_nuvik_wyx_k4tr_OS_Widget_1SetData(JNIEnv* env, jclass, jint widget,
                                                                   jobject data) {
    Widget_SetData(env, reinterpret_cast<WidgetRecord*>(widget), data);
}
