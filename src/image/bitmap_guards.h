#pragma once
// Bitmaps are selected into a device context for a while, and an image's bitmap is in one context
// at a time.

#include "bridge/lock.h"
#include "image/image.h"

// A memory device context like the given one (null: like the screen) with the bitmap selected.
// Null when there is no bitmap, or the context cannot be made: nothing is drawn into the bitmap
// that the system gives to contexts without one. The last error is that of the call that failed.
class BitmapContext {
  public:
    BitmapContext(HDC like, HBITMAP bitmap)
        : context(bitmap ? CreateCompatibleDC(like) : nullptr),
          previous(context ? SelectObject(context, bitmap) : nullptr) {}
    ~BitmapContext() {
        if (previous) SelectObject(context, previous);
        if (context) DeleteDC(context);
    }
    BitmapContext(const BitmapContext&) = delete;
    BitmapContext& operator=(const BitmapContext&) = delete;
    operator HDC() const { return previous ? context : nullptr; }

  private:
    HDC context;
    HGDIOBJ previous;
};

// One more owner of an image: it stays, whoever disposes of it.
class ImageUse {
  public:
    explicit ImageUse(ImageRecord* image) : image(image) { Image_Join(image); }
    ~ImageUse() { Image_Leave(image); }
    ImageUse(const ImageUse&) = delete;
    ImageUse& operator=(const ImageUse&) = delete;

  private:
    ImageRecord* image;
};

// Holds an image's lock, and the image.
class ImageLock {
  public:
    explicit ImageLock(ImageRecord* image) : use(image), lock(&image->lock) {}

  private:
    ImageUse use; // outlives the lock
    Lock lock;
};

// Takes an image's bitmap out of the drawing context that holds it, and puts it back there. The
// record still names that context meanwhile.
class Deselected {
  public:
    explicit Deselected(ImageRecord* image) : image(image) {
        if (image->selectedDC) SelectObject(image->selectedDC, image->placeholderBitmap);
    }
    ~Deselected() {
        if (image->selectedDC) SelectObject(image->selectedDC, image->bitmap);
    }
    Deselected(const Deselected&) = delete;
    Deselected& operator=(const Deselected&) = delete;

  private:
    ImageRecord* image;
};

// An image's bitmap in a memory device context like the given one, for reading: the image is
// locked, and goes back to the drawing context that held it.
class ImageSource {
  public:
    ImageSource(HDC like, ImageRecord* image)
        : lock(image), deselected(image), context(like, image->bitmap) {}
    operator HDC() const { return context; }

  private:
    ImageLock lock;
    Deselected deselected;
    BitmapContext context;
};
