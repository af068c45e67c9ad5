#pragma once
// The lock of what several threads reach: lists of shells, menus and contexts on windows, command
// ids, a control's parent, what a file dialog keeps, and who uses a colour, a font, an image or a
// display. There is one for the process, and it is a leaf: while it is held no message is sent,
// nothing of Java's runs and no other lock is taken. What is found under it may be gone as soon as
// it is left. Any thread.

#include "bridge/lock.h"

class LeafLock {
  public:
    LeafLock();
    ~LeafLock();
    LeafLock(const LeafLock&) = delete;
    LeafLock& operator=(const LeafLock&) = delete;

    // Once, while the process loads the library.
    static void initialize();

  private:
    Lock lock;
};
