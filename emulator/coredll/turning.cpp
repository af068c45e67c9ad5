// The screen is turned while programs run.

#include "emulator.h"
#include "input_panel.h"
#include "screen.h"
#include "task_bar.h"

extern "C" void WINAPI Emulator_TurnScreen() {
    swapScreenSides();
    placeTaskBar();
    changeWorkArea(placeInputPanel());
}
