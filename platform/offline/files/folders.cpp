// Folders, attributes and deletion.
#include "platform/offline/files/api.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

using namespace bromvale::offline;

namespace {

// False and the last error where the path leads nowhere.
bool locate(LPCSTR path, Location& location) {
    location.path = StoredText(path).view();
    if (holdsWildcards(location.path)) return failed(ERROR_INVALID_NAME);
    const DWORD error = machine().drives.locateStored(location.path, location);
    return error == 0 || failed(error);
}

// The same where a fault is due for the operation.
bool locateFor(std::string_view operation, LPCSTR path, Location& location) {
    return !failsHere(operation) && locate(path, location);
}

// For what must be there.
bool findFor(std::string_view operation, LPCSTR path, Location& location, FileInfo& info) {
    if (!locateFor(operation, path, location)) return false;
    const DWORD error = location.volume->find(location.all(), &info);
    return error == 0 || failed(error);
}

bool isFolder(const FileInfo& info) {
    return (info.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

BOOL removeAs(EventKind kind, const Location& location) {
    if (machine().drives.isProtected(location)) return failed(ERROR_ACCESS_DENIED);
    if (const DWORD error = location.volume->remove(location.all())) return failed(error);
    machine().events.record({kind, ansiFromStored(location.text())});
    return TRUE;
}

bool isOpen(const std::string& path) {
    bool open = false;
    machine().kernelObjects.each([&](const KernelObject& object) {
        open = open || (object.file != nullptr && (object.share & FILE_SHARE_DELETE) == 0 &&
                        sameStored(object.path, path));
    });
    return open;
}

}  // namespace

BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES) {
    Location location;
    if (!locateFor("CreateDirectoryA", path, location)) return FALSE;
    if (location.count == 0 || machine().drives.isProtected(location)) return failed(ERROR_ACCESS_DENIED);
    machine().drives.makeOwnFolders(location);
    if (const DWORD error = location.volume->makeFolder(location.all())) return failed(error);
    machine().events.record({EventKind::FolderMade, ansiFromStored(location.text())});
    return TRUE;
}

BOOL RemoveDirectoryA(LPCSTR path) {
    Location location;
    FileInfo info;
    if (!findFor("RemoveDirectoryA", path, location, info)) return FALSE;
    if (location.count == 0) return failed(ERROR_ACCESS_DENIED);
    return isFolder(info) ? removeAs(EventKind::FolderDeleted, location) : failed(ERROR_DIRECTORY);
}

BOOL DeleteFileA(LPCSTR path) {
    Location location;
    FileInfo info;
    if (!findFor("DeleteFileA", path, location, info)) return FALSE;
    if (isFolder(info) || (info.attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return failed(ERROR_ACCESS_DENIED);
    if (isOpen(location.text())) return failed(ERROR_SHARING_VIOLATION);
    return removeAs(EventKind::FileDeleted, location);
}

BOOL MoveFileA(LPCSTR from, LPCSTR to) {
    Location source;
    Location target;
    FileInfo info;
    if (!locateFor("MoveFileA", from, source) || !locate(to, target)) return FALSE;
    if (source.count == 0 || target.count == 0) return failed(ERROR_ACCESS_DENIED);
    if (machine().drives.isProtected(source) || machine().drives.isProtected(target))
        return failed(ERROR_ACCESS_DENIED);
    if (source.volume != target.volume) return failed(ERROR_NOT_SAME_DEVICE);
    if (const DWORD error = source.volume->find(source.all(), &info)) return failed(error);
    if (isFolder(info)) return failed(ERROR_ACCESS_DENIED);
    if (isOpen(source.text())) return failed(ERROR_SHARING_VIOLATION);
    if (const DWORD error = source.volume->move(source.all(), target.all())) return failed(error);
    machine().events.record(
        {EventKind::FileMoved, ansiFromStored(target.text()), ansiFromStored(source.text())});
    return TRUE;
}

DWORD GetFileAttributesA(LPCSTR path) {
    Location location;
    FileInfo info;
    if (!findFor("GetFileAttributesA", path, location, info)) return INVALID_FILE_ATTRIBUTES;
    return info.attributes != 0 ? info.attributes : FILE_ATTRIBUTE_NORMAL;
}

BOOL SetFileAttributesA(LPCSTR path, DWORD attributes) {
    Location location;
    if (!locateFor("SetFileAttributesA", path, location)) return FALSE;
    const DWORD error = location.volume->setAttributes(location.all(), attributes);
    return error == 0 ? TRUE : failed(error);
}

DWORD GetCurrentDirectoryA(DWORD size, LPSTR buffer) {
    if (failsHere("GetCurrentDirectoryA")) return 0;
    return answerLength(AnsiText(machine().drives.currentDirectory).view(), buffer, size);
}

BOOL SetCurrentDirectoryA(LPCSTR path) {
    Location location;
    FileInfo info;
    if (!findFor("SetCurrentDirectoryA", path, location, info)) return FALSE;
    if (!isFolder(info)) return failed(ERROR_DIRECTORY);
    machine().drives.currentDirectory = location.text();
    return TRUE;
}
