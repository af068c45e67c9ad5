// The device takes a structure that tells its size only when it is of the device's own.

#include "recorder.h"
#include <commctrl.h>
#include <commdlg.h>
#include <functional>

static void CALLBACK cancelDialog(HWND, UINT, UINT_PTR, DWORD) {
    HWND dialog = FindWindowW(reinterpret_cast<LPCWSTR>(WC_DIALOG), nullptr);
    if (dialog && IsWindowVisible(dialog)) PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

class ExactSizesTest : public RecorderTest {
  protected:
    // Whether the size is taken. The structure lies in a buffer with room behind it.
    using Taker = std::function<bool(UINT size)>;

    static void expectTakenOnly(UINT right, const Taker& isTaken) {
        EXPECT_TRUE(isTaken(right));
        for (UINT wrong : {right - 4, right - 1, right + 1, right + 4, 0u, 1000u})
            EXPECT_FALSE(isTaken(wrong)) << wrong;
    }

    HWND newControl(const wchar_t* className, DWORD style) {
        return CreateWindowExW(0, className, nullptr, WS_CHILD | WS_VISIBLE | style, 20, 20, 100,
                               100, window, nullptr, nullptr, nullptr);
    }

    template <class Structure>
    struct Roomy {
        Structure value = {};
        BYTE behind[1000] = {};
    };

    HWND window = newShownWindow({0, 0, 240, 294});
};

TEST_F(ExactSizesTest, of_a_file_dialogs_request) {
    constexpr UINT deviceSize = 76;
    wchar_t name[100] = L"";
    for (auto* ask : {GetOpenFileNameW, GetSaveFileNameW})
        expectTakenOnly(deviceSize, [&](UINT size) {
            Roomy<OPENFILENAMEW> request;
            request.value.lStructSize = size;
            request.value.lpstrFile = name;
            request.value.nMaxFile = 100;
            UINT_PTR timer = SetTimer(nullptr, 0, 10, cancelDialog);
            SetLastError(ERROR_SUCCESS);
            EXPECT_FALSE(ask(&request.value));
            DWORD error = GetLastError();
            KillTimer(nullptr, timer);
            return error != ERROR_INVALID_PARAMETER;
        });
}

TEST_F(ExactSizesTest, of_a_waveform_header) {
    WAVEFORMATEX format = {WAVE_FORMAT_PCM, 1, 8000, 8000, 1, 8, 0};
    HWAVEOUT output;
    ASSERT_EQ(waveOutOpen(&output, WAVE_MAPPER, &format, 0, 0, CALLBACK_NULL), MMSYSERR_NOERROR);
    char silence[10] = {};
    Roomy<WAVEHDR> header;
    header.value.lpData = silence;
    expectTakenOnly(32, [&](UINT size) {
        return waveOutPrepareHeader(output, &header.value, size) == MMSYSERR_NOERROR;
    });
    expectTakenOnly(32, [&](UINT size) {
        header.value.dwFlags = WHDR_PREPARED;
        MMRESULT written = waveOutWrite(output, &header.value, size);
        waveOutReset(output);
        return written == MMSYSERR_NOERROR;
    });
    expectTakenOnly(32, [&](UINT size) {
        return waveOutUnprepareHeader(output, &header.value, size) == MMSYSERR_NOERROR;
    });
    waveOutClose(output);
}

TEST_F(ExactSizesTest, of_a_menu_bars_button) {
    SHMENUBARINFO info = {};
    info.cbSize = sizeof(info);
    info.hwndParent = window;
    info.dwFlags = SHCMBF_EMPTYBAR;
    info.nToolBarId = 100;
    info.hInstRes = GetModuleHandleW(nullptr); // has the tool bar that is named
    ASSERT_TRUE(SHCreateMenuBar(&info));
    TBBUTTON button = {};
    button.iBitmap = I_IMAGENONE;
    button.idCommand = 108;
    SendMessageW(info.hwndMB, TB_INSERTBUTTONW, 0, reinterpret_cast<LPARAM>(&button));
    for (UINT message : {TB_GETBUTTONINFOW, TB_SETBUTTONINFOW})
        expectTakenOnly(32, [&](UINT size) {
            Roomy<TBBUTTONINFOW> description;
            description.value.cbSize = size;
            description.value.dwMask = TBIF_STATE;
            LRESULT result = SendMessageW(info.hwndMB, message, 108,
                                          reinterpret_cast<LPARAM>(&description.value));
            return message == TB_SETBUTTONINFOW ? result != 0 : result != -1;
        });
}

TEST_F(ExactSizesTest, of_a_combo_boxs_parts) {
    constexpr UINT getParts = 0x162;
    HWND combo = newControl(L"COMBOBOX", CBS_DROPDOWNLIST);
    expectTakenOnly(52, [&](UINT size) {
        Roomy<COMBOBOXINFO> parts;
        parts.value.cbSize = size;
        return SendMessageW(combo, getParts, 0, reinterpret_cast<LPARAM>(&parts.value)) != 0;
    });
}

TEST_F(ExactSizesTest, of_a_scroll_bars_values) {
    HWND bar = newControl(L"SCROLLBAR", SBS_VERT);
    expectTakenOnly(28, [&](UINT size) {
        Roomy<SCROLLINFO> values;
        values.value.cbSize = size;
        values.value.fMask = SIF_ALL;
        return GetScrollInfo(bar, SB_CTL, &values.value) != 0;
    });
    int position = 0;
    expectTakenOnly(28, [&](UINT size) {
        Roomy<SCROLLINFO> values;
        values.value.cbSize = size;
        values.value.fMask = SIF_RANGE | SIF_POS;
        values.value.nMax = 100;
        values.value.nPos = ++position;
        SetScrollInfo(bar, SB_CTL, &values.value, FALSE);
        return SendMessageW(bar, SBM_GETPOS, 0, 0) == position;
    });
}

TEST_F(ExactSizesTest, of_an_input) {
    expectTakenOnly(28, [](UINT size) {
        Roomy<INPUT> input;
        input.value.type = INPUT_KEYBOARD;
        input.value.ki.wVk = VK_SHIFT;
        input.value.ki.dwFlags = KEYEVENTF_KEYUP;
        SetLastError(ERROR_SUCCESS);
        bool taken = SendInput(1, &input.value, static_cast<int>(size)) == 1;
        EXPECT_EQ(GetLastError(), taken ? ERROR_SUCCESS : DWORD(ERROR_INVALID_PARAMETER));
        return taken;
    });
}
