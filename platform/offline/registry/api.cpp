// Keys: opening, creating, deleting.
#include "platform/offline/registry/api.h"

#include <string_view>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

using namespace bromvale::offline;

namespace {

DWORD specificAccess(REGSAM access) {
    DWORD result = access & ~(GENERIC_ALL | GENERIC_EXECUTE | GENERIC_WRITE | GENERIC_READ | MAXIMUM_ALLOWED);
    if ((access & GENERIC_READ) != 0) result |= KEY_READ;
    if ((access & GENERIC_WRITE) != 0) result |= KEY_WRITE;
    if ((access & GENERIC_EXECUTE) != 0) result |= KEY_EXECUTE;
    if ((access & (GENERIC_ALL | MAXIMUM_ALLOWED)) != 0) result |= KEY_ALL_ACCESS;
    return result;
}

// The key from which on the path leads. The NT family refuses a path that starts with a backslash, the 9x
// family does not find it.
LONG findBase(HKEY handle, std::string_view path, RegistryKey*& base) {
    if (const LONG result = machine().registry.resolve(handle, 0, base)) return result;
    if (!path.starts_with('\\')) return ERROR_SUCCESS;
    return machine().registry.ntFamily() ? ERROR_BAD_PATHNAME : ERROR_FILE_NOT_FOUND;
}

LONG findKey(HKEY handle, std::string_view path, RegistryKey*& found) {
    RegistryKey* base = nullptr;
    if (const LONG result = findBase(handle, path, base)) return result;
    found = machine().registry.find(handle, base, path);
    if (found == nullptr) return ERROR_FILE_NOT_FOUND;
    return found->denied ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

constexpr DWORD kChanging = KEY_SET_VALUE | KEY_CREATE_SUB_KEY | DELETE;

// Without rights the machine's keys may be read and no more.
bool closedToUser(const RegistryKey* key) {
    if (!machine().lacksMachineRights()) return false;
    while (key->owner() != nullptr) key = key->owner();
    return key == machine().registry.root(*hiveByName("HKEY_LOCAL_MACHINE"));
}

// What a handle is opened with, in `granted`. As much as is allowed is never too much.
bool grants(const RegistryKey* key, REGSAM access, DWORD& granted) {
    granted = specificAccess(access);
    if (!closedToUser(key)) return true;
    if ((specificAccess(access & ~MAXIMUM_ALLOWED) & kChanging) != 0) return false;
    granted &= ~kChanging;
    return true;
}

LONG openKey(HKEY handle, std::string_view path, REGSAM access, HKEY& opened) {
    // Windows leaves the caller's handle alone for a null handle only; every other failure sets it to null.
    if (handle == nullptr) return ERROR_INVALID_HANDLE;
    opened = nullptr;
    RegistryKey* key = nullptr;
    if (const LONG result = findKey(handle, path, key)) return result;
    DWORD granted = 0;
    if (!grants(key, access, granted)) return ERROR_ACCESS_DENIED;
    const bool hiveItself = path.empty() && Registry::isHive(handle);
    opened = hiveItself ? handle : machine().registry.open(key, granted);
    return ERROR_SUCCESS;
}

// Whether the last existing key on the way lets sub keys be made below it.
bool mayCreateBelow(HKEY handle, RegistryKey* key, std::string_view path) {
    while (key != nullptr && !path.empty()) {
        RegistryKey* next = machine().registry.find(handle, key, nextPathName(path));
        if (next == nullptr) return !key->denied;
        handle = nullptr;
        key = next;
    }
    return true;
}

void recordKey(EventKind kind, const RegistryKey& key) {
    machine().events.record({kind, ansiFromStored(pathOf(key))});
}

LONG createKey(HKEY handle, std::string_view path, REGSAM access, HKEY& opened, LPDWORD disposition) {
    Registry& registry = machine().registry;
    RegistryKey* base = nullptr;
    if (const LONG result = findBase(handle, path, base)) return result;
    bool created = false;
    RegistryKey* key = registry.find(handle, base, path);
    if (key == nullptr) {
        if (!mayCreateBelow(handle, base, path) || closedToUser(base)) return ERROR_ACCESS_DENIED;
        key = registry.findOrMake(handle, base, path, created);
        if (key == nullptr) return ERROR_INVALID_PARAMETER;
    }
    DWORD granted = 0;
    if (key->denied || !grants(key, access, granted)) return ERROR_ACCESS_DENIED;
    opened = registry.open(key, granted);
    if (created) recordKey(EventKind::KeyMade, *key);
    if (disposition != nullptr) *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    return ERROR_SUCCESS;
}

// The NT family turns a sub key's text into a buffer of its own that holds 260 characters.
constexpr std::size_t kLongestAnsiPath = 260;

bool isTooLong(LPCSTR, std::string_view path) {
    return machine().registry.ntFamily() && path.size() > kLongestAnsiPath &&
           unitCount(path) > kLongestAnsiPath;
}

bool isTooLong(LPCWSTR, std::string_view) {
    return false;
}

template <class Text>
LONG openText(HKEY key, Text subKey, REGSAM access, HKEY& opened) {
    const StoredText path(subKey);
    if (isTooLong(subKey, path.view())) return ERROR_MORE_DATA;
    return openKey(key, path.view(), access, opened);
}

std::optional<LONG> faultOfOpening(std::string_view operation, PHKEY result) {
    const auto fault = faults().at(operation);
    if (fault && *fault != ERROR_SUCCESS && result != nullptr) *result = nullptr;
    return fault;
}

template <class Text>
LONG openKeyEx(HKEY key, Text subKey, REGSAM access, PHKEY result) {
    if (const auto fault = faultOfOpening("RegOpenKeyExA", result)) return *fault;
    if (result == nullptr) return ERROR_INVALID_PARAMETER;
    return openText(key, subKey, access, *result);
}

}  // namespace

LONG RegOpenKeyA(HKEY key, LPCSTR subKey, PHKEY result) {
    if (const auto fault = faultOfOpening("RegOpenKeyA", result)) return *fault;
    if (result == nullptr) return ERROR_INVALID_PARAMETER;
    if (subKey == nullptr || *subKey == '\0') {
        *result = key;
        return ERROR_SUCCESS;
    }
    return openText(key, subKey, MAXIMUM_ALLOWED, *result);
}

LONG RegOpenKeyExA(HKEY key, LPCSTR subKey, DWORD /*options*/, REGSAM access, PHKEY result) {
    return openKeyEx(key, subKey, access, result);
}

LONG RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD /*options*/, REGSAM access, PHKEY result) {
    if (!machine().registry.ntFamily()) return ERROR_CALL_NOT_IMPLEMENTED;
    return openKeyEx(key, subKey, access, result);
}

LONG RegCloseKey(HKEY key) {
    if (const auto fault = faults().at("RegCloseKey")) return *fault;
    return machine().registry.close(key);
}

LONG RegCreateKeyExA(HKEY key, LPCSTR subKey, DWORD reserved, LPSTR /*keyClass*/, DWORD /*options*/,
                     REGSAM access, const SECURITY_ATTRIBUTES* /*security*/, PHKEY result,
                     LPDWORD disposition) {
    if (reserved != 0 || result == nullptr) return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    if (const auto fault = faults().at("RegCreateKeyExA")) return *fault;
    return createKey(key, StoredText(subKey).view(), access, *result, disposition);
}

LONG RegDeleteKeyA(HKEY handle, LPCSTR subKey) {
    if (const auto fault = faults().at("RegDeleteKeyA")) return *fault;
    if (subKey == nullptr) return ERROR_INVALID_PARAMETER;
    const StoredText stored(subKey);
    const std::string_view path = stored.view();
    RegistryKey* key = nullptr;
    if (const LONG result = findKey(handle, path, key)) return result;
    Registry& registry = machine().registry;
    if (registry.isRoot(key) || (path.empty() && Registry::isHive(handle))) return ERROR_ACCESS_DENIED;
    if (registry.ntFamily() && (key->subKeyCount() != 0 || closedToUser(key))) return ERROR_ACCESS_DENIED;
    recordKey(EventKind::KeyDeleted, *key);
    registry.tree().remove(key);
    return ERROR_SUCCESS;
}
