#pragma once
// The messages of chosen windows and the callbacks into Java, in one ordered list, and its
// comparison with a table of what is expected.

#include "test_vm.h"
#include <string>
#include <vector>
#include <windows.h>

// Records while it lives: each message that reaches a watched window is entered among the VM's
// events by its name, as "button WM_LBUTTONDOWN", before the window handles it. Messages that are
// not named by the caller are left out.
class MessageRecorder {
  public:
    struct NamedMessage {
        UINT message;
        const char* name;
    };
    MessageRecorder(TestVm& vm, std::vector<NamedMessage> messages);
    ~MessageRecorder();
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    void watch(HWND window, const std::string& name);

  private:
    static LRESULT CALLBACK record(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};

enum class Step { required, optional };

struct ExpectedEvent {
    std::string event;
    Step step = Step::required;
};

// Fails the test with both lists side by side, the first difference marked.
void expectSequence(const std::vector<std::string>& events,
                    const std::vector<ExpectedEvent>& expected);
