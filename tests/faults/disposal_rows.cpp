#include "emulator.h"
#include "rows.h"
#include "sound/sound.h"
#include "sound_files.h"

// Disposal.

static void addDisposal(Rows* rows, const Native<void(jint)>& native, const char* state,
                        const std::function<jint(Scene&)>& make) {
    rows->push_back({.native = native.name,
                     .state = state,
                     .before = [=](Scene& scene) { scene.made = make(scene); },
                     .act = [=](Scene& scene) { return scene.tell(native, scene.made); },
                     .after = nothing});
}

template <class Signature, class... Arguments>
static std::function<jint(Scene&)> maker(const Native<Signature>& native, Kind parent,
                                         Arguments... arguments) {
    return [=](Scene& scene) { return jint(scene.tell(native, scene.the(parent), arguments...)); };
}

jint shownShell(Scene& scene, jint style) {
    auto shell = jint(scene.tell(OS::Shell_NewChild, scene.the(Kind::shell), style));
    scene.tell(OS::Control_SetVisible, shell, true);
    scene.dispatchAll();
    return shell;
}

void addDisposalOfWidgets(Rows* rows) {
    static const struct {
        const char* state;
        const Maker& native;
    } controls[] = {
        {"composite", OS::Composite_New},
        {"button", OS::PushButton_New},
        {"label", OS::Label_New},
        {"text field", OS::TextField_New},
        {"text area", OS::TextArea_New},
        {"list", OS::List_New},
        {"child shell", OS::Shell_NewChild},
        {"file dialog", OS::FileDialog_New},
    };
    for (const auto& control : controls)
        addDisposal(rows, OS::Widget_Dispose, control.state, maker(control.native, Kind::shell, 0));
    for (const auto& [state, native] : {std::pair{"choice", OS::Choice_New},
                                        {"scroll bar", OS::Scrollbar_New},
                                        {"menu bar", OS::MenuBar_New},
                                        {"drop-down menu", OS::DropDownMenu_New},
                                        {"pop-up menu", OS::PopupMenu_New}})
        addDisposal(rows, OS::Widget_Dispose, state, maker(native, Kind::shell));
    addDisposal(rows, OS::Widget_Dispose, "scrollable",
                maker(OS::Composite_New, Kind::shell, bothBars));
    addDisposal(rows, OS::Widget_Dispose, "modal shell",
                [](Scene& scene) { return shownShell(scene, styleModal); });
    addDisposal(rows, OS::Widget_Dispose, "shell with a button", [](Scene& scene) {
        jint shell = shownShell(scene, styleTitle);
        scene.tell(OS::PushButton_New, shell, 0);
        return shell;
    });
    addDisposal(rows, OS::Widget_Dispose, "item with an accelerator", [](Scene& scene) {
        auto item = jint(scene.tell(OS::PushMenuItem_New, scene.the(Kind::dropDownMenu), 0));
        scene.tell(OS::LabeledMenuItem_SetAccelerator, item, 0x40041);
        return item;
    });
    addDisposal(rows, OS::Widget_Dispose, "item of a pop-up menu",
                maker(OS::PushMenuItem_New, Kind::popupMenu, 0));
    addDisposal(rows, OS::Widget_Dispose, "state item",
                maker(OS::StateMenuItem_New, Kind::popupMenu, 0, 0));
    addDisposal(rows, OS::Widget_Dispose, "cascade item of the menu bar",
                maker(OS::CascadeMenuItem_New, Kind::menuBar, 0));
    addDisposal(rows, OS::Widget_Dispose, "cascade item with a menu", [](Scene& scene) {
        auto item = jint(scene.tell(OS::CascadeMenuItem_New, scene.the(Kind::popupMenu), 0));
        scene.tell(OS::CascadeMenuItem_SetMenu, item, scene.the(Kind::dropDownMenu));
        return item;
    });
    addDisposal(rows, OS::Widget_Dispose, "file dialog with texts", [](Scene& scene) {
        auto dialog = jint(scene.tell(OS::FileDialog_New, scene.the(Kind::shell), 0));
        for (const auto& set :
             {OS::FileDialog_SetTitle, OS::FileDialog_SetFileName, OS::FileDialog_SetFilterPath})
            scene.tell(set, dialog, scene.vm.newString(u"text"));
        return dialog;
    });
}

static void play(Scene& scene, jint sound, jint loops) {
    FileBytes file = waveFile(waveFormat(WAVE_FORMAT_PCM, 1, 8000, 8), FileBytes(80, 5));
    jint size = file.size();
    scene.tell(OS::Sound_Play, sound, scene.vm.newBytes({file.begin(), file.end()}), size, loops);
}

static void standStill(Scene&) { Emulator_SetSoundSpeed(0); }

void addDisposalOfResources(Rows* rows) {
    addDisposal(rows, OS::Color_Dispose, "", maker(OS::Color_New, Kind::display, 9, 8, 7));
    addDisposal(rows, OS::Cursor_Dispose, "", maker(OS::Cursor_New, Kind::display, 4));
    addDisposal(rows, OS::Font_Dispose, "", [](Scene& scene) {
        return jint(scene.tell(OS::Font_New, scene.display, scene.vm.newString(u"Tahoma"), 9, 0));
    });
    addDisposal(rows, OS::Image_Dispose, "", maker(OS::Image_NewFromSize, Kind::display, 3, 4, 0));
    addDisposal(rows, OS::Image_Dispose, "with graphics on it", [](Scene& scene) {
        auto image = jint(scene.tell(OS::Image_NewFromSize, scene.display, 3, 4, 0));
        scene.owner = jint(scene.tell(OS::Image_NewGraphics, image));
        return image;
    });
    rows->back().after = [](Scene& scene, DWORD) { scene.tell(OS::Graphics_Dispose, scene.owner); };
    addDisposal(rows, OS::Graphics_Dispose, "on an image", [](Scene& scene) {
        auto graphics = jint(scene.tell(OS::Image_NewGraphics, scene.the(Kind::image)));
        scene.tell(OS::Graphics_SetFont, graphics, scene.the(Kind::font));
        scene.tell(OS::Graphics_SetLineWidth, graphics, 3);
        return graphics;
    });
    addDisposal(rows, OS::Graphics_Dispose, "on a control", [](Scene& scene) {
        auto graphics = jint(scene.tell(OS::Control_NewGraphics, scene.the(Kind::button)));
        scene.tell(OS::Graphics_SetClipping, graphics, 1, 1, 4, 4);
        return graphics;
    });
    addDisposal(rows, OS::Sound_Dispose, "silent",
                [](Scene& scene) { return jint(scene.tell(OS::Sound_New)); });
    addDisposal(rows, OS::Sound_Dispose, "playing", [](Scene& scene) {
        auto sound = jint(scene.tell(OS::Sound_New));
        play(scene, sound, -1);
        return sound;
    });
    rows->back().arrange = standStill;
    rows->push_back({.native = OS::Sound_Stop.name,
                     .state = "playing",
                     .arrange = standStill,
                     .before = [](Scene& scene) { play(scene, scene.the(Kind::sound), -1); }});
    rows->push_back(
        {.native = OS::Sound_Play.name,
         .state = "playing",
         .arrange =
             [](Scene& scene) {
                 standStill(scene);
                 play(scene, scene.the(Kind::sound), -1);
             },
         .after = [](Scene& scene, DWORD) { scene.tell(OS::Sound_Stop, scene.the(Kind::sound)); }});
}

// A playback from its start to its end, with what its own thread calls.
void addPlayback(Rows* rows) {
    rows->push_back(
        {.native = OS::Sound_Play.name,
         .state = "to its end",
         .arrange = standStill,
         .act =
             [](Scene& scene) {
                 jint sound = scene.the(Kind::sound);
                 play(scene, sound, 0);
                 constexpr DWORD longer = 1000;
                 Emulator_PassSoundTime(longer);
                 SoundPlayer* player = reinterpret_cast<SoundRecord*>(sound)->player;
                 if (player->thread) WaitForSingleObject(player->thread, INFINITE);
                 return DWORD(0);
             },
         .after = [](Scene& scene, DWORD) { scene.tell(OS::Sound_Stop, scene.the(Kind::sound)); },
         .onAllThreads = true});
}

// Displays.

static DWORD newDisplay(Scene& scene) { return scene.tell(OS::Display_New); }
static void endDisplay(Scene& scene, DWORD display) {
    if (display) scene.tell(OS::Device_Dispose, jint(display));
}
static void endMade(Scene& scene, DWORD) { endDisplay(scene, scene.made); }

void addDisplays(Rows* rows) {
    rows->push_back(
        {.native = OS::Display_New.name, .state = "", .act = newDisplay, .after = endDisplay});
    addDisposal(rows, OS::Device_Dispose, "", [](Scene& scene) { return jint(newDisplay(scene)); });
    auto makeDisplay = [](Scene& scene) { scene.made = jint(newDisplay(scene)); };
    rows->push_back({.native = OS::Display_InitCallbacks.name,
                     .state = "",
                     .before = makeDisplay,
                     .act =
                         [](Scene& scene) {
                             return scene.tell(OS::Display_InitCallbacks, scene.made,
                                               scene.vm.newObject("test/Display"));
                         },
                     .after = endMade});
    rows->push_back({.native = OS::Display_RegisterCallback.name,
                     .state = "",
                     .before =
                         [=](Scene& scene) {
                             makeDisplay(scene);
                             scene.tell(OS::Display_InitCallbacks, scene.made,
                                        scene.vm.newObject("test/Display"));
                         },
                     .act =
                         [](Scene& scene) {
                             return scene.tell(OS::Display_RegisterCallback, scene.made, 3,
                                               scene.vm.newString(u"a/B"),
                                               scene.vm.newString(u"c"));
                         },
                     .after = endMade});
    rows->push_back(
        {.native = OS::Display_Sleep.name,
         .state = "woken",
         .before = [](Scene& scene) { scene.tell(OS::Display_Wake, scene.display); },
         .act = [](Scene& scene) { return scene.tell(OS::Display_Sleep, scene.display); },
         .after = nothing});
}
