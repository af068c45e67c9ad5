#include "control/appearance.h"
#include "device.h"
#include "faults.h"
#include "graphics/font.h"
#include "graphics/graphics.h"
#include "leaks.h"
#include "variety.h"

// A size in points as pixels of the device's screen, truncated.
static LONG pixelsOf(LONG points) { return theDevice().dotsPerInch * points / 72; }

class FontTest : public DeviceTest {
  protected:
    jint newFont(const std::u16string& name, jint points, jint style = 0) {
        return call(OS::Font_New, display, vm.newString(name), points, style);
    }
    jint newLogical(jint family, jint points = 10, jint style = 0) {
        return call(OS::Font_NewLogical, display, family, points, style);
    }
    void disposeFont(jint font) { call(OS::Font_Dispose, font); }
    static LOGFONTW descriptionOf(jint font) {
        LOGFONTW description = {};
        GetObjectW(reinterpret_cast<FontRecord*>(font)->font, sizeof(description), &description);
        return description;
    }
    std::u16string nameOf(jint font) { return vm.text(call(OS::Font_GetName, font)); }
    jint get(const Native<jint(jint)>& property, jint font) { return call(property, font); }
    jint advance(jint font, const std::u16string& text) {
        return call(OS::Font_StringAdvance, font, vm.newString(text));
    }
};

TEST_F(FontTest, its_name_is_read_and_leaves_nothing) {
    jint font = newLogical(2);
    {
        NoLeaks noLeaks;
        EXPECT_FALSE(nameOf(font).empty());
    }
    disposeFont(font);
}

// What the system was asked to make.
static LOGFONTW asked;
static HFONT WINAPI recordDescription(const LOGFONTW* description) {
    asked = *description;
    return CreateFontIndirectW(description);
}

TEST_F(FontTest, is_described_by_face_size_and_style) {
    Faults faults;
    faults.replace("CreateFontIndirectW", reinterpret_cast<void*>(recordDescription));
    jint font = newFont(u"Tahoma", 12, 2 | 4 | 8 | 16);
    EXPECT_STREQ(asked.lfFaceName, L"Tahoma");
    EXPECT_EQ(asked.lfHeight, pixelsOf(12)) << "positive: the height of the cell";
    EXPECT_EQ(asked.lfWeight, 700);
    EXPECT_EQ(asked.lfItalic, 1);
    EXPECT_EQ(asked.lfUnderline, 1);
    EXPECT_EQ(asked.lfStrikeOut, 1);
    EXPECT_EQ(asked.lfCharSet, DEFAULT_CHARSET);
    EXPECT_EQ(asked.lfPitchAndFamily, 0);
    disposeFont(font);
    font = newFont(u"Tahoma", 10);
    EXPECT_EQ(asked.lfHeight, pixelsOf(10)) << "truncated";
    EXPECT_EQ(asked.lfWeight, 400);
    EXPECT_EQ(asked.lfItalic + asked.lfUnderline + asked.lfStrikeOut, 0);
    disposeFont(font);
}

TEST_F(FontTest, a_size_of_0_leaves_the_height_to_the_system) {
    jint font = newFont(u"Tahoma", 0);
    EXPECT_EQ(descriptionOf(font).lfHeight, 0);
    EXPECT_GT(get(OS::Font_GetSizeInPoints, font), 0);
    disposeFont(font);
}

TEST_F(FontTest, fixed_in_any_case_is_a_family_and_no_face) {
    for (const char16_t* name : {u"fixed", u"FIXED", u"Fixed"}) {
        jint font = newFont(name, 10);
        EXPECT_STREQ(descriptionOf(font).lfFaceName, L"");
        EXPECT_EQ(descriptionOf(font).lfPitchAndFamily, FF_MODERN);
        EXPECT_EQ(advance(font, u"iii"), advance(font, u"WWW"));
        disposeFont(font);
    }
    jint other = newFont(u"fixedx", 10);
    EXPECT_EQ(descriptionOf(other).lfPitchAndFamily, 0);
    disposeFont(other);
}

TEST_F(FontTest, a_face_name_fills_its_field_and_is_cut) {
    Faults faults;
    faults.replace("CreateFontIndirectW", reinterpret_cast<void*>(recordDescription));
    for (size_t length : {32u, 40u}) {
        asked = {};
        jint font = newFont(std::u16string(length, u'n'), 10);
        EXPECT_EQ(std::wstring(asked.lfFaceName, 32), std::wstring(32, L'n')) << length;
        disposeFont(font);
    }
}

TEST_F(FontTest, a_null_name_is_the_empty_one) {
    jint font = call(OS::Font_New, display, nullptr, 10, 0);
    EXPECT_NE(font, 0);
    disposeFont(font);
}

TEST_F(FontTest, families_are_logical) {
    const struct {
        jint kind;
        BYTE family;
    } rows[] = {{2, FF_SWISS}, {3, FF_ROMAN}, {4, FF_MODERN}, {0, 0}, {1, 0}, {5, 0}, {-1, 0}};
    for (const auto& row : rows) {
        jint font = newLogical(row.kind, 12, 4);
        EXPECT_EQ(descriptionOf(font).lfPitchAndFamily, row.family) << row.kind;
        EXPECT_STREQ(descriptionOf(font).lfFaceName, L"");
        EXPECT_EQ(descriptionOf(font).lfHeight, pixelsOf(12));
        EXPECT_EQ(descriptionOf(font).lfItalic, 1);
        disposeFont(font);
    }
}

TEST_F(FontTest, families_have_faces_of_their_kind) {
    auto pitchOf = [&](jint kind) {
        jint font = newLogical(kind);
        BYTE pitch = reinterpret_cast<FontRecord*>(font)->metrics.tmPitchAndFamily;
        disposeFont(font);
        return pitch;
    };
    EXPECT_TRUE(pitchOf(2) & TMPF_FIXED_PITCH) << "the flag means variable pitch";
    EXPECT_EQ(pitchOf(2) & 0xF0, FF_SWISS);
    EXPECT_TRUE(pitchOf(3) & TMPF_FIXED_PITCH);
    EXPECT_EQ(pitchOf(3) & 0xF0, FF_ROMAN);
    EXPECT_FALSE(pitchOf(4) & TMPF_FIXED_PITCH);
}

TEST_F(FontTest, metrics_are_those_of_the_chosen_face) {
    jint font = newFont(u"Tahoma", 14);
    const TEXTMETRICW& metrics = reinterpret_cast<FontRecord*>(font)->metrics;
    EXPECT_GT(metrics.tmInternalLeading, 0);
    EXPECT_EQ(get(OS::Font_GetAscent, font), metrics.tmAscent - metrics.tmInternalLeading);
    EXPECT_EQ(get(OS::Font_GetDescent, font), metrics.tmDescent);
    EXPECT_EQ(get(OS::Font_GetLeading, font), metrics.tmInternalLeading);
    EXPECT_EQ(get(OS::Font_GetSizeInPoints, font), metrics.tmHeight * 72 / theDevice().dotsPerInch);
    EXPECT_EQ(get(OS::Font_GetAscent, font) + get(OS::Font_GetDescent, font) +
                  get(OS::Font_GetLeading, font),
              metrics.tmHeight);
    EXPECT_EQ(nameOf(font), u"Tahoma");
    disposeFont(font);
}

TEST_F(FontTest, tells_its_style) {
    for (jint style = 0; style < 32; style += 2) {
        jint font = newFont(u"Tahoma", 12, style);
        EXPECT_EQ(get(OS::Font_GetStyle, font), style);
        disposeFont(font);
    }
}

TEST_F(FontTest, is_bold_at_weight_700_alone) {
    jint font = newFont(u"Tahoma", 12);
    for (const auto& [weight, style] :
         std::vector<std::pair<LONG, jint>>{{600, 0}, {699, 0}, {700, 2}, {701, 0}, {800, 0}}) {
        reinterpret_cast<FontRecord*>(font)->metrics.tmWeight = weight;
        EXPECT_EQ(get(OS::Font_GetStyle, font), style) << weight;
    }
    disposeFont(font);
}

TEST_F(FontTest, measures_texts_and_characters) {
    jint font = newFont(u"Tahoma", 12);
    auto width = [&](jchar character) { return call(OS::Font_GetAdvanceWidth, font, character); };
    EXPECT_GT(width('W'), width('i'));
    EXPECT_EQ(advance(font, u"W"), width('W'));
    EXPECT_EQ(advance(font, u"WiWi"), 2 * (width('W') + width('i')));
    EXPECT_EQ(advance(font, u""), 0);
    EXPECT_EQ(call(OS::Font_StringAdvance, font, nullptr), 0);
    EXPECT_TRUE(vm.reports.empty());
    disposeFont(font);
}

TEST_F(FontTest, that_cannot_be_made_is_an_error) {
    Faults faults;
    faults.fail("CreateFontIndirectW", 0, ERROR_INVALID_PARAMETER);
    EXPECT_EQ(newFont(u"Tahoma", 12), 0);
    expectReport("Font_New", -3, u"Unable to createfont::");
    EXPECT_EQ(newLogical(2), 0);
    expectReport("Font_NewLogical", -3, u"Unable to createfont::");
}

TEST_F(FontTest, without_memory_is_an_error) {
    Faults faults;
    faults.fail("LocalAlloc", 2); // the first is the name
    EXPECT_EQ(newFont(u"Tahoma", 12), 0);
    expectReport("Font_New", -4, u"Not enough memory to allocate font");
}

static HGDIOBJ selectedAtRelease;
static int WINAPI recordSelected(HWND window, HDC context) {
    selectedAtRelease = GetCurrentObject(context, OBJ_FONT);
    return ReleaseDC(window, context);
}

TEST_F(FontTest, of_a_measured_character_is_selected_until_the_screen_is_released) {
    jint font = newFont(u"Tahoma", 12);
    Faults faults;
    faults.replace("ReleaseDC", reinterpret_cast<void*>(recordSelected));
    call(OS::Font_GetAdvanceWidth, font, u'W');
    EXPECT_EQ(selectedAtRelease, reinterpret_cast<FontRecord*>(font)->font);
    advance(font, u"W");
    EXPECT_EQ(selectedAtRelease, GetStockObject(SYSTEM_FONT)) << "a text puts the font back";
    disposeFont(font);
}

TEST_F(FontTest, queries_without_a_screen_are_errors) {
    jint font = newFont(u"Tahoma", 12);
    Faults faults;
    faults.fail("GetDC", 0, ERROR_INVALID_HANDLE);
    EXPECT_EQ(get(OS::Font_GetSizeInPoints, font), 0);
    expectReport("Font_GetSizeInPoints", -3, u"Unable to get screen dc::");
    EXPECT_EQ(call(OS::Font_GetName, font), nullptr);
    expectReport("Font_GetName", -3, u"Unable to get screen dc::");
    EXPECT_EQ(advance(font, u"text"), 0);
    expectReport("Font_StringAdvance", -3, u"Failed to get screen DC::");
    disposeFont(font);
}

TEST_F(FontTest, a_text_that_cannot_be_measured_is_an_error) {
    jint font = newFont(u"Tahoma", 12);
    Faults faults;
    faults.fail("SelectObject");
    EXPECT_EQ(advance(font, u"text"), 0);
    expectReport("Font_StringAdvance", -3, u"Failed to select font");
    faults.fail("GetTextExtentExPointW", 1, ERROR_GEN_FAILURE);
    EXPECT_EQ(advance(font, u"text"), 0);
    expectReport("Font_StringAdvance", -3, u"Failed to calculate text extent::");
    EXPECT_EQ(faults.countCalls("GetDC"), faults.countCalls("ReleaseDC"));
    disposeFont(font);
}

TEST_F(FontTest, a_name_that_cannot_be_had_is_an_error_and_leaks_nothing) {
    jint font = newFont(u"Tahoma", 12);
    long blocks = countHeapBlocks();
    Faults faults;
    faults.fail("GetTextFaceW", 1, ERROR_GEN_FAILURE);
    EXPECT_EQ(call(OS::Font_GetName, font), nullptr);
    expectReport("Font_GetName", -3, u"Unable to get font face length::");
    faults.fail("GetTextFaceW", 2, ERROR_GEN_FAILURE);
    EXPECT_EQ(call(OS::Font_GetName, font), nullptr);
    expectReport("Font_GetName", -3, u"Unable to copy font face name into buffer::");
    faults.fail("LocalAlloc");
    EXPECT_EQ(call(OS::Font_GetName, font), nullptr);
    expectReport("Font_GetName", -4, u"Not enough memory to store font face name");
    EXPECT_EQ(faults.countCalls("GetDC"), faults.countCalls("ReleaseDC"));
    EXPECT_EQ(countHeapBlocks(), blocks);
    disposeFont(font);
}

TEST_F(FontTest, companions_fill_in_fonts_of_their_own) {
    LOGFONTW description = {};
    description.lfWidth = 5;
    entryPoint<void(LOGFONTW*, jint, jint)>("_Font_FillInFont")(&description, 18, 2);
    EXPECT_EQ(description.lfHeight, pixelsOf(18));
    EXPECT_EQ(description.lfWeight, 700);
    EXPECT_EQ(description.lfCharSet, DEFAULT_CHARSET);
    EXPECT_EQ(description.lfWidth, 5) << "what it does not know it leaves alone";
}

TEST_F(FontTest, fonts_leave_nothing_behind) {
    newShell();
    NoLeaks noLeaks;
    for (int i = 0; i < leakRounds(); ++i) disposeFont(newLogical(i % 5, 8 + i % 10, i % 32));
}

TEST_F(FontTest, the_default_font_is_the_systems_and_made_once) {
    jint shell = newShell();
    jint button = newButton(shell);
    jint font = call(OS::Control_GetDefaultFont, shell);
    EXPECT_EQ(call(OS::Control_GetDefaultFont, button), font);
    EXPECT_EQ(reinterpret_cast<FontRecord*>(font)->font, GetStockObject(SYSTEM_FONT));
    EXPECT_EQ(nameOf(font), u"System");
    EXPECT_EQ(get(OS::Font_GetSizeInPoints, font), 16 * 72 / theDevice().dotsPerInch);
}

TEST_F(FontTest, that_finds_no_record_is_left_to_the_system) {
    Faults faults;
    faults.fail("LocalAlloc", 2); // the first is the name
    EXPECT_EQ(newFont(u"Tahoma", 12), 0);
    onlyReport();
    EXPECT_EQ(faults.countCalls("CreateFontIndirectW"), 1);
    EXPECT_EQ(faults.countCalls("DeleteObject"), 0);
}

TEST_F(FontTest, a_default_font_without_memory_is_an_error) {
    jint shell = newShell();
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(call(OS::Control_GetDefaultFont, shell), 0);
    expectReport("Control_GetDefaultFont", -4, u"Not enough memory to allocate font");
}

TEST_F(FontTest, is_set_and_taken_back_from_a_control) {
    jint button = newButton(newShell());
    jint font = newFont(u"Tahoma", 20);
    auto fontOf = [](jint control) {
        return reinterpret_cast<HFONT>(SendMessageW(windowOf(control), WM_GETFONT, 0, 0));
    };
    call(OS::Control_SetFont, button, font);
    EXPECT_EQ(fontOf(button), reinterpret_cast<FontRecord*>(font)->font);
    call(OS::Control_SetFont, button, 0);
    EXPECT_EQ(fontOf(button), GetStockObject(SYSTEM_FONT));
    disposeFont(font);
}

static bool isAlive(HFONT font) {
    LOGFONTW description;
    return GetObjectW(font, sizeof(description), &description) != 0;
}

TEST_F(FontTest, lives_as_long_as_a_control_wears_it) {
    jint shell = newShell();
    auto wear = [&](const auto& kind) {
        jint control = newControl(kind, shell);
        jint fonts[] = {newLogical(2), newLogical(3)};
        HFONT handles[] = {reinterpret_cast<FontRecord*>(fonts[0])->font,
                           reinterpret_cast<FontRecord*>(fonts[1])->font};
        for (jint font : fonts) {
            call(OS::Control_SetFont, control, font);
            disposeFont(font);
        }
        EXPECT_FALSE(isAlive(handles[0])) << kind << ": nobody wears it";
        EXPECT_TRUE(isAlive(handles[1])) << kind;
        dispatchAll();
        dispose(control);
        EXPECT_FALSE(isAlive(handles[1])) << kind;
    };
    auto wearEach = [&] {
        for (const Maker& kind :
             {OS::Label_New, OS::PushButton_New, OS::List_New, OS::TextField_New})
            wear(kind);
        wear(OS::Choice_New);
    };
    wearEach(); // the desk keeps some objects for itself
    NoLeaks noLeaks;
    wearEach();
}

TEST_F(FontTest, goes_with_the_last_window_that_wears_it) {
    jint shell = newShell();
    NoLeaks noLeaks;
    jint composite = newControl(OS::Composite_New, shell);
    jint buttons[] = {newButton(composite), newButton(composite)};
    jint font = newLogical(2);
    HFONT handle = reinterpret_cast<FontRecord*>(font)->font;
    for (jint control : {composite, buttons[0], buttons[1]})
        call(OS::Control_SetFont, control, font);
    disposeFont(font);
    call(OS::Control_SetFont, buttons[0], 0);
    EXPECT_TRUE(isAlive(handle));
    dispose(composite); // its children's windows go too
    EXPECT_FALSE(isAlive(handle));
    for (jint button : buttons) dispose(button);
}

static HDC watchedContext;
static int deletedWhileSelected;
static BOOL WINAPI watchDeletion(HGDIOBJ object) {
    deletedWhileSelected += GetCurrentObject(watchedContext, OBJ_FONT) == object;
    return DeleteObject(object);
}

// The device would never free it.
TEST_F(FontTest, lives_as_long_as_a_context_has_it) {
    jint shell = newShell();
    NoLeaks noLeaks;
    Faults faults;
    faults.replace("DeleteObject", reinterpret_cast<void*>(watchDeletion));
    deletedWhileSelected = 0;
    jint image = call(OS::Image_NewFromSize, display, 4, 4, 0);
    for (jint graphics :
         {call(OS::Image_NewGraphics, image), call(OS::Control_NewGraphics, shell)}) {
        jint fonts[] = {newLogical(2), newLogical(3)};
        HFONT handles[] = {reinterpret_cast<FontRecord*>(fonts[0])->font,
                           reinterpret_cast<FontRecord*>(fonts[1])->font};
        watchedContext = reinterpret_cast<GraphicsRecord*>(graphics)->dc;
        for (jint font : fonts) {
            call(OS::Graphics_SetFont, graphics, font);
            disposeFont(font);
        }
        EXPECT_FALSE(isAlive(handles[0]));
        EXPECT_TRUE(isAlive(handles[1]));
        call(OS::Graphics_Dispose, graphics);
        EXPECT_FALSE(isAlive(handles[1]));
    }
    EXPECT_EQ(deletedWhileSelected, 0);
    call(OS::Image_Dispose, image);
}

static int WINAPI answerNoDots(HDC, int) { return 0; }

TEST_F(FontTest, has_no_size_where_the_screen_tells_no_resolution) {
    jint font = newLogical(2);
    Faults faults;
    faults.replace("GetDeviceCaps", reinterpret_cast<void*>(answerNoDots));
    EXPECT_EQ(get(OS::Font_GetSizeInPoints, font), 0);
    EXPECT_TRUE(vm.reports.empty());
    disposeFont(font);
}

TEST_F(FontTest, sizes_beyond_any_font_end_at_the_range) {
    Faults faults;
    faults.replace("CreateFontIndirectW", reinterpret_cast<void*>(recordDescription));
    for (jint points : {0x7FFFFFFF, -0x7FFFFFFF, 0x40000000}) {
        jint font = newLogical(2, points);
        EXPECT_EQ(asked.lfHeight > 0, points > 0) << points;
        vm.reports.clear();
        if (font) disposeFont(font);
    }
}
