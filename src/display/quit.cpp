#include "display/quit.h"
#include "display/display.h"

ModalLoop::ModalLoop(DisplayRecord* itsDisplay)
    : display(itsDisplay), outer(nullptr), quitWaits(false) {
    if (!display) return;
    Display_Retain(display);
    outer = display->modalLoop;
    display->modalLoop = this;
    MSG message;
    if (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) quitWaits = true;
}

ModalLoop::~ModalLoop() {
    if (!display) return;
    display->modalLoop = outer;
    if (quitWaits) Quit_Post(display);
    Display_Release(display);
}

void Quit_Post(DisplayRecord* display) {
    if (display && display->modalLoop)
        display->modalLoop->quitWaits = true;
    else
        PostQuitMessage(0);
}
