// Texts: what they hold, what is selected and where the caret is, in characters from the start.

#include "laws.h"
#include <algorithm>

static bool isOneLine(const std::string& text) {
    return text.find_first_of("\r\n") == std::string::npos;
}

static jint lengthOf(const Properties& all) { return jint(all.at("text").size()); }

static void select(jint start, jint end, Properties* all) {
    (*all)["selection"] = join(std::vector<jint>{start, end});
}

static void foretellText(const Call& call, Properties* all) {
    std::string text = plain(call.arguments[1].text);
    if (isOneLine(text)) (*all)["text"] = text;
    select(0, 0, all);
}

static void foretellAll(const Call&, Properties* all) { select(0, lengthOf(*all), all); }

// What lies behind the text is its end.
static void foretellSelection(const Call& call, Properties* all) {
    jint start = call.arguments[1].value, end = call.arguments.back().value;
    if (start < 0 || end < start || !isOneLine(all->at("text"))) return;
    select(std::min(start, lengthOf(*all)), std::min(end, lengthOf(*all)), all);
}

// The caret is behind what was put in.
static void foretellReplaced(const Call& call, Properties* all) {
    std::string text = call.before.at("text"), added = plain(call.arguments[1].text);
    jint start = call.arguments[2].value, end = call.arguments[3].value;
    if (start < 0 || end < start || !isOneLine(text) || !isOneLine(added)) return;
    start = std::min(start, jint(text.size()));
    end = std::min(end, jint(text.size()));
    (*all)["text"] = text.replace(start, end - start, added);
    select(start + jint(added.size()), start + jint(added.size()), all);
}

static void foretellEditable(const Call& call, Properties* all) {
    (*all)["editable"] = yesOrNo(call.arguments[1]);
}

static jint countCharacters(const Call&, const Properties& all) { return lengthOf(all); }

const std::vector<Law>& textLaws() {
    static const std::vector<Law> laws = {
        {"AbstractTextComponent_SetText", {"text"}, foretellText},
        {"AbstractTextComponent_Replace", {"text", "selection"}, foretellReplaced},
        {"AbstractTextComponent_SelectAll", {}, foretellAll},
        {"AbstractTextComponent_SetSelection", {"selection"}, foretellSelection},
        {"AbstractTextComponent_SetCaretPosition", {"selection"}, foretellSelection},
        {"AbstractTextComponent_SetEditable", {}, foretellEditable},
        {.native = "AbstractTextComponent_GetCharCount", .answer = countCharacters},
    };
    return laws;
}
