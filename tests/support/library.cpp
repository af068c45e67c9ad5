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

void* exportOf(const std::string& name) {
    theLibrary();
    if (void* found = toolkitExport(name.c_str())) return found;
    std::fprintf(stderr, "zemvolt11.dll does not export %s\n", name.c_str());
    std::exit(1);
}
