// zjava: runs a Java program in this Windows process, on the 32-bit Unix Java VM that the
// environment names (ZJAVA_JVM), with the toolkit's library beside this program.

#include "command_line.h"
#include "ending.h"
#include "jni_proxy.h"
#include "native_binding.h"
#include "unix_side.h"
#include <stdio.h>

static constexpr int startFailed = 1; // what the java command answers when it cannot start

static int fail(const std::string& line) {
    fprintf(stderr, "zjava: %s\n", line.c_str());
    return startFailed;
}

// Called by the preloaded library for System.loadLibrary.
static int onLoad(void* realVm) {
    setRealVm(realVm);
    void* env = nullptr;
    if (proxyVm()->GetEnv(&env, JNI_VERSION_1_8) != JNI_OK) return JNI_ERR;
    return bindLibrary(static_cast<JNIEnv*>(env));
}

// Child processes must inherit neither: the address is of this process alone.
static void forgetPreload() {
    void* unsetenv = unixSymbol(nullptr, "unsetenv");
    for (const char* name : {"LD_PRELOAD", "ZJAVA_PRELOAD"}) {
        callUnix(unsetenv, name);
        SetEnvironmentVariableA(name, nullptr);
    }
}

static bool canRead(const std::string& path) {
    constexpr int forReading = 4;
    return callUnix(unixSymbol(nullptr, "access"), path.c_str(), forReading) == 0;
}

static void* loadVm(const char* path) {
    constexpr int nowAndGlobal = 0x102;
    return reinterpret_cast<void*>(callUnix(unixSide()->dlopen, path, nowAndGlobal));
}

// Numbers in the upper halves of the processor's widest registers make code that uses their lower
// halves alone several times slower on some processors: HotSpot leaves some when it starts, where
// it tries these registers, and some when it uses them.
static constexpr char withoutWideRegisters[] = "-XX:UseAVX=0"; // what the user gives comes later

[[gnu::target("avx")]] static void clearUpperHalves() {
    if (__builtin_cpu_supports("avx")) __builtin_ia32_vzeroupper();
}

static std::vector<JavaVMOption> toVmOptions(const std::vector<std::string>& words) {
    std::vector<JavaVMOption> options;
    options.reserve(words.size() + 3);
    options.push_back({const_cast<char*>(withoutWideRegisters), nullptr});
    for (const std::string& word : words)
        options.push_back({const_cast<char*>(word.c_str()), nullptr});
    options.push_back({const_cast<char*>("exit"), reinterpret_cast<void*>(exitThroughWindows)});
    options.push_back({const_cast<char*>("abort"), reinterpret_cast<void*>(abortThroughWindows)});
    return options;
}

static JNIEnv* createVm(void* libjvm, const std::vector<std::string>& words) {
    std::vector<JavaVMOption> options = toVmOptions(words);
    JavaVMInitArgs arguments = {JNI_VERSION_1_8, static_cast<jint>(options.size()), options.data(),
                                JNI_FALSE};
    void* vm = nullptr;
    void* env = nullptr;
    void* create = unixSymbol(libjvm, "JNI_CreateJavaVM");
    if (callUnix(create, &vm, &env, &arguments) != JNI_OK) return nullptr;
    clearUpperHalves();
    setRealVm(vm);
    return proxyOf(env);
}

// In the platform's own character set, as the java command does it.
static jstring toJava(JNIEnv* env, const std::string& text) {
    jsize length = static_cast<jsize>(text.size());
    jbyteArray bytes = env->NewByteArray(length);
    if (!bytes) return nullptr;
    env->SetByteArrayRegion(bytes, 0, length, reinterpret_cast<const jbyte*>(text.data()));
    jclass string = env->FindClass("java/lang/String");
    jmethodID construct = env->GetMethodID(string, "<init>", "([B)V");
    return static_cast<jstring>(env->NewObject(string, construct, bytes));
}

static jobjectArray toJava(JNIEnv* env, const std::vector<std::string>& words) {
    jsize count = static_cast<jsize>(words.size());
    jobjectArray array = env->NewObjectArray(count, env->FindClass("java/lang/String"), nullptr);
    for (jsize i = 0; array && i < count; ++i)
        env->SetObjectArrayElement(array, i, toJava(env, words[i]));
    return array;
}

// The VM's own helper of the java command, which also reads a jar's manifest and tells what is
// wrong with a class.
static jclass loadFromJar(JNIEnv* env, const std::string& jarFile) {
    constexpr jint launchJar = 2;
    jclass helper = env->FindClass("sun/launcher/LauncherHelper");
    if (!helper) return nullptr;
    jmethodID load = env->GetStaticMethodID(helper, "checkAndLoadMain",
                                            "(ZILjava/lang/String;)Ljava/lang/Class;");
    if (!load) return nullptr;
    return static_cast<jclass>(
        env->CallStaticObjectMethod(helper, load, JNI_TRUE, launchJar, toJava(env, jarFile)));
}

static jclass loadClass(JNIEnv* env, std::string name) {
    for (char& character : name)
        if (character == '.') character = '/';
    return env->FindClass(name.c_str());
}

// The pending exception is printed as that of an uncaught one when the thread detaches.
static int end(JNIEnv* env, int code) {
    if (env->ExceptionCheck()) code = startFailed;
    proxyVm()->DetachCurrentThread();
    proxyVm()->DestroyJavaVM(); // waits for the program's other threads
    return code;
}

static int run(JNIEnv* env, const CommandLine& commandLine) {
    bool isJar = !commandLine.jarFile.empty();
    jclass mainClass =
        isJar ? loadFromJar(env, commandLine.jarFile) : loadClass(env, commandLine.mainClass);
    if (!mainClass) {
        env->ExceptionClear();
        fail("class " + commandLine.mainClass + " was not found on the class path " +
             commandLine.classPath);
        return end(env, startFailed);
    }
    jmethodID main = env->GetStaticMethodID(mainClass, "main", "([Ljava/lang/String;)V");
    if (!main) {
        env->ExceptionClear();
        fail("class " + commandLine.mainClass + " has no public static void main(String[])");
        return end(env, startFailed);
    }
    env->CallStaticVoidMethod(mainClass, main, toJava(env, commandLine.arguments));
    return end(env, 0);
}

int main() {
    if (!unixSide()) return fail("start me through launcher/java-on-device");
    // Wine's own conversion of the command line loses what its code page does not have.
    CommandLine commandLine;
    std::string problem =
        parse(wordsBehindProgram(unixSide()->arguments, unixSide()->argumentCount), &commandLine);
    if (!problem.empty()) return fail(problem);
    if (!commandLine.jarFile.empty() && !canRead(commandLine.jarFile))
        return fail("there is no jar file " + commandLine.jarFile);
    const char* path = unixSetting("ZJAVA_JVM");
    if (!path) return fail("ZJAVA_JVM does not name a Java VM");
    forgetPreload();

    void* libjvm = loadVm(path);
    if (!libjvm) return fail(std::string("the Java VM cannot be loaded: ") + path);
    shareThreads();
    unixSide()->onLoad = reinterpret_cast<void*>(onLoad);
    callUnix(unixSymbol(nullptr, "zjava_share_signals"), libjvm);
    callUnix(unixSymbol(nullptr, "zjava_end_with_server"));
    reportFaults();
    setCompanions(commandLine.companions);
    setChecking(commandLine.checking);

    std::vector<std::string> words = commandLine.vmOptions;
    words.push_back("-Djava.class.path=" + commandLine.classPath);
    JNIEnv* env = createVm(libjvm, words);
    if (!env) return fail("the Java VM cannot be started");
    callUnix(unixSymbol(nullptr, "zjava_share_requests"));
    int code = run(env, commandLine);
    exitThroughWindows(code);
}
