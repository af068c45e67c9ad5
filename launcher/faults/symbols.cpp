#include "symbols.h"
#include <cxxabi.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

namespace {

struct Found {
    const IMAGE_SYMBOL* symbol;
    DWORD offset;
};

// A module's file in memory. Its linker's symbols lie behind its sections.
class ImageFile {
  public:
    explicit ImageFile(const char* path) {
        HANDLE file =
            CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) return;
        HANDLE mapping = CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
        if (mapping) base = static_cast<char*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0));
    }

    Found functionBefore(DWORD offset) const {
        Found found = {nullptr, 0};
        if (!base || !header().PointerToSymbolTable) return found;
        const IMAGE_SYMBOL* symbols = symbolTable();
        for (DWORD i = 0; i < header().NumberOfSymbols; i += 1 + symbols[i].NumberOfAuxSymbols) {
            const IMAGE_SYMBOL& symbol = symbols[i];
            if (symbol.SectionNumber <= 0 || !ISFCN(symbol.Type)) continue;
            DWORD start = sections()[symbol.SectionNumber - 1].VirtualAddress + symbol.Value;
            if (start <= offset && start >= found.offset) found = {&symbol, start};
        }
        return found;
    }

    // Short names need not end.
    void copyName(const IMAGE_SYMBOL& symbol, char* name, size_t size) const {
        const auto* strings =
            reinterpret_cast<const char*>(symbolTable() + header().NumberOfSymbols);
        if (symbol.N.Name.Short)
            snprintf(name, size, "%.8s", reinterpret_cast<const char*>(symbol.N.ShortName));
        else
            snprintf(name, size, "%s", strings + symbol.N.Name.Long);
    }

  private:
    const IMAGE_NT_HEADERS32& headers() const {
        auto* start = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
        return *reinterpret_cast<const IMAGE_NT_HEADERS32*>(base + start->e_lfanew);
    }
    const IMAGE_FILE_HEADER& header() const { return headers().FileHeader; }
    const IMAGE_SECTION_HEADER* sections() const { return IMAGE_FIRST_SECTION(&headers()); }
    const IMAGE_SYMBOL* symbolTable() const {
        return reinterpret_cast<const IMAGE_SYMBOL*>(base + header().PointerToSymbolTable);
    }
    const char* base = nullptr;
};

} // namespace

// As it was written, without what the compiler puts around it.
static void describeName(char* name, size_t size) {
    int status = 0;
    char* plain = abi::__cxa_demangle(name + (*name == '_'), nullptr, nullptr, &status);
    if (plain) {
        snprintf(name, size, "%s", plain);
        free(plain);
        return;
    }
    if (char* arguments = strchr(name, '@')) *arguments = 0;
    if (*name == '_') memmove(name, name + 1, strlen(name));
}

void describeFunction(const char* modulePath, DWORD offset, char* text, size_t size) {
    *text = 0;
    ImageFile file(modulePath);
    Found found = file.functionBefore(offset);
    if (!found.symbol) return;
    char name[200];
    file.copyName(*found.symbol, name, sizeof(name));
    describeName(name, sizeof(name));
    snprintf(text, size, " (%s+%#lx)", name, offset - found.offset);
}
