// Device-independent sections. The device tells the length of a palette as it was given when the
// section was made; the desk tells the longest possible.

#include <windows.h>

// By the number of the handle, which no two living objects share. What is left of a deleted object
// is never looked at: only sections answer with a whole description.
static DWORD colorsUsed[0x10000];

extern "C" {

HBITMAP WINAPI Device_CreateDIBSection(HDC context, const BITMAPINFO* info, UINT usage, void** bits,
                                       HANDLE file, DWORD offset) {
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
