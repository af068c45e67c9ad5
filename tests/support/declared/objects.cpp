#include "objects.h"
#include "sound_files.h"
#include <algorithm>

using Kind = ObjectKind;

static constexpr jint bothBars = 0x30000, titledChild = 0x20;

jint ObjectsTest::withItems(jint widget, const Native<void(jint, jstring, jint)>& add) {
    constexpr jint items = 4;
    for (jint i = 0; i < items; ++i) call(add, widget, vm.newString(u"item"), i);
    return widget;
}

jint ObjectsTest::make(Kind kind) {
    auto in = [&](Kind parent, const Native<jint(jint)>& native) {
        return call(native, objectOf(parent));
    };
    auto control = [&](const Maker& native, jint style = 0) {
        return newControl(native, objectOf(Kind::shell), style);
    };
    auto withText = [&](const Maker& native) {
        jint text = control(native);
        call(OS::AbstractTextComponent_SetText, text, vm.newString(u"some text"));
        return text;
    };
    auto item = [&](const Native<jint(jint, jint)>& native, Kind menu) {
        return call(native, objectOf(menu), 0);
    };
    switch (kind) {
    case Kind::number:
    case Kind::display:
        break;
    case Kind::shell:
        return newShell();
    case Kind::childShell:
        return call(OS::Shell_NewChild, objectOf(Kind::shell), titledChild);
    case Kind::composite:
        return control(OS::Composite_New, bothBars);
    case Kind::button:
        return control(OS::PushButton_New);
    case Kind::label:
        return control(OS::Label_New);
    case Kind::list:
        return withItems(control(OS::List_New), OS::List_Add);
    case Kind::choice:
        return withItems(in(Kind::shell, OS::Choice_New), OS::Choice_AddItem);
    case Kind::textField:
        return withText(OS::TextField_New);
    case Kind::textArea:
        return withText(OS::TextArea_New);
    case Kind::scrollBar:
        return in(Kind::shell, OS::Scrollbar_New);
    case Kind::ownBar:
        return in(Kind::composite, OS::Scrollable_GetVerticalBar);
    case Kind::menuBar:
        return in(Kind::shell, OS::MenuBar_New);
    case Kind::dropDownMenu:
        return in(Kind::shell, OS::DropDownMenu_New);
    case Kind::popupMenu:
        return in(Kind::shell, OS::PopupMenu_New);
    case Kind::pushItem:
        return item(OS::PushMenuItem_New, Kind::dropDownMenu);
    case Kind::stateItem:
        return call(OS::StateMenuItem_New, objectOf(Kind::dropDownMenu), 0, 0);
    case Kind::cascadeItem:
        return item(OS::CascadeMenuItem_New, Kind::menuBar);
    case Kind::color:
        return call(OS::Color_New, display, 10, 20, 30);
    case Kind::font:
        return call(OS::Font_New, display, vm.newString(u"Tahoma"), 9, 0);
    case Kind::cursor: {
        constexpr jint waiting = 4; // the one that every device has
        return call(OS::Cursor_New, display, waiting);
    }
    case Kind::image:
        return call(OS::Image_NewFromSize, display, 16, 12, 0);
    case Kind::indexedImage: {
        jbyteArray pixels = vm.newBytes(std::vector<jbyte>(16 * 12, 1));
        jbyteArray palette = vm.newBytes({0, 50, 100, 127});
        return call(OS::Image_NewFromByteData, display, 16, 12, pixels, 16, 8, palette, palette,
                    palette, 4, 2);
    }
    case Kind::graphics:
        return in(Kind::image, OS::Image_NewGraphics);
    case Kind::controlGraphics:
        return in(Kind::composite, OS::Control_NewGraphics);
    case Kind::sound:
        return call(OS::Sound_New);
    case Kind::fileDialog:
        return call(OS::FileDialog_New, objectOf(Kind::shell), 0);
    }
    return display;
}

jint ObjectsTest::objectOf(Kind kind) {
    for (const auto& known : objects)
        if (known.first == kind) return known.second;
    jint made = make(kind);
    EXPECT_NE(made, 0) << "kind " << static_cast<int>(kind);
    objects.emplace_back(kind, made);
    return made;
}

static std::vector<jbyte> usualBytes(const std::string& native) {
    if (native != "Sound_Play") return std::vector<jbyte>(256, 1);
    FileBytes file = waveFile(waveFormat(WAVE_FORMAT_PCM, 1, 8000, 8), FileBytes(212, 0x80));
    return {file.begin(), file.end()};
}

DWORD ObjectsTest::usualWord(const DeclaredNative& native, const Parameter& parameter,
                             size_t kind) {
    if (parameter.type == "int") {
        const Meaning* meaning = meaningOf(native.name, parameter.name);
        if (meaning) return meaning->isNumber() ? meaning->usual : objectOf(meaning->kinds[kind]);
    }
    if (parameter.type == "boolean") return asWord(jboolean(JNI_TRUE));
    if (parameter.type == "char") return asWord(jchar('x'));
    if (parameter.type == "String") return word(vm.newString(u"text"));
    if (parameter.type == "int[]") return word(vm.newInts(std::vector<jint>(256, 1)));
    if (parameter.type == "byte[]") return word(vm.newBytes(usualBytes(native.name)));
    if (parameter.type == "Object") return word(vm.newObject("test/Listener"));
    ADD_FAILURE() << "what is the " << parameter.type << " " << parameter.name << " of "
                  << native.name;
    return 0;
}

void ObjectsTest::disposeOf(Kind kind, jint object) {
    switch (kind) {
    case Kind::number:
    case Kind::display:
    case Kind::ownBar: // the composite's
        return;
    case Kind::color:
        return call(OS::Color_Dispose, object);
    case Kind::font:
        return call(OS::Font_Dispose, object);
    case Kind::cursor:
        return call(OS::Cursor_Dispose, object);
    case Kind::image:
    case Kind::indexedImage:
        return call(OS::Image_Dispose, object);
    case Kind::graphics:
    case Kind::controlGraphics:
        return call(OS::Graphics_Dispose, object);
    case Kind::sound:
        return call(OS::Sound_Dispose, object);
    default:
        return dispose(object);
    }
}

void ObjectsTest::disposeFirst(jint object) {
    auto known = std::find_if(objects.begin(), objects.end(),
                              [=](const auto& other) { return other.second == object; });
    ASSERT_NE(known, objects.end());
    Kind kind = known->first;
    objects.erase(known);
    disposeOf(kind, object);
}

void ObjectsTest::disposeOfObjects() {
    while (!objects.empty()) {
        auto [kind, object] = objects.back();
        objects.pop_back();
        disposeOf(kind, object);
    }
    dispatchAll();
}

// The kind of what the native makes; a number when that is none.
static Kind kindOfResult(const std::string& native) {
    static const struct {
        const char* native;
        Kind kind;
    } makers[] = {
        {"Display_New", Kind::number}, {"_NewGraphics", Kind::graphics},
        {"Sound_New", Kind::sound},    {"Display_GetSystemColor", Kind::color},
        {"Color_New", Kind::color},    {"Font_New", Kind::font},
        {"Cursor_New", Kind::cursor},  {"Image_New", Kind::image},
        {"Image_Flip", Kind::image},   {"_New", Kind::button}, // and every other widget
    };
    for (const auto& maker : makers)
        if (native.find(maker.native) != native.npos) return maker.kind;
    return Kind::number;
}

bool ObjectsTest::makesAnObject(const DeclaredNative& native) {
    return kindOfResult(native.name) != Kind::number;
}

void ObjectsTest::disposeOfResult(const std::string& native, jint result) {
    disposeOf(kindOfResult(native), result);
}

std::vector<Kind> ObjectsTest::kindsThatExist() const {
    std::vector<Kind> found;
    for (const auto& known : objects) found.push_back(known.first);
    return found;
}

std::vector<jint> ObjectsTest::images() const {
    std::vector<jint> found;
    for (const auto& [kind, object] : objects)
        if (kind == Kind::image || kind == Kind::indexedImage) found.push_back(object);
    return found;
}
