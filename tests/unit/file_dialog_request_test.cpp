#include "faults.h"
#include "file_dialog_fixture.h"
#include "leaks.h"
#include <commdlg.h>

// What the system's dialog is asked, and what it answers without a person.
static struct {
    int calls;
    bool saves;
    OPENFILENAMEW request;
    std::wstring file, folder;
    std::wstring answer; // into the file buffer
    WORD fileOffset;
    std::vector<DWORD> failures; // last errors of the first calls
} asked;

// As when it is cancelled.
static constexpr DWORD lastErrorStays = 0xFFFFFFFF;

static BOOL answerRequest(OPENFILENAMEW* request, bool saves) {
    asked.saves = saves;
    asked.request = *request;
    asked.file = request->lpstrFile;
    asked.folder = request->lpstrInitialDir;
    size_t call = asked.calls++;
    if (call < asked.failures.size()) {
        if (asked.failures[call] != lastErrorStays) SetLastError(asked.failures[call]);
        return FALSE;
    }
    memcpy(request->lpstrFile, asked.answer.data(), asked.answer.size() * sizeof(wchar_t));
    request->nFileOffset = asked.fileOffset;
    return TRUE;
}
static BOOL WINAPI answerOpen(OPENFILENAMEW* request) { return answerRequest(request, false); }
static BOOL WINAPI answerSave(OPENFILENAMEW* request) { return answerRequest(request, true); }

class SystemDialogTest : public FileDialogTest {
  protected:
    static void answerWith(const std::wstring& answer, WORD fileOffset,
                           std::vector<DWORD> failures = {}) {
        asked = {};
        asked.answer = answer;
        asked.fileOffset = fileOffset;
        asked.failures = std::move(failures);
    }
    static void replaceSystem(Faults& faults) {
        faults.replace("GetOpenFileNameW", reinterpret_cast<void*>(answerOpen));
        faults.replace("GetSaveFileNameW", reinterpret_cast<void*>(answerSave));
    }
    bool openAnswered(jint dialog) {
        Faults faults;
        replaceSystem(faults);
        return openDialog(dialog);
    }
};

TEST_F(SystemDialogTest, is_asked_as_the_style_says) {
    const struct {
        jint style;
        bool saves;
        DWORD flags, capacity;
    } rows[] = {{plain, false, 0x4, 260},
                {save, true, 0x4, 260},
                {several, false, 0x80004, 32768},
                {save | several, true, 0x80004, 32768}};
    for (const auto& row : rows) {
        jint dialog = newDialog(row.style);
        setName(dialog, u"name");
        answerWith(L"", 0, {0});
        EXPECT_FALSE(openAnswered(dialog));
        const OPENFILENAMEW& request = asked.request;
        EXPECT_EQ(asked.calls, 1);
        EXPECT_EQ(asked.saves, row.saves);
        EXPECT_EQ(request.lStructSize, 76u);
        EXPECT_EQ(request.hwndOwner, windowOf(shell));
        EXPECT_EQ(std::wstring(request.lpstrFilter, 9), std::wstring(L"*.*\0*.*\0", 9));
        EXPECT_EQ(request.nFilterIndex, 0u);
        EXPECT_EQ(request.nMaxFile, row.capacity);
        EXPECT_EQ(request.Flags, row.flags);
        EXPECT_EQ(request.lpstrTitle, nullptr);
        EXPECT_EQ(request.lpstrDefExt != nullptr, row.saves);
        if (row.saves) {
            EXPECT_STREQ(request.lpstrDefExt, L"");
        }
        EXPECT_EQ(asked.file, L"name");
        EXPECT_EQ(asked.folder, L"\\My Documents\\dialog test");
        dispose(dialog);
    }
}

TEST_F(SystemDialogTest, is_asked_with_empty_texts_when_none_are_set) {
    jint dialog = call(OS::FileDialog_New, shell, 0);
    answerWith(L"", 0, {0});
    asked.file = asked.folder = L"not asked";
    EXPECT_FALSE(openAnswered(dialog));
    EXPECT_EQ(asked.file, L"");
    EXPECT_EQ(asked.folder, L"");
    dispose(dialog);
}

TEST_F(SystemDialogTest, texts_beyond_what_it_takes_are_cut) {
    for (const char16_t* title : {u"", u"title"}) {
        jint dialog = newDialog(plain, std::u16string(1000, u'p'));
        set(OS::FileDialog_SetTitle, dialog, title);
        setName(dialog, std::u16string(1000, u'n'));
        answerWith(L"", 0, {0});
        EXPECT_FALSE(openAnswered(dialog));
        EXPECT_EQ(asked.file, std::wstring(260, L'n'));
        EXPECT_EQ(asked.folder, std::wstring(260, L'p')) << "whatever the owner's caption is";
        dispose(dialog);
    }
}

TEST_F(SystemDialogTest, is_asked_once_more_without_the_name_after_an_invalid_parameter) {
    jint dialog = newDialog();
    setName(dialog, u"name");
    answerWith(L"\\f\\x", 3, {ERROR_INVALID_PARAMETER});
    EXPECT_TRUE(openAnswered(dialog));
    EXPECT_EQ(asked.calls, 2);
    EXPECT_EQ(asked.file, L"");
    EXPECT_EQ(asked.request.nMaxFile, 260u);
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"x"});
    EXPECT_EQ(pathOf(dialog), u"\\f\\");
    dispose(dialog);
}

TEST_F(SystemDialogTest, a_failure_chooses_nothing_and_reports_nothing) {
    jint dialog = newDialog();
    answerWith(L"\\f\\x", 3, {ERROR_INVALID_PARAMETER, ERROR_INVALID_PARAMETER});
    EXPECT_FALSE(openAnswered(dialog));
    EXPECT_EQ(asked.calls, 2) << "once more only";
    answerWith(L"\\f\\x", 3, {ERROR_NOT_ENOUGH_MEMORY});
    EXPECT_FALSE(openAnswered(dialog));
    EXPECT_EQ(asked.calls, 1);
    EXPECT_TRUE(namesOf(dialog).empty());
    EXPECT_EQ(pathOf(dialog), folder);
    EXPECT_TRUE(vm.reports.empty());
    dispose(dialog);
}

static int WINAPI failToReadCaption(HWND, LPWSTR, int) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
}

TEST_F(SystemDialogTest, an_error_from_before_does_not_ask_again_after_a_cancellation) {
    jint dialog = newDialog();
    set(OS::FileDialog_SetTitle, dialog, u"title");
    answerWith(L"\\f\\x", 3, {lastErrorStays});
    Faults faults;
    replaceSystem(faults);
    faults.replace("GetWindowTextW", reinterpret_cast<void*>(failToReadCaption));
    EXPECT_FALSE(openDialog(dialog));
    EXPECT_EQ(asked.calls, 1);
    dispose(dialog);
}

TEST_F(SystemDialogTest, without_an_offset_the_low_bytes_tell_the_folder) {
    const struct {
        std::wstring answer;
        std::u16string path;
        std::vector<std::u16string> names;
    } rows[] = {
        {L"\\f\\g\\x.txt", u"\\f\\g\\", {u"x.txt"}},
        {L"\\f\x015Cx.txt", u"\\f\x015C", {u"x.txt"}},
        {L"\\f\x0100g\\x.txt", u"\\", {u"f\x0100g\\x.txt"}},
        {L"\\f\\", u"\\f\\", {u""}},
    };
    for (const auto& row : rows) {
        jint dialog = newDialog();
        answerWith(row.answer, 0);
        EXPECT_TRUE(openAnswered(dialog));
        EXPECT_EQ(pathOf(dialog), row.path);
        EXPECT_EQ(namesOf(dialog), row.names);
        dispose(dialog);
    }
}

TEST_F(SystemDialogTest, a_name_without_folder_is_chosen_without_names) {
    jint dialog = newDialog();
    setName(dialog, u"before");
    answerWith(L"x.txt", 0);
    EXPECT_TRUE(openAnswered(dialog));
    EXPECT_EQ(pathOf(dialog), u"");
    EXPECT_TRUE(namesOf(dialog).empty());
    EXPECT_EQ(record(dialog)->fileName, std::wstring(L"before"));
    dispose(dialog);
}

TEST_F(SystemDialogTest, names_are_read_up_to_two_nuls) {
    const std::wstring answer(L"\\f\0a\0b b\0c.txt\0\0z\0", 18);
    jint many = newDialog(several);
    answerWith(answer, 3);
    EXPECT_TRUE(openAnswered(many));
    EXPECT_EQ(pathOf(many), u"\\f");
    EXPECT_EQ(namesOf(many), (std::vector<std::u16string>{u"a", u"b b", u"c.txt"}));
    jint single = newDialog();
    answerWith(answer, 3);
    EXPECT_TRUE(openAnswered(single));
    EXPECT_EQ(namesOf(single), std::vector<std::u16string>{u"a"});
    dispose(many);
    dispose(single);
}

TEST_F(SystemDialogTest, names_are_read_up_to_the_capacity) {
    jint dialog = newDialog(several);
    std::wstring answer(L"\\f\0", 3);
    size_t count = 0;
    for (; answer.size() + 4 <= 32768; ++count) answer += std::wstring(L"nam\0", 4);
    answer.resize(32768, L'm');
    answerWith(answer, 3);
    EXPECT_TRUE(openAnswered(dialog));
    std::vector<std::u16string> names = namesOf(dialog);
    ASSERT_EQ(names.size(), count + 1);
    EXPECT_EQ(names[count - 1], u"nam");
    EXPECT_EQ(names.back(), std::u16string(32768 - 3 - 4 * count, u'm'));
    jint single = newDialog();
    answerWith(L"\\" + std::wstring(259, L'm'), 1);
    EXPECT_TRUE(openAnswered(single));
    EXPECT_EQ(namesOf(single), std::vector<std::u16string>{std::u16string(259, u'm')});
    dispose(dialog);
    dispose(single);
}

TEST_F(SystemDialogTest, an_offset_beyond_the_buffer_reads_no_further) {
    jint dialog = newDialog();
    answerWith(L"\\f\\x", 5000);
    EXPECT_TRUE(openAnswered(dialog));
    EXPECT_EQ(pathOf(dialog), u"\\f\\x");
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u""});
    dispose(dialog);
}

TEST_F(SystemDialogTest, names_are_handed_over_once) {
    jint dialog = newDialog();
    answerWith(L"\\f\\x", 3);
    EXPECT_TRUE(openAnswered(dialog));
    EXPECT_EQ(namesOf(dialog).size(), 1u);
    EXPECT_EQ(record(dialog)->fileNames, nullptr);
    EXPECT_TRUE(namesOf(dialog).empty());
    EXPECT_TRUE(openAnswered(dialog));
    dispose(dialog);
}

TEST_F(SystemDialogTest, names_that_java_cannot_take_are_not_leaked) {
    jint dialog = newDialog();
    answerWith(L"\\f\\x", 3);
    EXPECT_TRUE(openAnswered(dialog));
    long blocks = countHeapBlocks();
    vm.failCall("NewObjectArray");
    EXPECT_EQ(call(OS::FileDialog_GetFileNames, dialog), nullptr);
    vm.clearException();
    EXPECT_EQ(countHeapBlocks(), blocks - 2) << "the list and its name";
    dispose(dialog);
}

TEST_F(SystemDialogTest, without_memory_an_error_is_reported_and_the_record_stays) {
    jint dialog = newDialog(several);
    setName(dialog, u"before");
    const std::wstring answer(L"\\f\0a\0b\0\0", 8);
    NoLeaks noLeaks;
    constexpr int allocations = 6; // the showing, folder, list, two names, the first name
    for (int nth = 1; nth <= allocations; ++nth) {
        Faults faults;
        replaceSystem(faults);
        faults.fail("LocalAlloc", nth);
        answerWith(answer, 3);
        EXPECT_FALSE(call(OS::FileDialog_Open, dialog));
        expectReport("FileDialog_Open", -4, u"Not enough memory to allocate file dialog");
        EXPECT_EQ(pathOf(dialog), folder);
        EXPECT_EQ(record(dialog)->fileName, std::wstring(L"before"));
        EXPECT_TRUE(namesOf(dialog).empty());
    }
    Faults faults;
    replaceSystem(faults);
    faults.fail("LocalAlloc", allocations + 1);
    EXPECT_TRUE(openDialog(dialog));
    namesOf(dialog);
}

TEST_F(SystemDialogTest, dialogs_leave_nothing_behind) {
    NoLeaks noLeaks;
    Faults faults;
    replaceSystem(faults);
    const std::wstring answer(L"\\f\0a\0b\0\0", 8);
    for (int i = 0; i < leakRounds(); ++i) {
        jint dialog = newDialog(i % 2 ? several : save);
        set(OS::FileDialog_SetTitle, dialog, u"title");
        setName(dialog, u"a/b");
        answerWith(answer, 3);
        EXPECT_TRUE(openDialog(dialog));
        if (i % 3 == 0) {
            EXPECT_TRUE(openDialog(dialog));
        }
        if (i % 5 == 0) namesOf(dialog);
        dispose(dialog);
    }
}
