#include "emulator.h"

static LONG answerWaits;
static DWORD answer;

extern "C" {

void WINAPI Emulator_AnswerNextGesture(DWORD gesture) {
    answer = gesture;
    InterlockedExchange(&answerWaits, TRUE);
}

BOOL WINAPI Emulator_TakeGestureAnswer(DWORD* gesture) {
    if (!InterlockedExchange(&answerWaits, FALSE)) return FALSE;
    *gesture = answer;
    return TRUE;
}
}
