#include "graphics/font.h"
#include "bridge/memory.h"

void Font_Release(FontRecord* font) {
    if (!font) return;
    DeleteObject(font->font);
    *font = {};
    freeBlock(font);
}
