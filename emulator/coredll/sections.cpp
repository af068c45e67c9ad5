// Device-independent sections. The device tells the length of a palette as it was given when the
// section was made; the desk tells the longest possible.

#include <windows.h>

// By the number of the handle, which no two living objects share. What is left of a deleted object
// is never looked at: only sections answer with a whole description.
static DWORD colorsUsed[0x10000];

// What the device refuses: memory of somebody else's, and pixels that are packed.
static bool isOffered(const BITMAPINFOHEADER& header, HANDLE file, DWORD offset) {
    return !file && !offset &&
           (header.biCompression == BI_RGB || header.biCompression == BI_BITFIELDS);
}

// The device looks at the masks of 16 and 32 bits whatever the header says: they must be there.
static void touchMasks(const BITMAPINFO* info) {
    WORD bits = info->bmiHeader.biBitCount;
    if (bits != 16 && bits != 32) return;
    const volatile RGBQUAD* masks = info->bmiColors;
    for (int i = 0; i < 3; ++i) static_cast<void>(masks[i].rgbBlue);
}

extern "C" {

HBITMAP WINAPI Device_CreateDIBSection(HDC context, const BITMAPINFO* info, UINT usage, void** bits,
                                       HANDLE file, DWORD offset) {
    if (!isOffered(info->bmiHeader, file, offset)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    touchMasks(info);
    HBITMAP section = CreateDIBSection(context, info, usage, bits, file, offset);
    if (section) colorsUsed[LOWORD(reinterpret_cast<DWORD>(section))] = info->bmiHeader.biClrUsed;
    return section;
}

int WINAPI Device_GetObjectW(HANDLE object, int size, void* out) {
    int length = GetObjectW(object, size, out);
    if (out && length == sizeof(DIBSECTION))
        static_cast<DIBSECTION*>(out)->dsBmih.biClrUsed =
            colorsUsed[LOWORD(reinterpret_cast<DWORD>(object))];
    return length;
}
}
