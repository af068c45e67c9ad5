#pragma once
// The streams that decoders read from: over memory and over a file, for reading only. A stream is
// used by one thread at a time.
// Quirk: a stream that is asked for any interface, its own too, says that it has none. Pinned by
// StreamTest.offers_nothing_else.
// Quirk: a read at the end is a fault and not an empty success. Pinned by
// StreamTest.read_to_the_end_which_is_a_fault.

#include "bridge/layout.h"
#include "imaging.h"

struct ReadStream;

// The slots of IStream and, behind them, two of the stream's own.
struct ReadStreamTable {
    HRESULT(STDMETHODCALLTYPE* queryInterface)(ReadStream* stream, REFIID id, void** out);
    ULONG(STDMETHODCALLTYPE* addRef)(ReadStream* stream);
    ULONG(STDMETHODCALLTYPE* release)(ReadStream* stream);
    HRESULT(STDMETHODCALLTYPE* read)(ReadStream* stream, void* buffer, ULONG count, ULONG* read);
    HRESULT(STDMETHODCALLTYPE* write)
    (ReadStream* stream, const void* data, ULONG count, ULONG* written);
    HRESULT(STDMETHODCALLTYPE* seek)
    (ReadStream* stream, LARGE_INTEGER offset, DWORD origin, ULARGE_INTEGER* position);
    HRESULT(STDMETHODCALLTYPE* setSize)(ReadStream* stream, ULARGE_INTEGER size);
    HRESULT(STDMETHODCALLTYPE* copyTo)
    (ReadStream* stream, IStream* other, ULARGE_INTEGER count, ULARGE_INTEGER* read,
     ULARGE_INTEGER* written);
    HRESULT(STDMETHODCALLTYPE* commit)(ReadStream* stream, DWORD flags);
    HRESULT(STDMETHODCALLTYPE* revert)(ReadStream* stream);
    HRESULT(STDMETHODCALLTYPE* lockRegion)
    (ReadStream* stream, ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type);
    HRESULT(STDMETHODCALLTYPE* unlockRegion)
    (ReadStream* stream, ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type);
    HRESULT(STDMETHODCALLTYPE* stat)(ReadStream* stream, STATSTG* out, DWORD flags);
    HRESULT(STDMETHODCALLTYPE* clone)(ReadStream* stream, IStream** out);
    void(STDMETHODCALLTYPE* destroy)(ReadStream* stream, UINT flags); // 1: frees the object too
    ULONG(STDMETHODCALLTYPE* size)(ReadStream* stream);               // bytes
};
ASSERT_OFFSET(ReadStreamTable, read, 12)
ASSERT_OFFSET(ReadStreamTable, stat, 48)
ASSERT_OFFSET(ReadStreamTable, destroy, 56)
ASSERT_OFFSET(ReadStreamTable, size, 60)

struct ReadStream {
    const ReadStreamTable* table;
    ULONG refCount;
    BOOL failAtEnd; // a read of 0 bytes is a fault
};

struct FileStream : ReadStream {
    HANDLE file; // owned
    ULONG length;
};
ASSERT_OFFSET(FileStream, file, 12)
ASSERT_OFFSET(FileStream, length, 16)

struct MemoryStream : ReadStream {
    const BYTE* bytes; // not owned; outlive the stream
    ULONG length;
    ULONG position; // of the next read
};
ASSERT_OFFSET(MemoryStream, bytes, 12)
ASSERT_OFFSET(MemoryStream, length, 16)
ASSERT_OFFSET(MemoryStream, position, 20)

// A stream with one reference, the caller's. Null when there is no memory or no such file.
IStream* createMemoryStream(const void* bytes, ULONG length);
IStream* createFileStream(const wchar_t* path);
