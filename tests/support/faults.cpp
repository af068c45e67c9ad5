#include "faults.h"
#include "library.h"
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <map>

namespace {

struct Import {
    std::string name;
    void** slot;
    void* original;
    void* replacement;
    int failNth; // 0: none; counts down
    bool failAlways;
    DWORD lastError;
    uint32_t failureValue;
};

constexpr uint32_t stubSize = 16;
constexpr uint32_t stubCount = 256;

const struct {
    const char* name;
    const char* ordinal;
    uint32_t bytes;
} argumentBytes[] = {
#include "argument_bytes.inc"
};

// These cannot fail, or fail without anybody's needing to know.
const char* const infallible[] = {
    "GetLastError",
    "SetLastError",
    "GetTickCount",
    "GetKeyState",
    "GetAsyncKeyState",
    "SendMessageW",
    "DefWindowProcW",
    "CallWindowProcW",
    "GetWindowLongW",
    "SetWindowLongW",
    "LocalFree",
    "EnterCriticalSection",
    "LeaveCriticalSection",
    "GetSystemMetrics",
    "GetSysColor",
    "GetDoubleClickTime",
    "MsgWaitForMultipleObjectsEx",
    "DispatchMessageW",
    "TranslateMessage",
    "PostQuitMessage",
    "GetParent",
    "PeekMessageW",
    "SHHandleWMActivate",
    "CoUninitialize",
    "CloseHandle",
    "DeleteDC",
    "DeleteObject",
    "InitializeCriticalSection",
    "DeleteCriticalSection",
};

// Failure values other than 0.
const std::map<std::string, uint32_t> failureValues = {
    {"CheckMenuItem", static_cast<uint32_t>(-1)},
    {"EnableMenuItem", static_cast<uint32_t>(-1)},
    {"GetBkColor", CLR_INVALID},
    {"GetClipRgn", static_cast<uint32_t>(-1)},
    {"GetPixel", CLR_INVALID},
    {"GetTextColor", CLR_INVALID},
    {"SetBkColor", CLR_INVALID},
    {"SetPixel", CLR_INVALID},
    {"SetTextColor", CLR_INVALID},
    {"LocalFree", 1}, // which stands for the block itself
    {"MsgWaitForMultipleObjectsEx", WAIT_FAILED},
    {"WaitForMultipleObjects", WAIT_FAILED},
    {"WaitForSingleObject", WAIT_FAILED},
    {"waveOutClose", MMSYSERR_ERROR},
    {"waveOutOpen", MMSYSERR_ERROR},
    {"waveOutPrepareHeader", MMSYSERR_ERROR},
    {"waveOutReset", MMSYSERR_ERROR},
    {"waveOutUnprepareHeader", MMSYSERR_ERROR},
    {"waveOutWrite", MMSYSERR_ERROR},
    {"CoCreateInstance", static_cast<uint32_t>(E_FAIL)},
    {"CoInitializeEx", static_cast<uint32_t>(E_FAIL)},
    {"CreateFileW", static_cast<uint32_t>(-1)},
    {"GetFileSize", static_cast<uint32_t>(-1)},
    {"SetFilePointer", static_cast<uint32_t>(-1)},
};

std::vector<Import> imports;
std::vector<std::string> called;
int anyCallNth;
bool failed;
DWORD onlyThread; // 0: every thread counts
std::function<void(const std::string&)> watcher;

} // namespace

extern "C" void* faultStubs;
extern "C" uint32_t faultBytes[stubCount];
extern "C" uint32_t faultValues[stubCount];
uint32_t faultBytes[stubCount];
uint32_t faultValues[stubCount];

static bool isFallible(const std::string& name) {
    return std::none_of(std::begin(infallible), std::end(infallible),
                        [&](const char* other) { return name == other; });
}

static bool countsDown(int* nth) { return *nth > 0 && --*nth == 0; }

// The library calls from threads of its own too.
static SRWLOCK deciding = SRWLOCK_INIT;

static uint32_t decide(Import& import, DWORD lastError) {
    if (onlyThread && onlyThread != GetCurrentThreadId()) {
        SetLastError(lastError);
        return reinterpret_cast<uint32_t>(import.original);
    }
    called.push_back(import.name);
    bool fails = import.failAlways || countsDown(&import.failNth) ||
                 (isFallible(import.name) && countsDown(&anyCallNth));
    SetLastError(fails ? import.lastError : lastError);
    if (!fails)
        return reinterpret_cast<uint32_t>(import.replacement ? import.replacement
                                                             : import.original);
    failed = true;
    return 0;
}

extern "C" uint32_t decideFault(uint32_t number) {
    DWORD lastError = GetLastError();
    if (watcher) watcher(imports[number].name);
    AcquireSRWLockExclusive(&deciding);
    uint32_t target = decide(imports[number], lastError);
    ReleaseSRWLockExclusive(&deciding);
    return target;
}

static const auto* bytesOf(const std::string& nameOrOrdinal) {
    for (const auto& known : argumentBytes)
        if (nameOrOrdinal == known.name || (*known.ordinal && nameOrOrdinal == known.ordinal))
            return &known;
    return static_cast<decltype(&argumentBytes[0])>(nullptr);
}

static void write(void** slot, void* value) {
    DWORD before;
    VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &before);
    *slot = value;
    VirtualProtect(slot, sizeof(*slot), before, &before);
}

static void patch(const std::string& nameOrOrdinal, void** slot) {
    const auto* known = bytesOf(nameOrOrdinal);
    if (!known) return; // functions of the C library, which do not fail
    uint32_t number = imports.size();
    auto failure = failureValues.find(known->name);
    uint32_t failureValue = failure == failureValues.end() ? 0 : failure->second;
    imports.push_back(
        {known->name, slot, *slot, nullptr, 0, false, ERROR_GEN_FAILURE, failureValue});
    faultBytes[number] = known->bytes;
    faultValues[number] = failureValue;
    write(slot, static_cast<char*>(faultStubs) + number * stubSize);
}

static void patchModule(char* base, const IMAGE_IMPORT_DESCRIPTOR& module) {
    auto* names = reinterpret_cast<IMAGE_THUNK_DATA32*>(base + module.OriginalFirstThunk);
    auto* slots = reinterpret_cast<void**>(base + module.FirstThunk);
    for (int i = 0; names[i].u1.AddressOfData; ++i) {
        bool byOrdinal = IMAGE_SNAP_BY_ORDINAL32(names[i].u1.Ordinal);
        auto* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names[i].u1.AddressOfData);
        patch(byOrdinal ? std::to_string(IMAGE_ORDINAL32(names[i].u1.Ordinal))
                        : reinterpret_cast<char*>(byName->Name),
              &slots[i]);
    }
}

Faults::Faults() {
    imports.clear();
    called.clear();
    anyCallNth = 0;
    failed = false;
    onlyThread = 0;
    imports.reserve(stubCount);
    auto* base = reinterpret_cast<char*>(theLibrary());
    auto* headers = reinterpret_cast<IMAGE_NT_HEADERS32*>(
        base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    DWORD table =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* module = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + table); module->Name;
         ++module)
        patchModule(base, *module);
}

Faults::~Faults() {
    for (const Import& import : imports) write(import.slot, import.original);
    watcher = nullptr;
}

void Faults::watch(std::function<void(const std::string&)> look) { watcher = std::move(look); }

static std::vector<Import*> importsNamed(const std::string& function) {
    std::vector<Import*> found;
    for (Import& import : imports)
        if (import.name == function) found.push_back(&import);
    if (found.empty()) ADD_FAILURE() << "the library does not import " << function;
    return found;
}

void Faults::fail(const std::string& function, int nth, DWORD lastError, DWORD value) {
    for (Import* import : importsNamed(function)) {
        import->failNth = nth;
        import->failAlways = nth == 0;
        import->lastError = lastError;
        faultValues[import - imports.data()] = value ? value : import->failureValue;
    }
}

void Faults::forget() {
    AcquireSRWLockExclusive(&deciding);
    for (Import& import : imports) {
        import.failNth = 0;
        import.failAlways = false;
    }
    anyCallNth = 0;
    failed = false;
    called.clear();
    ReleaseSRWLockExclusive(&deciding);
}

void Faults::watchThisThreadOnly() { onlyThread = GetCurrentThreadId(); }

void Faults::failAnyCall(int nth) { anyCallNth = nth; }
bool Faults::hasFailed() const { return failed; }

std::vector<std::string> Faults::calls() const {
    AcquireSRWLockExclusive(&deciding);
    std::vector<std::string> soFar = called;
    ReleaseSRWLockExclusive(&deciding);
    return soFar;
}

int Faults::countCalls(const std::string& function) const {
    std::vector<std::string> soFar = calls();
    return static_cast<int>(std::count(soFar.begin(), soFar.end(), function));
}

void Faults::replace(const std::string& function, void* replacement) {
    for (Import* import : importsNamed(function)) import->replacement = replacement;
}

std::vector<std::string> Faults::imported() {
    std::vector<std::string> names;
    for (const Import& import : imports) names.push_back(import.name);
    return names;
}

int forEachFailure(const std::function<void(Faults&)>& scenario) {
    constexpr int endless = 5000;
    for (int nth = 1; nth < endless; ++nth) {
        Faults faults;
        faults.failAnyCall(nth);
        scenario(faults);
        if (!faults.hasFailed()) return nth - 1;
        if (testing::Test::HasFatalFailure()) return nth;
    }
    ADD_FAILURE() << "the scenario never ends";
    return endless;
}
