// The same for files, folders and the shell.
#include <cstring>

#include "bench/windows/call_notes.h"

#include <shellapi.h>

using bench::Call;
using bench::fileNumber;
using bench::put;

namespace {

HANDLE WINAPI findFirst(LPCSTR path, LPWIN32_FIND_DATAA data);
BOOL WINAPI findClose(HANDLE search);
HANDLE WINAPI createFile(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                         DWORD disposition, DWORD flags, HANDLE pattern);
BOOL WINAPI closeFile(HANDLE file);
BOOL WINAPI writeFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped);
DWORD WINAPI setFilePointer(HANDLE file, LONG low, PLONG high, DWORD method);
DWORD WINAPI getFileSize(HANDLE file, LPDWORD high);
BOOL WINAPI deleteFile(LPCSTR path);
BOOL WINAPI removeFolder(LPCSTR path);
int WINAPI shellOperation(LPSHFILEOPSTRUCTA operation);

}  // namespace

RECORDED(FindFirstFileA, findFirst);
RECORDED(FindClose, findClose);
RECORDED(CreateFileA, createFile);
RECORDED(CloseHandle, closeFile);
RECORDED(WriteFile, writeFile);
RECORDED(SetFilePointer, setFilePointer);
RECORDED(GetFileSize, getFileSize);
RECORDED(DeleteFileA, deleteFile);
RECORDED(RemoveDirectoryA, removeFolder);
RECORDED(SHFileOperationA, shellOperation);

namespace {

HANDLE WINAPI findFirst(LPCSTR path, LPWIN32_FIND_DATAA data) {
    const HANDLE search = REAL(FindFirstFileA)(path, data);
    put({Call::FindFirst, 0, 0, 0, 0, 0, 0}, path);
    bench::opened(search);
    return search;
}

BOOL WINAPI findClose(HANDLE search) {
    put({Call::FindClose, 0, 0, fileNumber(search), 0, 0, 0});
    return REAL(FindClose)(search);
}

HANDLE WINAPI createFile(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                         DWORD disposition, DWORD flags, HANDLE pattern) {
    const HANDLE file = REAL(CreateFileA)(path, access, share, security, disposition, flags, pattern);
    put({Call::OpenFile, static_cast<std::uint8_t>(share), 0, 0, access, disposition, flags}, path);
    bench::opened(file);
    return file;
}

// Handles of threads and events aren't the work.
BOOL WINAPI closeFile(HANDLE file) {
    if (fileNumber(file) != 0) put({Call::CloseFile, 0, 0, fileNumber(file), 0, 0, 0});
    return REAL(CloseHandle)(file);
}

BOOL WINAPI writeFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped) {
    if (fileNumber(file) != 0)
        put({Call::WriteFile, 0, 0, fileNumber(file), 0, 0, 0}, {static_cast<const char*>(bytes), size});
    return REAL(WriteFile)(file, bytes, size, written, overlapped);
}

DWORD WINAPI setFilePointer(HANDLE file, LONG low, PLONG high, DWORD method) {
    put({Call::SetFilePointer, 0, 0, fileNumber(file), method, static_cast<std::uint32_t>(low), 0});
    return REAL(SetFilePointer)(file, low, high, method);
}

DWORD WINAPI getFileSize(HANDLE file, LPDWORD high) {
    put({Call::GetFileSize, 0, 0, fileNumber(file), 0, 0, 0});
    return REAL(GetFileSize)(file, high);
}

BOOL WINAPI deleteFile(LPCSTR path) {
    put({Call::RemoveFile, 0, 0, 0, 0, 0, 0}, path);
    return REAL(DeleteFileA)(path);
}

BOOL WINAPI removeFolder(LPCSTR path) {
    put({Call::RemoveFolder, 0, 0, 0, 0, 0, 0}, path);
    return REAL(RemoveDirectoryA)(path);
}

// One name, as the program gives it.
int WINAPI shellOperation(LPSHFILEOPSTRUCTA operation) {
    put({Call::ShellOperation, 0, 0, 0, operation->wFunc, operation->fFlags, 0}, operation->pFrom);
    return REAL(SHFileOperationA)(operation);
}

}  // namespace
