#include "device.h"
#include <algorithm>

static const char listener[] = "test/Listener";

static const struct {
    jint id;
    const char* method;
    const char* signature;
} callbacks[] = {
    {CB_SELECTION, "selected", "()V"},
    {CB_LIST_SELECTION, "listSelected", "(II)V"},
    {CB_WINDOW_EVENT, "window", "(I)V"},
    {CB_SCROLL, "scrolled", "(II)V"},
    {CB_CHOICE_SELECTION, "chosen", "(I)V"},
    {CB_KEY, "key", "(ICII)Z"},
    {CB_TEXT_MODIFIED, "modified", "()V"},
    {CB_POINTER, "pointer", "(IIIII)V"},
    {CB_MENU_SELECTION, "menu", "(I)V"},
    {CB_FOCUS, "focus", "(I)V"},
    {CB_PAINT, "paint", "(IIII)V"},
    {CB_RESIZE, "resize", "(II)V"},
    {CB_MOVE, "move", "(II)V"},
    {CB_WHEEL, "wheel", "(IIIIII)V"},
    {CB_POINTER_DOWN_QUERY, "pointerDown", "(II)I"},
};

static std::u16string wide(const std::string& text) { return {text.begin(), text.end()}; }

DeviceTest::DeviceTest() {
    display = call<jint()>("Display_New");
    call<void(jint, jobject)>("Display_InitCallbacks", display, vm.newObject("test/Display"));
    std::vector<std::string> methods;
    for (const auto& callback : callbacks) {
        call<void(jint, jint, jstring, jstring)>("Display_RegisterCallback", display, callback.id,
                                                 vm.newString(wide(listener)),
                                                 vm.newString(wide(callback.method)));
        methods.push_back(std::string(callback.method) + callback.signature);
    }
    vm.declare(listener, methods);
}

DeviceTest::~DeviceTest() {
    std::reverse(shells.begin(), shells.end());
    for (jint shell : std::vector<jint>(shells)) dispose(shell);
    call<void(jint)>("Device_Dispose", display);
    dispatchAll();
}

jint DeviceTest::newShell(bool shown, jint style) {
    jint shell = call<jint(jint, jint)>("Shell_New", display, style);
    shells.push_back(shell);
    if (shown) {
        call<void(jint, jboolean)>("Control_SetVisible", shell, JNI_TRUE);
        dispatchAll();
    }
    return shell;
}

jint DeviceTest::newButton(jint parent, const char* kind) {
    jint button = call<jint(jint, jint)>(std::string(kind) + "_New", parent, 0);
    call<void(jint, jint, jint, jint, jint)>("Control_SetBounds", button, 20, 30, 100, 40);
    call<void(jint, jboolean)>("Control_SetVisible", button, JNI_TRUE);
    dispatchAll();
    return button;
}

void DeviceTest::listen(jint widget) {
    call<void(jint, jobject)>("Widget_SetData", widget, vm.newObject(listener));
    vm.takeEvents();
}

void DeviceTest::dispose(jint widget) {
    shells.erase(std::remove(shells.begin(), shells.end(), widget), shells.end());
    call<void(jint, jobject)>("Widget_SetData", widget, static_cast<jobject>(nullptr));
    call<void(jint)>("Widget_Dispose", widget);
}

void DeviceTest::dispatchAll() {
    while (call<jboolean(jint)>("Display_ReadAndDispatch", display)) {
    }
}

TestVm::Report DeviceTest::onlyReport() {
    EXPECT_EQ(vm.reports.size(), 1u);
    TestVm::Report report = vm.reports.empty() ? TestVm::Report{} : vm.reports.front();
    vm.reports.clear();
    return report;
}
