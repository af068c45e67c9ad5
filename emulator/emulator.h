#pragma once
// What the emulated device offers to tests and tools on the desk, beside the device's own API.
// Exported by coredll.dll; link emulator::control. Any thread.

#include <windows.h>

// What differs from device to device. ZEMVOLT_DEVICE names what is not as it is first here.
struct EmulatorVariety {
    SIZE screen;             // screen=240x320: pixels, before it is turned
    int dotsPerInch;         // dpi=96
    int taskBarHeight;       // bar=0: pixels at the top of the screen, with the title in use
    BOOL hasOnlyWaitCursor;  // cursors=wait: there is no other system cursor
    BOOL hasNoSystemTexts;   // texts=none: no error code has a text
    BOOL hasStylusOnly;      // pointer=stylus: the pointer stays where it touched last
    BOOL choosesOneFileOnly; // files=one: the file dialogs, whatever they are asked for
    BOOL hasNoInputPanel;    // panel=none: menu bars have no button for it
    BOOL hasTurnButton;      // turn=button: in the task bar
};

// What can be asked to fail.
enum EmulatorFailure : int {
    failMemory, // a block of the heap is refused, as if there were no memory
    failFile,   // a file is not opened, as if it could not be read or written
    failSound,  // a waveform output is not opened, as if another program had it
    failureKinds,
};

#ifndef EMULATOR_IMPORT
#define EMULATOR_IMPORT __declspec(dllimport)
#endif

// The window class of the task bar.
constexpr wchar_t taskBarClass[] = L"HHTaskBar";

// How the imaging component's decoders deliver pixels to a sink.
enum EmulatorDelivery : int {
    deliverWhole,   // into one buffer asked of the sink
    deliverInBands, // into buffers of some rows each, asked of the sink
    deliverRows,    // pushed from a buffer of the decoder's own, with a stride of its own
    deliverPasses,  // pushed twice: coarse, and then as they are
};

extern "C" {
EMULATOR_IMPORT const EmulatorVariety* WINAPI Emulator_GetVariety();

// Heap blocks that were allocated through the device's API and not freed yet.
EMULATOR_IMPORT LONG WINAPI Emulator_CountHeapBlocks();
// Menus and tables of accelerators that were made through the device's API and have not ended.
EMULATOR_IMPORT LONG WINAPI Emulator_CountMenusAndTables();

// Writes what the process's windows show on the device's screen, without the pointer, as a 24-bit
// BMP file. False, with the last error set, when the file cannot be written.
EMULATOR_IMPORT BOOL WINAPI Emulator_SaveScreen(LPCWSTR path);

// The same into memory: row by row from the top, each pixel as 0xRRGGBB. False when there are not
// exactly so many pixels, as the screen may be turned at any time, or no memory.
EMULATOR_IMPORT BOOL WINAPI Emulator_CopyScreen(DWORD* pixels, DWORD count);

// Lets a later call of that kind fail: 1 is the next one; 0 takes it back.
EMULATOR_IMPORT void WINAPI Emulator_FailCall(EmulatorFailure kind, LONG number);

// How often a thread has begun to wait until there are messages, when there were none.
EMULATOR_IMPORT LONG WINAPI Emulator_CountWaits();

// The next SHRecognizeGesture of any thread answers this gesture at once, whatever the pointer
// does.
EMULATOR_IMPORT void WINAPI Emulator_AnswerNextGesture(DWORD gesture);

// For aygshell: whether an answer was waiting; takes it.
EMULATOR_IMPORT BOOL WINAPI Emulator_TakeGestureAnswer(DWORD* gesture);

// The screen's pixels as it is turned now.
EMULATOR_IMPORT void WINAPI Emulator_GetScreen(SIZE* screen);

// Turns the screen by a quarter: what was its width is its height. Task bar, menu bars and input
// panel take their new places, and every window of the process hears of the new work area.
EMULATOR_IMPORT void WINAPI Emulator_TurnScreen();

// The part of the screen that top-level windows may fill.
EMULATOR_IMPORT void WINAPI Emulator_GetWorkArea(RECT* area);

// The input panel: a keyboard that takes its room from the work area; every window of the process
// hears of the change. It belongs to the thread that shows it.
EMULATOR_IMPORT void WINAPI Emulator_ShowInputPanel(BOOL shown);
EMULATOR_IMPORT BOOL WINAPI Emulator_IsInputPanelShown();

// How many times faster than real time sounds play from now on; 1 is real time. With 0 they stand
// still but for Emulator_PassSoundTime.
EMULATOR_IMPORT void WINAPI Emulator_SetSoundSpeed(DWORD factor);

// Lets the time pass for sounds, and returns when all that is due then has been played and told.
EMULATOR_IMPORT void WINAPI Emulator_PassSoundTime(DWORD milliseconds);

// What waveform outputs play that are opened from now on is written to WAV files, which are whole
// when the output is closed: the first to the path, the next with -2, -3 ... before its extension.
// Null: to none.
EMULATOR_IMPORT void WINAPI Emulator_RecordSounds(LPCWSTR path);

// Waveform outputs that are open.
EMULATOR_IMPORT LONG WINAPI Emulator_CountWaveOutputs();

// The device's clock: tick count, timers of windows, times of input and waits for input follow it.
// It runs as the desk's does. Other waits, sounds and what the desk's own controls do by themselves
// do not follow it. In milliseconds; the tick count is its lower half.
EMULATOR_IMPORT LONGLONG WINAPI Emulator_GetTime();

// Lets it stand still, but for Emulator_PassTime; a caret stands still too. Lets it run again.
EMULATOR_IMPORT void WINAPI Emulator_StopClock();
EMULATOR_IMPORT void WINAPI Emulator_RunClock();

// Lets time pass. What is due then comes to its thread as ever, after all else that this has to do;
// who wants each thing at its own time passes from one to the next. False while the clock runs.
EMULATOR_IMPORT BOOL WINAPI Emulator_PassTime(DWORD milliseconds);

// The time at which the next timer is due, or the next wait ends by itself; MAXLONGLONG: none.
EMULATOR_IMPORT LONGLONG WINAPI Emulator_GetNextDue();

// Set while a thread waits for input with a limit and only a clock that stands could end it. Never
// closed.
EMULATOR_IMPORT HANDLE WINAPI Emulator_GetRestEvent();

// For aygshell: waits until there is input of these kinds, or so many milliseconds have passed.
EMULATOR_IMPORT DWORD WINAPI Emulator_AwaitInput(DWORD milliseconds, DWORD kinds);

// How images are delivered from now on, on any thread; deliverWhole at first.
EMULATOR_IMPORT void WINAPI Emulator_SetImageDelivery(EmulatorDelivery delivery);

// For imaging.
EMULATOR_IMPORT EmulatorDelivery WINAPI Emulator_ImageDelivery();

// Where the desk keeps a file or folder of the device's, in MAX_PATH characters. False when it does
// not fit.
EMULATOR_IMPORT BOOL WINAPI Emulator_GetDeskPath(LPCWSTR path, LPWSTR onDesk);
}
