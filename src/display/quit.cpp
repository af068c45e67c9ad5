#include "display/quit.h"
#include "display/display.h"

ModalLoop::ModalLoop(DisplayRecord* itsDisplay)
    : display(itsDisplay), outer(nullptr), quitWaits(false) {
    if (!display) return;
    outer = display->modalLoop;
    display->modalLoop = this;
    MSG message;
    if (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) quitWaits = true;
}

ModalLoop::~ModalLoop() {
    if (display) display->modalLoop = outer;
    if (!quitWaits) return;
    if (outer)
        outer->quitWaits = true;
    else
        PostQuitMessage(0);
}

void Quit_Post(DisplayRecord* display) {
    if (display && display->modalLoop)
        display->modalLoop->quitWaits = true;
    else
        PostQuitMessage(0);
}

void Quit_ForgetDisplay(DisplayRecord* display) {
    for (ModalLoop* loop = display->modalLoop; loop; loop = loop->outer) loop->display = nullptr;
}
