#pragma once
// Virtual keys and the key codes that Java knows.

#include "ce.h"
#include <jni.h>

// 0 for a key that has no code.
jint Key_ToJava(DWORD virtualKey);

// The virtual key of a Java key code; a code without a key is taken as a character and
// upper-cased.
DWORD Key_FromJava(jint keyCode);

// '0' to '9' and the operators of the number pad; 0 for every other key.
wchar_t Key_GetNumpadCharacter(DWORD virtualKey);

// Whether the key is held, as the messages read so far have it.
bool Key_IsDown(int virtualKey);

// The character in upper case, as the system has it.
wchar_t Key_ToUpper(wchar_t character);
