// The face names of the device's fonts.

#include "bridge/memory.h"
#include "bridge/string_list.h"
#include "graphics/device.h"
#include "graphics/gdi_guards.h"

static constexpr int firstCapacity = 16;

namespace {

struct Typefaces {
    bool scalable;
    bool outOfMemory;
    wchar_t** names; // a string list
    int count;
    int capacity; // without the terminator
};

} // namespace

static bool grow(Typefaces* faces) {
    int capacity = faces->capacity ? faces->capacity * 2 : firstCapacity;
    auto** names = allocateArray<wchar_t*>(capacity + 1);
    if (!names) return false;
    if (faces->names) memcpy(names, faces->names, faces->count * sizeof(*names));
    freeBlock(faces->names);
    faces->names = names;
    faces->capacity = capacity;
    return true;
}

static bool append(Typefaces* faces, const wchar_t* name) {
    if (faces->count == faces->capacity && !grow(faces)) return false;
    auto* copy = allocateArray<wchar_t>(LF_FACESIZE + 1);
    if (!copy) return false;
    for (int i = 0; i < LF_FACESIZE && name[i]; ++i) copy[i] = name[i];
    faces->names[faces->count++] = copy;
    return true;
}

static int CALLBACK collect(const LOGFONTW* font, const TEXTMETRICW*, DWORD type, LPARAM lParam) {
    constexpr int goOn = 1;
    constexpr int stop = 0;
    auto* faces = reinterpret_cast<Typefaces*>(lParam);
    bool isRaster = type & RASTER_FONTTYPE;
    if (isRaster == faces->scalable) return goOn;
    faces->outOfMemory = !append(faces, font->lfFaceName);
    return faces->outOfMemory ? stop : goOn;
}

static void enumerate(HDC screen, const wchar_t* family, Typefaces* faces) {
    EnumFontFamiliesW(screen, family, collect, reinterpret_cast<LPARAM>(faces));
}

NativeStringList Device_GetTypefaces(DeviceRecord*, bool scalable, ErrorRecord* error) {
    WindowContext screen(nullptr);
    Typefaces families = {};
    families.scalable = scalable;
    enumerate(screen, nullptr, &families);

    Typefaces fonts = {};
    fonts.scalable = scalable;
    fonts.outOfMemory = families.outOfMemory;
    for (int i = 0; i < families.count && !fonts.outOfMemory; ++i)
        enumerate(screen, families.names[i], &fonts);
    stringListFree(families.names);
    if (fonts.outOfMemory)
        Win32Error_SetError(error, errorOutOfMemory, L"Not enough memory to list typefaces");
    return {fonts.names, true};
}
