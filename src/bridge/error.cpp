#include "bridge/error.h"
#include "bridge/java_values.h"
#include "bridge/memory.h"
#include <string.h>

static constexpr wchar_t separator[] = L"::";
static constexpr wchar_t noSystemText[] = L"FormatMessage failed";
// The separator and the terminator, with room to spare.
static constexpr UINT extraCharacters = 5 + 1;

// The pointer stays: who reads the record later must not free the message again.
static void freeMessage(ErrorRecord* record) {
    if (record->ownsMessage) freeBlock(const_cast<wchar_t*>(record->message));
    record->ownsMessage = FALSE;
}

ErrorRecord* Error_Set(ErrorRecord* record, LONG code, const wchar_t* message, BOOL ownsMessage) {
    if (!record) return record;
    freeMessage(record);
    record->code = code;
    record->message = message;
    record->ownsMessage = ownsMessage;
    return record;
}

ErrorRecord* Error_SetCode(ErrorRecord* record, LONG code) {
    return Error_Set(record, code, nullptr, FALSE);
}

void Error_Clear(ErrorRecord* record) { Error_SetCode(record, errorNone); }

static wchar_t* joinMessage(const wchar_t* prefix, const wchar_t* text) {
    wchar_t* joined = allocateArray<wchar_t>(wcslen(prefix) + wcslen(text) + extraCharacters);
    if (!joined) return nullptr;
    wcscpy(joined, prefix);
    wcscat(joined, separator);
    wcscat(joined, text);
    return joined;
}

static wchar_t* describeSystemError(DWORD code, const wchar_t* prefix) {
    wchar_t* text = nullptr;
    DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM,
                                  nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                                  reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    if (length == 0) return joinMessage(prefix, noSystemText);
    wchar_t* joined = joinMessage(prefix, text);
    LocalFree(text);
    return joined;
}

extern "C" void Win32Error_SetError(ErrorRecord* record, LONG code, const wchar_t* message) {
    if (!record) return;
    if (code < 0) {
        Error_Set(record, code, message, FALSE);
        return;
    }
    bool outOfMemory = code == ERROR_NOT_ENOUGH_MEMORY || code == ERROR_OUTOFMEMORY;
    LONG reported = outOfMemory ? errorOutOfMemory : errorFailed;
    wchar_t* described = describeSystemError(code, message);
    // Without memory for the whole text the error is still told, by its prefix alone.
    if (described)
        Error_Set(record, reported, described, TRUE);
    else
        Error_Set(record, reported, message, FALSE);
}

void Win32Error_SetLast(ErrorRecord* record, const wchar_t* message) {
    Win32Error_SetError(record, GetLastError(), message);
}

extern "C" LONG WYX_GetError(const ErrorRecord* record) {
    return record ? record->code : errorNone;
}

static jobject findErrorHandler(JNIEnv* env) {
    jclass os = env->FindClass("com/nuvik/wyx/k4tr/OS");
    if (!os) return nullptr;
    jfieldID field =
        env->GetStaticFieldID(os, "wyxErrorHandler", "Lcom/nuvik/wyx/WYXErrorHandler;");
    if (!field) return nullptr;
    jobject handler = env->GetStaticObjectField(os, field);
    if (!handler) env->FatalError("Error occured and no error handler has been set");
    return handler;
}

static void respond(JNIEnv* env, jobject handler, jstring function, LONG code, jstring message) {
    jclass handlerClass = env->GetObjectClass(handler);
    if (!handlerClass) return;
    jmethodID method =
        env->GetMethodID(handlerClass, "respond", "(Ljava/lang/String;ILjava/lang/String;)V");
    if (!method) return;
    jvalue arguments[3];
    arguments[0].l = function;
    arguments[1].i = code;
    arguments[2].l = message;
    env->CallVoidMethodA(handler, method, arguments);
}

extern "C" void WYX_ErrorHandler(JNIEnv* env, const char* functionName, ErrorRecord* record) {
    // What a listener threw has to surface first, and until then nothing may be made.
    jobject handler = isExceptionPending(env) ? nullptr : findErrorHandler(env);
    jstring function = handler && functionName ? env->NewStringUTF(functionName) : nullptr;
    jstring message = function ? convertToJavaString(env, record->message) : nullptr;
    freeMessage(record);
    if (!function) return;
    if (record->message && !message) return;
    respond(env, handler, function, record->code, message);
}
