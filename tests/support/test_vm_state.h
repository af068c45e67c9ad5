#pragma once
// What the VM of the tests is made of: its objects, references and methods. For test_vm.cpp, which
// is what tests see of it, and for jni_functions.cpp, which is what the library sees.

#include "test_vm.h"
#include <gtest/gtest.h>
#include <memory>

struct JavaMethod {
    std::string name;
    std::string signature;
};

struct JavaObject {
    std::string className;
    std::string name; // of a class object
    std::u16string text;
    std::vector<jint> ints;
    std::vector<jbyte> bytes;
    std::vector<JavaObject*> elements;
};

struct JavaReference {
    JavaObject* object;
    bool isGlobal;
    bool isAlive = true;
};

struct TestVm::State {
    const JNINativeInterface_* environment; // first: a JNIEnv points here
    const JNIInvokeInterface_* invocation;  // a JavaVM points here
    TestVm* vm;
    std::vector<std::unique_ptr<JavaObject>> objects;
    std::vector<std::unique_ptr<JavaReference>> references;
    std::map<std::string, JavaObject*> classes;
    std::map<std::string, std::vector<JavaMethod*>> methods;
    std::vector<std::unique_ptr<JavaMethod>> allMethods;
    std::map<std::string, int> failures;
    std::vector<std::unique_ptr<std::u16string>> heldText;
    std::vector<std::unique_ptr<std::string>> heldUtf;
    JavaObject handler;
    JavaReference handlerReference = {&handler, true};
    JavaMethod respond = {"respond", "(Ljava/lang/String;ILjava/lang/String;)V"};

    JavaObject* make(const std::string& className) {
        objects.push_back(std::make_unique<JavaObject>());
        objects.back()->className = className;
        return objects.back().get();
    }
    template <class Ref>
    Ref refer(JavaObject* object, bool isGlobal = false) {
        references.push_back(std::make_unique<JavaReference>(JavaReference{object, isGlobal}));
        return reinterpret_cast<Ref>(references.back().get());
    }
    JavaObject* classNamed(const std::string& name) {
        JavaObject*& found = classes[name];
        if (!found) {
            found = make("java/lang/Class");
            found->name = name;
        }
        return found;
    }
    // Whether this call was asked to fail.
    bool enter(const char* function, bool allowedWithException = false) {
        vm->calls.emplace_back(function);
        if (!vm->pendingException.empty() && !allowedWithException)
            ADD_FAILURE() << function << " was called with " << vm->pendingException << " pending";
        auto failure = failures.find(function);
        if (failure == failures.end() || --failure->second > 0) return false;
        failures.erase(failure);
        return true;
    }
    void raise(const std::string& name, const std::string& message = {}) {
        vm->pendingException = name;
        vm->pendingMessage = message;
    }
};

// The VM that lives; there is one at a time.
extern TestVm::State* current;

// Null of none; fails the test when the reference was deleted.
JavaObject* objectOf(jobject reference);

// Their functions work on the current VM.
const JNINativeInterface_* environmentTable();
const JNIInvokeInterface_* invocationTable();
