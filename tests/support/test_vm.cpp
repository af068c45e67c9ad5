#include "test_vm_state.h"
#include "toolkit.h"
#include <algorithm>
#include <utility>
#include <windows.h>

TestVm::State* current;

JavaObject* objectOf(jobject reference) {
    auto* found = reinterpret_cast<JavaReference*>(reference);
    if (!found) return nullptr;
    if (!found->isAlive) ADD_FAILURE() << "a deleted reference was used";
    return found->object;
}

TestVm::TestVm() : state(new State) {
    current = state;
    state->environment = environmentTable();
    tellToolkitOf(state->environment);
    state->invocation = invocationTable();
    state->vm = this;
    state->handler.className = "test/Handler";
    state->methods["test/Handler"] = {&state->respond};
    for (const char* name :
         {"java/lang/String", "java/lang/OutOfMemoryError", "com/nuvik/wyx/k4tr/OS"})
        state->classNamed(name);
    attachedThreads.insert(GetCurrentThreadId());
}

TestVm::~TestVm() {
    EXPECT_EQ(unreleased, 0) << "characters, elements or a frame are still held";
    current = nullptr;
    delete state;
}

JNIEnv* TestVm::env() { return reinterpret_cast<JNIEnv*>(&state->environment); }
JavaVM* TestVm::vm() { return reinterpret_cast<JavaVM*>(&state->invocation); }

jobject TestVm::newObject(const std::string& className) {
    return state->refer<jobject>(state->make(className));
}

jstring TestVm::newString(const std::u16string& text) {
    JavaObject* string = state->make("java/lang/String");
    string->text = text;
    return state->refer<jstring>(string);
}

jintArray TestVm::newInts(const std::vector<jint>& values) {
    JavaObject* array = state->make("[I");
    array->ints = values;
    return state->refer<jintArray>(array);
}

jbyteArray TestVm::newBytes(const std::vector<jbyte>& values) {
    JavaObject* array = state->make("[B");
    array->bytes = values;
    return state->refer<jbyteArray>(array);
}

std::u16string TestVm::text(jobject string) const { return objectOf(string)->text; }
std::vector<jint> TestVm::ints(jobject array) const { return objectOf(array)->ints; }
std::vector<jbyte> TestVm::bytes(jobject array) const { return objectOf(array)->bytes; }

std::vector<std::u16string> TestVm::texts(jobject stringArray) const {
    std::vector<std::u16string> texts;
    for (const JavaObject* element : objectOf(stringArray)->elements)
        texts.push_back(element->text);
    return texts;
}

void TestVm::declare(const std::string& className, const std::vector<std::string>& methods) {
    state->classNamed(className);
    for (const std::string& method : methods) {
        size_t split = method.find('(');
        state->allMethods.push_back(std::make_unique<JavaMethod>(
            JavaMethod{method.substr(0, split), method.substr(split)}));
        state->methods[className].push_back(state->allMethods.back().get());
    }
}

std::string TestVm::eventOf(const std::string& method, const std::vector<jint>& arguments) {
    std::string event = method + "(";
    for (size_t i = 0; i < arguments.size(); ++i)
        event += (i ? ", " : "") + std::to_string(arguments[i]);
    return event + ")";
}

std::vector<std::string> TestVm::takeEvents() { return std::exchange(events, {}); }

int TestVm::countCalls(const std::string& name) const {
    return static_cast<int>(std::count(calls.begin(), calls.end(), name));
}

void TestVm::failCall(const std::string& function, int nth) { state->failures[function] = nth; }

void TestVm::clearException() {
    pendingException.clear();
    pendingMessage.clear();
}
