#include "emulator.h"

static LONG chosen = deliverWhole;

extern "C" {

void WINAPI Emulator_SetImageDelivery(EmulatorDelivery delivery) {
    InterlockedExchange(&chosen, delivery);
}

EmulatorDelivery WINAPI Emulator_ImageDelivery() {
    return static_cast<EmulatorDelivery>(InterlockedCompareExchange(&chosen, 0, 0));
}
}
