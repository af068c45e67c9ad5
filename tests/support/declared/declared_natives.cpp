#include "declared_natives.h"
#include <algorithm>
#include <cstring>
#include <iterator>

using Kind = ObjectKind;

const std::vector<DeclaredNative>& declaredNatives() {
    static const std::vector<DeclaredNative> all = {
#include "natives_table.inc"
    };
    return all;
}

std::vector<DeclaredNative> declaredNatives(bool (*isWanted)(const DeclaredNative&)) {
    std::vector<DeclaredNative> wanted;
    std::copy_if(declaredNatives().begin(), declaredNatives().end(), std::back_inserter(wanted),
                 isWanted);
    return wanted;
}

static Meaning number(jint usual, std::vector<jint> limits = {}) {
    return {{Kind::number}, false, usual, std::move(limits)};
}
static Meaning object(std::vector<Kind> kinds) { return {std::move(kinds), false, 0, {}}; }
static Meaning objectOrNone(Kind kind) { return {{kind}, true, 0, {}}; }

// The usual widgets have 4 items, texts of 9 characters; images are 16 wide and 12 high.
static constexpr jint items = 4, characters = 9, imageWidth = 16, imageHeight = 12;

const Meaning* meaningOf(const std::string& native, const std::string& parameter) {
    static const std::vector<Kind> controls = {
        Kind::button, Kind::shell,  Kind::childShell, Kind::label,    Kind::composite,
        Kind::list,   Kind::choice, Kind::textField,  Kind::textArea, Kind::scrollBar};
    static const std::vector<jint> imageEdges = {imageWidth, imageHeight};
    static const std::vector<jint> circle = {90, 360, -360};
    static const std::vector<jint> ofByte = {127, 255};
    // The first row whose start of a native and whose parameter fit.
    static const struct {
        const char* native;
        const char* parameter;
        Meaning meaning;
    } meanings[] = {
        {"Image_NewFromSize", "color", number(0, {0xFFFFFF})},
        {"Shell_SetMenuBar", "bar", objectOrNone(Kind::menuBar)},
        {"Shell_SetImage", "image", objectOrNone(Kind::image)},
        {"Scrollable_", "bar", object({Kind::ownBar})},
        {"PopupMenu_", "menu", object({Kind::popupMenu})},
        {"CascadeMenuItem_SetMenu", "menu", objectOrNone(Kind::dropDownMenu)},
        {"CascadeMenuItem_New", "menu", object({Kind::menuBar, Kind::dropDownMenu})},
        {"StateMenuItem_SetSelection", "item", object({Kind::stateItem})},
        {"CascadeMenuItem_SetMenu", "item", object({Kind::cascadeItem})},
        {"Control_Set", "color", objectOrNone(Kind::color)},
        {"Control_SetFont", "font", objectOrNone(Kind::font)},
        {"Menu_SetFont", "font", objectOrNone(Kind::font)},
        {"LabeledMenuItem_SetFont", "font", objectOrNone(Kind::font)},
        {"Graphics_SetFont", "font", objectOrNone(Kind::font)},
        {"Graphics_Draw", "image", object({Kind::image, Kind::indexedImage})},
        {"Display_PostPointerEvent", "button", number(8, {8, 16, 32})},
        {"Cursor_New", "type", number(1, {1, 13})},
        {"Display_GetSystemColor", "id", number(3, {25})},
        {"Display_RegisterCallback", "id", number(20, {17, 0x56EB4ABE})},
        {"Platform_GetCapability", "id", number(2, {2, 4})},
        {"Font_New", "points", number(9, {1, 72, 1638})},
        {"Shell_New", "style", number(0, {0x61, 0x30800})},
        {"Font_New", "style", number(0, {30, 31})},
        {"FileDialog_New", "style", number(0, {0x2000, 0x800000, 0x802000})},
        {"", "display", object({Kind::display})},
        {"", "device", object({Kind::display})},
        {"", "shell", object({Kind::shell})},
        {"", "parent", object({Kind::shell})},
        {"", "owner", object({Kind::shell})},
        {"", "control", object(controls)},
        {"", "widget", object({Kind::button})},
        {"", "button", object({Kind::button})},
        {"", "label", object({Kind::label})},
        {"", "other", objectOrNone(Kind::label)},
        {"", "list", object({Kind::list})},
        {"", "choice", object({Kind::choice})},
        {"", "text", object({Kind::textField, Kind::textArea})},
        {"", "field", object({Kind::textField})},
        {"", "area", object({Kind::textArea})},
        {"", "scrollable", object({Kind::composite})},
        {"", "bar", object({Kind::scrollBar, Kind::ownBar})},
        {"", "menu", object({Kind::dropDownMenu, Kind::popupMenu})},
        {"", "item", object({Kind::pushItem, Kind::cascadeItem, Kind::stateItem})},
        {"", "color", object({Kind::color})},
        {"", "font", object({Kind::font})},
        {"", "cursor", objectOrNone(Kind::cursor)},
        {"", "image", object({Kind::image, Kind::indexedImage})},
        {"", "graphics", object({Kind::graphics, Kind::controlGraphics})},
        {"", "sound", object({Kind::sound})},
        {"", "dialog", object({Kind::fileDialog})},
        {"", "x", number(1, imageEdges)},
        {"", "y", number(2, imageEdges)},
        {"", "x1", number(1, imageEdges)},
        {"", "y1", number(2, imageEdges)},
        {"", "x2", number(5, imageEdges)},
        {"", "y2", number(7, imageEdges)},
        {"", "width", number(8, imageEdges)},
        {"", "height", number(6, imageEdges)},
        {"", "arcWidth", number(3, imageEdges)},
        {"", "arcHeight", number(3, imageEdges)},
        {"", "startAngle", number(30, circle)},
        {"", "arcAngle", number(100, circle)},
        {"", "sourceX", number(1, imageEdges)},
        {"", "sourceY", number(1, imageEdges)},
        {"", "sourceWidth", number(4, imageEdges)},
        {"", "sourceHeight", number(4, imageEdges)},
        {"", "targetX", number(2, imageEdges)},
        {"", "targetY", number(3, imageEdges)},
        {"", "targetWidth", number(4, imageEdges)},
        {"", "targetHeight", number(4, imageEdges)},
        {"", "offset", number(0, {256})},
        {"", "scanSize", number(8, {256})},
        {"", "bytesPerLine", number(8, {256})},
        {"", "depth", number(8, {1, 2, 4, 8, 16, 24, 32})},
        {"", "paletteSize", number(16, {256})},
        {"", "transparentIndex", number(3, {16, 255})},
        {"", "transparentColor", number(-1, {0xFFFFFF})},
        {"", "alpha", number(255, {255})},
        {"", "rgb", number(0x123456, {0xFFFFFF})},
        {"", "red", number(1, ofByte)},
        {"", "green", number(2, ofByte)},
        {"", "blue", number(3, ofByte)},
        {"", "family", number(3, {2, 4})},
        {"", "style", number(0, {0x2, 0x10, 0x100, 0x30800})},
        {"", "flags", number(0, {8, 15})},
        {"", "type", number(1, {2})},
        {"", "key", number('a', {'a', 'z', 1000, 1082})},
        {"", "index", number(1, {items})},
        {"", "count", number(4, {128, 256})},
        {"", "length", number(256, {256})},
        {"", "loops", number(0)},
        {"", "rows", number(3)},
        {"", "columns", number(9)},
        {"", "start", number(1, {characters})},
        {"", "end", number(3, {characters})},
        {"", "position", number(2, {characters})},
        {"", "alignment", number(0, {2, 4})},
        {"", "orientation", number(8, {8, 16})},
        {"", "value", number(5, {100})},
        {"", "amount", number(5, {100})},
        {"", "accelerator", number('A', {'A', 'Z', 1000, 1082, 0xFFFF, 0x70041})},
        {"", "first", number(1)},
        {"", "second", number(1)},
        {"", "third", number(1)},
    };
    for (const auto& row : meanings)
        if (native.compare(0, std::strlen(row.native), row.native) == 0 &&
            parameter == row.parameter)
            return &row.meaning;
    return nullptr;
}

std::vector<Kind> kindsOfFirst(const DeclaredNative& native) {
    if (native.parameters.empty() || native.parameters[0].type != "int") return {Kind::number};
    const Meaning* meaning = meaningOf(native.name, native.parameters[0].name);
    return meaning ? meaning->kinds : std::vector<Kind>();
}
