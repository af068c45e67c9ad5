#include "objects.h"

using Kind = ObjectKind;

static constexpr jint bothBars = 0x30000, titledChild = 0x20;

jint ObjectsTest::makeWithItems(const char* made, const char* add) {
    jint parent = objectOf(Kind::shell);
    jint widget = std::string(made) == "Choice" ? call<jint(jint)>("Choice_New", parent)
                                                : newControl(made, parent);
    constexpr jint items = 4;
    for (jint i = 0; i < items; ++i)
        call<void(jint, jstring, jint)>(add, widget, vm.newString(u"item"), i);
    return widget;
}

jint ObjectsTest::make(Kind kind) {
    auto in = [&](Kind parent, const char* native) {
        return call<jint(jint)>(native, objectOf(parent));
    };
    auto control = [&](const char* native, jint style = 0) {
        return newControl(native, objectOf(Kind::shell), style);
    };
    auto withText = [&](const char* native) {
        jint text = control(native);
        call<void(jint, jstring)>("AbstractTextComponent_SetText", text,
                                  vm.newString(u"some text"));
        return text;
    };
    auto item = [&](const char* native, Kind menu) {
        return call<jint(jint, jint)>(native, objectOf(menu), 0);
    };
    switch (kind) {
    case Kind::number:
    case Kind::display:
        break;
    case Kind::shell:
        return newShell();
    case Kind::childShell:
        return call<jint(jint, jint)>("Shell_NewChild", objectOf(Kind::shell), titledChild);
    case Kind::composite:
        return control("Composite", bothBars);
    case Kind::button:
        return control("PushButton");
    case Kind::label:
        return control("Label");
    case Kind::list:
        return makeWithItems("List", "List_Add");
    case Kind::choice:
        return makeWithItems("Choice", "Choice_AddItem");
    case Kind::textField:
        return withText("TextField");
    case Kind::textArea:
        return withText("TextArea");
    case Kind::scrollBar:
        return in(Kind::shell, "Scrollbar_New");
    case Kind::ownBar:
        return in(Kind::composite, "Scrollable_GetVerticalBar");
    case Kind::menuBar:
        return in(Kind::shell, "MenuBar_New");
    case Kind::dropDownMenu:
        return in(Kind::shell, "DropDownMenu_New");
    case Kind::popupMenu:
        return in(Kind::shell, "PopupMenu_New");
    case Kind::pushItem:
        return item("PushMenuItem_New", Kind::dropDownMenu);
    case Kind::stateItem:
        return call<jint(jint, jint, jint)>("StateMenuItem_New", objectOf(Kind::dropDownMenu), 0,
                                            0);
    case Kind::cascadeItem:
        return item("CascadeMenuItem_New", Kind::menuBar);
    case Kind::color:
        return call<jint(jint, jint, jint, jint)>("Color_New", display, 10, 20, 30);
    case Kind::font:
        return call<jint(jint, jstring, jint, jint)>("Font_New", display, vm.newString(u"Tahoma"),
                                                     9, 0);
    case Kind::cursor: {
        constexpr jint waiting = 4; // the one that every device has
        return call<jint(jint, jint)>("Cursor_New", display, waiting);
    }
    case Kind::image:
        return call<jint(jint, jint, jint, jint)>("Image_NewFromSize", display, 16, 12, 0);
    case Kind::indexedImage: {
        jbyteArray pixels = vm.newBytes(std::vector<jbyte>(16 * 12, 1));
        jbyteArray palette = vm.newBytes({0, 50, 100, 127});
        return call<jint(jint, jint, jint, jbyteArray, jint, jint, jbyteArray, jbyteArray,
                         jbyteArray, jint, jint)>("Image_NewFromByteData", display, 16, 12, pixels,
                                                  16, 8, palette, palette, palette, 4, 2);
    }
    case Kind::graphics:
        return in(Kind::image, "Image_NewGraphics");
    case Kind::controlGraphics:
        return in(Kind::composite, "Control_NewGraphics");
    case Kind::sound:
        return call<jint()>("Sound_New");
    case Kind::fileDialog:
        return call<jint(jint, jint)>("FileDialog_New", objectOf(Kind::shell), 0);
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

void ObjectsTest::disposeOf(Kind kind, jint object) {
    switch (kind) {
    case Kind::number:
    case Kind::display:
    case Kind::ownBar: // the composite's
        return;
    case Kind::color:
        return call<void(jint)>("Color_Dispose", object);
    case Kind::font:
        return call<void(jint)>("Font_Dispose", object);
    case Kind::cursor:
        return call<void(jint)>("Cursor_Dispose", object);
    case Kind::image:
    case Kind::indexedImage:
        return call<void(jint)>("Image_Dispose", object);
    case Kind::graphics:
    case Kind::controlGraphics:
        return call<void(jint)>("Graphics_Dispose", object);
    case Kind::sound:
        return call<void(jint)>("Sound_Dispose", object);
    default:
        return dispose(object);
    }
}

void ObjectsTest::disposeOfObjects() {
    while (!objects.empty()) {
        auto [kind, object] = objects.back();
        objects.pop_back();
        disposeOf(kind, object);
    }
    dispatchAll();
}

void ObjectsTest::disposeOfResult(const std::string& native, jint result) {
    static const struct {
        const char* native;
        Kind kind;
    } makers[] = {
        {"Display_GetSystemColor", Kind::color},
        {"Color_New", Kind::color},
        {"Font_New", Kind::font},
        {"Cursor_New", Kind::cursor},
        {"Image_New", Kind::image},
        {"Image_Flip", Kind::image},
        {"_New", Kind::button}, // and every other widget
    };
    for (const auto& maker : makers)
        if (native.find(maker.native) != native.npos) return disposeOf(maker.kind, result);
}

std::vector<jint> ObjectsTest::images() const {
    std::vector<jint> found;
    for (const auto& [kind, object] : objects)
        if (kind == Kind::image || kind == Kind::indexedImage) found.push_back(object);
    return found;
}
