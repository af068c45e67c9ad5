#include "toolkit.h"
#include <stdlib.h>

static HMODULE processor; // null: the desk's
static HMODULE library;

template <class Function>
static Function processorFunction(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(processor, name)));
}

HMODULE loadToolkit() {
    if (library) return library;
    if (!getenv("ZEMVOLT_IMAGE")) return library = LoadLibraryW(L"zemvolt11.dll");
    processor = LoadLibraryW(L"processor.dll");
    if (!processor) return nullptr;
    return library = processorFunction<HMODULE (*)()>("Processor_Load")();
}

void* exportOf(HMODULE module, const char* name) {
    if (processor) {
        auto find = processorFunction<void* (*)(HMODULE, const char*)>("Processor_Find");
        if (void* found = find(module, name)) return found;
    }
    return reinterpret_cast<void*>(GetProcAddress(module, name));
}

void* toolkitExport(const char* name) { return exportOf(library, name); }

HMODULE loadCompanion(const char* file) {
    bool isOfDevice =
        processor && processorFunction<bool (*)(const char*)>("Processor_HasCompanion")(file);
    if (isOfDevice)
        return processorFunction<HMODULE (*)(const char*)>("Processor_LoadCompanion")(file);
    HMODULE companion = LoadLibraryA(file);
    if (!companion || !processor || !GetModuleHandleW(L"zemvolt11.dll")) return companion;
    // It has brought the desk's toolkit, which knows nothing of what the device's code does.
    FreeLibrary(companion);
    SetLastError(ERROR_EXE_MACHINE_TYPE_MISMATCH);
    return nullptr;
}

LibraryEntry toolkitEntry() {
    if (processor) return processorFunction<LibraryEntry (*)()>("Processor_EntryPoint")();
    auto* base = reinterpret_cast<char*>(library);
    auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    return reinterpret_cast<LibraryEntry>(base + headers->OptionalHeader.AddressOfEntryPoint);
}

// A Java boolean is a byte. What lies above it is anything.
void tellToolkitOf(const JNINativeInterface_* table) {
    loadToolkit();
    if (!processor) return;
    void* const booleans[] = {
        reinterpret_cast<void*>(table->IsAssignableFrom),
        reinterpret_cast<void*>(table->IsSameObject),
        reinterpret_cast<void*>(table->IsInstanceOf),
        reinterpret_cast<void*>(table->CallBooleanMethod),
        reinterpret_cast<void*>(table->CallBooleanMethodV),
        reinterpret_cast<void*>(table->CallBooleanMethodA),
        reinterpret_cast<void*>(table->ExceptionCheck),
    };
    processorFunction<void (*)(void* const*, unsigned)>("Processor_NoteByteResults")(
        booleans, sizeof(booleans) / sizeof(booleans[0]));
}

unsigned long long toolkitInstructions() {
    if (!processor) return 0;
    return processorFunction<unsigned long long (*)()>("Processor_Count")();
}

void reportProcessor() {
    if (processor) processorFunction<void (*)()>("Processor_Report")();
}
