#include "display/keys.h"
#include "bridge/narrow.h"

namespace {

struct KeyRow {
    BYTE virtualKey;
    WORD keyCode;
};

} // namespace

// Scanned in this order, first match wins, in both directions. Enter's second row is therefore
// never found by its virtual key, and Cancel, which shares End's code, never by its code. Both are
// meant.
static constexpr KeyRow keyTable[] = {
    {VK_MENU, 1018},     {VK_SHIFT, 1017},    {VK_CONTROL, 1019}, {VK_UP, 1015},
    {VK_DOWN, 1016},     {VK_LEFT, 1013},     {VK_RIGHT, 1014},   {VK_PRIOR, 1009},
    {VK_NEXT, 1010},     {VK_HOME, 1007},     {VK_END, 1008},     {VK_INSERT, 1011},
    {VK_BACK, 1000},     {VK_RETURN, 1002},   {VK_DELETE, 1012},  {VK_ESCAPE, 1003},
    {VK_TAB, 1001},      {VK_F1, 1023},       {VK_F2, 1024},      {VK_F3, 1025},
    {VK_F4, 1026},       {VK_F5, 1027},       {VK_F6, 1028},      {VK_F7, 1029},
    {VK_F8, 1030},       {VK_F9, 1031},       {VK_F10, 1032},     {VK_F11, 1033},
    {VK_F12, 1034},      {VK_F13, 1035},      {VK_F14, 1036},     {VK_F15, 1037},
    {VK_MULTIPLY, 1067}, {VK_ADD, 1068},      {VK_RETURN, 1082},  {VK_SUBTRACT, 1069},
    {VK_DECIMAL, 1070},  {VK_DIVIDE, 1071},   {VK_NUMPAD0, 1072}, {VK_NUMPAD1, 1073},
    {VK_NUMPAD2, 1074},  {VK_NUMPAD3, 1075},  {VK_NUMPAD4, 1076}, {VK_NUMPAD5, 1077},
    {VK_NUMPAD6, 1078},  {VK_NUMPAD7, 1079},  {VK_NUMPAD8, 1080}, {VK_NUMPAD9, 1081},
    {VK_CAPITAL, 1020},  {VK_NUMLOCK, 1021},  {VK_SCROLL, 1022},  {VK_PAUSE, 1006},
    {VK_CANCEL, 1008},   {VK_SNAPSHOT, 1005},
};
static_assert(sizeof(keyTable) / sizeof(keyTable[0]) == 54);

jint Key_ToJava(DWORD virtualKey) {
    for (const KeyRow& row : keyTable)
        if (row.virtualKey == virtualKey) return row.keyCode;
    return 0;
}

DWORD Key_FromJava(jint keyCode) {
    for (const KeyRow& row : keyTable)
        if (row.keyCode == keyCode) return row.virtualKey;
    return Key_ToUpper(static_cast<wchar_t>(keyCode));
}

wchar_t Key_GetNumpadCharacter(DWORD virtualKey) {
    if (virtualKey >= VK_NUMPAD0 && virtualKey <= VK_NUMPAD9)
        return static_cast<wchar_t>(L'0' + (virtualKey - VK_NUMPAD0));
    switch (virtualKey) {
    case VK_MULTIPLY:
        return L'*';
    case VK_ADD:
        return L'+';
    case VK_SUBTRACT:
        return L'-';
    case VK_DECIMAL:
        return L'.';
    case VK_DIVIDE:
        return L'/';
    default:
        return 0;
    }
}

// CharUpperW takes a character in place of a pointer when the high word is zero.
wchar_t Key_ToUpper(wchar_t character) {
    auto* packed = reinterpret_cast<wchar_t*>(static_cast<UINT_PTR>(character));
    return static_cast<wchar_t>(reinterpret_cast<UINT_PTR>(CharUpperW(packed)));
}

bool Key_IsDown(int virtualKey) { return narrow(GetKeyState(virtualKey)) < 0; }
