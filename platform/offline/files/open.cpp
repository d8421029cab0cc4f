// Opening files.
#include <algorithm>

#include "platform/offline/files/api.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

using namespace bromvale::offline;

namespace {

bool collides(DWORD access, DWORD share) {
    return ((access & kReading) != 0 && (share & FILE_SHARE_READ) == 0) ||
           ((access & kWriting) != 0 && (share & FILE_SHARE_WRITE) == 0);
}

// Another open file of this path that does not share what is wanted, or wants what is not shared.
bool isLocked(const std::string& path, DWORD access, DWORD share) {
    bool locked = false;
    machine().kernelObjects.each([&](const KernelObject& object) {
        if (object.file == nullptr || !sameStored(object.path, path)) return;
        locked = locked || collides(access, object.share) || collides(object.access, share);
    });
    return locked;
}

struct Wanted {
    bool mustExist;
    bool mustBeNew;
    bool empties;
};

bool readDisposition(DWORD disposition, Wanted& wanted) {
    switch (disposition) {
        case CREATE_NEW: wanted = {false, true, false}; return true;
        case CREATE_ALWAYS: wanted = {false, false, true}; return true;
        case OPEN_EXISTING: wanted = {true, false, false}; return true;
        case OPEN_ALWAYS: wanted = {false, false, false}; return true;
        case TRUNCATE_EXISTING: wanted = {true, false, true}; return true;
        default: return false;
    }
}

// What stands in the way of opening, 0 for nothing. `exists` tells whether the file is there.
DWORD obstacle(const Location& location, const Wanted& wanted, DWORD access, DWORD share, bool& exists) {
    if (location.count == 0) return ERROR_ACCESS_DENIED;
    FileInfo info;
    const DWORD found = location.volume->find(location.all(), &info);
    exists = found == 0;
    const bool writes = (access & kWriting) != 0 || wanted.empties;
    const bool makes = !exists && !wanted.mustExist;
    if ((writes || makes) && machine().drives.isProtected(location)) return ERROR_ACCESS_DENIED;
    if (!exists) return found == ERROR_FILE_NOT_FOUND && !wanted.mustExist ? 0 : found;
    if (wanted.mustBeNew) return ERROR_FILE_EXISTS;
    if ((info.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return ERROR_ACCESS_DENIED;
    if (writes && (info.attributes & FILE_ATTRIBUTE_READONLY) != 0) return ERROR_ACCESS_DENIED;
    return isLocked(location.text(), access, share) ? ERROR_SHARING_VIOLATION : 0;
}

bool isFolder(const Location& location) {
    FileInfo info;
    return location.volume->find(location.all(), &info) == 0 &&
           (info.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// A handle to a folder tells its path and nothing else.
DWORD openFolder(const Location& location, LinkAtEnd linkAtEnd, HANDLE& handle) {
    KernelObject object;
    object.path = location.text();
    object.truePath = truePath(location, linkAtEnd);
    if (object.truePath.empty()) return ERROR_FILE_NOT_FOUND;
    handle = machine().kernelObjects.open(std::move(object));
    return 0;
}

// `path` is in the stored form.
DWORD openFile(std::string_view path, DWORD access, DWORD share, DWORD disposition, DWORD flags,
               HANDLE& handle, bool& existed) {
    Wanted wanted{};
    if (!readDisposition(disposition, wanted)) return ERROR_INVALID_PARAMETER;
    Location location;
    if (holdsWildcards(path)) return ERROR_INVALID_NAME;
    if (const DWORD error = machine().drives.locateStored(path, location)) return error;
    const auto linkAtEnd =
        (flags & FILE_FLAG_OPEN_REPARSE_POINT) != 0 ? LinkAtEnd::IsMeant : LinkAtEnd::LeadsOn;
    if ((flags & FILE_FLAG_BACKUP_SEMANTICS) != 0 && wanted.mustExist && isFolder(location))
        return openFolder(location, linkAtEnd, handle);
    if (path.ends_with('\\') || path.ends_with('/')) {
        const bool isFolder = location.volume->find(location.all(), nullptr) == 0;
        return isFolder ? ERROR_PATH_NOT_FOUND : ERROR_FILE_NOT_FOUND;
    }
    if (!wanted.mustExist) machine().drives.makeOwnFolders(location);
    if (const DWORD error = obstacle(location, wanted, access, share, existed)) return error;
    KernelObject object;
    if (const DWORD error = location.volume->open(location.all(), !wanted.mustExist, object.file))
        return error;
    if (wanted.empties && existed) (void)object.file->truncate(0);
    object.path = location.text();
    object.toldPath = ansiFromStored(object.path);
    object.truePath = truePath(location, LinkAtEnd::IsMeant);
    if (!existed || wanted.empties)
        machine().events.record({EventKind::FileMade, object.toldPath, existed ? "geleert" : "", 0, 0});
    object.access = access;
    object.share = share;
    handle = machine().kernelObjects.open(std::move(object));
    return 0;
}

template <class Text>
HANDLE createFile(Text path, DWORD access, DWORD share, DWORD disposition, DWORD attributes) {
    if (failsHere("CreateFileA")) return INVALID_HANDLE_VALUE;
    HANDLE handle = INVALID_HANDLE_VALUE;
    bool existed = false;
    const DWORD error =
        openFile(StoredText(path).view(), access, share, disposition, attributes, handle, existed);
    if (error != 0) return failed(error, INVALID_HANDLE_VALUE);
    const bool tellsExistence = disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS;
    SetLastError(tellsExistence && existed ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return handle;
}

}  // namespace

HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES, DWORD disposition,
                   DWORD attributes, HANDLE) {
    return createFile(path, access, share, disposition, attributes);
}

HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES, DWORD disposition,
                   DWORD attributes, HANDLE) {
    return refusesWide() ? INVALID_HANDLE_VALUE : createFile(path, access, share, disposition, attributes);
}

HFILE OpenFile(LPCSTR path, OFSTRUCT* opened, UINT style) {
    if (failsHere("OpenFile")) return HFILE_ERROR;
    constexpr DWORD kAccess[] = {GENERIC_READ, GENERIC_WRITE, GENERIC_READ | GENERIC_WRITE, GENERIC_READ};
    HANDLE handle = INVALID_HANDLE_VALUE;
    bool existed = false;
    const DWORD disposition = (style & OF_CREATE) != 0 ? CREATE_ALWAYS : OPEN_EXISTING;
    const StoredText stored(path);
    const DWORD error = openFile(stored.view(), kAccess[style & 3], FILE_SHARE_READ | FILE_SHARE_WRITE,
                                 disposition, 0, handle, existed);
    *opened = {};
    opened->cBytes = sizeof(OFSTRUCT);
    opened->nErrCode = static_cast<WORD>(error);
    Location location;
    if (machine().drives.locateStored(stored.view(), location) == 0) {
        const std::string text = location.text();
        const AnsiText converted(text);
        const std::string_view full = converted.view();
        full.copy(opened->szPathName, std::min(full.size(), sizeof opened->szPathName - 1));
        opened->fFixedDisk = 1;
    }
    if (error != 0) return failed(error, HFILE_ERROR);
    if ((style & OF_EXIST) != 0) {
        machine().kernelObjects.close(handle);
        return 1;
    }
    return static_cast<HFILE>(reinterpret_cast<std::intptr_t>(handle));
}
