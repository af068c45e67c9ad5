#include "bridge/links.h"

static void** linkOf(const void* record, UINT linkOffset) {
    return reinterpret_cast<void**>(const_cast<BYTE*>(static_cast<const BYTE*>(record)) +
                                    linkOffset);
}

void takeOutByOffset(void** list, const void* record, UINT linkOffset) {
    void** link = list;
    while (*link && *link != record) link = linkOf(*link, linkOffset);
    if (*link) *link = *linkOf(record, linkOffset);
}
