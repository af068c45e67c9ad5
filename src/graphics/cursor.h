#pragma once
// The system's cursors. Any thread.

#include "bridge/error.h"
#include "bridge/handles.h"
#include "ce.h"

struct DeviceRecord;

// A cursor by the number under which Java knows it; null for a number without one. Owned by the
// system. Only a hand that cannot be had is an error.
HCURSOR Cursor_New(OrNone<DeviceRecord> device, jint type, ErrorRecord* error);

// Does nothing: the cursors are the system's.
void Cursor_Dispose(HCURSOR cursor, ErrorRecord* error);
