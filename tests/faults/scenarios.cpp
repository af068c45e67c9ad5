#include "scenarios.h"
#include <algorithm>

static const char* nameOf(ObjectKind kind) {
    switch (kind) {
    case ObjectKind::number:
        return "";
    case ObjectKind::display:
        return "display";
    case ObjectKind::shell:
        return "shell";
    case ObjectKind::childShell:
        return "child shell";
    case ObjectKind::composite:
        return "composite";
    case ObjectKind::button:
        return "button";
    case ObjectKind::label:
        return "label";
    case ObjectKind::list:
        return "list";
    case ObjectKind::choice:
        return "choice";
    case ObjectKind::textField:
        return "text field";
    case ObjectKind::textArea:
        return "text area";
    case ObjectKind::scrollBar:
        return "scroll bar";
    case ObjectKind::ownBar:
        return "own bar";
    case ObjectKind::menuBar:
        return "menu bar";
    case ObjectKind::dropDownMenu:
        return "drop-down menu";
    case ObjectKind::popupMenu:
        return "pop-up menu";
    case ObjectKind::pushItem:
        return "push item";
    case ObjectKind::stateItem:
        return "state item";
    case ObjectKind::cascadeItem:
        return "cascade item";
    case ObjectKind::color:
        return "color";
    case ObjectKind::font:
        return "font";
    case ObjectKind::cursor:
        return "cursor";
    case ObjectKind::image:
        return "image";
    case ObjectKind::indexedImage:
        return "indexed image";
    case ObjectKind::graphics:
        return "image's graphics";
    case ObjectKind::controlGraphics:
        return "control's graphics";
    case ObjectKind::sound:
        return "sound";
    case ObjectKind::fileDialog:
        return "file dialog";
    }
    return "";
}

static void stopSound(Scene& scene, DWORD) {
    scene.tell(OS::Sound_Stop, scene.the(ObjectKind::sound));
}

std::vector<Scenario> scenariosOf(const DeclaredNative& native) {
    std::vector<Scenario> found;
    if (!hasRowsOnly(native.name))
        for (ObjectKind kind : kindsOfFirst(native)) {
            Scenario usual = {.native = native.name, .state = nameOf(kind), .kind = kind};
            if (usual.native == OS::Sound_Play.name) usual.after = stopSound;
            found.push_back(usual);
        }
    for (const Scenario& row : scenarioRows())
        if (row.native == native.name) found.push_back(row);
    return found;
}
