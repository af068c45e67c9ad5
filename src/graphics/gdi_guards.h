#pragma once
// What is selected into a device context is put back when the guard goes.

#include "ce.h"

class SelectedObject {
  public:
    SelectedObject(HDC context, HGDIOBJ object)
        : context(context), previous(SelectObject(context, object)) {}
    ~SelectedObject() {
        if (previous) SelectObject(context, previous);
    }
    explicit operator bool() const { return previous != nullptr; }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

  private:
    HDC context;
    HGDIOBJ previous;
};

// The device context of a window, released with the guard. May be null.
class WindowContext {
  public:
    explicit WindowContext(HWND window) : window(window), context(GetDC(window)) {}
    ~WindowContext() {
        if (context) ReleaseDC(window, context);
    }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    operator HDC() const { return context; }

  private:
    HWND window;
    HDC context;
};

// The clip region of a device context. Without memory for a copy it ends without a clip.
class SavedClip {
  public:
    explicit SavedClip(HDC context) : context(context), region(CreateRectRgn(0, 0, 0, 0)) {
        hasClip = region && GetClipRgn(context, region) == 1;
    }
    ~SavedClip() {
        SelectClipRgn(context, hasClip ? region : nullptr);
        if (region) DeleteObject(region);
    }
    SavedClip(const SavedClip&) = delete;
    SavedClip& operator=(const SavedClip&) = delete;

  private:
    HDC context;
    HRGN region;
    bool hasClip;
};
