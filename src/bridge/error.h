#pragma once
// How an operation reports a failure: it fills the error record that its caller passed as the
// last argument. Any thread; a record belongs to one call, of which the last error is the one that
// is told.

#include "bridge/java_numbers.h"
#include "bridge/layout.h"
#include "ce.h"
#include <jni.h>

struct ErrorRecord {
    LONG code;              // an ErrorCode; 0: no error
    const wchar_t* message; // NUL-terminated, or null
    BOOL ownsMessage;       // the message is a heap block that WYX_ErrorHandler frees
};
ASSERT_OFFSET(ErrorRecord, code, 0)
ASSERT_OFFSET(ErrorRecord, message, 4)
ASSERT_OFFSET(ErrorRecord, ownsMessage, 8)

// No error yet. Without one nobody reads the message: every native call runs this.
inline void Error_Init(ErrorRecord* record) {
    record->code = 0;
    record->ownsMessage = FALSE;
}

// Stores the three fields and returns the record; a null record is left alone. A message that the
// record owned before is freed: nobody else needs to.
ErrorRecord* Error_Set(ErrorRecord* record, LONG code, const wchar_t* message, BOOL ownsMessage);

// Error_Set without a message.
ErrorRecord* Error_SetCode(ErrorRecord* record, LONG code);

// Leaves no error, for an operation whose failure is not to be told.
void Error_Clear(ErrorRecord* record);

// Win32Error_SetError with the code of the calling thread's last failure in the system.
void Win32Error_SetLast(ErrorRecord* record, const wchar_t* message);

extern "C" {

// A negative code is an ErrorCode and is stored with the message as it is. Any other is a system
// error code: the message becomes "message::text of the system", and the code errorOutOfMemory
// for the system's two out-of-memory codes, errorFailed for the rest. The message is static. The
// error takes the place of an earlier one.
void Win32Error_SetError(ErrorRecord* record, LONG code, const wchar_t* message);

// The record's code; 0 for a null record.
LONG WYX_GetError(const ErrorRecord* record);

// Hands the error to the Java error handler under the native's Java name, and frees a message
// that the record owns. Fatal to the VM when no handler is set; every other failure on the way, and
// an exception that was pending before, drops the report and is left to Java.
void WYX_ErrorHandler(JNIEnv* env, const char* functionName, ErrorRecord* record);
}
