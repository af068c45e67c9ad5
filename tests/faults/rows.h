#pragma once
// The rows of scenarios, by what they are about.

#include "scenarios.h"

using Kind = ObjectKind;
using Rows = std::vector<Scenario>;

inline constexpr jint bothBars = styleHorizontalScroll | styleVerticalScroll;

void addDisposalOfWidgets(Rows* rows);
void addDisposalOfResources(Rows* rows);
void addPlayback(Rows* rows);
void addDisplays(Rows* rows);
void addMessages(Rows* rows);
void addFurtherMessages(Rows* rows);
void addInput(Rows* rows);
void addWaiting(Rows* rows);
void addLists(Rows* rows);
void addTexts(Rows* rows);
void addShells(Rows* rows);
void addMenus(Rows* rows);
void addImages(Rows* rows);
void addFiles(Rows* rows);
void addOthers(Rows* rows);
void addDrawing(Rows* rows);

// After a call of which nothing is to be undone.
inline void nothing(Scene&, DWORD) {}

// A shown child shell of the scene's.
jint shownShell(Scene& scene, jint style);

inline void post(Scene& scene, jint control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    PostMessageW(scene.windowOf(control), message, wParam, lParam);
}

// The call of a native in another state than the usual one.
template <class Signature, class... Arguments>
void addState(Rows* rows, const char* state, const std::function<void(Scene&)>& arrange,
              const Native<Signature>& native, Kind of, Arguments... arguments) {
    rows->push_back(
        {.native = native.name, .state = state, .arrange = arrange, .act = [=](Scene& scene) {
             return scene.tell(native, scene.the(of), arguments...);
         }});
}
