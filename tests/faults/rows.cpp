#include "rows.h"
#include <set>

bool hasRowsOnly(const std::string& native) {
    static const std::set<std::string> natives = {
        OS::Widget_Dispose.name,
        OS::Device_Dispose.name,
        OS::Color_Dispose.name,
        OS::Font_Dispose.name,
        OS::Cursor_Dispose.name,
        OS::Image_Dispose.name,
        OS::Graphics_Dispose.name,
        OS::Sound_Dispose.name,
        OS::Display_New.name,
        OS::Display_InitCallbacks.name,
        OS::Display_RegisterCallback.name,
        OS::Display_Sleep.name,
        OS::Display_PostKeyEvent.name,
        OS::Display_PostPointerEvent.name,
        OS::FileDialog_Open.name,
        OS::PopupMenu_Show.name,
        OS::CascadeMenuItem_New.name,
    };
    return natives.count(native);
}

const std::vector<Scenario>& scenarioRows() {
    static const Rows all = [] {
        Rows rows;
        addDisposalOfWidgets(&rows);
        addDisposalOfResources(&rows);
        addPlayback(&rows);
        addDisplays(&rows);
        addMessages(&rows);
        addFurtherMessages(&rows);
        addInput(&rows);
        addWaiting(&rows);
        addLists(&rows);
        addTexts(&rows);
        addShells(&rows);
        addMenus(&rows);
        addImages(&rows);
        addFiles(&rows);
        addOthers(&rows);
        addDrawing(&rows);
        return rows;
    }();
    return all;
}
