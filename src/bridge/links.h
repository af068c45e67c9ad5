#pragma once
// Singly linked lists, whose records hold the link to the next one themselves. Under the lock of
// the list.

#include "ce.h"

// linkOffset: where the records hold the link, in bytes from their beginning.
void takeOutByOffset(void** list, const void* record, UINT linkOffset);

// Takes the record out of the list, if it is in it. The record's own link stays as it is.
template <auto next, class Record>
void takeOut(Record** list, const Record* record) {
    auto* link = reinterpret_cast<const BYTE*>(&(record->*next));
    takeOutByOffset(reinterpret_cast<void**>(list), record,
                    link - reinterpret_cast<const BYTE*>(record));
}
