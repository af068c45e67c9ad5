#include "probe.h"
#include "ce.h"
#include "kernel_data.h"

// Neither knows the other's last bit: a union between them.
union Bits {
    uint64_t bits;
    double number;
    struct {
        uint32_t low, high;
    } words;
    float single;
};

static double numberOf(uint64_t bits) {
    Bits value;
    value.bits = bits;
    return value.number;
}

static uint64_t bitsOf(double number) {
    Bits value;
    value.number = number;
    return value.bits;
}

static uint64_t computeOne(Operation operation, uint64_t a, uint64_t b) {
    auto intA = static_cast<int32_t>(a), intB = static_cast<int32_t>(b);
    auto wordA = static_cast<uint32_t>(a), wordB = static_cast<uint32_t>(b);
    Bits value = {};
    switch (operation) {
    case Operation::add:
        return bitsOf(numberOf(a) + numberOf(b));
    case Operation::subtract:
        return bitsOf(numberOf(a) - numberOf(b));
    case Operation::multiply:
        return bitsOf(numberOf(a) * numberOf(b));
    case Operation::divide:
        return bitsOf(numberOf(a) / numberOf(b));
    case Operation::isLess:
        return numberOf(a) < numberOf(b);
    case Operation::isEqual:
        return numberOf(a) == numberOf(b);
    case Operation::fromInt:
        return bitsOf(intA);
    case Operation::fromUnsigned:
        return bitsOf(wordA);
    case Operation::toInt:
        return static_cast<uint32_t>(static_cast<int32_t>(numberOf(a)));
    case Operation::toUnsigned:
        return static_cast<uint32_t>(numberOf(a));
    case Operation::toFloat:
        value.single = static_cast<float>(numberOf(a));
        return value.words.low;
    case Operation::fromFloat:
        value.words.low = wordA;
        return bitsOf(value.single);
    case Operation::divideInts:
        return static_cast<uint32_t>(intA / intB);
    case Operation::remainderOfInts:
        return static_cast<uint32_t>(intA % intB);
    case Operation::divideUnsigned:
        return wordA / wordB;
    case Operation::remainderOfUnsigned:
        return wordA % wordB;
    case Operation::add64:
        return a + b;
    case Operation::subtract64:
        return a - b;
    }
    return 0;
}

static int32_t twice(int32_t value) { return 2 * value; }
static int32_t negative(int32_t value) { return -value; }

extern "C" {

BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) { return GetTickCount() != 1 || TRUE; }

void compute(Operation operation, const Operands* operands, uint64_t* results, int32_t count) {
    for (int32_t i = 0; i < count; ++i)
        results[i] = computeOne(operation, operands[i].a, operands[i].b);
}

uint64_t mix(int32_t a, int64_t b, int32_t c, double d, int64_t e) {
    return static_cast<uint64_t>(a) + 3 * b + 5 * c + 7 * static_cast<int32_t>(d) + 11 * e;
}

uint64_t callBack(Receiver receiver) {
    return receiver(1, 0x200000003LL, 4, 0x500000006LL) + 0x100000000LL;
}

void fillRecord(ProbeRecord* record) {
    *record = {'a', 2.5, -3, 0x400000005LL, 'f', 5, 17, 9, L'\x1234'};
}

extern int32_t (*const probeTable[])(int32_t);
int32_t (*const probeTable[])(int32_t) = {twice, negative};

int32_t throughTable(int32_t index, int32_t value) { return probeTable[index](value); }

void* handOut() { return reinterpret_cast<void*>(twice); }
BOOL isTheOneHandedOut(void* place) { return place == reinterpret_cast<void*>(twice); }

// Whether what lies on the stack is the same after the observer as before.
BOOL withLocals(Observer observer, int32_t seed, void* context) {
    volatile int32_t locals[256];
    for (int32_t i = 0; i < 256; ++i) locals[i] = seed + i;
    observer(locals, 256, context);
    for (int32_t i = 0; i < 256; ++i)
        if (locals[i] != seed + i) return FALSE;
    return TRUE;
}

DWORD runningThread() { return currentThreadId(); }
DWORD runningProcess() { return currentProcessId(); }

uint32_t readWord(const uint32_t* place) { return *place; }
void writeWord(uint32_t* place) { *place = 1; }
void jumpTo(void (*place)()) { place(); }

// Calls a function of the system with these in the registers, and tells what it left there.
__attribute__((naked)) void callSystem(ScratchRegisters*) {
    asm("push {r4, lr}\n"
        "mov r4, r0\n"
        "ldr r0, [r4, #16]\n"
        "msr cpsr_f, r0\n"
        "ldmia r4, {r1, r2, r3, ip}\n"
        "bl GetTickCount\n"
        "stmia r4, {r1, r2, r3, ip}\n"
        "mrs r0, cpsr\n"
        "str r0, [r4, #16]\n"
        "pop {r4, lr}\n"
        "bx lr");
}

__attribute__((naked)) void* stackPointer() { asm("mov r0, sp\n bx lr"); }
__attribute__((naked)) void spoilRegister() { asm("mov r6, #1\n bx lr"); }
__attribute__((naked)) void runUnknownInstruction() { asm(".word 0xe7f000f0\n bx lr"); }
}
