// ZEMVOLT_DEVICE says which device this is: "screen=480x640,dpi=192,bar=52,cursors=wait".

#include "emulator.h"
#include <stdio.h>
#include <string>

static bool readNumber(const std::wstring& text, int least, int most, int* number) {
    wchar_t* end;
    long read = wcstol(text.c_str(), &end, 10);
    if (text.empty() || *end || read < least || read > most) return false;
    *number = static_cast<int>(read);
    return true;
}

static bool readSize(const std::wstring& text, SIZE* size) {
    constexpr int narrowest = 160, widest = 768; // what the desk without a display can show
    size_t times = text.find(L'x');
    if (times == std::wstring::npos) return false;
    int width, height;
    if (!readNumber(text.substr(0, times), narrowest, widest, &width) ||
        !readNumber(text.substr(times + 1), narrowest, widest, &height))
        return false;
    *size = {width, height};
    return true;
}

static bool readWord(const std::wstring& text, const wchar_t* word, BOOL* is) {
    *is = text == word;
    return *is;
}

static bool readSetting(const std::wstring& name, const std::wstring& value,
                        EmulatorVariety* variety) {
    if (name == L"screen") return readSize(value, &variety->screen);
    if (name == L"dpi") return readNumber(value, 48, 480, &variety->dotsPerInch);
    if (name == L"bar") return readNumber(value, 0, 100, &variety->taskBarHeight);
    if (name == L"cursors") return readWord(value, L"wait", &variety->hasOnlyWaitCursor);
    if (name == L"texts") return readWord(value, L"none", &variety->hasNoSystemTexts);
    if (name == L"pointer") return readWord(value, L"stylus", &variety->hasStylusOnly);
    if (name == L"files") return readWord(value, L"one", &variety->choosesOneFileOnly);
    if (name == L"panel") return readWord(value, L"none", &variety->hasNoInputPanel);
    if (name == L"turn") return readWord(value, L"button", &variety->hasTurnButton);
    return false;
}

// Whoever tests on the wrong device without knowing it is worse off than without a device.
static void refuse(const std::wstring& setting) {
    fprintf(stderr,
            "zemvolt: ZEMVOLT_DEVICE does not know \"%ls\"; it takes screen=WIDTHxHEIGHT, dpi=N, "
            "bar=N, cursors=wait, texts=none, pointer=stylus, files=one, panel=none, turn=button, "
            "separated by commas\n",
            setting.c_str());
    fflush(stderr);
    ExitProcess(2);
}

static std::wstring readSettings() {
    std::wstring settings(GetEnvironmentVariableW(L"ZEMVOLT_DEVICE", nullptr, 0), L'\0');
    settings.resize(GetEnvironmentVariableW(L"ZEMVOLT_DEVICE", settings.data(), settings.size()));
    return settings;
}

static EmulatorVariety readVariety() {
    EmulatorVariety variety = {};
    variety.screen = {240, 320};
    variety.dotsPerInch = 96;
    std::wstring settings = readSettings();
    for (size_t start = 0; start < settings.size();) {
        size_t end = settings.find(L',', start);
        if (end == std::wstring::npos) end = settings.size();
        std::wstring setting = settings.substr(start, end - start);
        size_t equals = setting.find(L'=');
        if (equals == std::wstring::npos ||
            !readSetting(setting.substr(0, equals), setting.substr(equals + 1), &variety))
            refuse(setting);
        start = end + 1;
    }
    return variety;
}

extern "C" const EmulatorVariety* WINAPI Emulator_GetVariety() {
    static const EmulatorVariety variety = readVariety();
    return &variety;
}
