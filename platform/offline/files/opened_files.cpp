// Reading and writing files that are open, and their times.
#include "platform/offline/files/api.h"
#include "platform/offline/machine.h"

using namespace bromvale::offline;

namespace {

// Null and the last error where a fault is due for the operation, or the handle is none of an open file.
KernelObject* fileFor(std::string_view operation, HANDLE handle) {
    if (failsHere(operation)) return nullptr;
    KernelObject* object = machine().kernelObjects.find(handle);
    if (object != nullptr && object->file != nullptr) return object;
    return failed<KernelObject*>(ERROR_INVALID_HANDLE, nullptr);
}

}  // namespace

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED) {
    if (read != nullptr) *read = 0;
    KernelObject* const object = fileFor("ReadFile", file);
    if (object == nullptr) return FALSE;
    if ((object->access & kReading) == 0) return failed(ERROR_ACCESS_DENIED);
    DWORD done = 0;
    if (const DWORD error = object->file->read(object->position, buffer, size, done)) return failed(error);
    object->position += done;
    if (read != nullptr) *read = done;
    return TRUE;
}

BOOL WriteFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED) {
    if (written != nullptr) *written = 0;
    KernelObject* const object = fileFor("WriteFile", file);
    if (object == nullptr) return FALSE;
    if ((object->access & kWriting) == 0) return failed(ERROR_ACCESS_DENIED);
    if (const DWORD error = object->file->write(object->position, bytes, size)) return failed(error);
    object->position += size;
    if (written != nullptr) *written = size;
    machine().events.record(
        {EventKind::FileWritten, object->toldPath, {static_cast<const char*>(bytes), size}, size, 0});
    return TRUE;
}

DWORD SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh, DWORD method) {
    KernelObject* const object = fileFor("SetFilePointer", file);
    if (object == nullptr) return INVALID_SET_FILE_POINTER;
    std::int64_t way = distance;
    if (distanceHigh != nullptr)
        way = std::int64_t{*distanceHigh} * 0x100000000 + static_cast<DWORD>(distance);
    std::int64_t target = way;
    if (method == FILE_CURRENT) target += static_cast<std::int64_t>(object->position);
    if (method == FILE_END) target += static_cast<std::int64_t>(object->file->size());
    if (target < 0) return failed(ERROR_NEGATIVE_SEEK, INVALID_SET_FILE_POINTER);
    object->position = static_cast<std::uint64_t>(target);
    if (distanceHigh != nullptr) *distanceHigh = static_cast<LONG>(object->position >> 32);
    SetLastError(ERROR_SUCCESS);
    return static_cast<DWORD>(object->position);
}

DWORD GetFileSize(HANDLE file, LPDWORD high) {
    KernelObject* const object = fileFor("GetFileSize", file);
    if (object == nullptr) return INVALID_FILE_SIZE;
    const std::uint64_t size = object->file->size();
    if (high != nullptr) *high = static_cast<DWORD>(size >> 32);
    SetLastError(ERROR_SUCCESS);
    return static_cast<DWORD>(size);
}

BOOL SetEndOfFile(HANDLE file) {
    KernelObject* const object = fileFor("SetEndOfFile", file);
    if (object == nullptr) return FALSE;
    if (const DWORD error = object->file->truncate(object->position)) return failed(error);
    return TRUE;
}

BOOL CloseHandle(HANDLE handle) {
    if (failsHere("CloseHandle")) return FALSE;
    if (handle == INVALID_HANDLE_VALUE) return TRUE;  // the pseudo handle of the process
    return machine().kernelObjects.close(handle) ? TRUE : failed(ERROR_INVALID_HANDLE);
}

BOOL GetFileTime(HANDLE file, LPFILETIME creation, LPFILETIME lastAccess, LPFILETIME lastWrite) {
    KernelObject* const object = fileFor("GetFileTime", file);
    if (object == nullptr) return FALSE;
    const FILETIME time = toFileTime(object->file->written());
    for (LPFILETIME wanted : {creation, lastAccess, lastWrite}) {
        if (wanted != nullptr) *wanted = time;
    }
    return TRUE;
}

BOOL SetFileTime(HANDLE file, const FILETIME*, const FILETIME*, const FILETIME* lastWrite) {
    KernelObject* const object = fileFor("SetFileTime", file);
    if (object == nullptr) return FALSE;
    if (lastWrite != nullptr) object->file->setWritten(fromFileTime(*lastWrite));
    return TRUE;
}

BOOL FileTimeToLocalFileTime(const FILETIME* time, LPFILETIME local) {
    if (failsHere("FileTimeToLocalFileTime")) return FALSE;
    *local = toFileTime(fromFileTime(*time) - machine().clock.bias);
    return TRUE;
}

BOOL LocalFileTimeToFileTime(const FILETIME* local, LPFILETIME time) {
    if (failsHere("LocalFileTimeToFileTime")) return FALSE;
    *time = toFileTime(fromFileTime(*local) + machine().clock.bias);
    return TRUE;
}

BOOL FileTimeToSystemTime(const FILETIME* time, LPSYSTEMTIME system) {
    if (failsHere("FileTimeToSystemTime")) return FALSE;
    if ((time->dwHighDateTime & 0x80000000u) != 0) return failed(ERROR_INVALID_PARAMETER);
    *system = toSystemTime(fromFileTime(*time));
    return TRUE;
}

BOOL SystemTimeToFileTime(const SYSTEMTIME* system, LPFILETIME time) {
    if (failsHere("SystemTimeToFileTime")) return FALSE;
    if (!isValid(*system)) return failed(ERROR_INVALID_PARAMETER);
    *time = toFileTime(fromSystemTime(*system));
    return TRUE;
}
