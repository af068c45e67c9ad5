#include "device.h"
#include "faults.h"
#include "leaks.h"
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

const char* listenerMethod(jint id) {
    for (const auto& callback : callbacks)
        if (callback.id == id) return callback.method;
    return nullptr;
}

DeviceTest::DeviceTest() { openDisplay(); }

void DeviceTest::openDisplay() {
    display = call(OS::Display_New);
    registerCallbacks(display);
}

void DeviceTest::registerCallbacks(jint ofDisplay) {
    call(OS::Display_InitCallbacks, ofDisplay, vm.newObject("test/Display"));
    std::vector<std::string> methods;
    for (const auto& callback : callbacks) {
        call(OS::Display_RegisterCallback, ofDisplay, callback.id, vm.newString(wide(listener)),
             vm.newString(wide(callback.method)));
        methods.push_back(std::string(callback.method) + callback.signature);
    }
    vm.declare(listener, methods);
}

DeviceTest::~DeviceTest() {
    std::reverse(shells.begin(), shells.end());
    for (jint shell : std::vector<jint>(shells)) dispose(shell);
    if (!display) return;
    call(OS::Device_Dispose, display);
    dispatchAll();
}

jint DeviceTest::newShell(bool shown, jint style) {
    jint shell = call(OS::Shell_New, display, style);
    shells.push_back(shell);
    if (shown) {
        call(OS::Control_SetVisible, shell, true);
        dispatchAll();
    }
    return shell;
}

jint DeviceTest::newButton(jint parent, const Maker& kind) { return newControl(kind, parent); }

jint DeviceTest::newControl(const Maker& kind, jint parent, jint style, RECT place) {
    jint control = call(kind, parent, style);
    placeAndShow(control, place);
    return control;
}

jint DeviceTest::newControl(const Native<jint(jint)>& kind, jint parent, RECT place) {
    jint control = call(kind, parent);
    placeAndShow(control, place);
    return control;
}

void DeviceTest::placeAndShow(jint control, RECT place) {
    call(OS::Control_SetBounds, control, place.left, place.top, place.right - place.left,
         place.bottom - place.top);
    call(OS::Control_SetVisible, control, true);
    dispatchAll();
}

void DeviceTest::listen(jint widget) {
    call(OS::Widget_SetData, widget, vm.newObject(listener));
    vm.takeEvents();
}

void DeviceTest::dispose(jint widget) {
    shells.erase(std::remove(shells.begin(), shells.end(), widget), shells.end());
    call(OS::Widget_SetData, widget, nullptr);
    call(OS::Widget_Dispose, widget);
}

void DeviceTest::dispatchAll() {
    while (call(OS::Display_ReadAndDispatch, display)) {
    }
}

void DeviceTest::tap(jint control) {
    RECT client;
    GetClientRect(windowOf(control), &client);
    tapAt(control, client.right / 2, client.bottom / 2);
}

void DeviceTest::tapAt(jint control, int x, int y) {
    POINT point = {x, y};
    ClientToScreen(windowOf(control), &point);
    call(OS::Display_PostPointerMoveEvent, display, point.x, point.y);
    for (PointerType type : {pointerPress, pointerRelease}) {
        call(OS::Display_PostPointerEvent, display, type, buttonLeft);
        dispatchAll();
    }
}

void DeviceTest::pressKey(jint key, bool withShift) {
    auto post = [&](KeyKind kind, jint posted) {
        call(OS::Display_PostKeyEvent, display, static_cast<jint>(kind), posted, u'\0');
        dispatchAll();
    };
    if (withShift) post(KeyKind::pressed, keyShift);
    post(KeyKind::pressed, key);
    post(KeyKind::released, key);
    if (withShift) post(KeyKind::released, keyShift);
}

void DeviceTest::type(const std::string& characters) {
    for (char character : characters) pressKey(character);
}

std::vector<jint> DeviceTest::boundsOf(jint control) {
    return vm.ints(call(OS::Control_GetBounds, control));
}

std::vector<jint> DeviceTest::minimumSize(jint control) {
    return vm.ints(call(OS::Control_GetMinimumSize, control));
}

DWORD DeviceTest::styleOf(jint control) {
    return GetWindowLongW(windowOf(control), GWL_STYLE) & ~WS_VISIBLE;
}

LRESULT DeviceTest::sendTo(jint control, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageW(windowOf(control), message, wParam, lParam);
}

std::wstring DeviceTest::windowText(jint control) {
    std::wstring text(GetWindowTextLengthW(windowOf(control)) + 1, L'\0');
    text.resize(GetWindowTextW(windowOf(control), text.data(), static_cast<int>(text.size())));
    return text;
}

COLORREF DeviceTest::pixelOf(jint control, int x, int y) {
    HDC context = GetDC(windowOf(control));
    COLORREF color = GetPixel(context, x, y);
    ReleaseDC(windowOf(control), context);
    return color;
}

void DeviceTest::expectReport(const char* function, jint code, const std::u16string& message) {
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, function);
    EXPECT_EQ(report.code, code);
    bool systemFollows = message.size() > 2 && message.substr(message.size() - 2) == u"::";
    if (!systemFollows) {
        EXPECT_EQ(report.message, message);
        return;
    }
    EXPECT_EQ(report.message.substr(0, message.size()), message);
    EXPECT_GT(report.message.size(), message.size()) << "without the system's text";
}

TestVm::Report DeviceTest::onlyReport() {
    EXPECT_EQ(vm.reports.size(), 1u);
    TestVm::Report report = vm.reports.empty() ? TestVm::Report{} : vm.reports.front();
    vm.reports.clear();
    return report;
}

void DeviceTest::expectFailedCreationsReported(const std::function<jint()>& create) {
    NoLeaks noLeaks;
    std::vector<jint> made;
    int reported = 0;
    forEachFailure([&](Faults&) {
        jint widget = create();
        if (widget) made.push_back(widget);
        if (vm.reports.empty()) return;
        ++reported;
        EXPECT_EQ(widget, 0);
        EXPECT_EQ(onlyReport().message.find(u"Unable to create handle for widget::"), 0u);
    });
    EXPECT_EQ(reported, 2) << "the window and the record";
    EXPECT_FALSE(made.empty());
    for (jint widget : made) dispose(widget);
    dispatchAll();
}
