#pragma once
// Text fields and areas.

#include "device.h"
#include "graphics/font.h"
#include "widgets/text.h"
#include <algorithm>

class TextTest : public DeviceTest {
  protected:
    TextRecord* record(jint text) { return reinterpret_cast<TextRecord*>(text); }
    jint newField(jint style = 0) { return newControl(OS::TextField_New, shell, style); }
    jint newArea(jint style = 0) {
        return newControl(OS::TextArea_New, shell, style, {10, 10, 210, 90});
    }

    void setText(jint text, const std::u16string& characters) {
        call(OS::AbstractTextComponent_SetText, text, vm.newString(characters));
    }
    void replace(jint text, const std::u16string& characters, jint start, jint end) {
        call(OS::AbstractTextComponent_Replace, text, vm.newString(characters), start, end);
    }
    std::u16string textIn(jint text) {
        return vm.text(call(OS::AbstractTextComponent_GetText, text));
    }
    jint countChars(jint text) { return call(OS::AbstractTextComponent_GetCharCount, text); }
    void select(jint text, jint start, jint end) {
        call(OS::AbstractTextComponent_SetSelection, text, start, end);
    }
    void selectAll(jint text) { call(OS::AbstractTextComponent_SelectAll, text); }
    std::vector<jint> selection(jint text) {
        return vm.ints(call(OS::AbstractTextComponent_GetSelection, text));
    }
    std::u16string selectionText(jint text) {
        return vm.text(call(OS::AbstractTextComponent_GetSelectionText, text));
    }
    void setEcho(jint text, jchar echo) { call(OS::AbstractTextComponent_SetEchoChar, text, echo); }
    void setEditable(jint text, bool editable) {
        call(OS::AbstractTextComponent_SetEditable, text, editable);
    }
    void focus(jint text) {
        call(OS::Control_ForceFocus, text);
        dispatchAll();
        vm.takeEvents();
    }
    Events eventsButPaints() { return fired::without(vm.takeEvents(), {"paint"}); }
    long countModified() {
        Events events = vm.takeEvents();
        return std::count(events.begin(), events.end(), fired::modified());
    }

    static std::u16string lines(int count) {
        std::u16string all;
        for (int i = 0; i < count; ++i) all += u"line\r\n";
        return all;
    }

    // Of the default font.
    TEXTMETRICW metrics() {
        return reinterpret_cast<FontRecord*>(call(OS::Control_GetDefaultFont, shell))->metrics;
    }
    jint marginsOf(jint text) {
        LRESULT margins = sendTo(text, EM_GETMARGINS);
        return LOWORD(margins) + HIWORD(margins);
    }

    jint shell = newShell();
};

constexpr jint border = 0x800, horizontalBar = 0x10000, verticalBar = 0x20000, wraps = 0x100,
               multiLine = 0x800000;
