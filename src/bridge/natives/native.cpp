#include "bridge/natives/native.h"
#include "display/widget.h"
#include "graphics/graphics.h"

namespace native {

Argument<jstring>::Argument(Taking& taking, jstring java) : env(taking.env), string(java) {
    if (!string || taking.raised) return;
    characters = env->GetStringChars(string, nullptr);
    taking.raised = isExceptionPending(env);
    if (taking.raised) return;
    BYTE mustFree;
    text = toNativeString(characters, env->GetStringLength(string), &mustFree);
    if (text) return;
    throwOutOfMemory(env, "Failed to allocate space for string");
    taking.raised = true;
}

Argument<jstring>::~Argument() {
    freeBlock(text);
    if (characters) env->ReleaseStringChars(string, characters);
}

Argument<jintArray>::Argument(Taking& taking, jintArray java) : env(taking.env), array(java) {
    if (!array || taking.raised) return;
    elements.values = env->GetIntArrayElements(array, nullptr);
    taking.raised = isExceptionPending(env);
    if (!taking.raised) elements.count = env->GetArrayLength(array);
}

Argument<jintArray>::~Argument() {
    if (elements.values) env->ReleaseIntArrayElements(array, elements.values, 0);
}

Argument<jbyteArray>::Argument(Taking& taking, jbyteArray java) : env(taking.env), array(java) {
    if (!array || taking.raised) return;
    elements.values = env->GetByteArrayElements(array, nullptr);
    taking.raised = isExceptionPending(env);
    if (!taking.raised) elements.count = env->GetArrayLength(array);
}

Argument<jbyteArray>::~Argument() {
    if (elements.values) env->ReleaseByteArrayElements(array, elements.values, 0);
}

static void discard(GraphicsRecord* graphics) {
    if (!graphics) return;
    ErrorRecord unheard = {};
    Graphics_Dispose(graphics, &unheard);
    Error_Clear(&unheard);
}

jint fail(JNIEnv* env, const Description& native, jint result, ErrorRecord* error) {
    if (native.made == Made::widget) Widget_Discard(reinterpret_cast<WidgetRecord*>(result));
    if (native.made == Made::graphics) discard(reinterpret_cast<GraphicsRecord*>(result));
    WYX_ErrorHandler(env, native.name, error);
    return 0;
}

} // namespace native
