#include "processor.h"
#include "entries.h"
#include <set>
#include <stdio.h>
#include <vector>

extern "C" void guestReturns();

namespace {

constexpr uint32_t lowestAddress = 0x10000; // below lie null pointers and their fields
// Above lies the stack that the process began with, which is not for the device's code. The
// emulator needs the room: it can keep account of 4 GB, and rounds up what is mapped.
constexpr uint32_t highestAddress = 0xFF000000;
constexpr uint32_t pieceSize = 0x1000000;
constexpr uint32_t stackSize = 256 * 1024;
// The page with what the kernel shows to programs, and where in it the numbers of the running
// thread and process are.
constexpr uint32_t kernelPage = 0xFFFFC000;
constexpr uint32_t pageSize = 0x1000;
constexpr uint32_t runningThread = 0x808 / sizeof(uint32_t);
constexpr uint32_t runningProcess = 0x80C / sizeof(uint32_t);
constexpr uint32_t rubbish = 0xBAD00000; // and a number that tells what it stands in
constexpr uint32_t registerWords = 4;    // of arguments
constexpr uint32_t stackWords = 12;      // at most, of every function in use
// Engines that had run some hundred thousand times have been seen to fault at the end of their
// buffer of translated code. A new one costs little.
constexpr uint32_t runsOfOneEngine = 50000;
constexpr uint32_t thumbBit = 1 << 5;
constexpr uint32_t flagBits = 0xF0000000;
constexpr DWORD codeIsFlawed = 0xE0415221; // our exception

const int allRegisters[] = {unicorn::r0,      unicorn::r0 + 1, unicorn::r0 + 2,  unicorn::r0 + 3,
                            unicorn::r0 + 4,  unicorn::r0 + 5, unicorn::r0 + 6,  unicorn::r0 + 7,
                            unicorn::r0 + 8,  unicorn::r0 + 9, unicorn::r0 + 10, unicorn::r0 + 11,
                            unicorn::r0 + 12, unicorn::sp,     unicorn::lr,      unicorn::pc,
                            unicorn::cpsr};
const int stackPointer = unicorn::sp;
const int statusRegister = unicorn::cpsr;
constexpr uint32_t registerCount = sizeof(allRegisters) / sizeof(allRegisters[0]);
constexpr uint32_t firstKept = 4, lastKept = 11; // by functions, for their callers

} // namespace

struct Processor::Registers {
    union {
        uint32_t all[registerCount];
        struct {
            uint32_t r[13], sp, lr, pc, cpsr;
        };
    };
    // With the lowest bit that the processor keeps beside the address.
    uint32_t target() const { return pc | (cpsr & thumbBit ? 1 : 0); }
};

static std::vector<const Image*> images;

void addImage(const Image& image) { images.push_back(&image); }

static std::string describePlace(uint32_t address) {
    for (const Image* image : images)
        if (image->contains(address)) return image->describe(address);
    return images.front()->describe(address);
}

Processor* Processor::make(unicorn::Model model, Count count) {
    auto* processor = new Processor;
    if (processor->open(model, count)) return processor;
    delete processor;
    return nullptr;
}

bool Processor::open(unicorn::Model wantedModel, Count wantedCount) {
    model = wantedModel;
    count = wantedCount;
    auto* stack = static_cast<char*>(
        VirtualAlloc(nullptr, stackSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    if (!stack) return false;
    DWORD before;
    VirtualProtect(stack, pageSize, PAGE_NOACCESS, &before);
    stackTop = reinterpret_cast<uint32_t>(stack) + stackSize;
    kernelData = static_cast<uint32_t*>(
        VirtualAlloc(nullptr, pageSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    if (!kernelData) return false;
    for (uint32_t i = 0; i < pageSize / sizeof(uint32_t); ++i) kernelData[i] = rubbish | i;
    return openEngine();
}

bool Processor::openEngine() {
    runs = 0;
    knownImages = images.size();
    engine = unicorn::open(model);
    if (!engine || !mapAll()) return false;
    if (count == Count::instructions &&
        !unicorn::addHook(engine, unicorn::everyInstruction, reinterpret_cast<void*>(onInstruction),
                          this))
        return false;
    return unicorn::addHook(engine, unicorn::everyRead | unicorn::everyWrite,
                            reinterpret_cast<void*>(onAccess), this) &&
           unicorn::addHook(
               engine, unicorn::readOfNothing | unicorn::writeToNothing | unicorn::writeToProtected,
               reinterpret_cast<void*>(onMissing), this) &&
           unicorn::addHook(engine, unicorn::everyBlock, reinterpret_cast<void*>(onBlock), this);
}

bool Processor::mapPieces(uint32_t start, uint32_t end) {
    while (start < end) {
        uint32_t next = (start / pieceSize + 1) * pieceSize;
        if (next > end || next < start) next = end;
        if (unicorn::map(engine, start, next - start, unicorn::readable | unicorn::writable) !=
            unicorn::succeeded)
            return false;
        start = next;
    }
    return true;
}

bool Processor::mapAll() {
    std::map<uint32_t, uint32_t> codes; // where each starts and ends
    for (const Image* image : images) {
        auto start = reinterpret_cast<uint32_t>(image->code());
        codes[start] = start + image->codeSize();
    }
    uint32_t mapped = lowestAddress;
    for (const auto& [start, end] : codes) {
        if (!mapPieces(mapped, start) ||
            unicorn::map(engine, start, end - start, unicorn::readable | unicorn::executable) !=
                unicorn::succeeded)
            return false;
        mapped = end;
    }
    return mapPieces(mapped, highestAddress) &&
           unicorn::map(engine, kernelPage, pageSize, unicorn::readable, kernelData) ==
               unicorn::succeeded;
}

void Processor::showThread() {
    kernelData[runningThread] = GetCurrentThreadId();
    kernelData[runningProcess] = GetCurrentProcessId();
}

// Between two runs the registers are all that an engine knows.
void Processor::renewEngine() {
    Registers kept;
    save(&kept);
    unicorn::close(engine);
    if (!openEngine()) {
        fprintf(stderr, "the processor cannot be emulated any longer\n");
        TerminateProcess(GetCurrentProcess(), 1);
    }
    unicorn::write(engine, allRegisters, kept.all, registerCount - 2);
}

void Processor::onInstruction(void*, uint64_t, uint32_t, void* self) {
    ++static_cast<Processor*>(self)->instructions;
}

void Processor::onBlock(void*, uint64_t address, uint32_t, void* self) {
    static_cast<Processor*>(self)->block = static_cast<uint32_t>(address);
}

// There is nothing to be done about it.
bool Processor::onMissing(void*, int, uint64_t address, int, int64_t, void* self) {
    static_cast<Processor*>(self)->missing = static_cast<uint32_t>(address);
    return false;
}

// The device's processors fault at what lies across words; the emulated one would not.
void Processor::onAccess(void* engine, int, uint64_t address, int size, int64_t, void* self) {
    auto* processor = static_cast<Processor*>(self);
    if ((address & (size - 1)) == 0) return;
    processor->misaligned = static_cast<uint32_t>(address);
    unicorn::stop(engine);
}

void Processor::save(Registers* registers) {
    unicorn::read(engine, allRegisters, registers->all, registerCount);
}

void Processor::report(const std::string& problem) {
    if (reported) return;
    reported = true;
    Registers at;
    save(&at);
    fprintf(stderr, "the device's code %s\n  in the block at %s\n  to return to %s\n",
            problem.c_str(), describePlace(block).c_str(), describePlace(at.lr).c_str());
    for (uint32_t i = 0; i < registerCount; ++i) {
        static const char* const names[] = {"r0",  "r1", "r2", "r3", "r4",  "r5",
                                            "r6",  "r7", "r8", "r9", "r10", "r11",
                                            "r12", "sp", "lr", "pc", "cpsr"};
        fprintf(stderr, "%6s %08x%s", names[i], at.all[i], i % 6 == 5 ? "\n" : "");
    }
    fprintf(stderr, "\n");
    fflush(stderr);
}

void Processor::fail(const std::string& problem) {
    running = false;
    report(problem);
    RaiseException(codeIsFlawed, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    TerminateProcess(GetCurrentProcess(), 1);
    __builtin_unreachable();
}

static bool canExecute(uint32_t address) {
    constexpr DWORD executable =
        PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    MEMORY_BASIC_INFORMATION memory;
    return VirtualQuery(reinterpret_cast<void*>(address), &memory, sizeof(memory)) &&
           memory.State == MEM_COMMIT && (memory.Protect & executable);
}

// Asking the system is slow, and the functions called are few.
static bool isHostFunction(uint32_t address) {
    constexpr uint32_t remembered = 1024;
    static volatile uint32_t known[remembered];
    volatile uint32_t& place = known[address / 4 % remembered];
    if (place == address) return true;
    DWORD lastError = GetLastError();
    bool isFunction = canExecute(address);
    SetLastError(lastError);
    if (isFunction) place = address;
    return isFunction;
}

static std::set<uint32_t> narrowResults;

void noteNarrowResult(void* function) {
    narrowResults.insert(reinterpret_cast<uint32_t>(function));
}

static bool hasNarrowResult(uint32_t target) { return narrowResults.count(target) != 0; }

static std::set<uint32_t> byteResults;

void noteByteResults(void* const* functions, uint32_t count) {
    for (uint32_t i = 0; i < count; ++i)
        byteResults.insert(reinterpret_cast<uint32_t>(functions[i]));
}

static std::string hexadecimal(uint32_t value) {
    char text[16];
    snprintf(text, sizeof(text), "%#010x", value);
    return text;
}

std::string Processor::describe(unicorn::Result result, const Registers& at) const {
    switch (result) {
    case unicorn::readUnmapped:
        return "reads address " + hexadecimal(missing);
    case unicorn::writeUnmapped:
    case unicorn::writeProtected:
        return "writes to address " + hexadecimal(missing);
    case unicorn::fetchUnmapped:
    case unicorn::fetchProtected:
        return "jumps to " + hexadecimal(at.target());
    case unicorn::invalidInstruction:
    case unicorn::exception:
        return "has an instruction that the processor does not know";
    default:
        return std::string("stops: ") + unicorn::textOf(result);
    }
}

// All functions in use leave these registers and the stack as they found them.
void Processor::check(const Registers& before, const Registers& after) {
    if (after.sp != before.sp) fail("returns with another stack pointer");
    for (uint32_t i = firstKept; i <= lastKept; ++i)
        if (after.r[i] != before.r[i]) fail("returns with another r" + std::to_string(i));
}

// Calls the host's function. It takes what it needs of the words, whatever its convention.
uint64_t Processor::leave(const Registers& at, uint32_t target) {
    uint32_t words[registerWords + stackWords];
    const auto* stack = reinterpret_cast<const uint32_t*>(at.sp);
    for (uint32_t i = 0; i < registerWords; ++i) words[i] = at.r[i];
    for (uint32_t i = 0; i < stackWords; ++i) words[registerWords + i] = stack[i];
    uint64_t result =
        callAligned(reinterpret_cast<void*>(target), words, registerWords + stackWords);
    constexpr uint32_t aboveByte = 0xBAD0BA00;
    return byteResults.count(target) ? aboveByte | (result & 0xFF) : result;
}

uint64_t Processor::call(uint32_t function, const uint32_t* words) {
    Registers before, at;
    save(&before);
    at = before;
    // Callers promise a stack on words only: it never lies on two.
    uint32_t callersStack = depth ? before.sp : stackTop - sizeof(uint32_t) * stackWords;
    at.sp = ((callersStack - sizeof(uint32_t) * stackWords) & ~7u) - sizeof(uint32_t);
    before.sp = at.sp;
    for (uint32_t i = 0; i < registerWords; ++i) at.r[i] = words[i];
    auto* stack = reinterpret_cast<uint32_t*>(at.sp);
    for (uint32_t i = 0; i < stackWords; ++i) stack[i] = words[registerWords + i];
    at.lr = reinterpret_cast<uint32_t>(guestReturns);
    uint32_t next = function;
    ++depth;
    unicorn::write(engine, allRegisters, at.all, registerCount - 2);
    for (;;) {
        DWORD lastError = GetLastError();
        if (++runs > runsOfOneEngine || knownImages != images.size()) renewEngine();
        misaligned = 0;
        running = true;
        unicorn::Result result = unicorn::run(engine, next);
        running = false;
        SetLastError(lastError);
        save(&at);
        if (misaligned) fail("accesses the misaligned address " + hexadecimal(misaligned));
        if (result != unicorn::fetchProtected) fail(describe(result, at));
        uint32_t target = at.target();
        if (target == reinterpret_cast<uint32_t>(guestReturns)) break;
        next = functionOfEntry(target);
        if (next) continue;
        if (!isHostFunction(target)) fail(describe(result, at));

        uint64_t answer = leave(at, target);
        at.r[0] = static_cast<uint32_t>(answer);
        at.r[1] = static_cast<uint32_t>(answer >> 32);
        if (hasNarrowResult(target)) at.r[1] = rubbish | 1;
        // Nobody may count on what a called function need not keep.
        for (uint32_t i : {2u, 3u, 12u}) at.r[i] = rubbish | i;
        at.cpsr = (at.cpsr ^ flagBits) & ~thumbBit;
        next = at.lr;
        unicorn::write(engine, allRegisters, at.all, registerCount - 2);
        unicorn::write(engine, &statusRegister, &at.cpsr, 1);
    }
    --depth;
    check(before, at);
    // The function that called this side goes on with its own stack, and may be called back again.
    unicorn::write(engine, &stackPointer, &callersStack, 1);
    return at.r[0] | uint64_t(at.r[1]) << 32;
}

static ProcessorSettings settings;
static CRITICAL_SECTION lock;
static std::vector<Processor*> idle, all;
static DWORD slot = TLS_OUT_OF_INDEXES;

void setProcessors(const ProcessorSettings& wanted) {
    settings = wanted;
    InitializeCriticalSection(&lock);
    slot = TlsAlloc();
}

Processor* currentProcessor() {
    if (slot == TLS_OUT_OF_INDEXES) return nullptr;
    DWORD lastError = GetLastError();
    auto* processor = static_cast<Processor*>(TlsGetValue(slot));
    SetLastError(lastError);
    return processor;
}

static Processor* takeProcessor() {
    EnterCriticalSection(&lock);
    Processor* processor = nullptr;
    if (!idle.empty()) {
        processor = idle.back();
        idle.pop_back();
    } else {
        processor = Processor::make(settings.model, settings.count);
        if (!processor) {
            fprintf(stderr, "no more processors can be emulated\n");
            TerminateProcess(GetCurrentProcess(), 1);
        }
        all.push_back(processor);
    }
    LeaveCriticalSection(&lock);
    return processor;
}

static void giveBack(Processor* processor) {
    EnterCriticalSection(&lock);
    idle.push_back(processor);
    LeaveCriticalSection(&lock);
}

uint64_t countInstructions() {
    EnterCriticalSection(&lock);
    uint64_t count = 0;
    for (const Processor* processor : all) count += processor->instructionCount();
    LeaveCriticalSection(&lock);
    return count;
}

// Entered from entries.S.
extern "C" uint64_t enterGuest(uint32_t number, const uint32_t* words) {
    DWORD lastError = GetLastError();
    Processor* current = currentProcessor();
    Processor* processor = current ? current : takeProcessor();
    if (!current) {
        processor->showThread();
        TlsSetValue(slot, processor);
    }
    if (!canBeCalledFromHost(number)) {
        fprintf(stderr, "how many arguments this takes is not known: %s\n",
                describePlace(functionOfNumber(number)).c_str());
        TerminateProcess(GetCurrentProcess(), 1);
    }
    SetLastError(lastError);
    uint64_t result = processor->call(functionOfNumber(number), words);
    if (current) return result;
    lastError = GetLastError();
    TlsSetValue(slot, nullptr);
    giveBack(processor);
    SetLastError(lastError);
    return result;
}
