#include "image.h"
#include "entries.h"
#include "processor.h"
#include <cmath>
#include <cstring>
#include <cxxabi.h>
#include <fstream>
#include <sstream>
#include <vector>

const IMAGE_NT_HEADERS32* Image::headers() const {
    return reinterpret_cast<const IMAGE_NT_HEADERS32*>(
        memory + reinterpret_cast<const IMAGE_DOS_HEADER*>(memory)->e_lfanew);
}

const IMAGE_SECTION_HEADER* Image::section(const char* name) const {
    const IMAGE_SECTION_HEADER* sections = IMAGE_FIRST_SECTION(headers());
    for (int i = 0; i < headers()->FileHeader.NumberOfSections; ++i)
        if (strncmp(reinterpret_cast<const char*>(sections[i].Name), name,
                    sizeof(sections->Name)) == 0)
            return &sections[i];
    return nullptr;
}

uint32_t Image::codeSize() const {
    constexpr uint32_t page = 0x1000;
    return (section(".text")->Misc.VirtualSize + page - 1) / page * page;
}

std::string Image::readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<char> content((std::istreambuf_iterator<char>(file)), {});
    if (content.size() < sizeof(IMAGE_DOS_HEADER)) return path + " cannot be read";
    memory = content.data();
    IMAGE_NT_HEADERS32 head = *headers();
    std::vector<IMAGE_SECTION_HEADER> sections(IMAGE_FIRST_SECTION(headers()),
                                               IMAGE_FIRST_SECTION(headers()) +
                                                   head.FileHeader.NumberOfSections);
    memory = nullptr;
    constexpr WORD arm = 0x1C0;
    if (head.Signature != IMAGE_NT_SIGNATURE || head.FileHeader.Machine != arm)
        return path + " is no library for the device's processor";
    preferredBase = head.OptionalHeader.ImageBase;
    memory = static_cast<char*>(VirtualAlloc(nullptr, head.OptionalHeader.SizeOfImage,
                                             MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    if (!memory) return "there is no memory for the image";
    memcpy(memory, content.data(), head.OptionalHeader.SizeOfHeaders);
    for (const IMAGE_SECTION_HEADER& part : sections)
        memcpy(memory + part.VirtualAddress, content.data() + part.PointerToRawData,
               std::min(part.SizeOfRawData, part.Misc.VirtualSize));
    return {};
}

std::string Image::readMap(const std::string& path) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        uint32_t offset = 0, size = 0;
        std::string name;
        words >> std::hex >> offset >> size >> name;
        functions[offset] = {size, name};
    }
    return functions.empty() ? path + " names no functions" : std::string();
}

// Lines of "address type name", the name as _function@bytes or _function, with __imp_ before it
// when it is imported.
void Image::readSymbols(const std::string& path) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        size_t start = line.rfind(' ');
        if (start == std::string::npos || start + 1 == line.size() || line[start + 1] != '_')
            continue;
        const std::string imported = "_imp__";
        std::string name = line.substr(start + 2);
        if (name.rfind(imported, 0) == 0) name.erase(0, imported.size());
        size_t end = name.rfind('@');
        uint32_t bytes = 0;
        if (end != std::string::npos) {
            bytes = strtoul(name.c_str() + end + 1, nullptr, 10);
            name.resize(end);
        }
        argumentBytes[name] = bytes;
    }
}

void* Image::entryAt(uint32_t offset) const {
    auto function = functions.find(offset);
    if (function == functions.end()) return nullptr;
    uint32_t bytes = argumentBytes.empty() ? 0 : unknownBytes;
    auto known = argumentBytes.find(function->second.name);
    if (known != argumentBytes.end()) bytes = known->second;
    return entryOf(reinterpret_cast<uint32_t>(memory) + offset, bytes);
}

// The address of a function becomes that of its entry.
void Image::relocateWord(uint32_t offset, uint32_t delta) {
    uint32_t word;
    memcpy(&word, memory + offset, sizeof(word));
    const IMAGE_DATA_DIRECTORY& unwinding = directory(IMAGE_DIRECTORY_ENTRY_EXCEPTION);
    bool ofUnwinder = offset - unwinding.VirtualAddress < unwinding.Size;
    void* entry = ofUnwinder ? nullptr : entryAt(word - preferredBase);
    word = entry ? reinterpret_cast<uint32_t>(entry) : word + delta;
    memcpy(memory + offset, &word, sizeof(word));
}

std::string Image::relocate() {
    uint32_t delta = reinterpret_cast<uint32_t>(memory) - preferredBase;
    if (!delta) return "the image lies where it was linked for, which would prove nothing";
    const IMAGE_DATA_DIRECTORY& table = directory(IMAGE_DIRECTORY_ENTRY_BASERELOC);
    char* next = memory + table.VirtualAddress;
    for (char* end = next + table.Size; next < end;) {
        auto* block = reinterpret_cast<const IMAGE_BASE_RELOCATION*>(next);
        auto* words = reinterpret_cast<const WORD*>(block + 1);
        for (size_t i = 0; i < (block->SizeOfBlock - sizeof(*block)) / sizeof(WORD); ++i) {
            int type = words[i] >> 12;
            if (type == IMAGE_REL_BASED_ABSOLUTE) continue; // padding
            if (type != IMAGE_REL_BASED_HIGHLOW) return "a base relocation of unknown type";
            relocateWord(block->VirtualAddress + (words[i] & 0xFFF), delta);
        }
        next += block->SizeOfBlock;
    }
    return {};
}

// The processor returns floating-point numbers in the registers of integers.
template <double (*function)(double)>
static uint64_t inIntegers(double argument) {
    double result = function(argument);
    uint64_t bits;
    memcpy(&bits, &result, sizeof(bits));
    return bits;
}

// A result that is shorter than the register fills a part of it, and nobody may count on the rest.
static uint32_t withRubbishAbove(WORD result) { return 0xBAD00000 | result; }

static HMODULE coredll() {
    static HMODULE library = LoadLibraryA("coredll.dll");
    return library;
}

using AskKey = SHORT(WINAPI*)(int);

static AskKey askKey(const char* name) {
    return reinterpret_cast<AskKey>(reinterpret_cast<void*>(GetProcAddress(coredll(), name)));
}

static uint32_t WINAPI getKeyState(int key) {
    static AskKey real = askKey("GetKeyState");
    return withRubbishAbove(real(key));
}

static uint32_t WINAPI getAsyncKeyState(int key) {
    static AskKey real = askKey("GetAsyncKeyState");
    return withRubbishAbove(real(key));
}

static uint32_t WINAPI registerClass(const WNDCLASSW* description) {
    using RegisterClass = ATOM(WINAPI*)(const WNDCLASSW*);
    static auto real = reinterpret_cast<RegisterClass>(
        reinterpret_cast<void*>(GetProcAddress(coredll(), "RegisterClassW")));
    return withRubbishAbove(real(description));
}

// Numbers of 64 bits are what the mathematics return, and nothing else that is imported.
static bool hasWideResult(const char* name) {
    for (const char* wide : {"cos", "sin", "sqrt"})
        if (strcmp(wide, name) == 0) return true;
    return false;
}

// What stands for a function whose result the desk returns in another way than the device.
static void* withDevicesResult(const char* name) {
    static const struct {
        const char* name;
        void* function;
    } known[] = {{"cos", reinterpret_cast<void*>(inIntegers<std::cos>)},
                 {"sin", reinterpret_cast<void*>(inIntegers<std::sin>)},
                 {"sqrt", reinterpret_cast<void*>(inIntegers<std::sqrt>)},
                 {"GetKeyState", reinterpret_cast<void*>(getKeyState)},
                 {"GetAsyncKeyState", reinterpret_cast<void*>(getAsyncKeyState)},
                 {"RegisterClassW", reinterpret_cast<void*>(registerClass)}};
    for (const auto& entry : known)
        if (strcmp(entry.name, name) == 0) return entry.function;
    return nullptr;
}

std::string Image::bindToToolkit(const IMAGE_IMPORT_DESCRIPTOR& module, const Image& toolkit) {
    auto* names = reinterpret_cast<const DWORD*>(memory + module.OriginalFirstThunk);
    auto** slots = reinterpret_cast<void**>(memory + module.FirstThunk);
    for (; *names; ++names, ++slots) {
        if (IMAGE_SNAP_BY_ORDINAL32(*names)) return "the toolkit has no exports by ordinal";
        const char* name = memory + *names + sizeof(WORD);
        *slots = toolkit.exportNamed(name);
        if (!*slots) return std::string("the toolkit does not export ") + name;
    }
    return {};
}

std::string Image::bindImports(const Image* toolkit) {
    auto* module = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
        memory + directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
    for (; module->Name; ++module) {
        std::string file = memory + module->Name;
        if (toolkit && file == "zemvolt11.dll") {
            if (std::string problem = bindToToolkit(*module, *toolkit); !problem.empty())
                return problem;
            continue;
        }
        HMODULE library = LoadLibraryA(file.c_str());
        if (!library) return file + " cannot be loaded";
        auto* names = reinterpret_cast<const DWORD*>(memory + module->OriginalFirstThunk);
        auto** slots = reinterpret_cast<void**>(memory + module->FirstThunk);
        for (; *names; ++names, ++slots) {
            bool byOrdinal = IMAGE_SNAP_BY_ORDINAL32(*names);
            const char* name = byOrdinal ? reinterpret_cast<const char*>(IMAGE_ORDINAL32(*names))
                                         : memory + *names + sizeof(WORD);
            void* found = byOrdinal ? nullptr : withDevicesResult(name);
            if (!found) found = reinterpret_cast<void*>(GetProcAddress(library, name));
            if (!found)
                return file + " does not export " +
                       (byOrdinal ? std::to_string(IMAGE_ORDINAL32(*names)) : std::string(name));
            *slots = wordAlignedJump(found);
            if (byOrdinal || !hasWideResult(name)) noteNarrowResult(*slots);
        }
    }
    return {};
}

std::string Image::load(const std::string& path, const std::string& symbols, const Image* toolkit) {
    if (std::string problem = readFile(path); !problem.empty()) return problem;
    std::string map = path.substr(0, path.rfind('.')) + ".map";
    if (std::string problem = readMap(map); !problem.empty()) return problem;
    if (!symbols.empty()) {
        readSymbols(symbols);
        if (argumentBytes.empty()) return symbols + " lists no functions";
    }
    if (std::string problem = relocate(); !problem.empty()) return problem;
    return bindImports(toolkit);
}

void* Image::exportNamed(const std::string& name) const {
    auto* table = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
        memory + directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress);
    auto* names = reinterpret_cast<const DWORD*>(memory + table->AddressOfNames);
    auto* ordinals = reinterpret_cast<const WORD*>(memory + table->AddressOfNameOrdinals);
    auto* places = reinterpret_cast<const DWORD*>(memory + table->AddressOfFunctions);
    for (DWORD i = 0; i < table->NumberOfNames; ++i)
        if (name == memory + names[i]) return entryAt(places[ordinals[i]]);
    return nullptr;
}

void* Image::entryPoint() const { return entryAt(headers()->OptionalHeader.AddressOfEntryPoint); }

static std::string demangled(const std::string& name) {
    int status = 0;
    char* text = abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status);
    std::string result = status == 0 ? text : name;
    free(text);
    return result;
}

std::string Image::describe(uint32_t address) const {
    char text[32];
    uint32_t offset = address - reinterpret_cast<uint32_t>(memory);
    auto next = functions.upper_bound(offset);
    if (!contains(address) || next == functions.begin()) {
        snprintf(text, sizeof(text), "%#010x", address);
        return text;
    }
    const auto& [start, function] = *--next;
    snprintf(text, sizeof(text), "+%#x", offset - start);
    return demangled(function.name) + text;
}
