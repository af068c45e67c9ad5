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

// "Class_Method", under which errors are reported: what follows the package and the class of the
// natives, where "_1" stands for "_".
static void nameMethod(const Description& native, char (&name)[longestEntryName]) {
    static constexpr char natives[] = "Java_com_nuvik_wyx_k4tr_OS_";
    char* end = name;
    for (const char* next = native.entryName + sizeof(natives) - 1; *next; next++)
        if (next[0] != '1' || next[-1] != '_') *end++ = *next;
    *end = '\0';
}

jint fail(JNIEnv* env, const Description& native, jint result, ErrorRecord* error) {
    if (native.made == Made::widget) Widget_Discard(reinterpret_cast<WidgetRecord*>(result));
    if (native.made == Made::graphics) discard(reinterpret_cast<GraphicsRecord*>(result));
    char name[longestEntryName];
    nameMethod(native, name);
    WYX_ErrorHandler(env, name, error);
    return 0;
}

} // namespace native
