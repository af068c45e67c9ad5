#include "tool_bar_resource.h"

namespace {

struct Head {
    WORD menu; // menus of resources are not offered
    WORD buttons;
};

struct Button {
    short image;
    WORD command;
    WORD state;
    WORD style;
    WORD text;
    WORD data;
    WORD menu;
};

} // namespace

static TBBUTTON describe(const Button& button) {
    TBBUTTON description = {};
    description.iBitmap = button.image;
    description.idCommand = button.command;
    description.fsState = static_cast<BYTE>(button.state);
    description.fsStyle = static_cast<BYTE>(button.style);
    description.dwData = button.data;
    description.iString = -1;
    return description;
}

std::optional<std::vector<TBBUTTON>> loadToolBar(HINSTANCE module, UINT id) {
    HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), reinterpret_cast<LPCWSTR>(RT_RCDATA));
    if (!found) return std::nullopt;
    DWORD size = SizeofResource(module, found);
    auto* head = static_cast<const Head*>(LockResource(LoadResource(module, found)));
    if (!head || size < sizeof(Head) || size < sizeof(Head) + head->buttons * sizeof(Button)) {
        SetLastError(ERROR_INVALID_DATA);
        return std::nullopt;
    }
    auto* button = reinterpret_cast<const Button*>(head + 1);
    std::vector<TBBUTTON> buttons;
    for (WORD i = 0; i < head->buttons; ++i) buttons.push_back(describe(button[i]));
    return buttons;
}
