#include "sound_options.h"

static std::wstring variable(const wchar_t* name) {
    std::wstring value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), value.size()));
    return value;
}

static SoundOptions readOptions() {
    SoundOptions options;
    std::wstring speed = variable(L"ZEMVOLT_SOUND_SPEED");
    if (!speed.empty()) options.speed = wcstoul(speed.c_str(), nullptr, 10);
    options.file = variable(L"ZEMVOLT_SOUND_FILE");
    options.onDesk = variable(L"ZEMVOLT_SOUND_OUTPUT") == L"desk";
    return options;
}

const SoundOptions& soundOptions() {
    static const SoundOptions options = readOptions();
    return options;
}
