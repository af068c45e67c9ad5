#include "jni_proxy.h"
#include "unix_side.h"
#include <stddef.h>
#include <string.h>

extern "C" void* jniThunks[];
extern "C" void* jniThunksEnd[];

namespace {

// thunks.S knows the second word.
struct Proxy {
    const void* table;
    void* real;
};
static_assert(offsetof(Proxy, real) == 4);

} // namespace

static Proxy vm;
static DWORD envSlot = TLS_OUT_OF_INDEXES;

static jint callVm(size_t slot, void* argument1 = nullptr, void* argument2 = nullptr) {
    void** table = *static_cast<void***>(vm.real);
    return static_cast<jint>(callUnix(table[slot], vm.real, argument1, argument2));
}

static size_t slotOf(size_t offset) { return offset / sizeof(void*); }

static jint environment(size_t slot, void** out, void* argument) {
    void* real = nullptr;
    void** table = *static_cast<void***>(vm.real);
    jint result = static_cast<jint>(callUnix(table[slot], vm.real, &real, argument));
    *out = result == JNI_OK ? proxyOf(real) : nullptr;
    return result;
}

static jint JNICALL getEnv(JavaVM*, void** out, jint version) {
    return environment(slotOf(offsetof(JNIInvokeInterface_, GetEnv)), out,
                       reinterpret_cast<void*>(version));
}

static jint JNICALL attach(JavaVM*, void** out, void* arguments) {
    return environment(slotOf(offsetof(JNIInvokeInterface_, AttachCurrentThread)), out, arguments);
}

static jint JNICALL attachAsDaemon(JavaVM*, void** out, void* arguments) {
    return environment(slotOf(offsetof(JNIInvokeInterface_, AttachCurrentThreadAsDaemon)), out,
                       arguments);
}

static jint JNICALL detach(JavaVM*) {
    return callVm(slotOf(offsetof(JNIInvokeInterface_, DetachCurrentThread)));
}

static jint JNICALL destroy(JavaVM*) {
    return callVm(slotOf(offsetof(JNIInvokeInterface_, DestroyJavaVM)));
}

static jint JNICALL getVm(JNIEnv*, JavaVM** out) {
    *out = proxyVm();
    return JNI_OK;
}

static const JNINativeInterface_* environmentTable() {
    static JNINativeInterface_ table;
    if (table.FindClass) return &table;
    size_t size = reinterpret_cast<char*>(jniThunksEnd) - reinterpret_cast<char*>(jniThunks);
    memcpy(&table, jniThunks, size < sizeof(table) ? size : sizeof(table));
    table.GetJavaVM = getVm;
    return &table;
}

void setRealVm(void* realVm) {
    static JNIInvokeInterface_ table;
    table.DestroyJavaVM = destroy;
    table.AttachCurrentThread = attach;
    table.DetachCurrentThread = detach;
    table.GetEnv = getEnv;
    table.AttachCurrentThreadAsDaemon = attachAsDaemon;
    vm = {&table, realVm};
    if (envSlot == TLS_OUT_OF_INDEXES) envSlot = TlsAlloc();
    environmentTable();
}

JavaVM* proxyVm() { return reinterpret_cast<JavaVM*>(&vm); }

JNIEnv* proxyOf(void* realEnv) {
    auto* proxy = static_cast<Proxy*>(TlsGetValue(envSlot));
    if (!proxy) {
        // Lives as long as its thread, and threads are few.
        proxy = static_cast<Proxy*>(HeapAlloc(GetProcessHeap(), 0, sizeof(Proxy)));
        proxy->table = environmentTable();
        TlsSetValue(envSlot, proxy);
    }
    proxy->real = realEnv;
    return reinterpret_cast<JNIEnv*>(proxy);
}
