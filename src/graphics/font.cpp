#include "graphics/font.h"
#include "bridge/arithmetic.h"
#include "bridge/leaf_lock.h"
#include "bridge/links.h"
#include "bridge/memory.h"
#include "graphics/gdi_guards.h"

static constexpr jint pointsPerInch = 72;

static FontRecord* madeFonts; // under the leaf lock

extern "C" void _Font_FillInFont(LOGFONTW* font, jint points, jint style) {
    WindowContext screen(nullptr);
    // Quirk: a font's points are the height of its cell, so that its letters are smaller than asked
    // for. Pinned by FontTest.is_described_by_face_size_and_style.
    jint dotsPerInch = GetDeviceCaps(screen, LOGPIXELSY);
    font->lfHeight = saturatingMultiply(dotsPerInch, points) / pointsPerInch;
    font->lfWeight = style & fontBold ? FW_BOLD : FW_NORMAL;
    font->lfItalic = (style & fontItalic) != 0;
    font->lfUnderline = (style & fontUnderline) != 0;
    font->lfStrikeOut = (style & fontStrikeOut) != 0;
    font->lfCharSet = DEFAULT_CHARSET;
}

FontRecord* Font_FromHandle(HFONT font, ErrorRecord* error) {
    WindowContext screen(nullptr);
    auto* record = allocate<FontRecord>();
    if (!record) {
        // Quirk: a font that finds no memory for its record is left behind, as it may be the
        // system's own. Pinned by FontTest.that_finds_no_record_is_left_to_the_system.
        Win32Error_SetError(error, errorOutOfMemory, L"Not enough memory to allocate font");
        return nullptr;
    }
    record->font = font;
    record->owners = 1;
    SelectedObject selected(screen, font);
    GetTextMetricsW(screen, &record->metrics);
    return record;
}

static FontRecord* list(FontRecord* record) {
    if (!record) return nullptr;
    LeafLock lock;
    record->next = madeFonts;
    madeFonts = record;
    return record;
}

static FontRecord* create(const LOGFONTW& description, ErrorRecord* error) {
    HFONT font = CreateFontIndirectW(&description);
    if (!font) {
        Win32Error_SetLast(error, L"Unable to createfont");
        return nullptr;
    }
    return list(Font_FromHandle(font, error));
}

FontRecord* Font_New(DeviceRecord*, const wchar_t* name, jint points, jint style,
                     ErrorRecord* error) {
    LOGFONTW description = {};
    if (!name) name = L"";
    if (lstrcmpiW(name, L"fixed") == 0)
        description.lfPitchAndFamily = FF_MODERN;
    else
        // Quirk: a name that fills the field, or is cut to it, is not terminated. Pinned by
        // FontTest.a_face_name_fills_its_field_and_is_cut.
        for (int i = 0; i < LF_FACESIZE && name[i]; ++i) description.lfFaceName[i] = name[i];
    _Font_FillInFont(&description, points, style);
    return create(description, error);
}

static BYTE familyOf(jint kind) {
    switch (kind) {
    case familySansSerif:
        return FF_SWISS;
    case familySerif:
        return FF_ROMAN;
    case familyFixedPitch:
        return FF_MODERN;
    default:
        return FF_DONTCARE;
    }
}

FontRecord* Font_NewLogical(DeviceRecord*, jint family, jint points, jint style,
                            ErrorRecord* error) {
    LOGFONTW description = {};
    _Font_FillInFont(&description, points, style);
    description.lfPitchAndFamily = familyOf(family);
    return create(description, error);
}

static FontRecord* madeFontOf(HFONT handle) {
    FontRecord* font = handle ? madeFonts : nullptr;
    while (font && font->font != handle) font = font->next;
    return font;
}

// One owner less. Whether it was the last, who ends the font.
static bool isLeftByLast(FontRecord* font) {
    if (--font->owners > 0) return false;
    takeOut<&FontRecord::next>(&madeFonts, font);
    return true;
}

static void end(FontRecord* font) {
    DeleteObject(font->font);
    *font = {};
    freeBlock(font);
}

static FontRecord* exchange(HFONT previous, HFONT next) {
    LeafLock lock;
    if (FontRecord* worn = madeFontOf(next)) ++worn->owners;
    FontRecord* left = madeFontOf(previous);
    return left && isLeftByLast(left) ? left : nullptr;
}

void Font_Wear(HFONT previous, HFONT next) {
    if (previous == next) return;
    if (FontRecord* last = exchange(previous, next)) end(last);
}

static bool isLeftByJava(FontRecord* font) {
    LeafLock lock;
    return isLeftByLast(font);
}

void Font_Dispose(FontRecord* font, ErrorRecord*) {
    if (font && isLeftByJava(font)) end(font);
}

jint Font_GetAscent(FontRecord* font, ErrorRecord*) {
    return font->metrics.tmAscent - font->metrics.tmInternalLeading;
}

jint Font_GetDescent(FontRecord* font, ErrorRecord*) { return font->metrics.tmDescent; }

jint Font_GetLeading(FontRecord* font, ErrorRecord*) { return font->metrics.tmInternalLeading; }

jint Font_GetStyle(FontRecord* font, ErrorRecord*) {
    const TEXTMETRICW& metrics = font->metrics;
    jint style = 0;
    if (metrics.tmItalic) style |= fontItalic;
    // Quirk: a font heavier than bold is told as not bold. Pinned by
    // FontTest.is_bold_at_weight_700_alone.
    if (metrics.tmWeight == FW_BOLD) style |= fontBold;
    if (metrics.tmUnderlined) style |= fontUnderline;
    if (metrics.tmStruckOut) style |= fontStrikeOut;
    return style;
}

jint Font_GetSizeInPoints(FontRecord* font, ErrorRecord* error) {
    WindowContext screen(nullptr);
    if (!screen) {
        Win32Error_SetLast(error, L"Unable to get screen dc");
        return 0;
    }
    jint dotsPerInch = GetDeviceCaps(screen, LOGPIXELSY);
    if (dotsPerInch == 0) return 0;
    return saturatingMultiply(font->metrics.tmHeight, pointsPerInch) / dotsPerInch;
}

static BOOL measure(HDC context, const wchar_t* text, int length, SIZE* size) {
    return GetTextExtentExPointW(context, text, length, 0, nullptr, nullptr, size);
}

jint Font_GetAdvanceWidth(FontRecord* font, jchar character, ErrorRecord*) {
    WindowContext screen(nullptr);
    // Quirk: the screen's context is given back with the font selected. Pinned by
    // FontTest.of_a_measured_character_is_selected_until_the_screen_is_released.
    SelectObject(screen, font->font);
    wchar_t text = static_cast<wchar_t>(character);
    SIZE size = {};
    measure(screen, &text, 1, &size);
    return size.cx;
}

jint Font_StringAdvance(FontRecord* font, const wchar_t* text, ErrorRecord* error) {
    if (!text) return 0;
    WindowContext screen(nullptr);
    if (!screen) {
        Win32Error_SetLast(error, L"Failed to get screen DC");
        return 0;
    }
    SelectedObject selected(screen, font->font);
    if (!selected) {
        Win32Error_SetError(error, errorFailed, L"Failed to select font");
        return 0;
    }
    SIZE size = {};
    if (!measure(screen, text, static_cast<int>(wcslen(text)), &size)) {
        Win32Error_SetLast(error, L"Failed to calculate text extent");
        return 0;
    }
    return size.cx;
}

static wchar_t* copyFaceName(HDC context, ErrorRecord* error) {
    int length = GetTextFaceW(context, 0, nullptr);
    if (length == 0) {
        Win32Error_SetLast(error, L"Unable to get font face length");
        return nullptr;
    }
    Block<wchar_t> name(allocateArray<wchar_t>(length));
    if (!name) {
        Win32Error_SetError(error, errorOutOfMemory, L"Not enough memory to store font face name");
        return nullptr;
    }
    if (!GetTextFaceW(context, length, name)) {
        Win32Error_SetLast(error, L"Unable to copy font face name into buffer");
        return nullptr;
    }
    return name.release();
}

NativeString Font_GetName(FontRecord* font, ErrorRecord* error) {
    WindowContext screen(nullptr);
    if (!screen) {
        Win32Error_SetLast(error, L"Unable to get screen dc");
        return {};
    }
    SelectedObject selected(screen, font->font);
    return {copyFaceName(screen, error), true};
}
