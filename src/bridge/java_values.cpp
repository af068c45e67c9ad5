#include "bridge/java_values.h"
#include "bridge/memory.h"
#include "bridge/narrow.h"
#include "bridge/string_list.h"
#include <string.h>

static_assert(sizeof(jchar) == sizeof(wchar_t), "strings cross without transcoding");

extern "C" jstring convertToJavaString(JNIEnv* env, const wchar_t* text) {
    if (!text) return nullptr;
    return env->NewString(reinterpret_cast<const jchar*>(text), wcslen(text));
}

static jintArray createJavaInts(JNIEnv* env, const jint* values, jint count) {
    jintArray array = env->NewIntArray(count);
    if (isExceptionPending(env)) return nullptr;
    for (jint i = 0; i < count; ++i) env->SetIntArrayRegion(array, i, 1, &values[i]);
    return array;
}

static jintArray createJavaFour(JNIEnv* env, jint a, jint b, jint c, jint d) {
    const jint values[] = {a, b, c, d};
    return createJavaInts(env, values, 4);
}

extern "C" jintArray createJavaRect(JNIEnv* env, jint x, jint y, jint width, jint height) {
    return createJavaFour(env, x, y, width, height);
}

extern "C" jintArray createJavaPoint(JNIEnv* env, jint x, jint y) {
    const jint values[] = {x, y};
    return createJavaInts(env, values, 2);
}

jintArray createJavaIntArray4(JNIEnv* env, jint left, jint top, jint right, jint bottom) {
    return createJavaFour(env, left, top, right, bottom);
}

jintArray createJavaMaskArray(JNIEnv* env, jint red, jint green, jint blue, jint alpha) {
    return createJavaFour(env, red, green, blue, alpha);
}

jintArray createJavaIntArray(JNIEnv* env, const jint* values, jint count) {
    jintArray array = env->NewIntArray(count);
    if (array && count > 0) env->SetIntArrayRegion(array, 0, count, values);
    return array;
}

jbyteArray createJavaByteArray(JNIEnv* env, const jbyte* values, jint count) {
    jbyteArray array = env->NewByteArray(count);
    if (array && count > 0) env->SetByteArrayRegion(array, 0, count, values);
    return array;
}

jobjectArray convertToJavaStringArray(JNIEnv* env, const wchar_t* const* list) {
    jclass stringClass = env->FindClass("java/lang/String");
    if (!stringClass) return nullptr;
    int count = stringListCount(list);
    jobjectArray array = env->NewObjectArray(count, stringClass, nullptr);
    if (isExceptionPending(env)) return nullptr;

    if (env->PushLocalFrame(count) != JNI_OK) return nullptr;
    for (int i = 0; i < count; ++i) {
        BYTE mustFree;
        const wchar_t* element = stringListGet(list, i, &mustFree);
        jstring string = convertToJavaString(env, element);
        if (mustFree) freeBlock(const_cast<wchar_t*>(element));
        if (!string) {
            env->PopLocalFrame(nullptr);
            return nullptr;
        }
        env->SetObjectArrayElement(array, i, string);
    }
    env->PopLocalFrame(nullptr);
    return array;
}

wchar_t* toNativeString(const jchar* characters, jint length, BYTE* mustFreeOut) {
    *mustFreeOut = 0;
    wchar_t* text = allocateArray<wchar_t>(length + 1);
    if (!text) return nullptr;
    memcpy(text, characters, length * sizeof(wchar_t));
    *mustFreeOut = 1;
    return text;
}

void throwOutOfMemory(JNIEnv* env, const char* message) {
    jclass error = env->FindClass("java/lang/OutOfMemoryError");
    if (error) {
        env->ThrowNew(error, message);
        return;
    }
    if (!isExceptionPending(env)) env->FatalError(message);
}
