#pragma once
// What the library gets as JNIEnv and JavaVM: proxies whose tables translate between the calling
// conventions. Functions may be called on any thread; an environment belongs to its thread.

#include <jni.h>

// The proxy's environment for the calling thread, in place of the VM's own.
JNIEnv* proxyOf(void* realEnv);

// The proxy of the VM. setRealVm is called once, before anything else here.
JavaVM* proxyVm();
void setRealVm(void* realVm);
