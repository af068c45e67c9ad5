// Every native that takes numbers, strings or arrays, called at their limits: it reports an error
// or does something, and never faults, keeps a lock or leaves anything behind. The natives are
// those that the Java classes declare; one whose arguments have no known meaning fails.

#include "declared/any_call.h"
#include "declared/declared_natives.h"
#include "declared/objects.h"
#include "faults.h"
#include "image/image.h"
#include "leaks.h"
#include "sound_files.h"
#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

namespace {

constexpr jint extremes[] = {0, 1, -1, INT_MAX, INT_MIN};
// Where the system's own numbers end.
constexpr jint systemLimits[] = {0x7FFF, -0x8000, 0xFFFF, INT_MAX - 1, INT_MIN + 1};
constexpr jchar characters[] = {0, 1, 'x', 0x7F, 0x80, 0xD800, 0xDC00, 0xFFFE, 0xFFFF};
constexpr size_t megabyte = 0x100000;
// More characters than a number of 16 bits counts.
constexpr size_t manyCharacters = 0x10001;

// What is given in place of a usual argument.
struct Argument {
    DWORD usual = 0;
    std::vector<DWORD> others;
    // Those that are tried together with others of another argument.
    std::vector<DWORD> paired;
    bool isNumber = false;
};

} // namespace

static Words wordsOf(const jint* begin, const jint* end) { return {begin, end}; }

static Argument numberArgument(const Meaning& meaning) {
    Words others = wordsOf(std::begin(extremes), std::end(extremes));
    std::vector<jint> limits = meaning.limits;
    limits.insert(limits.end(), std::begin(systemLimits), std::end(systemLimits));
    for (jint limit : limits)
        for (jint neighbour : {-1, 0, 1}) others.push_back(DWORD(limit) + DWORD(neighbour));
    std::sort(others.begin(), others.end());
    others.erase(std::unique(others.begin(), others.end()), others.end());
    return {DWORD(meaning.usual), others, wordsOf(std::begin(extremes), std::end(extremes)), true};
}

// Input, and what waits for a person, stay away from the device.
static void WINAPI pressNothing(BYTE, BYTE, DWORD, DWORD) {}
static UINT WINAPI sendNothing(UINT count, INPUT*, int) { return count; }
static BOOL WINAPI trackNothing(HMENU, UINT, int, int, HWND, TPMPARAMS*) { return FALSE; }

static int callsMade;

class LimitsTest : public ObjectsTest, public testing::WithParamInterface<DeclaredNative> {
  protected:
    static void TearDownTestSuite() { printf("%d calls at the limits\n", callsMade); }

    Argument stringArgument() {
        Words strings = {0};
        for (const auto& text :
             {std::u16string(), std::u16string(u"\xD800"), std::u16string(u"\xDC00x"),
              std::u16string(u"a\xDC00\xD800"), std::u16string(127, u'W'),
              std::u16string(128, u'W'), std::u16string(manyCharacters, u'm')})
            strings.push_back(word(vm.newString(text)));
        Words alone = strings;
        alone.push_back(word(vm.newString(std::u16string(megabyte / sizeof(char16_t), u'm'))));
        return {0, alone, strings, false};
    }

    Argument intsArgument() {
        Words arrays = {0};
        for (const auto& ints : std::vector<std::vector<jint>>{
                 {}, {1}, {0, -1, 9}, {INT_MAX, INT_MIN, INT_MIN, INT_MAX, -1, 0, 1, 2}})
            arrays.push_back(word(vm.newInts(ints)));
        return {0, arrays, arrays, false};
    }

    Argument bytesArgument() {
        Words arrays = {0};
        for (const auto& bytes : std::vector<std::vector<jbyte>>{{}, {1}, {1, 2, 3}})
            arrays.push_back(word(vm.newBytes(bytes)));
        return {0, arrays, arrays, false};
    }

    // What may be given in place of the usual one.
    Argument othersOf(const DeclaredNative& native, const Parameter& parameter) {
        if (parameter.type == "int") {
            const Meaning* meaning = meaningOf(native.name, parameter.name);
            if (!meaning) return {};
            if (meaning->isNumber()) return numberArgument(*meaning);
            return {0, meaning->maybeNone ? Words{0} : Words{}, {}, false};
        }
        if (parameter.type == "boolean") return {0, {asWord(jboolean(JNI_FALSE))}, {}, false};
        if (parameter.type == "char") {
            Argument argument;
            for (jchar character : characters) argument.others.push_back(asWord(character));
            return argument;
        }
        if (parameter.type == "String") return stringArgument();
        if (parameter.type == "int[]") return intsArgument();
        return bytesArgument();
    }

    // kind: which of the kinds the native's first object is.
    Argument argumentOf(const DeclaredNative& native, const Parameter& parameter, size_t kind) {
        Argument argument = othersOf(native, parameter);
        argument.usual = usualWord(native, parameter, kind);
        return argument;
    }

    // An empty pie is described to leave it entered; nothing else is.
    void expectLocksLeft(const std::string& native, const Words& words, const std::string& call) {
        constexpr size_t width = 3, height = 4, arcAngle = 6;
        bool isEmptyPie = native == "Graphics_FillArc" &&
                          (words[width] == 0 || words[height] == 0 || words[arcAngle] == 0);
        for (jint object : images()) {
            auto* image = reinterpret_cast<ImageRecord*>(object);
            EXPECT_TRUE(isEmptyPie || image->lock.RecursionCount == 0) << call;
            while (image->lock.RecursionCount > 0) LeaveCriticalSection(&image->lock);
        }
    }

    void drawOn(jint graphics) {
        call(OS::Graphics_DrawLine, graphics, 1, 2, 9, 7);
        call(OS::Graphics_DrawOval, graphics, 1, 2, 9, 7);
        // One narrow letter: where a font is as high as numbers of 16 bits go, each takes a second.
        call(OS::Graphics_DrawString, graphics, vm.newString(u"i"), 1, 2, 0);
    }

    // A pen, a clip or a font may fail only when it is used.
    void useWhatWasSet(const std::string& native, const Words& words, jint made) {
        if (native.starts_with("Graphics_Set")) drawOn(jint(words[0]));
        if (!native.starts_with("Font_New") || !made) return;
        jint graphics = objectOf(ObjectKind::graphics);
        call(OS::Graphics_SetFont, graphics, made);
        drawOn(graphics);
        call(OS::Font_StringAdvance, made, vm.newString(u"text"));
        call(OS::Graphics_SetFont, graphics, 0);
    }

    // What is put into a text would stay there, and each call would meet a longer one.
    void restore(const std::string& native, const Words& words) {
        if (native != "AbstractTextComponent_Replace") return;
        call(OS::AbstractTextComponent_SetText, jint(words[0]), vm.newString(u"text"));
    }

    void tryWith(const Words& words) {
        const DeclaredNative& native = GetParam();
        std::string told = native.name + std::string("(");
        for (size_t i = 0; i < words.size(); ++i)
            told += (i ? ", " : "") + std::to_string(static_cast<jint>(words[i]));
        told += ")";
        if (getenv("ZEMVOLT_TELL_CALLS")) fprintf(stderr, "%s\n", told.c_str());
        ++callsMade;
        DWORD result = callAny(exportOf(native.exported), vm.env(), words);
        EXPECT_LE(vm.reports.size(), 1u) << told;
        EXPECT_TRUE(vm.pendingException.empty()) << told << vm.pendingException;
        EXPECT_EQ(vm.unreleased, 0) << told;
        EXPECT_TRUE(keepsItsArguments() || vm.fatalError.empty()) << told << vm.fatalError;
        expectLocksLeft(native.name, words, told);
        bool isMade = std::strcmp(native.result, "int") == 0 && vm.reports.empty();
        jint made = isMade ? jint(result) : 0;
        useWhatWasSet(native.name, words, made);
        if (made) disposeOfResult(native.name, made);
        restore(native.name, words);
        if (std::strcmp(native.name, "Sound_Play") == 0) call(OS::Sound_Stop, jint(words[0]));
        dispatchAll();
        vm.reports.clear();
        vm.calls.clear();
        vm.fatalError.clear();
        vm.clearException();
    }

    void tryAll(const std::vector<Argument>& arguments) {
        Words usual;
        for (const Argument& argument : arguments) usual.push_back(argument.usual);
        tryWith(usual);
        for (size_t i = 0; i < arguments.size(); ++i) {
            Words words = usual;
            for (DWORD value : arguments[i].others) {
                words[i] = value;
                tryWith(words);
            }
        }
        tryPairs(arguments, usual);
    }

    // Numbers at their extremes together, and strings and arrays of each length with them.
    void tryPairs(const std::vector<Argument>& arguments, const Words& usual) {
        for (size_t i = 0; i < arguments.size(); ++i)
            for (size_t j = 0; j < arguments.size(); ++j) {
                bool isPair = arguments[j].isNumber && (arguments[i].isNumber ? i < j : i != j);
                if (!isPair) continue;
                Words words = usual;
                for (DWORD first : arguments[i].paired)
                    for (DWORD second : arguments[j].paired) {
                        words[i] = first;
                        words[j] = second;
                        tryWith(words);
                    }
            }
    }

    void tryEveryKind() {
        const DeclaredNative& native = GetParam();
        Faults quiet;
        quiet.replace("keybd_event", reinterpret_cast<void*>(pressNothing));
        quiet.replace("SendInput", reinterpret_cast<void*>(sendNothing));
        quiet.replace("TrackPopupMenuEx", reinterpret_cast<void*>(trackNothing));
        size_t kinds = kindsOfFirst(GetParam()).size();
        for (size_t kind = 0; kind < kinds; ++kind) {
            std::vector<Argument> arguments;
            for (const Parameter& parameter : native.parameters)
                arguments.push_back(argumentOf(native, parameter, arguments.empty() ? kind : 0));
            tryAll(arguments);
        }
        disposeOfObjects();
    }

    // The names of a callback are held for good.
    static bool keepsItsArguments() {
        return std::strcmp(GetParam().name, "Display_RegisterCallback") == 0;
    }
};

TEST_P(LimitsTest, are_survived) {
    objectOf(ObjectKind::pushItem); // so that the display has its room for items
    disposeOfObjects();
    LiveCounts before = countLive();
    tryEveryKind();
    LiveCounts after = countLive();
    if (keepsItsArguments()) return;
    // What the system makes once and keeps is not made again.
    if (after.gdiObjects != before.gdiObjects) {
        before = after;
        tryEveryKind();
    }
    expectLive(before);
}

// Of objects that must be there, and of truths, there is nothing to try.
static bool hasLimits(const DeclaredNative& native) {
    return std::any_of(native.parameters.begin(), native.parameters.end(),
                       [&](const Parameter& parameter) {
                           if (parameter.type == "Object" || parameter.type == "boolean")
                               return false;
                           if (parameter.type != "int") return true;
                           const Meaning* meaning = meaningOf(native.name, parameter.name);
                           return !meaning || meaning->isNumber() || meaning->maybeNone;
                       });
}

INSTANTIATE_TEST_SUITE_P(natives, LimitsTest, testing::ValuesIn(declaredNatives(hasLimits)),
                         [](const auto& native) { return std::string(native.param.name); });
