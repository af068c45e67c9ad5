#include "control/control.h"
#include "device.h"
#include "faults.h"
#include "leaks.h"
#include <set>

class ControlProcTest : public DeviceTest {
  protected:
    ControlProcTest() {
        shell = newShell();
        button = newButton(shell);
        composite = call(OS::Composite_New, shell, 0);
        call(OS::Control_SetBounds, composite, 0, 100, 100, 60);
        call(OS::Control_SetVisible, composite, true);
        dispatchAll();
    }
    static ControlRecord* record(jint control) { return reinterpret_cast<ControlRecord*>(control); }

    jint shell, button, composite;
};

TEST_F(ControlProcTest, a_close_request_is_reported_and_the_window_stays) {
    listen(button);
    EXPECT_EQ(sendTo(button, WM_CLOSE), 0);
    EXPECT_EQ(vm.takeEvents(), Events{fired::window(WindowEvent::closeRequested)});
    EXPECT_TRUE(IsWindow(windowOf(button)));
}

TEST_F(ControlProcTest, the_focus_comes_and_goes) {
    listen(button);
    SetFocus(windowOf(button));
    SetFocus(nullptr);
    EXPECT_EQ(vm.takeEvents(),
              (Events{fired::focus(FocusChange::gained), fired::focus(FocusChange::lost)}));
}

TEST_F(ControlProcTest, a_paint_reports_the_damaged_rectangle_after_the_class_has_painted) {
    listen(button);
    RECT damage = {3, 4, 13, 24};
    InvalidateRect(windowOf(button), &damage, FALSE);
    UpdateWindow(windowOf(button));
    EXPECT_EQ(vm.takeEvents(), Events{fired::paint(3, 4, 10, 20)});
    EXPECT_FALSE(GetUpdateRect(windowOf(button), nullptr, FALSE));
}

TEST_F(ControlProcTest, a_control_whose_drawing_is_off_paints_and_erases_nothing) {
    listen(button);
    call(OS::Control_SetRedraw, button, false);
    InvalidateRect(windowOf(button), nullptr, TRUE);
    UpdateWindow(windowOf(button));
    HDC context = GetDC(windowOf(button));
    EXPECT_EQ(sendTo(button, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context)), 0);
    ReleaseDC(windowOf(button), context);
    EXPECT_TRUE(vm.takeEvents().empty());
    call(OS::Control_SetRedraw, button, true);
}

TEST_F(ControlProcTest, drawing_that_is_off_in_a_parent_is_off) {
    listen(button);
    record(shell)->redraw = FALSE;
    InvalidateRect(windowOf(button), nullptr, TRUE);
    UpdateWindow(windowOf(button));
    EXPECT_TRUE(vm.takeEvents().empty());
    record(shell)->redraw = TRUE;
}

static RECT updateArea;
static BOOL WINAPI answerUpdateArea(HWND, RECT* area, BOOL) {
    *area = updateArea;
    return TRUE;
}

// Nothing else takes such a request from the queue.
TEST_F(ControlProcTest, a_paint_of_nothing_is_taken_while_drawing_is_off) {
    record(composite)->redraw = FALSE;
    Faults faults;
    faults.replace("GetUpdateRect", reinterpret_cast<void*>(answerUpdateArea));
    const struct {
        RECT area;
        int painted;
    } rows[] = {{{0, 0, 0, 0}, 1}, {{3, 4, 3, 4}, 1}, {{3, 4, 3, 9}, 0}, {{3, 4, 8, 4}, 0}};
    for (const auto& row : rows) {
        updateArea = row.area;
        int before = faults.countCalls("BeginPaint");
        sendTo(composite, WM_PAINT);
        EXPECT_EQ(faults.countCalls("BeginPaint") - before, row.painted) << row.area.bottom;
        EXPECT_EQ(faults.countCalls("EndPaint"), faults.countCalls("BeginPaint"));
    }
    record(composite)->redraw = TRUE;
}

TEST_F(ControlProcTest, a_swallowed_paint_is_made_up_for_when_drawing_is_on_again) {
    listen(button);
    record(button)->redraw = FALSE;
    InvalidateRect(windowOf(button), nullptr, TRUE);
    UpdateWindow(windowOf(button));
    dispatchAll();
    EXPECT_TRUE(vm.takeEvents().empty());
    record(button)->redraw = TRUE;
    while (vm.events.empty()) {
        call(OS::Display_Sleep, display);
        dispatchAll();
    }
    EXPECT_EQ(vm.takeEvents(), Events{fired::paint(0, 0, 100, 40)});
}

static TIMERPROC repaint;
static UINT_PTR WINAPI keepTimer(HWND, UINT_PTR, UINT, TIMERPROC proc) {
    repaint = proc;
    return 1;
}

TEST_F(ControlProcTest, what_is_made_up_for_waits_until_drawing_is_on_and_the_control_is_there) {
    Faults faults;
    faults.replace("SetTimer", reinterpret_cast<void*>(keepTimer));
    record(button)->redraw = FALSE;
    HWND window = windowOf(button);
    sendTo(button, WM_PAINT);
    ASSERT_TRUE(repaint);
    HWND stranger = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 5, 5, nullptr, nullptr,
                                    nullptr, nullptr);
    for (HWND each : {window, stranger}) {
        repaint(each, WM_TIMER, 101, 0);
        EXPECT_FALSE(GetUpdateRect(each, nullptr, FALSE));
    }
    EXPECT_EQ(faults.countCalls("KillTimer"), 0);
    record(button)->redraw = TRUE;
    repaint(window, WM_TIMER, 101, 0);
    EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE));
    EXPECT_EQ(faults.countCalls("KillTimer"), 1);
    DestroyWindow(stranger);
}

TEST_F(ControlProcTest, a_paint_without_damage_is_not_taken_while_drawing_is_off) {
    record(composite)->redraw = FALSE;
    ValidateRect(windowOf(composite), nullptr);
    Faults faults;
    sendTo(composite, WM_PAINT);
    EXPECT_EQ(faults.countCalls("BeginPaint"), 0);
    record(composite)->redraw = TRUE;
}

TEST_F(ControlProcTest, a_control_that_goes_as_its_paint_begins_is_not_told_of_it) {
    jint victim = newControl(OS::Composite_New, shell);
    listen(victim);
    HWND window = windowOf(victim);
    InvalidateRect(window, nullptr, FALSE);
    vm.takeEvents();
    Faults faults;
    int paints = 0;
    faults.watch([&](const std::string& function) {
        if (function == "BeginPaint" && ++paints == 1) dispose(victim);
    });
    UpdateWindow(window);
    EXPECT_EQ(paints, 1);
    EXPECT_EQ(fired::only(vm.takeEvents(), {"paint"}), Events{});
    EXPECT_FALSE(IsWindow(window));
}

static std::function<void()> inClass;
static UINT classMessage;
static LRESULT CALLBACK actInClass(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == classMessage && inClass) std::exchange(inClass, nullptr)();
    return message == WM_ERASEBKGND ? 0 : DefWindowProcW(window, message, wParam, lParam);
}

// A window class may send its control's parent, or a companion library, what it does.
TEST_F(ControlProcTest, a_control_that_goes_in_its_classes_hands_is_not_touched_again) {
    HDC context = GetDC(nullptr);
    const struct {
        UINT message;
        WPARAM wParam;
    } rows[] = {{WM_ERASEBKGND, reinterpret_cast<WPARAM>(context)}, {WM_SETFONT, 0}};
    for (const auto& row : rows) {
        jint victim = newButton(shell);
        HWND window = windowOf(victim);
        record(victim)->classProc = actInClass;
        classMessage = row.message;
        inClass = [=, this] { dispose(victim); };
        Faults faults;
        EXPECT_EQ(SendMessageW(window, row.message, row.wParam, 0), 0);
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(faults.countCalls("PatBlt"), 0);
        EXPECT_FALSE(inClass);
    }
    ReleaseDC(nullptr, context);
}

static LRESULT CALLBACK answerSeven(HWND, UINT, WPARAM, LPARAM) { return 7; }

TEST_F(ControlProcTest, messages_that_nobody_knows_are_the_classes_to_answer) {
    WNDPROC classProc = std::exchange(record(composite)->classProc, answerSeven);
    for (UINT message : {UINT(WM_USER), UINT(WM_APP), UINT(WM_APP + 0x1000), 0xC000u})
        EXPECT_EQ(sendTo(composite, message), 7) << message;
    record(composite)->classProc = classProc;
}

// A device context of its own, so that nothing else paints into it.
struct Canvas {
    HDC context = CreateCompatibleDC(nullptr);
    HBITMAP bitmap = CreateBitmap(20, 20, 1, 32, nullptr);
    HGDIOBJ before = SelectObject(context, bitmap);
    ~Canvas() {
        SelectObject(context, before);
        DeleteObject(bitmap);
        DeleteDC(context);
    }
    COLORREF at(int x, int y) const { return GetPixel(context, x, y); }
};

TEST_F(ControlProcTest, a_background_colour_fills_the_clip_box_in_the_classes_place) {
    ColorRecord color = {RGB(10, 200, 30), nullptr};
    record(button)->background = &color;
    for (const RECT& clip : {RECT{0, 0, 20, 20}, RECT{3, 5, 17, 9}, RECT{2, 1, 4, 20}}) {
        Canvas canvas;
        PatBlt(canvas.context, 0, 0, 20, 20, WHITENESS);
        IntersectClipRect(canvas.context, clip.left, clip.top, clip.right, clip.bottom);
        EXPECT_EQ(sendTo(button, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.context)), 1);
        SelectClipRgn(canvas.context, nullptr);
        for (POINT point = {0, 0}; point.y < 20; point.x = (point.x + 1) % 20, point.y += !point.x)
            EXPECT_EQ(canvas.at(point.x, point.y),
                      PtInRect(&clip, point) ? RGB(10, 200, 30) : RGB(255, 255, 255))
                << point.x << " " << point.y;
    }
    record(button)->background = nullptr;
    DeleteObject(color.brush);
}

TEST_F(ControlProcTest, in_xor_mode_erasing_inverts) {
    ColorRecord color = {RGB(255, 255, 0), nullptr};
    record(button)->background = &color;
    Canvas canvas;
    PatBlt(canvas.context, 0, 0, 20, 20, WHITENESS);
    SetROP2(canvas.context, R2_XORPEN);
    sendTo(button, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.context));
    EXPECT_EQ(canvas.at(5, 5), RGB(0, 0, 255));
    EXPECT_EQ(GetROP2(canvas.context), R2_XORPEN);
    record(button)->background = nullptr;
    DeleteObject(color.brush);
}

TEST_F(ControlProcTest, erasing_an_empty_clip_box_paints_nothing) {
    ColorRecord color = {RGB(255, 255, 0), nullptr};
    record(button)->background = &color;
    Canvas canvas;
    PatBlt(canvas.context, 0, 0, 20, 20, BLACKNESS);
    HRGN nothing = CreateRectRgn(0, 0, 0, 0);
    SelectClipRgn(canvas.context, nothing);
    EXPECT_EQ(sendTo(button, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.context)), 1);
    SelectClipRgn(canvas.context, nullptr);
    EXPECT_EQ(canvas.at(5, 5), RGB(0, 0, 0));
    DeleteObject(nothing);
    record(button)->background = nullptr;
    DeleteObject(color.brush);
}

TEST_F(ControlProcTest, a_child_without_cursor_shows_the_nearest_ancestors) {
    HCURSOR cross = LoadCursorW(nullptr, IDC_CROSS);
    record(shell)->cursor = cross;
    SetCursor(nullptr);
    LRESULT handled = sendTo(button, WM_SETCURSOR, reinterpret_cast<WPARAM>(windowOf(button)),
                             MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(GetCursor(), cross);

    HCURSOR wait = LoadCursorW(nullptr, IDC_WAIT);
    record(button)->cursor = wait;
    sendTo(button, WM_SETCURSOR, reinterpret_cast<WPARAM>(windowOf(button)),
           MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), wait);
}

TEST_F(ControlProcTest, outside_the_client_area_the_cursor_is_the_classes) {
    HCURSOR cross = LoadCursorW(nullptr, IDC_CROSS);
    record(composite)->cursor = cross;
    sendTo(composite, WM_SETCURSOR, reinterpret_cast<WPARAM>(windowOf(composite)),
           MAKELPARAM(HTBORDER, WM_MOUSEMOVE));
    EXPECT_NE(GetCursor(), cross);
}

static int reflectedCommands;
static LRESULT CALLBACK countCommands(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == controlCommand) ++reflectedCommands;
    auto* control = reinterpret_cast<ControlRecord*>(GetWindowLongW(window, GWL_USERDATA));
    auto* proc = entryPoint<LRESULT CALLBACK(HWND, UINT, WPARAM, LPARAM)>("_Control_Proc");
    return control ? proc(window, message, wParam, lParam) : 0;
}

TEST_F(ControlProcTest, a_command_of_a_child_without_record_is_offered_to_the_control_itself) {
    HWND child = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD, 0, 0, 5, 5, windowOf(composite),
                                 nullptr, nullptr, nullptr);
    LONG before =
        SetWindowLongW(windowOf(composite), GWL_WNDPROC, reinterpret_cast<LONG>(countCommands));
    reflectedCommands = 0;
    sendTo(composite, WM_COMMAND, MAKEWPARAM(0, 5), reinterpret_cast<LPARAM>(child));
    EXPECT_EQ(reflectedCommands, 1);
    SetWindowLongW(windowOf(composite), GWL_WNDPROC, before);
    EXPECT_EQ(sendTo(composite, controlCommand), 1) << "not handled by default";
}

static LRESULT reflectedAnswer;
static LRESULT CALLBACK answerCommands(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == controlCommand) return reflectedAnswer;
    return DefWindowProcW(window, message, wParam, lParam);
}
static LRESULT CALLBACK classOfSevens(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) return 7;
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(ControlProcTest, a_command_that_its_child_has_not_handled_is_the_classes_to_answer) {
    jint child = newButton(composite);
    LONG childProc =
        SetWindowLongW(windowOf(child), GWL_WNDPROC, reinterpret_cast<LONG>(answerCommands));
    WNDPROC classProc = record(composite)->classProc;
    record(composite)->classProc = classOfSevens;
    auto command = [&] {
        return sendTo(composite, WM_COMMAND, MAKEWPARAM(0, 5),
                      reinterpret_cast<LPARAM>(windowOf(child)));
    };
    reflectedAnswer = 0;
    EXPECT_EQ(command(), 0);
    for (LRESULT unhandled : {1, 9}) {
        reflectedAnswer = unhandled;
        EXPECT_EQ(command(), 7);
    }
    record(composite)->classProc = classProc;
    SetWindowLongW(windowOf(child), GWL_WNDPROC, childProc);
}

static std::vector<WPARAM> fontsAsked;
static LRESULT CALLBACK recordFonts(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETFONT) fontsAsked.insert(fontsAsked.end(), {wParam, WPARAM(lParam)});
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(ControlProcTest, a_class_is_asked_for_its_font_without_parameters) {
    fontsAsked.clear();
    WNDPROC classProc = std::exchange(record(composite)->classProc, recordFonts);
    call(OS::Control_SetFont, composite, 0);
    record(composite)->classProc = classProc;
    EXPECT_EQ(std::set<WPARAM>(fontsAsked.begin(), fontsAsked.end()), std::set<WPARAM>{0});
}

TEST_F(ControlProcTest, an_owner_drawn_item_is_drawn_by_its_control_but_never_a_menus) {
    static int reflected;
    reflected = 0;
    static LONG before;
    before = SetWindowLongW(windowOf(button), GWL_WNDPROC,
                            reinterpret_cast<LONG>(+[](HWND window, UINT message, WPARAM wParam,
                                                       LPARAM lParam) -> LRESULT CALLBACK {
                                if (message == controlDrawItem) {
                                    ++reflected;
                                    return 77;
                                }
                                return CallWindowProcW(reinterpret_cast<WNDPROC>(before), window,
                                                       message, wParam, lParam);
                            }));
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_BUTTON;
    item.hwndItem = windowOf(button);
    EXPECT_EQ(sendTo(composite, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 77);
    item.CtlType = ODT_MENU;
    sendTo(composite, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(reflected, 1);
    SetWindowLongW(windowOf(button), GWL_WNDPROC, before);
}

TEST_F(ControlProcTest, the_default_background_is_what_the_parent_gives) {
    LRESULT color = sendTo(composite, controlGetBackground);
    HDC context = GetDC(windowOf(composite));
    auto* brush =
        reinterpret_cast<HBRUSH>(sendTo(shell, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                                        reinterpret_cast<LPARAM>(windowOf(composite))));
    ReleaseDC(windowOf(composite), context);
    LOGBRUSH properties = {};
    GetObjectW(brush, sizeof(properties), &properties);
    EXPECT_EQ(COLORREF(color), properties.lbColor);
}

TEST_F(ControlProcTest, without_a_brush_the_default_background_is_the_button_face) {
    Faults faults;
    faults.fail("GetObjectW");
    EXPECT_EQ(COLORREF(sendTo(composite, controlGetBackground)), GetSysColor(COLOR_BTNFACE));
}

static WNDPROC colouredProc;
static LRESULT CALLBACK colourNothing(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CTLCOLORSTATIC) return 0;
    return CallWindowProcW(colouredProc, window, message, wParam, lParam);
}

TEST_F(ControlProcTest, where_the_parent_gives_no_brush_the_default_background_is_the_button_face) {
    colouredProc = reinterpret_cast<WNDPROC>(
        SetWindowLongW(windowOf(shell), GWL_WNDPROC, reinterpret_cast<LONG>(colourNothing)));
    Faults faults;
    EXPECT_EQ(COLORREF(sendTo(composite, controlGetBackground)), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(faults.countCalls("GetObjectW"), 0);
    SetWindowLongW(windowOf(shell), GWL_WNDPROC, reinterpret_cast<LONG>(colouredProc));
}

TEST_F(ControlProcTest, the_default_foreground_is_the_window_text) {
    EXPECT_EQ(COLORREF(sendTo(composite, controlGetForeground)), GetSysColor(COLOR_WINDOWTEXT));
}

TEST_F(ControlProcTest, a_context_that_cannot_be_had_is_an_error) {
    Faults faults;
    faults.fail("GetDC", 1, ERROR_NOT_ENOUGH_MEMORY);
    ErrorRecord error = {};
    ErrorRecord* argument = &error;
    EXPECT_EQ(sendTo(button, controlGetContext, reinterpret_cast<WPARAM>(&argument)), 0);
    EXPECT_EQ(error.code, -4);
    EXPECT_EQ(std::wstring(error.message).find(L"Unable to create DC from control::"), 0u);
    LocalFree(const_cast<wchar_t*>(error.message));
}

TEST_F(ControlProcTest, a_context_of_the_window_is_given) {
    ErrorRecord error = {};
    ErrorRecord* argument = &error;
    auto* context = reinterpret_cast<HDC>(
        sendTo(button, controlGetContext, reinterpret_cast<WPARAM>(&argument)));
    EXPECT_EQ(WindowFromDC(context), windowOf(button));
    ReleaseDC(windowOf(button), context);
}

TEST_F(ControlProcTest, a_window_without_record_is_the_systems_own) {
    auto* proc = entryPoint<LRESULT CALLBACK(HWND, UINT, WPARAM, LPARAM)>("_Control_Proc");
    HWND window = CreateWindowExW(0, L"STATIC", L"title", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr,
                                  nullptr, nullptr);
    EXPECT_EQ(proc(window, WM_GETTEXTLENGTH, 0, 0), 5);
    DestroyWindow(window);
}

TEST_F(ControlProcTest, every_destroyed_control_posts_a_quit_message) {
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
    dispose(composite);
    bool quit = PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    EXPECT_TRUE(quit);
}

TEST_F(ControlProcTest, colours_are_kept_and_redrawn) {
    ColorRecord color = {RGB(1, 2, 3), nullptr};
    ValidateRect(windowOf(composite), nullptr);
    sendTo(composite, controlSetBackground, reinterpret_cast<WPARAM>(&color));
    EXPECT_EQ(record(composite)->background, &color);
    EXPECT_TRUE(GetUpdateRect(windowOf(composite), nullptr, FALSE));
    sendTo(composite, controlSetForeground, reinterpret_cast<WPARAM>(&color));
    EXPECT_EQ(record(composite)->foreground, &color);
    sendTo(composite, controlSetBackground, 0);
    sendTo(composite, controlSetForeground, 0);
    EXPECT_EQ(record(composite)->background, nullptr);
}

TEST_F(ControlProcTest, no_font_is_the_default_font) {
    HFONT font = CreateFontW(12, 0, 0, 0, 400, 0, 0, 0, 1, 0, 0, 0, 0, L"Tahoma");
    sendTo(button, WM_SETFONT, reinterpret_cast<WPARAM>(font));
    sendTo(button, controlSetFont, 0);
    EXPECT_EQ(sendTo(button, WM_GETFONT), reinterpret_cast<LRESULT>(GetStockObject(SYSTEM_FONT)));
    DeleteObject(font);
}

TEST_F(ControlProcTest, a_control_moved_above_another_lies_directly_above_it) {
    jint third = newButton(shell);
    sendTo(third, controlMoveAbove, composite);
    EXPECT_EQ(GetWindow(windowOf(composite), GW_HWNDPREV), windowOf(third));
    sendTo(third, controlMoveAbove, composite);
    EXPECT_EQ(GetWindow(windowOf(composite), GW_HWNDPREV), windowOf(third)) << "it stays there";
    sendTo(composite, controlMoveAbove, 0);
    EXPECT_EQ(GetWindow(windowOf(composite), GW_HWNDPREV), nullptr);
}

TEST_F(ControlProcTest, a_control_of_another_parent_is_not_moved_above) {
    jint inner = newButton(composite);
    HWND above = GetWindow(windowOf(button), GW_HWNDPREV);
    sendTo(button, controlMoveAbove, inner);
    EXPECT_EQ(GetWindow(windowOf(button), GW_HWNDPREV), above);
}

TEST_F(ControlProcTest, a_listener_may_dispose_of_the_control_that_it_hears) {
    NoLeaks noLeaks;
    jint victim = newButton(shell);
    listen(victim);
    vm.behavior["focus"] = [&](const std::vector<jint>&) {
        vm.behavior.clear();
        dispose(victim);
        return 0;
    };
    HWND window = windowOf(victim);
    SendMessageW(window, WM_SETFOCUS, 0, 0);
    EXPECT_FALSE(IsWindow(window));
}
