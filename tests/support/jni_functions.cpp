#include "test_vm_state.h"
#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <windows.h>

// Behind the characters of every string.
static constexpr char16_t guard = 0x2620;

static std::string toUtf8(const std::u16string& text) {
    return {text.begin(), text.end()}; // names here are ASCII
}

static jclass JNICALL findClass(JNIEnv*, const char* name) {
    if (current->enter("FindClass")) {
        current->raise("java/lang/NoClassDefFoundError");
        return nullptr;
    }
    bool isKnown = current->methods.count(name) || current->classes.count(name);
    if (!isKnown) {
        current->raise("java/lang/NoClassDefFoundError", name);
        return nullptr;
    }
    return current->refer<jclass>(current->classNamed(name));
}

static jint JNICALL throwNew(JNIEnv*, jclass type, const char* message) {
    current->enter("ThrowNew");
    current->raise(objectOf(type)->name, message);
    return JNI_OK;
}

static void JNICALL exceptionDescribe(JNIEnv*) {
    current->enter("ExceptionDescribe", true);
    current->vm->clearException();
}

// A VM's boolean is the lowest byte of what it returns.
static DWORD withRubbishAbove(bool value) { return 0xBAD0BA00 | (value ? JNI_TRUE : JNI_FALSE); }

static DWORD JNICALL exceptionCheck(JNIEnv*) {
    current->enter("ExceptionCheck", true);
    return withRubbishAbove(!current->vm->pendingException.empty());
}

// A real VM ends here; the library must be fit to go on for the test's sake.
static void JNICALL fatalError(JNIEnv*, const char* message) {
    current->enter("FatalError", true);
    current->vm->fatalError = message;
}

static jint JNICALL pushLocalFrame(JNIEnv*, jint) {
    if (!current->enter("PushLocalFrame")) {
        ++current->vm->unreleased;
        return JNI_OK;
    }
    current->raise("java/lang/OutOfMemoryError");
    return JNI_ENOMEM;
}

static jobject JNICALL popLocalFrame(JNIEnv*, jobject result) {
    current->enter("PopLocalFrame", true);
    --current->vm->unreleased;
    return result;
}

static jobject JNICALL newGlobalRef(JNIEnv*, jobject object) {
    if (current->enter("NewGlobalRef") || !object) return nullptr;
    ++current->vm->globalReferences;
    return current->refer<jobject>(objectOf(object), true);
}

static void JNICALL deleteGlobalRef(JNIEnv*, jobject reference) {
    current->enter("DeleteGlobalRef", true);
    objectOf(reference);
    auto* deleted = reinterpret_cast<JavaReference*>(reference);
    if (!deleted->isGlobal) ADD_FAILURE() << "a local reference was deleted as a global one";
    deleted->isAlive = false;
    --current->vm->globalReferences;
}

static jclass JNICALL getObjectClass(JNIEnv*, jobject object) {
    if (current->enter("GetObjectClass")) return nullptr;
    return current->refer<jclass>(current->classNamed(objectOf(object)->className));
}

static jmethodID JNICALL getMethodId(JNIEnv*, jclass type, const char* name,
                                     const char* signature) {
    bool fails = current->enter("GetMethodID");
    JavaObject* found = objectOf(type);
    for (JavaMethod* method : current->methods[found->name])
        if (!fails && method->name == name && method->signature == signature)
            return reinterpret_cast<jmethodID>(method);
    current->raise("java/lang/NoSuchMethodError", std::string(name) + signature);
    return nullptr;
}

static jint callMethod(jobject receiver, jmethodID id, const std::vector<jint>& arguments) {
    objectOf(receiver);
    auto* method = reinterpret_cast<JavaMethod*>(id);
    current->vm->receiver = receiver;
    current->vm->events.push_back(TestVm::eventOf(method->name, arguments));
    auto behavior = current->vm->behavior.find(method->name);
    return behavior == current->vm->behavior.end() ? 0 : behavior->second(arguments);
}

static std::vector<jint> argumentsOf(jmethodID id, va_list list) {
    const std::string& signature = reinterpret_cast<JavaMethod*>(id)->signature;
    std::vector<jint> arguments;
    for (size_t i = 1; signature[i] != ')'; ++i) arguments.push_back(va_arg(list, jint));
    return arguments;
}

static void JNICALL callVoidV(JNIEnv*, jobject receiver, jmethodID id, va_list list) {
    current->enter("CallVoidMethodV");
    callMethod(receiver, id, argumentsOf(id, list));
}

static DWORD JNICALL callBooleanV(JNIEnv*, jobject receiver, jmethodID id, va_list list) {
    current->enter("CallBooleanMethodV");
    return withRubbishAbove(callMethod(receiver, id, argumentsOf(id, list)) & 0xFF);
}

static jint JNICALL callIntV(JNIEnv*, jobject receiver, jmethodID id, va_list list) {
    current->enter("CallIntMethodV");
    return callMethod(receiver, id, argumentsOf(id, list));
}

static void JNICALL callVoidA(JNIEnv*, jobject, jmethodID id, const jvalue* arguments) {
    current->enter("CallVoidMethodA");
    if (reinterpret_cast<JavaMethod*>(id) != &current->respond) {
        ADD_FAILURE() << "CallVoidMethodA of something else than the error handler";
        return;
    }
    JavaObject* message = objectOf(arguments[2].l);
    current->vm->reports.push_back({toUtf8(objectOf(arguments[0].l)->text), arguments[1].i,
                                    message ? message->text : u"", message != nullptr});
}

static jfieldID JNICALL getStaticFieldId(JNIEnv*, jclass, const char* name, const char* type) {
    if (current->enter("GetStaticFieldID")) return nullptr;
    EXPECT_STREQ(name, "wyxErrorHandler");
    EXPECT_STREQ(type, "Lcom/nuvik/wyx/WYXErrorHandler;");
    return reinterpret_cast<jfieldID>(&current->handler);
}

static jobject JNICALL getStaticObjectField(JNIEnv*, jclass, jfieldID) {
    current->enter("GetStaticObjectField");
    if (!current->vm->hasErrorHandler) return nullptr;
    return reinterpret_cast<jobject>(&current->handlerReference);
}

static jstring JNICALL newString(JNIEnv*, const jchar* characters, jsize length) {
    if (current->enter("NewString")) {
        current->raise("java/lang/OutOfMemoryError");
        return nullptr;
    }
    JavaObject* string = current->make("java/lang/String");
    string->text.assign(reinterpret_cast<const char16_t*>(characters), length);
    return current->refer<jstring>(string);
}

static jstring JNICALL newStringUtf(JNIEnv*, const char* text) {
    if (current->enter("NewStringUTF")) {
        current->raise("java/lang/OutOfMemoryError");
        return nullptr;
    }
    JavaObject* string = current->make("java/lang/String");
    string->text.assign(text, text + std::strlen(text));
    return current->refer<jstring>(string);
}

static jsize JNICALL getStringLength(JNIEnv*, jstring string) {
    current->enter("GetStringLength");
    return static_cast<jsize>(objectOf(string)->text.size());
}

static const jchar* JNICALL getStringChars(JNIEnv*, jstring string, jboolean*) {
    if (current->enter("GetStringChars")) {
        current->raise("java/lang/OutOfMemoryError");
        return nullptr;
    }
    ++current->vm->unreleased;
    current->heldText.push_back(
        std::make_unique<std::u16string>(objectOf(string)->text + std::u16string(4, guard)));
    return reinterpret_cast<const jchar*>(current->heldText.back()->data());
}

static void JNICALL releaseStringChars(JNIEnv*, jstring, const jchar*) {
    current->enter("ReleaseStringChars", true);
    --current->vm->unreleased;
}

static const char* JNICALL getStringUtfChars(JNIEnv*, jstring string, jboolean*) {
    if (current->enter("GetStringUTFChars")) {
        current->raise("java/lang/OutOfMemoryError");
        return nullptr;
    }
    current->heldUtf.push_back(std::make_unique<std::string>(toUtf8(objectOf(string)->text)));
    return current->heldUtf.back()->c_str();
}

static void JNICALL releaseStringUtfChars(JNIEnv*, jstring, const char*) {
    current->enter("ReleaseStringUTFChars", true);
}

static jsize JNICALL getArrayLength(JNIEnv*, jarray array) {
    current->enter("GetArrayLength");
    JavaObject* object = objectOf(array);
    return static_cast<jsize>(object->ints.size() + object->bytes.size() + object->elements.size());
}

static jobjectArray JNICALL newObjectArray(JNIEnv*, jsize length, jclass type, jobject) {
    if (current->enter("NewObjectArray")) {
        current->raise("java/lang/OutOfMemoryError");
        return nullptr;
    }
    JavaObject* array = current->make("[L" + objectOf(type)->name + ";");
    array->elements.resize(length);
    return current->refer<jobjectArray>(array);
}

static void JNICALL setObjectArrayElement(JNIEnv*, jobjectArray array, jsize index,
                                          jobject element) {
    current->enter("SetObjectArrayElement");
    objectOf(array)->elements.at(index) = objectOf(element);
}

static jintArray JNICALL newIntArray(JNIEnv*, jsize length) {
    if (current->enter("NewIntArray")) {
        current->raise("java/lang/OutOfMemoryError");
        return nullptr;
    }
    JavaObject* array = current->make("[I");
    array->ints.resize(length);
    return current->refer<jintArray>(array);
}

static jbyteArray JNICALL newByteArray(JNIEnv*, jsize length) {
    if (current->enter("NewByteArray")) {
        current->raise("java/lang/OutOfMemoryError");
        return nullptr;
    }
    JavaObject* array = current->make("[B");
    array->bytes.resize(length);
    return current->refer<jbyteArray>(array);
}

// Not null, not even for an array of length 0.
template <class Element>
static Element* elementsOf(std::vector<Element>* values) {
    values->reserve(1);
    return values->data();
}

static jint* JNICALL getIntElements(JNIEnv*, jintArray array, jboolean*) {
    if (current->enter("GetIntArrayElements")) {
        current->raise("java/lang/OutOfMemoryError");
        return nullptr;
    }
    ++current->vm->unreleased;
    return elementsOf(&objectOf(array)->ints);
}

static void JNICALL releaseIntElements(JNIEnv*, jintArray, jint*, jint mode) {
    current->enter("ReleaseIntArrayElements", true);
    EXPECT_EQ(mode, 0);
    --current->vm->unreleased;
}

static jbyte* JNICALL getByteElements(JNIEnv*, jbyteArray array, jboolean*) {
    if (current->enter("GetByteArrayElements")) {
        current->raise("java/lang/OutOfMemoryError");
        return nullptr;
    }
    ++current->vm->unreleased;
    return elementsOf(&objectOf(array)->bytes);
}

static void JNICALL releaseByteElements(JNIEnv*, jbyteArray, jbyte*, jint mode) {
    current->enter("ReleaseByteArrayElements", true);
    EXPECT_EQ(mode, 0);
    --current->vm->unreleased;
}

static void JNICALL setIntRegion(JNIEnv*, jintArray array, jsize start, jsize length,
                                 const jint* values) {
    current->vm->calls.push_back("SetIntArrayRegion[" + std::to_string(start) + "+" +
                                 std::to_string(length) + "]");
    std::copy(values, values + length, objectOf(array)->ints.begin() + start);
}

static void JNICALL setByteRegion(JNIEnv*, jbyteArray array, jsize start, jsize length,
                                  const jbyte* values) {
    current->vm->calls.push_back("SetByteArrayRegion[" + std::to_string(start) + "+" +
                                 std::to_string(length) + "]");
    std::copy(values, values + length, objectOf(array)->bytes.begin() + start);
}

static jint JNICALL getJavaVm(JNIEnv*, JavaVM** out) {
    current->enter("GetJavaVM");
    *out = current->vm->vm();
    return JNI_OK;
}

static jint JNICALL getEnv(JavaVM*, void** out, jint version) {
    current->enter("GetEnv", true);
    EXPECT_EQ(version, JNI_VERSION_1_1);
    if (!current->vm->attachedThreads.count(GetCurrentThreadId())) return JNI_EDETACHED;
    *out = current->vm->env();
    return JNI_OK;
}

static jint JNICALL attachThread(JavaVM*, void** out, void* arguments) {
    current->enter("AttachCurrentThread", true);
    EXPECT_EQ(arguments, nullptr);
    if (current->vm->refusesToAttach) return JNI_ERR;
    ++current->vm->attachments;
    current->vm->attachedThreads.insert(GetCurrentThreadId());
    *out = current->vm->env();
    return JNI_OK;
}

static jint JNICALL detachThread(JavaVM*) {
    current->enter("DetachCurrentThread", true);
    ++current->vm->detachments;
    current->vm->attachedThreads.erase(GetCurrentThreadId());
    return JNI_OK;
}

template <size_t Slot>
static void unexpectedSlot() {
    ADD_FAILURE() << "the library called slot " << Slot << " of the JNI table";
    abort();
}

static constexpr size_t slotCount = sizeof(JNINativeInterface_) / sizeof(void*);

template <size_t... Slots>
static std::array<void*, slotCount> unexpectedSlots(std::index_sequence<Slots...>) {
    return {reinterpret_cast<void*>(unexpectedSlot<Slots>)...};
}

// A function that returns a word in the place of one that returns a part of it.
template <class Slot, class Function>
static void setSlot(Slot* slot, Function function) {
    *slot = reinterpret_cast<Slot>(reinterpret_cast<void*>(function));
}

const JNINativeInterface_* environmentTable() {
    static JNINativeInterface_ table;
    auto slots = unexpectedSlots(std::make_index_sequence<slotCount>());
    std::memcpy(&table, slots.data(), sizeof(table));
    table.FindClass = findClass;
    table.ThrowNew = throwNew;
    table.ExceptionDescribe = exceptionDescribe;
    setSlot(&table.ExceptionCheck, exceptionCheck);
    table.FatalError = fatalError;
    table.PushLocalFrame = pushLocalFrame;
    table.PopLocalFrame = popLocalFrame;
    table.NewGlobalRef = newGlobalRef;
    table.DeleteGlobalRef = deleteGlobalRef;
    table.GetObjectClass = getObjectClass;
    table.GetMethodID = getMethodId;
    table.CallVoidMethodV = callVoidV;
    setSlot(&table.CallBooleanMethodV, callBooleanV);
    table.CallIntMethodV = callIntV;
    table.CallVoidMethodA = callVoidA;
    table.GetStaticFieldID = getStaticFieldId;
    table.GetStaticObjectField = getStaticObjectField;
    table.NewString = newString;
    table.NewStringUTF = newStringUtf;
    table.GetStringLength = getStringLength;
    table.GetStringChars = getStringChars;
    table.ReleaseStringChars = releaseStringChars;
    table.GetStringUTFChars = getStringUtfChars;
    table.ReleaseStringUTFChars = releaseStringUtfChars;
    table.GetArrayLength = getArrayLength;
    table.NewObjectArray = newObjectArray;
    table.SetObjectArrayElement = setObjectArrayElement;
    table.NewIntArray = newIntArray;
    table.NewByteArray = newByteArray;
    table.GetIntArrayElements = getIntElements;
    table.ReleaseIntArrayElements = releaseIntElements;
    table.GetByteArrayElements = getByteElements;
    table.ReleaseByteArrayElements = releaseByteElements;
    table.SetIntArrayRegion = setIntRegion;
    table.SetByteArrayRegion = setByteRegion;
    table.GetJavaVM = getJavaVm;
    return &table;
}

const JNIInvokeInterface_* invocationTable() {
    static JNIInvokeInterface_ table;
    table.GetEnv = getEnv;
    table.AttachCurrentThread = attachThread;
    table.DetachCurrentThread = detachThread;
    return &table;
}
