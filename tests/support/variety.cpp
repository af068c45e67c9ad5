#include "variety.h"
#include "library.h"

const EmulatorVariety& theDevice() {
    using GetVariety = decltype(&Emulator_GetVariety);
    theLibrary();
    static auto* getVariety = reinterpret_cast<GetVariety>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"coredll.dll"), "Emulator_GetVariety")));
    return *getVariety();
}
