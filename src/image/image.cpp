#include "image/image.h"
#include "bridge/leaf_lock.h"
#include "bridge/memory.h"

ImageRecord* Image_FromBitmap(HBITMAP bitmap, bool isDirect, DWORD transparentIndex,
                              COLORREF transparentColor, ErrorRecord* error) {
    auto* image = allocate<ImageRecord>();
    if (!image) {
        DeleteObject(bitmap);
        Error_SetCode(error, errorOutOfMemory);
        return nullptr;
    }
    image->bitmap = bitmap;
    image->isDirect = isDirect;
    image->transparentIndex = transparentIndex;
    image->transparentColor = transparentColor;
    InitializeCriticalSection(&image->lock);
    image->owners = 1;
    return image;
}

void Image_Join(ImageRecord* image) {
    LeafLock lock;
    ++image->owners;
}

static bool isLeftByLast(ImageRecord* image) {
    LeafLock lock;
    return --image->owners == 0;
}

void Image_Leave(ImageRecord* image) {
    if (!isLeftByLast(image)) return;
    HBITMAP bitmap = image->bitmap;
    DeleteCriticalSection(&image->lock);
    freeBlock(image);
    DeleteObject(bitmap);
}

void Image_Dispose(ImageRecord* image, ErrorRecord*) { Image_Leave(image); }

extern "C" void _Image_GetSize(ImageRecord* image, jint* width, jint* height, ErrorRecord*) {
    Section section = sectionOf(image);
    *width = section.width;
    *height = section.height;
}

Bounds Image_GetBounds(ImageRecord* image, ErrorRecord* error) {
    Bounds bounds = {};
    _Image_GetSize(image, &bounds.width, &bounds.height, error);
    return bounds;
}

jint Image_GetDepth(ImageRecord* image, ErrorRecord*) { return sectionOf(image).bitCount; }

bool Image_IsDirect(ImageRecord* image, ErrorRecord*) { return image->isDirect != 0; }

jint Image_GetTransparentColor(ImageRecord* image, ErrorRecord*) {
    constexpr jint none = -1;
    if (image->isDirect) return static_cast<jint>(image->transparentColor);
    return hasTransparentColor(image) ? static_cast<jint>(image->transparentIndex) : none;
}
