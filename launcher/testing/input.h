#pragma once
// What a person does at the device, through the device's own input. Any thread.

// In pixels of the screen.
void movePointer(int x, int y);

// Goes down or up there. The place comes along: a display that shows the device tells late where a
// move has brought the pointer.
void pressPointer(int x, int y, bool down);

// One of the system's virtual keys goes down or up.
void pressKey(int key, bool down);

// The keys that type a character, or the character itself where no key does.
void typeCharacter(wchar_t character);
