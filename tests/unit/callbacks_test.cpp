#include "device.h"
#include "faults.h"
#include "leaks.h"
#include <functional>
#include <thread>

using Fire = void(DWORD, const char*, CallbackTarget*, ...);
using FireBoolean = jint(DWORD, const char*, CallbackTarget*, ...);

// Neither a display nor a widget with a window is needed to register and fire.
class CallbacksTest : public DeviceTest {
  protected:
    CallbacksTest() {
        widget.display = reinterpret_cast<DisplayRecord*>(display);
        call(OS::Widget_SetData, handle(), vm.newObject("test/Listener"));
        target = widget.callbackTarget;
    }
    ~CallbacksTest() override { call(OS::Widget_SetData, handle(), nullptr); }
    jint handle() { return reinterpret_cast<jint>(&widget); }

    void registerMethod(jint id, const char16_t* method) {
        call(OS::Display_RegisterCallback, display, id, vm.newString(u"test/Listener"),
             vm.newString(method));
    }

    WidgetRecord widget = {};
    CallbackTarget* target = nullptr;
};

static Fire* fire() { return entryPoint<Fire>("vaCallback"); }
static FireBoolean* fireBoolean() { return entryPoint<FireBoolean>("vaCallbackBoolean"); }

TEST_F(CallbacksTest, ids_of_the_same_bucket_are_both_found) {
    static_assert(CB_PAINT % callbackBuckets == CB_POINTER_DOWN_QUERY % callbackBuckets);
    fire()(CB_PAINT, "(IIII)V", target, 1, 2, 3, 4);
    fire()(CB_POINTER_DOWN_QUERY, "(II)I", target, 5, 6);
    EXPECT_EQ(vm.takeEvents(), (Events{fired::paint(1, 2, 3, 4), fired::pointerDown(5, 6)}));
}

TEST_F(CallbacksTest, a_second_registration_of_a_buckets_first_id_is_fatal) {
    registerMethod(CB_PAINT, u"paint");
    EXPECT_EQ(vm.fatalError, "An event callback with that ID has already been registered");
}

TEST_F(CallbacksTest, a_second_registration_further_down_a_bucket_is_fatal) {
    registerMethod(CB_POINTER_DOWN_QUERY, u"pointerDown");
    EXPECT_EQ(vm.fatalError, "An event callback with that ID has already been registered");
}

TEST_F(CallbacksTest, registering_with_a_display_without_registry_is_fatal) {
    jint other = call(OS::Display_New);
    call(OS::Display_RegisterCallback, other, 0, vm.newString(u"a"), vm.newString(u"b"));
    EXPECT_EQ(vm.fatalError, "Display_GetCallbacks() returned NULL and should not have");
    call(OS::Device_Dispose, other);
}

TEST_F(CallbacksTest, a_method_without_a_class_or_a_name_is_not_registered) {
    const struct {
        jstring className, methodName;
    } rows[] = {{nullptr, nullptr},
                {vm.newString(u"test/Listener"), nullptr},
                {nullptr, vm.newString(u"selected")}};
    vm.calls.clear();
    for (const auto& row : rows) {
        NoLeaks noLeaks;
        call(OS::Display_RegisterCallback, display, 15, row.className, row.methodName);
    }
    EXPECT_EQ(vm.countCalls("GetStringUTFChars"), 0);
    fire()(15, "()V", target);
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(CallbacksTest, nobody_has_no_registry) {
    EXPECT_EQ(entryPoint<CallbackLookup*(CallbackTarget*)>("getCallbackLookup")(nullptr), nullptr);
}

TEST_F(CallbacksTest, a_method_is_looked_up_once) {
    fire()(CB_SELECTION, "()V", target);
    fire()(CB_SELECTION, "()V", target);
    EXPECT_EQ(vm.takeEvents(), (Events{fired::selected(), fired::selected()}));
    EXPECT_EQ(vm.countCalls("GetMethodID"), 1);
}

TEST_F(CallbacksTest, an_event_of_an_unregistered_id_vanishes) {
    fire()(13, "()V", target);
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(CallbacksTest, an_unregistered_question_is_answered_no) {
    EXPECT_EQ(fireBoolean()(14, "(ICII)Z", target, 1, 2, 3, 4), 0);
}

TEST_F(CallbacksTest, a_question_is_answered_by_the_method) {
    vm.behavior["key"] = [](const std::vector<jint>& arguments) { return arguments[0]; };
    EXPECT_EQ(fireBoolean()(CB_KEY, "(ICII)Z", target, 1, 'x', 88, 0), 1);
    EXPECT_EQ(fireBoolean()(CB_KEY, "(ICII)Z", target, 0, 'x', 88, 0), 0);
}

TEST_F(CallbacksTest, a_question_without_environment_is_answered_yes) {
    vm.attachedThreads.clear();
    vm.refusesToAttach = true;
    EXPECT_EQ(fireBoolean()(CB_KEY, "(ICII)Z", target, 1, 'x', 88, 0), 1);
    vm.refusesToAttach = false;
    vm.attachedThreads.insert(GetCurrentThreadId());
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(CallbacksTest, no_method_is_called_while_an_exception_is_pending) {
    vm.pendingException = "java/lang/IllegalStateException";
    fire()(CB_SELECTION, "()V", target);
    EXPECT_EQ(fireBoolean()(CB_KEY, "(ICII)Z", target, 1, 'x', 88, 0), 0);
    EXPECT_EQ(vm.pendingException, "java/lang/IllegalStateException");
    vm.clearException();
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(CallbacksTest, a_method_that_does_not_exist_is_described_and_the_event_vanishes) {
    registerMethod(15, u"nothingLikeThis");
    fire()(15, "()V", target);
    EXPECT_EQ(vm.countCalls("ExceptionDescribe"), 1);
    EXPECT_TRUE(vm.takeEvents().empty());
    EXPECT_EQ(vm.pendingException, "");
}

TEST_F(CallbacksTest, a_thread_that_the_vm_does_not_know_is_attached_for_the_call) {
    std::thread([&] { fire()(CB_SELECTION, "()V", target); }).join();
    EXPECT_EQ(vm.takeEvents(), Events{fired::selected()});
    EXPECT_EQ(vm.attachments, 1);
    EXPECT_EQ(vm.detachments, 1);
}

TEST_F(CallbacksTest, a_thread_is_attached_for_the_call_alone_whatever_the_method_answers) {
    jint control = newControl(OS::Composite_New, newShell());
    listen(control);
    HWND window = windowOf(control);
    const struct {
        const char* answer;
        std::function<void()> ask;
    } rows[] = {{"nothing", [&] { fire()(CB_SELECTION, "()V", target); }},
                {"yes or no", [&] { fireBoolean()(CB_KEY, "(ICII)Z", target, 1, 'x', 88, 0); }},
                {"a number", [&] { SendMessageW(window, WM_LBUTTONDOWN, 1, MAKELPARAM(5, 6)); }}};
    for (const auto& row : rows) {
        vm.attachments = vm.detachments = 0;
        vm.attachedThreads.erase(GetCurrentThreadId());
        row.ask();
        vm.attachedThreads.insert(GetCurrentThreadId());
        EXPECT_GT(vm.attachments, 0) << row.answer;
        EXPECT_EQ(vm.detachments, vm.attachments) << row.answer;
    }
    ReleaseCapture();
}

TEST_F(CallbacksTest, a_thread_stays_attached_when_its_event_has_no_method) {
    registerMethod(15, u"nothingLikeThis");
    std::thread([&] { fire()(15, "()V", target); }).join();
    EXPECT_EQ(vm.attachments, 1);
    EXPECT_EQ(vm.detachments, 0);
}

TEST_F(CallbacksTest, events_of_a_known_thread_detach_nothing) {
    fire()(CB_SELECTION, "()V", target);
    EXPECT_EQ(vm.detachments, 0);
}

TEST_F(CallbacksTest, taking_the_data_away_releases_it_and_events_vanish) {
    int references = vm.globalReferences;
    call(OS::Widget_SetData, handle(), nullptr);
    EXPECT_EQ(widget.callbackTarget, nullptr);
    EXPECT_EQ(vm.globalReferences, references - 1);
    fire()(CB_SELECTION, "()V", widget.callbackTarget);
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(CallbacksTest, replacing_the_data_releases_the_former) {
    NoLeaks noLeaks;
    int references = vm.globalReferences;
    call(OS::Widget_SetData, handle(), vm.newObject("test/Listener"));
    EXPECT_EQ(vm.globalReferences, references);
    EXPECT_NE(widget.callbackTarget, nullptr);
}

TEST_F(CallbacksTest, taking_data_away_from_a_widget_without_any_does_nothing) {
    call(OS::Widget_SetData, handle(), nullptr);
    int references = vm.globalReferences;
    call(OS::Widget_SetData, handle(), nullptr);
    EXPECT_EQ(vm.globalReferences, references);
}

TEST_F(CallbacksTest, data_that_cannot_be_referenced_changes_nothing_and_reports_nothing) {
    vm.failCall("NewGlobalRef");
    call(OS::Widget_SetData, handle(), vm.newObject("test/Listener"));
    EXPECT_EQ(widget.callbackTarget, target);
    EXPECT_EQ(vm.pendingException, "");
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(CallbacksTest, data_without_memory_for_its_target_raises_and_keeps_the_former) {
    int references = vm.globalReferences;
    {
        Faults faults;
        faults.fail("LocalAlloc");
        call(OS::Widget_SetData, handle(), vm.newObject("test/Listener"));
    }
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    EXPECT_EQ(vm.pendingMessage, "Failed to allocate space for callback target");
    EXPECT_EQ(widget.callbackTarget, target);
    EXPECT_EQ(vm.globalReferences, references);
    vm.clearException();
}

TEST_F(CallbacksTest, a_registry_without_memory_raises) {
    const char* const messages[] = {"Failed to allocate space for callback lookup",
                                    "Failed to allocate space for callback table"};
    NoLeaks noLeaks;
    for (int nth = 1; nth <= 2; ++nth) {
        Faults faults;
        faults.fail("LocalAlloc", nth);
        call(OS::Display_InitCallbacks, display, vm.newObject("test/Display"));
        EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
        EXPECT_EQ(vm.pendingMessage, messages[nth - 1]);
        vm.clearException();
    }
}

TEST_F(CallbacksTest, a_registry_whose_object_cannot_be_referenced_is_dropped_silently) {
    NoLeaks noLeaks;
    vm.failCall("NewGlobalRef");
    call(OS::Display_InitCallbacks, display, vm.newObject("test/Display"));
    EXPECT_EQ(vm.pendingException, "");
    fire()(CB_SELECTION, "()V", target);
    EXPECT_EQ(vm.takeEvents(), Events{fired::selected()});
}

TEST_F(CallbacksTest, an_entry_without_memory_raises) {
    Faults faults;
    faults.fail("LocalAlloc");
    registerMethod(15, u"late");
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    EXPECT_EQ(vm.pendingMessage, "Failed to allocate space for callback entry");
    vm.clearException();
}

TEST_F(CallbacksTest, without_the_class_for_it_running_out_of_memory_leaves_the_vms_exception) {
    Faults faults;
    faults.fail("LocalAlloc");
    vm.failCall("FindClass");
    registerMethod(15, u"late");
    EXPECT_EQ(vm.pendingException, "java/lang/NoClassDefFoundError");
    EXPECT_EQ(vm.fatalError, "");
    vm.clearException();
}

TEST_F(CallbacksTest, an_entry_whose_names_cannot_be_read_is_abandoned) {
    NoLeaks noLeaks;
    for (int nth = 1; nth <= 2; ++nth) {
        vm.failCall("GetStringUTFChars", nth);
        registerMethod(15, u"late");
        EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
        vm.clearException();
    }
}
