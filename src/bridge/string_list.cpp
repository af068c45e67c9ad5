#include "bridge/string_list.h"
#include "bridge/memory.h"

int stringListCount(const wchar_t* const* list) {
    int count = 0;
    while (list && list[count]) ++count;
    return count;
}

const wchar_t* stringListGet(const wchar_t* const* list, int index, BYTE* mustFreeOut) {
    *mustFreeOut = 0;
    return list ? list[index] : nullptr;
}

void stringListFree(wchar_t** list) {
    for (int i = 0; list && list[i]; ++i) freeBlock(list[i]);
    freeBlock(list);
}
