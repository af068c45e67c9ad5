#include "widgets/clipboard.h"
#include "bridge/memory.h"
#include <string.h>

static void fail(ErrorRecord* error, const wchar_t* message) { Win32Error_SetLast(error, message); }

// Opened without a window of its own. An open clipboard is closed whatever happened meanwhile.
static bool open(ErrorRecord* error, const wchar_t* message) {
    if (OpenClipboard(nullptr)) return true;
    fail(error, message);
    return false;
}

static bool close(ErrorRecord* error) {
    if (CloseClipboard()) return true;
    fail(error, L"Unable to close the clipboard");
    return false;
}

static wchar_t* copyText(ErrorRecord* error) {
    auto* text = static_cast<const wchar_t*>(GetClipboardData(CF_UNICODETEXT));
    if (!text) {
        fail(error, L"Unable to copy text from clipboard");
        return nullptr;
    }
    wchar_t* copy = allocateArray<wchar_t>(wcslen(text) + 1);
    if (copy)
        wcscpy(copy, text);
    else
        Win32Error_SetError(error, errorOutOfMemory, L"Cannot create copy of global string");
    return copy;
}

NativeString Clipboard_GetText(ErrorRecord* error) {
    if (!IsClipboardFormatAvailable(CF_UNICODETEXT)) return {};
    if (!open(error, L"Unabled to open clipboard")) return {}; // spelt so
    Block<wchar_t> text(copyText(error));
    if (!close(error)) return {};
    return {text.release(), true};
}

static wchar_t* newBlock(const wchar_t* text) {
    UINT size = (wcslen(text) + 1) * sizeof(wchar_t);
    void* block = LocalAlloc(LMEM_MOVEABLE, size);
    return block ? static_cast<wchar_t*>(memcpy(block, text, size)) : nullptr;
}

static void put(const wchar_t* text, ErrorRecord* error) {
    if (!EmptyClipboard()) {
        fail(error, L"Unable to empty the clipboard");
        return;
    }
    wchar_t* block = newBlock(text);
    if (!block) {
        Win32Error_SetError(error, errorOutOfMemory, L"Unable to allocate global copy of text");
        return;
    }
    if (SetClipboardData(CF_UNICODETEXT, block)) return;
    fail(error, L"Unable to set text in clipboard");
    LocalFree(block);
}

void Clipboard_SetText(const wchar_t* text, ErrorRecord* error) {
    if (!open(error, L"Unable to open the clipboard")) return;
    put(text ? text : L"", error);
    close(error);
}
