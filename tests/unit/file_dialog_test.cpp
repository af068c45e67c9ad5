#include "faults.h"
#include "file_dialog_fixture.h"
#include "leaks.h"
#include "other_thread.h"
#include "process_leaks.h"
#include "variety.h"

TEST_F(FileDialogTest, a_new_dialog_has_its_record_filled) {
    jint dialog = call(OS::FileDialog_New, shell, save | several);
    EXPECT_EQ(record(dialog)->display, reinterpret_cast<DisplayRecord*>(display));
    EXPECT_EQ(record(dialog)->owner, reinterpret_cast<ControlRecord*>(shell));
    EXPECT_EQ(record(dialog)->style, DWORD(save | several));
    EXPECT_EQ(record(dialog)->callbackTarget, nullptr);
    EXPECT_EQ(call(OS::FileDialog_GetFilterPath, dialog), nullptr);
    EXPECT_TRUE(namesOf(dialog).empty());
    dispose(dialog);
}

TEST_F(FileDialogTest, what_is_set_is_kept_as_a_copy) {
    jint dialog = newDialog();
    for (const char16_t* text : {u"first", u"", u"second"}) {
        for (const auto& property :
             {OS::FileDialog_SetTitle, OS::FileDialog_SetFileName, OS::FileDialog_SetFilterPath})
            set(property, dialog, text);
        EXPECT_EQ(pathOf(dialog), text);
        std::u16string expected = text;
        std::wstring wide(expected.begin(), expected.end());
        EXPECT_EQ(record(dialog)->title, wide);
        EXPECT_EQ(record(dialog)->fileName, wide);
    }
    for (const auto& property :
         {OS::FileDialog_SetTitle, OS::FileDialog_SetFileName, OS::FileDialog_SetFilterPath})
        call(property, dialog, nullptr);
    EXPECT_EQ(record(dialog)->title, nullptr);
    EXPECT_EQ(record(dialog)->fileName, nullptr);
    EXPECT_EQ(record(dialog)->filterPath, nullptr);
    dispose(dialog);
}

TEST_F(FileDialogTest, without_memory_what_is_set_is_an_error_and_the_old_stays) {
    jint dialog = newDialog();
    for (const auto& property :
         {OS::FileDialog_SetTitle, OS::FileDialog_SetFileName, OS::FileDialog_SetFilterPath}) {
        set(property, dialog, u"old");
        Faults faults;
        faults.fail("LocalAlloc", 2);
        set(property, dialog, u"new");
        EXPECT_EQ(onlyReport().code, -4);
    }
    EXPECT_EQ(record(dialog)->title, std::wstring(L"old"));
    EXPECT_EQ(record(dialog)->fileName, std::wstring(L"old"));
    EXPECT_EQ(pathOf(dialog), u"old");
    dispose(dialog);
}

TEST_F(FileDialogTest, a_dialog_without_memory_is_an_error) {
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(call(OS::FileDialog_New, shell, 0), 0);
    expectReport("FileDialog_New", -4, u"Not enough memory to allocate file dialog");
}

TEST_F(FileDialogTest, a_tapped_file_is_chosen_with_ok) {
    jint dialog = newDialog();
    EXPECT_TRUE(openWith(dialog, {tappingEntry(L"x.txt"), tapping(L"OK")}));
    EXPECT_EQ(pathOf(dialog), u"\\My Documents\\dialog test\\");
    EXPECT_EQ(record(dialog)->fileName, std::wstring(L"x.txt"));
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"x.txt"});
    EXPECT_TRUE(vm.reports.empty());
    dispose(dialog);
}

TEST_F(FileDialogTest, two_taps_choose_a_file) {
    jint dialog = newDialog();
    EXPECT_TRUE(openWith(dialog, {[&](HWND window) {
                             tapEntry(window, L"b.txt");
                             tapEntry(window, L"b.txt");
                         }}));
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"b.txt"});
    dispose(dialog);
}

TEST_F(FileDialogTest, a_typed_name_is_chosen_with_enter) {
    jint dialog = newDialog(save);
    EXPECT_TRUE(openWith(dialog, {typing(L"new.txt\r")}));
    EXPECT_EQ(pathOf(dialog), u"\\My Documents\\dialog test\\");
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"new.txt"});
    EXPECT_TRUE(openWith(dialog, {typing(L"\\plain\r")}));
    EXPECT_EQ(pathOf(dialog), u"\\");
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"plain"});
    dispose(dialog);
}

TEST_F(FileDialogTest, a_person_finds_the_way_through_folders) {
    jint dialog = newDialog();
    std::vector<std::vector<std::wstring>> shown;
    auto look = [&](HWND window) { shown.push_back(shownEntries(window)); };
    EXPECT_TRUE(openWith(dialog, {[&](HWND window) {
                                      look(window);
                                      tapEntry(window, L"[sub]");
                                  },
                                  tapping(L"OK"),
                                  [&](HWND window) {
                                      look(window);
                                      tapButton(window, L"Up");
                                  },
                                  [&](HWND window) {
                                      look(window);
                                      tapEntry(window, L"[sub]");
                                      tapEntry(window, L"[sub]");
                                  },
                                  tappingEntry(L"deep.txt"), tapping(L"OK")}));
    std::vector<std::wstring> all = {L"[sub]", L"a.txt", L"b.txt", L"x.txt"};
    EXPECT_EQ(shown, (std::vector<std::vector<std::wstring>>{all, {L"deep.txt"}, all}));
    EXPECT_EQ(pathOf(dialog), u"\\My Documents\\dialog test\\sub\\");
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"deep.txt"});
    dispose(dialog);
}

TEST_F(FileDialogTest, manyfiles_are_chosen) {
    jint dialog = newDialog(several);
    EXPECT_TRUE(openWith(dialog, {tappingEntry(L"a.txt"), tappingEntry(L"x.txt"), tapping(L"OK")}));
    bool lastOnly = theDevice().choosesOneFileOnly;
    EXPECT_EQ(pathOf(dialog), lastOnly ? std::u16string(folder) + u"\\" : folder);
    EXPECT_EQ(record(dialog)->fileName, std::wstring(lastOnly ? L"x.txt" : L"a.txt"));
    std::vector<std::u16string> names = {u"a.txt", u"x.txt"};
    if (lastOnly) names.erase(names.begin());
    EXPECT_EQ(namesOf(dialog), names);
    dispose(dialog);
}

TEST_F(FileDialogTest, one_of_manyis_chosen_alone) {
    jint dialog = newDialog(several);
    EXPECT_TRUE(openWith(dialog, {tappingEntry(L"a.txt"), tapping(L"OK")}));
    EXPECT_EQ(pathOf(dialog), u"\\My Documents\\dialog test\\");
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"a.txt"});
    dispose(dialog);
}

TEST_F(FileDialogTest, a_cancelled_dialog_chooses_nothing) {
    jint dialog = newDialog();
    setName(dialog, u"name");
    EXPECT_FALSE(openWith(dialog, {tappingEntry(L"x.txt"), tapping(L"Cancel")}));
    EXPECT_TRUE(namesOf(dialog).empty());
    EXPECT_EQ(pathOf(dialog), folder);
    EXPECT_EQ(record(dialog)->fileName, std::wstring(L"name"));
    EXPECT_FALSE(openWith(dialog, {typing(L"\x1B")}));
    EXPECT_TRUE(vm.reports.empty());
    EXPECT_TRUE(IsWindowEnabled(windowOf(shell)));
    dispose(dialog);
}

TEST_F(FileDialogTest, opens_when_a_control_was_disposed_just_before) {
    jint dialog = newDialog();
    dispose(call(OS::PushButton_New, shell, 0));
    EXPECT_FALSE(openWith(dialog, {tapping(L"Cancel")}));
    dispose(dialog);
}

TEST_F(FileDialogTest, a_cancelled_dialog_drops_the_names_of_the_one_before) {
    jint dialog = newDialog();
    EXPECT_TRUE(openWith(dialog, {tappingEntry(L"x.txt"), tapping(L"OK")}));
    EXPECT_FALSE(openWith(dialog, {tapping(L"Cancel")}));
    EXPECT_TRUE(namesOf(dialog).empty());
    EXPECT_EQ(record(dialog)->fileName, std::wstring(L"x.txt"));
    dispose(dialog);
}

TEST_F(FileDialogTest, the_name_is_shown_as_it_was_given_and_kept_with_backslashes) {
    jint dialog = newDialog();
    setName(dialog, u"a/b.txt");
    std::wstring shown;
    EXPECT_FALSE(openWith(dialog, {[&](HWND window) {
                              shown = textOf(nameField(window));
                              tapButton(window, L"Cancel");
                          }}));
    EXPECT_EQ(shown, L"a/b.txt");
    EXPECT_EQ(record(dialog)->fileName, std::wstring(L"a\\b.txt"));
    dispose(dialog);
}

TEST_F(FileDialogTest, a_name_that_the_dialog_refuses_is_left_out) {
    jint dialog = newDialog();
    setName(dialog, u"a<b");
    std::wstring shown = L"nothing";
    EXPECT_TRUE(openWith(dialog, {[&](HWND window) {
                                      shown = textOf(nameField(window));
                                      tapEntry(window, L"x.txt");
                                  },
                                  tapping(L"OK")}));
    EXPECT_EQ(shown, L"");
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"x.txt"});
    EXPECT_TRUE(vm.reports.empty());
    dispose(dialog);
}

TEST_F(FileDialogTest, the_owner_has_the_title_while_the_dialog_is_open) {
    jint dialog = newDialog();
    std::vector<std::wstring> captions;
    auto look = [&](HWND window) {
        captions.push_back(textOf(windowOf(shell)));
        EXPECT_FALSE(IsWindowEnabled(windowOf(shell)));
        tapButton(window, L"Cancel");
    };
    openWith(dialog, {look});
    set(OS::FileDialog_SetTitle, dialog, u"Choose");
    openWith(dialog, {look});
    EXPECT_EQ(textOf(windowOf(shell)), L"Owner");
    set(OS::FileDialog_SetTitle, dialog, u"");
    openWith(dialog, {look});
    EXPECT_EQ(captions, (std::vector<std::wstring>{L"Owner", L"Choose", L"Owner"}));
    EXPECT_EQ(textOf(windowOf(shell)), L"Owner");
    dispose(dialog);
}

TEST_F(FileDialogTest, a_caption_of_up_to_100_characters_comes_back) {
    jint dialog = newDialog();
    std::wstring longCaption(130, L'm');
    SetWindowTextW(windowOf(shell), longCaption.c_str());
    openWith(dialog, {tapping(L"Cancel")});
    EXPECT_EQ(textOf(windowOf(shell)), longCaption) << "nothing was changed";
    set(OS::FileDialog_SetTitle, dialog, u"Choose");
    openWith(dialog, {tapping(L"Cancel")});
    EXPECT_EQ(textOf(windowOf(shell)), longCaption.substr(0, 100));
    dispose(dialog);
}

TEST_F(FileDialogTest, opens_on_a_thread_of_its_own_for_another_thread) {
    jint dialog = newDialog();
    set(OS::FileDialog_SetTitle, dialog, u"Choose");
    DWORD caller = 0, owner = 0;
    bool chosen = false;
    std::wstring caption;
    person.steps = {[&](HWND window) {
                        owner = GetWindowThreadProcessId(window, nullptr);
                        caption = textOf(windowOf(shell));
                        tapEntry(window, L"x.txt");
                    },
                    tapping(L"OK")};
    onOtherThread(vm, display, [&] {
        caller = GetCurrentThreadId();
        vm.attachedThreads.insert(caller);
        chosen = openDialog(dialog);
    });
    EXPECT_TRUE(chosen);
    EXPECT_NE(owner, caller);
    EXPECT_NE(owner, GetCurrentThreadId());
    EXPECT_EQ(caption, L"Choose");
    EXPECT_EQ(textOf(windowOf(shell)), L"Owner");
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"x.txt"});
    dispose(dialog);
}

TEST_F(FileDialogTest, threads_of_dialogs_leave_nothing_behind) {
    jint dialog = newDialog();
    auto openAndCancel = [&](int times) {
        onOtherThread(vm, display, [&] {
            vm.attachedThreads.insert(GetCurrentThreadId());
            for (int i = 0; i < times; ++i) {
                person.steps.push_back(tapping(L"Cancel"));
                openDialog(dialog);
            }
        });
        dispatchAll(); // what is painted meanwhile takes objects too
    };
    openAndCancel(1);
    {
        NothingLeft nothingLeft;
        openAndCancel(5);
    }
    dispose(dialog);
}

TEST_F(FileDialogTest, a_thread_that_cannot_be_made_is_an_error) {
    jint dialog = newDialog();
    onOtherThread(vm, display, [&] {
        vm.attachedThreads.insert(GetCurrentThreadId());
        Faults faults;
        faults.fail("CreateThread", 1, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_FALSE(openDialog(dialog));
    });
    expectReport("FileDialog_Open", -4, u"Unable to create thread for file dialog::");
    dispose(dialog);
}

TEST_F(FileDialogTest, a_thread_that_does_not_tell_its_answer_has_chosen_nothing) {
    jint dialog = newDialog();
    person.steps = {typing(L"x.txt\r")};
    onOtherThread(vm, display, [&] {
        vm.attachedThreads.insert(GetCurrentThreadId());
        Faults faults;
        faults.fail("GetExitCodeThread");
        EXPECT_FALSE(openDialog(dialog));
        EXPECT_TRUE(faults.hasFailed());
    });
    EXPECT_TRUE(vm.reports.empty());
    dispose(dialog);
}

TEST_F(FileDialogTest, closed_dialogs_leave_nothing_behind) {
    jint dialog = newDialog(several);
    openWith(dialog, {tapping(L"Cancel")}); // what the system makes once
    NoLeaks noLeaks;
    for (int i = 0; i < 100; ++i) {
        EXPECT_FALSE(openWith(dialog, {tapping(L"Cancel")}));
        EXPECT_TRUE(openWith(dialog, {typing(L"x.txt\r")}));
        if (i % 2) namesOf(dialog);
        setPath(dialog, folder);
    }
    dispatchAll();
    call(OS::FileDialog_GetFileNames, dialog);
    call(OS::FileDialog_SetFileName, dialog, nullptr);
}
