// Every native that makes an object, made and disposed of over and over. The natives are those that
// the Java classes declare.

#include "declared/any_call.h"
#include "declared/declared_natives.h"
#include "declared/objects.h"
#include "other_thread.h"
#include "png.h"
#include "process_leaks.h"
#include <fstream>

// What the system makes once and keeps, and what Java's strings and arrays take, is there before.
static constexpr int usualRounds = 20;

// A picture, and where programs on the device find it.
static const std::vector<uint8_t> picture = encode({2, 2, 8, 0, {0, 85, 170, 255}, {}, {}});
static constexpr char16_t picturePath[] = u"\\made.png";

static constexpr DWORD waitingCursor = 4; // the one that every device has

class MakersTest : public ObjectsTest, public testing::WithParamInterface<DeclaredNative> {
  protected:
    MakersTest() {
        std::ofstream file("x:/made.png", std::ios::binary);
        file.write(reinterpret_cast<const char*>(picture.data()), std::streamsize(picture.size()));
    }

    DWORD wordFor(const Parameter& parameter) {
        if (parameter.type == "byte[]") return word(vm.newBytes({picture.begin(), picture.end()}));
        if (std::string(GetParam().name) == "Cursor_New" && parameter.name == "type")
            return waitingCursor;
        if (parameter.name == "length") return DWORD(picture.size());
        if (parameter.name == "path") return word(vm.newString(picturePath));
        return usualWord(GetParam(), parameter);
    }

    Words usualWords() {
        Words words;
        for (const Parameter& parameter : GetParam().parameters)
            words.push_back(wordFor(parameter));
        return words;
    }

    void makeAndDispose(const Words& words) {
        jint made = jint(callAny(exportOf(GetParam().exported), vm.env(), words));
        ASSERT_NE(made, 0);
        disposeOfResult(GetParam().name, made);
    }

    void makeAndDispose(const Words& words, int rounds) {
        for (int i = 0; i < rounds && !HasFailure(); ++i) {
            makeAndDispose(words);
            dispatchAll();
            vm.calls.clear();
        }
    }

    void makeAndDisposeElsewhere(const Words& words) {
        onOtherThread(vm, display, [&] { makeAndDispose(words); });
        dispatchAll();
        vm.calls.clear();
    }
};

TEST_P(MakersTest, leave_nothing_behind) {
    Words words = usualWords();
    makeAndDispose(words, usualRounds);
    NothingLeft nothingLeft;
    makeAndDispose(words, leakRounds(usualRounds));
    EXPECT_TRUE(vm.reports.empty());
}

// Java's other threads make objects as well, and end them.
TEST_P(MakersTest, leave_as_little_on_another_thread) {
    Words words = usualWords();
    makeAndDispose(words, usualRounds);
    makeAndDisposeElsewhere(words);
    NoLeaks noLeaks;
    expectARoundWithoutHandles([&] { makeAndDisposeElsewhere(words); });
    EXPECT_TRUE(vm.reports.empty());
}

INSTANTIATE_TEST_SUITE_P(natives, MakersTest,
                         testing::ValuesIn(declaredNatives(ObjectsTest::makesAnObject)),
                         [](const auto& native) { return std::string(native.param.name); });
