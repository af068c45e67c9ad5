#include "messages.h"
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {

struct Watched {
    std::string name;
    WNDPROC proc;
};

TestVm* recordingVm;
std::vector<MessageRecorder::NamedMessage> namedMessages;
std::map<HWND, Watched> watchedWindows;

} // namespace

MessageRecorder::MessageRecorder(TestVm& vm, std::vector<NamedMessage> messages) {
    recordingVm = &vm;
    namedMessages = std::move(messages);
}

MessageRecorder::~MessageRecorder() {
    for (const auto& [window, watched] : watchedWindows)
        if (IsWindow(window))
            SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(watched.proc));
    watchedWindows.clear();
    recordingVm = nullptr;
}

void MessageRecorder::watch(HWND window, const std::string& name) {
    watchedWindows[window] = {name, reinterpret_cast<WNDPROC>(SetWindowLongW(
                                        window, GWL_WNDPROC, reinterpret_cast<LONG>(record)))};
}

LRESULT CALLBACK MessageRecorder::record(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const Watched watched = watchedWindows.at(window);
    for (const NamedMessage& named : namedMessages)
        if (named.message == message)
            recordingVm->events.push_back(watched.name + " " + named.name);
    return CallWindowProcW(watched.proc, window, message, wParam, lParam);
}

static std::string describe(const std::vector<std::string>& events,
                            const std::vector<ExpectedEvent>& expected, size_t difference,
                            size_t expectedDifference) {
    std::ostringstream text;
    text << "what happened:\n";
    for (size_t i = 0; i < events.size(); ++i)
        text << (i == difference ? "  > " : "    ") << events[i] << "\n";
    if (difference >= events.size()) text << "  > (nothing more)\n";
    text << "what was expected:\n";
    for (size_t i = 0; i < expected.size(); ++i)
        text << (i == expectedDifference ? "  > " : "    ") << expected[i].event
             << (expected[i].step == Step::optional ? " (optional)" : "") << "\n";
    if (expectedDifference >= expected.size()) text << "  > (nothing more)\n";
    return text.str();
}

void expectSequence(const std::vector<std::string>& events,
                    const std::vector<ExpectedEvent>& expected) {
    size_t at = 0;
    size_t wanted = 0;
    while (wanted < expected.size()) {
        bool matches = at < events.size() && events[at] == expected[wanted].event;
        if (matches) {
            ++at;
        } else if (expected[wanted].step == Step::required) {
            ADD_FAILURE() << describe(events, expected, at, wanted);
            return;
        }
        ++wanted;
    }
    if (at < events.size()) ADD_FAILURE() << describe(events, expected, at, wanted);
}
