#pragma once
// A Java VM of plain objects behind a real JNI function table.
//
// It records every call by name and every Java method called with its arguments, can fail a call
// on demand, and fails the test when the library calls a slot that it should not need, uses a
// reference that was deleted, or calls what JNI forbids while an exception is pending. The
// characters of strings are not NUL-terminated. One VM at a time.

#include <functional>
#include <jni.h>
#include <map>
#include <set>
#include <string>
#include <vector>

class TestVm {
  public:
    TestVm();
    ~TestVm();
    TestVm(const TestVm&) = delete;
    TestVm& operator=(const TestVm&) = delete;

    JNIEnv* env();
    JavaVM* vm();

    // Values for natives; local references that live as long as the VM.
    jobject newObject(const std::string& className);
    jstring newString(const std::u16string& text);
    jintArray newInts(const std::vector<jint>& values);
    jbyteArray newBytes(const std::vector<jbyte>& values);

    // Values from natives.
    std::u16string text(jobject string) const;
    std::vector<jint> ints(jobject array) const;
    std::vector<jbyte> bytes(jobject array) const;
    std::vector<std::u16string> texts(jobject stringArray) const;

    // Declares a class with its instance methods, "name(signature)result" each.
    void declare(const std::string& className, const std::vector<std::string>& methods);

    // What a called method does and answers; without one it answers 0.
    std::map<std::string, std::function<jint(const std::vector<jint>&)>> behavior;

    // The called methods with their arguments, as eventOf has them.
    std::vector<std::string> events;
    static std::string eventOf(const std::string& method, const std::vector<jint>& arguments);
    // Whose method was called last: the reference that the library called it by.
    jobject receiver = nullptr;
    std::vector<std::string> takeEvents();

    // The JNI functions called, by name.
    std::vector<std::string> calls;
    int countCalls(const std::string& name) const;

    // Fails the nth call of the function from now on (1 is the next); it raises what a VM raises.
    void failCall(const std::string& function, int nth = 1);

    // What the error handler was told.
    struct Report {
        std::string function;
        jint code;
        std::u16string message;
        bool hasMessage;
    };
    std::vector<Report> reports;
    bool hasErrorHandler = true;

    std::string pendingException; // class name, empty for none
    std::string pendingMessage;
    std::string fatalError;
    void clearException();

    int globalReferences = 0;
    int unreleased = 0; // strings and arrays whose elements are held, and frames

    // Threads that the VM knows; the creating one is.
    bool refusesToAttach = false;
    std::set<unsigned long> attachedThreads;
    int attachments = 0;
    int detachments = 0;

    struct State;

  private:
    State* state;
};
