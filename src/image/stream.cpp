#include "image/stream.h"
#include "bridge/memory.h"

static HRESULT STDMETHODCALLTYPE queryInterface(ReadStream*, REFIID, void**) {
    return E_NOINTERFACE;
}

static ULONG STDMETHODCALLTYPE addRef(ReadStream* stream) { return ++stream->refCount; }

static ULONG STDMETHODCALLTYPE release(ReadStream* stream) {
    if (stream->refCount != 1) return --stream->refCount;
    stream->table->destroy(stream, 1);
    return 0;
}

static HRESULT STDMETHODCALLTYPE write(ReadStream*, const void*, ULONG, ULONG*) {
    return E_NOTIMPL;
}

static HRESULT STDMETHODCALLTYPE setSize(ReadStream*, ULARGE_INTEGER) { return E_NOTIMPL; }

static HRESULT STDMETHODCALLTYPE copyTo(ReadStream*, IStream*, ULARGE_INTEGER, ULARGE_INTEGER*,
                                        ULARGE_INTEGER*) {
    return E_NOTIMPL;
}

static HRESULT STDMETHODCALLTYPE commit(ReadStream*, DWORD) { return E_NOTIMPL; }

static HRESULT STDMETHODCALLTYPE revert(ReadStream*) { return E_NOTIMPL; }

static HRESULT STDMETHODCALLTYPE region(ReadStream*, ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return E_NOTIMPL;
}

static HRESULT STDMETHODCALLTYPE stat(ReadStream* stream, STATSTG* out, DWORD) {
    *out = {};
    out->type = STGTY_STREAM;
    out->cbSize.LowPart = stream->table->size(stream);
    return S_OK;
}

static HRESULT STDMETHODCALLTYPE clone(ReadStream*, IStream**) { return E_NOTIMPL; }

static HRESULT resultOfRead(const ReadStream* stream, ULONG count) {
    return count == 0 && stream->failAtEnd ? STG_E_READFAULT : S_OK;
}

static void tellPosition(ULARGE_INTEGER* out, ULONG position) {
    if (!out) return;
    out->LowPart = position;
    out->HighPart = 0;
}

static HRESULT STDMETHODCALLTYPE readMemory(ReadStream* stream, void* buffer, ULONG count,
                                            ULONG* read) {
    auto* memory = static_cast<MemoryStream*>(stream);
    if (!buffer) return STG_E_INVALIDPOINTER;
    ULONG left = memory->length - memory->position;
    ULONG taken = left < count ? left : count;
    if (read) *read = taken;
    memcpy(buffer, memory->bytes + memory->position, taken);
    memory->position += taken;
    return resultOfRead(memory, taken);
}

static HRESULT STDMETHODCALLTYPE seekMemory(ReadStream* stream, LARGE_INTEGER offset, DWORD origin,
                                            ULARGE_INTEGER* position) {
    auto* memory = static_cast<MemoryStream*>(stream);
    ULONG wanted = offset.LowPart;
    switch (origin) {
    case STREAM_SEEK_SET:
        break;
    case STREAM_SEEK_CUR:
        wanted += memory->position;
        break;
    case STREAM_SEEK_END:
        // Quirk: an offset from the end counts backwards, so that a negative one lies outside.
        // Pinned by StreamTest.memory_is_sought_within_its_size.
        wanted = memory->length - wanted;
        break;
    default:
        return E_NOTIMPL;
    }
    if (wanted > memory->length) return STG_E_INVALIDFUNCTION;
    memory->position = wanted;
    tellPosition(position, wanted);
    return S_OK;
}

static void STDMETHODCALLTYPE destroyMemory(ReadStream* stream, UINT flags) {
    auto* memory = static_cast<MemoryStream*>(stream);
    memory->bytes = nullptr;
    memory->length = 0;
    memory->position = 0;
    if (flags & 1) freeBlock(memory);
}

static ULONG STDMETHODCALLTYPE sizeOfMemory(ReadStream* stream) {
    return static_cast<MemoryStream*>(stream)->length;
}

static HRESULT STDMETHODCALLTYPE readFile(ReadStream* stream, void* buffer, ULONG count,
                                          ULONG* read) {
    DWORD taken = 0;
    BOOL succeeded =
        ReadFile(static_cast<FileStream*>(stream)->file, buffer, count, &taken, nullptr);
    if (read) *read = taken;
    // Quirk: a file that cannot be read tells its decoder of no error. Pinned by
    // StreamTest.file_that_cannot_be_read_says_so_without_an_error_code.
    if (!succeeded) return S_FALSE;
    return resultOfRead(stream, taken);
}

static HRESULT STDMETHODCALLTYPE seekFile(ReadStream* stream, LARGE_INTEGER offset, DWORD origin,
                                          ULARGE_INTEGER* position) {
    static_assert(STREAM_SEEK_SET == FILE_BEGIN && STREAM_SEEK_CUR == FILE_CURRENT &&
                  STREAM_SEEK_END == FILE_END);
    auto* file = static_cast<FileStream*>(stream);
    if (origin > STREAM_SEEK_END) return E_NOTIMPL;
    DWORD reached = SetFilePointer(file->file, static_cast<LONG>(offset.LowPart), nullptr, origin);
    // Quirk: the end of a file cannot be sought, although that of memory can. Pinned by
    // StreamTest.file_is_sought_before_its_end.
    if (reached >= file->length) return STG_E_INVALIDFUNCTION;
    tellPosition(position, reached);
    return S_OK;
}

static void STDMETHODCALLTYPE destroyFile(ReadStream* stream, UINT flags) {
    CloseHandle(static_cast<FileStream*>(stream)->file);
    if (flags & 1) freeBlock(stream);
}

static ULONG STDMETHODCALLTYPE sizeOfFile(ReadStream* stream) {
    return static_cast<FileStream*>(stream)->length;
}

static constexpr ReadStreamTable memoryTable = {
    queryInterface, addRef, release, readMemory, write, seekMemory, setSize,       copyTo,
    commit,         revert, region,  region,     stat,  clone,      destroyMemory, sizeOfMemory,
};
static constexpr ReadStreamTable fileTable = {
    queryInterface, addRef, release, readFile, write, seekFile, setSize,     copyTo,
    commit,         revert, region,  region,   stat,  clone,    destroyFile, sizeOfFile,
};

// The first reference is the creator's.
template <class Stream>
static Stream* create(const ReadStreamTable& table) {
    auto* stream = allocate<Stream>();
    if (!stream) return nullptr;
    stream->table = &table;
    stream->failAtEnd = TRUE;
    addRef(stream);
    return stream;
}

// The table has the slots of IStream in front.
static IStream* asStream(ReadStream* stream) { return reinterpret_cast<IStream*>(stream); }

IStream* createMemoryStream(const void* bytes, ULONG length) {
    auto* memory = create<MemoryStream>(memoryTable);
    if (!memory) return nullptr;
    memory->bytes = static_cast<const BYTE*>(bytes);
    memory->length = length;
    return asStream(memory);
}

IStream* createFileStream(const wchar_t* path) {
    HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return nullptr;
    auto* stream = create<FileStream>(fileTable);
    if (!stream) {
        CloseHandle(file);
        return nullptr;
    }
    stream->file = file;
    stream->length = GetFileSize(file, nullptr);
    return asStream(stream);
}
