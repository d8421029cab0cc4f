// Folders, attributes and deletion.
#include "platform/offline/files/api.h"
#include "platform/offline/files/handles.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

using namespace bromvale::offline;

namespace {

DWORD locateName(LPCSTR path, Location& location) {
    location.path = StoredText(path).view();
    if (holdsWildcards(location.path)) return ERROR_INVALID_NAME;
    return machine().drives.locateStored(location.path, location);
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
    if (failsHere("CreateDirectoryA")) return FALSE;
    Location location;
    if (const DWORD error = locateName(path, location)) return failed(error);
    if (location.count == 0) return failed(ERROR_ACCESS_DENIED);
    machine().drives.makeOwnFolders(location);
    if (const DWORD error = location.volume->makeFolder(location.all())) return failed(error);
    machine().events.record({EventKind::FolderMade, ansiFromStored(location.text())});
    return TRUE;
}

BOOL RemoveDirectoryA(LPCSTR path) {
    if (failsHere("RemoveDirectoryA")) return FALSE;
    Location location;
    FileInfo info;
    if (const DWORD error = locateName(path, location)) return failed(error);
    if (location.count == 0) return failed(ERROR_ACCESS_DENIED);
    if (const DWORD error = location.volume->find(location.all(), &info)) return failed(error);
    if ((info.attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return failed(ERROR_DIRECTORY);
    if (const DWORD error = location.volume->remove(location.all())) return failed(error);
    machine().events.record({EventKind::FolderDeleted, ansiFromStored(location.text())});
    return TRUE;
}

BOOL DeleteFileA(LPCSTR path) {
    if (failsHere("DeleteFileA")) return FALSE;
    Location location;
    FileInfo info;
    if (const DWORD error = locateName(path, location)) return failed(error);
    if (location.count == 0) return failed(ERROR_ACCESS_DENIED);
    if (const DWORD error = location.volume->find(location.all(), &info)) return failed(error);
    constexpr DWORD kRefused = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    if ((info.attributes & kRefused) != 0) return failed(ERROR_ACCESS_DENIED);
    if (isOpen(location.text())) return failed(ERROR_SHARING_VIOLATION);
    if (const DWORD error = location.volume->remove(location.all())) return failed(error);
    machine().events.record({EventKind::FileDeleted, ansiFromStored(location.text())});
    return TRUE;
}

BOOL MoveFileA(LPCSTR from, LPCSTR to) {
    if (failsHere("MoveFileA")) return FALSE;
    Location source;
    Location target;
    FileInfo info;
    if (const DWORD error = locateName(from, source)) return failed(error);
    if (const DWORD error = locateName(to, target)) return failed(error);
    if (source.count == 0 || target.count == 0) return failed(ERROR_ACCESS_DENIED);
    if (source.volume != target.volume) return failed(ERROR_NOT_SAME_DEVICE);
    if (const DWORD error = source.volume->find(source.all(), &info)) return failed(error);
    if ((info.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return failed(ERROR_ACCESS_DENIED);
    if (isOpen(source.text())) return failed(ERROR_SHARING_VIOLATION);
    if (const DWORD error = source.volume->move(source.all(), target.all())) return failed(error);
    machine().events.record(
        {EventKind::FileMoved, ansiFromStored(target.text()), ansiFromStored(source.text()), 0, 0});
    return TRUE;
}

DWORD GetFileAttributesA(LPCSTR path) {
    if (failsHere("GetFileAttributesA")) return INVALID_FILE_ATTRIBUTES;
    Location location;
    FileInfo info;
    DWORD error = locateName(path, location);
    if (error == 0) error = location.volume->find(location.all(), &info);
    if (error != 0) return failed(error, INVALID_FILE_ATTRIBUTES);
    return info.attributes != 0 ? info.attributes : FILE_ATTRIBUTE_NORMAL;
}

BOOL SetFileAttributesA(LPCSTR path, DWORD attributes) {
    if (failsHere("SetFileAttributesA")) return FALSE;
    Location location;
    DWORD error = locateName(path, location);
    if (error == 0) error = location.volume->setAttributes(location.all(), attributes);
    return error == 0 ? TRUE : failed(error);
}

DWORD GetCurrentDirectoryA(DWORD size, LPSTR buffer) {
    if (failsHere("GetCurrentDirectoryA")) return 0;
    return answerLength(AnsiText(machine().drives.currentDirectory).view(), buffer, size);
}

BOOL SetCurrentDirectoryA(LPCSTR path) {
    if (failsHere("SetCurrentDirectoryA")) return FALSE;
    Location location;
    FileInfo info;
    if (const DWORD error = locateName(path, location)) return failed(error);
    if (const DWORD error = location.volume->find(location.all(), &info)) return failed(error);
    if ((info.attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return failed(ERROR_DIRECTORY);
    machine().drives.currentDirectory = location.text();
    return TRUE;
}
