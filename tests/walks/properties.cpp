#include "properties.h"
#include "menu/menu_item.h"
#include <algorithm>
#include <commctrl.h>
#include <sstream>

static constexpr char end = '|';

bool is(const Object& object, const char* record) { return isA(object.kind, kindOf(record)); }

std::string plain(const std::u16string& text) {
    std::string told;
    for (char16_t character : text) {
        if (!character) break;
        told += character < 0x7F ? static_cast<char>(character) : '?';
    }
    return told;
}

std::string join(const Items& items) {
    std::string all;
    for (const std::string& item : items) all += item + end;
    return all;
}

std::string join(const std::vector<jint>& numbers) {
    Items items;
    for (jint one : numbers) items.push_back(std::to_string(one));
    return join(items);
}

Items split(const std::string& all) {
    Items items;
    std::istringstream in(all);
    for (std::string item; std::getline(in, item, end);) items.push_back(item);
    return items;
}

std::vector<jint> numbersOf(const std::string& all) {
    std::vector<jint> numbers;
    for (const std::string& one : split(all)) numbers.push_back(stoi(one));
    return numbers;
}

static std::string itemsOf(HWND window, UINT count, UINT length, UINT read) {
    Items items;
    LRESULT number = SendMessageW(window, count, 0, 0);
    for (LRESULT i = 0; i < number; ++i) {
        std::u16string text(SendMessageW(window, length, i, 0) + 1, u'\0');
        SendMessageW(window, read, i, reinterpret_cast<LPARAM>(text.data()));
        items.push_back(plain(text));
    }
    return join(items);
}

// By what the system says of each item.
static std::string selectionOf(HWND window, bool isMultiple) {
    std::vector<jint> selection;
    LRESULT number = SendMessageW(window, LB_GETCOUNT, 0, 0);
    LRESULT one = isMultiple ? LB_ERR : SendMessageW(window, LB_GETCURSEL, 0, 0);
    for (LRESULT i = 0; i < number; ++i)
        if (isMultiple ? SendMessageW(window, LB_GETSEL, i, 0) > 0 : i == one)
            selection.push_back(jint(i));
    return join(selection);
}

// What lies in a list or a text goes with what they scroll.
static bool isCarried(Player& player, const Object& object) {
    const ControlRecord* parent = reinterpret_cast<ControlRecord*>(object.handle)->parent;
    Object found = player.world.at(uint32_t(uintptr_t(parent)));
    return is(found, "ListRecord") || is(found, "TextRecord");
}

static void addWindow(Player& player, const Object& object, HWND window, Properties* properties) {
    Properties& all = *properties;
    auto handle = jint(object.handle);
    JNIEnv* env = player.vm.env();
    LONG style = GetWindowLongW(window, GWL_STYLE);
    all["shown"] = style & WS_VISIBLE ? "yes" : "no";
    // Modal shells enable and disable the others, and the screen bounds them all. How high a choice
    // is its lines say.
    bool isShell = is(object, "ShellRecord");
    const char* enabled = is(object, "ScrollbarRecord") ? "barEnabled" : "enabled";
    if (!isShell) all[enabled] = IsWindowEnabled(window) ? "yes" : "no";
    if (!isShell && !is(object, "ChoiceRecord") && !isCarried(player, object))
        all["bounds"] = join(player.vm.ints(OS::Control_GetBounds(env, handle)));
    if (is(object, "ListRecord")) {
        bool isMultiple = style & LBS_MULTIPLESEL;
        all["items"] = itemsOf(window, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
        all["selection"] = selectionOf(window, isMultiple);
        all["multiple"] = isMultiple ? "yes" : "no";
    }
    if (is(object, "ChoiceRecord")) {
        LRESULT selected = SendMessageW(window, CB_GETCURSEL, 0, 0);
        all["items"] = itemsOf(window, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
        all["selection"] = selected == CB_ERR ? "" : join(std::vector<jint>{jint(selected)});
    }
    if (is(object, "TextRecord")) {
        all["selection"] =
            join(player.vm.ints(OS::AbstractTextComponent_GetSelection(env, handle)));
        all["editable"] = style & ES_READONLY ? "no" : "yes";
        all["text"] = plain(player.vm.text(OS::AbstractTextComponent_GetText(env, handle)));
    }
}

std::string idOfItem(jint item) {
    return std::to_string(reinterpret_cast<MenuItemRecord*>(item)->id);
}

static std::vector<jint> idsIn(HMENU menu) {
    std::vector<jint> ids;
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_DATA;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        GetMenuItemInfoW(menu, i, TRUE, &info);
        ids.push_back(jint(info.dwItemData));
    }
    return ids;
}

static std::vector<jint> idsIn(HWND bar) {
    std::vector<jint> ids;
    LRESULT count = SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        TBBUTTON button = {};
        SendMessageW(bar, TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
        ids.push_back(button.idCommand);
    }
    return ids;
}

static std::string nameOf(HMENU menu) {
    return menu ? std::to_string(reinterpret_cast<uintptr_t>(menu)) : "";
}

static void addMenu(const MenuRecord& menu, Properties* properties) {
    if (IsWindow(menu.menuBarWindow)) (*properties)["order"] = join(idsIn(menu.menuBarWindow));
    if (!menu.menuHandle) return;
    (*properties)["order"] = join(idsIn(menu.menuHandle));
    (*properties)["handle"] = nameOf(menu.menuHandle);
}

constexpr int longestLabel = 1000;

static void addButton(const MenuItemRecord& item, Properties* properties) {
    char16_t label[longestLabel] = u"";
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_STATE | TBIF_TEXT;
    info.pszText = reinterpret_cast<wchar_t*>(label);
    info.cchText = longestLabel;
    SendMessageW(item.menu->menuBarWindow, TB_GETBUTTONINFOW, item.id,
                 reinterpret_cast<LPARAM>(&info));
    (*properties)["place"] = "bar";
    (*properties)["label"] = plain(label);
    (*properties)["enabled"] = info.fsState & TBSTATE_ENABLED ? "yes" : "no";
}

static void addMenuItem(const MenuItemRecord& item, Properties* properties) {
    char16_t label[longestLabel] = u"";
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STATE | MIIM_SUBMENU | MIIM_STRING;
    info.dwTypeData = reinterpret_cast<wchar_t*>(label);
    info.cch = longestLabel;
    std::vector<jint> ids = idsIn(item.menu->menuHandle);
    auto position = std::find(ids.begin(), ids.end(), jint(item.id)) - ids.begin();
    if (!GetMenuItemInfoW(item.menu->menuHandle, position, TRUE, &info)) return;
    (*properties)["place"] = "menu";
    (*properties)["label"] = plain(label);
    (*properties)["enabled"] = info.fState & MFS_GRAYED ? "no" : "yes";
    (*properties)["checked"] = info.fState & MFS_CHECKED ? "yes" : "no";
    (*properties)["opens"] = nameOf(info.hSubMenu);
}

static void addItem(const MenuItemRecord& item, Properties* properties) {
    if (!item.menu) return; // which has gone
    bool isInBar = item.menu->menuBarWindow != nullptr;
    if (isInBar && !IsWindow(item.menu->menuBarWindow)) return;
    (*properties)["id"] = std::to_string(item.id);
    if (isInBar)
        addButton(item, properties);
    else
        addMenuItem(item, properties);
}

Properties propertiesOf(Player& player, const Object& object) {
    Properties all;
    auto handle = jint(object.handle);
    JNIEnv* env = player.vm.env();
    if (is(object, "ControlRecord") && !is(object, "OwnBarRecord")) {
        HWND window = Player::windowOf(handle);
        if (!IsWindow(window)) return all;
        addWindow(player, object, window, &all);
    }
    if (is(object, "ScrollbarRecord")) {
        all["minimum"] = std::to_string(OS::Adjustable_GetMinimum(env, handle));
        all["maximum"] = std::to_string(OS::Adjustable_GetMaximum(env, handle));
        all["value"] = std::to_string(OS::Adjustable_GetValue(env, handle));
    }
    if (is(object, "MenuRecord")) addMenu(*reinterpret_cast<MenuRecord*>(handle), &all);
    if (is(object, "MenuItemRecord")) addItem(*reinterpret_cast<MenuItemRecord*>(handle), &all);
    if (is(object, "ColorRecord"))
        all["color"] = join({OS::Color_GetRed(env, handle), OS::Color_GetGreen(env, handle),
                             OS::Color_GetBlue(env, handle)});
    if (is(object, "ImageRecord")) {
        all["bounds"] = join(player.vm.ints(OS::Image_GetBounds(env, handle)));
        all["depth"] = std::to_string(OS::Image_GetDepth(env, handle));
    }
    if (is(object, "FontRecord"))
        all["font"] = join({OS::Font_GetSizeInPoints(env, handle), OS::Font_GetStyle(env, handle),
                            OS::Font_GetAscent(env, handle)});
    return all;
}
