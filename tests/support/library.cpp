#include "library.h"
#include "toolkit.h"
#include <cstdio>
#include <cstdlib>

HMODULE theLibrary() {
    static HMODULE library = loadToolkit();
    if (!library) {
        std::fprintf(stderr, "zemvolt11.dll cannot be loaded: %lu\n", GetLastError());
        std::exit(1);
    }
    return library;
}

static void* find(const std::string& name) {
    theLibrary();
    return toolkitExport(name.c_str());
}

static void* require(void* found, const std::string& name) {
    if (found) return found;
    std::fprintf(stderr, "zemvolt11.dll does not export %s\n", name.c_str());
    std::exit(1);
}

void* exportOf(const std::string& name) { return require(find(name), name); }

void* nativeNamed(const std::string& javaName) {
    std::string escaped;
    for (char character : javaName) escaped += character == '_' ? "_1" : std::string(1, character);
    void* base = find("Java_com_nuvik_wyx_k4tr_OS_" + escaped);
    return require(base ? base : find("Java_com_nuvik_wyx_dovr_OS_" + escaped), javaName);
}
