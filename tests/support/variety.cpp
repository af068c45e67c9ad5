#include "variety.h"
#include "library.h"

const EmulatorVariety& theDevice() {
    using GetVariety = decltype(&Emulator_GetVariety);
    theLibrary();
    static auto* getVariety = reinterpret_cast<GetVariety>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"coredll.dll"), "Emulator_GetVariety")));
    return *getVariety();
}

std::wstring systemText(DWORD code) {
    wchar_t text[512] = L"FormatMessage failed";
    if (!theDevice().hasNoSystemTexts)
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code, 0x400, text, ARRAYSIZE(text),
                       nullptr);
    return text;
}

std::u16string textOf(DWORD code) {
    const std::wstring words = systemText(code);
    return {words.begin(), words.end()};
}
