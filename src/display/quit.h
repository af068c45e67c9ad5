#pragma once
// The quit message that every control posts when its window goes. The display's own loop reads on
// after it, but the system's modal loops (scroll tracking, dialogs, menus, the wait for a held tap)
// would take it for their end. So it waits until the outermost of them has ended.

struct DisplayRecord;

// A modal loop of the system's, for as long as this lives. The library makes one wherever it enters
// such a loop, or hears that the system does. Display thread only.
//
// Beginning and ending a loop may dispatch other threads' messages: a handler goes on only with a
// record that it has found again by its window. The display may be disposed of in the loop.
class ModalLoop {
  public:
    // Takes a quit message that is queued already; it waits as well. Null: no display, no effect.
    explicit ModalLoop(DisplayRecord* display);

    // Posts what has waited, unless the loop has run within another.
    ~ModalLoop();
    ModalLoop(const ModalLoop&) = delete;
    ModalLoop& operator=(const ModalLoop&) = delete;

  private:
    friend void Quit_Post(DisplayRecord* display);
    DisplayRecord* display; // retained; null: none
    ModalLoop* outer;
    bool quitWaits;
};

// A control's window goes: posts the quit message at once, or when the modal loops have ended.
// Display thread only. Null: at once.
void Quit_Post(DisplayRecord* display);
