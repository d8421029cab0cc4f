// Keys: enumerating.
#include <algorithm>
#include <string_view>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "platform/offline/registry/api.h"

using namespace bromvale::offline;

namespace {

LONG enumeratedKey(HKEY handle, DWORD index, std::string_view& name) {
    RegistryKey* key = nullptr;
    const LONG result = machine().registry.resolve(handle, KEY_ENUMERATE_SUB_KEYS, key);
    if (result != ERROR_SUCCESS) return result;
    const RegistryKey* subKey = machine().registry.tree().subKey(key, index);
    if (subKey == nullptr) return ERROR_NO_MORE_ITEMS;
    name = subKey->name();
    return ERROR_SUCCESS;
}

template <class Text, class Char>
LONG copyName(Text name, Char* buffer, DWORD& size) {
    if (name.size() >= size) return ERROR_MORE_DATA;
    std::copy(name.begin(), name.end(), buffer);
    buffer[name.size()] = Char{};
    size = static_cast<DWORD>(name.size());
    return ERROR_SUCCESS;
}

LONG copyFound(std::string_view stored, LPSTR buffer, DWORD& size) {
    return copyName(AnsiText(stored).view(), buffer, size);
}

LONG copyFound(std::string_view stored, LPWSTR buffer, DWORD& size) {
    if (isAscii(stored)) return copyName(stored, buffer, size);
    return copyName(std::u16string_view(wideFromStored(stored)), buffer, size);
}

}  // namespace

LONG RegEnumKeyA(HKEY key, DWORD index, LPSTR name, DWORD nameSize) {
    if (const auto fault = faults().at("RegEnumKeyA")) return *fault;
    std::string_view found;
    const LONG result = enumeratedKey(key, index, found);
    return result == ERROR_SUCCESS ? copyFound(found, name, nameSize) : result;
}

LONG RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved, LPWSTR keyClass,
                   LPDWORD classSize, LPFILETIME lastWrite) {
    if (!machine().registry.ntFamily()) return ERROR_CALL_NOT_IMPLEMENTED;
    if (const auto fault = faults().at("RegEnumKeyA")) return *fault;
    if (name == nullptr || nameSize == nullptr || reserved != nullptr) return ERROR_INVALID_PARAMETER;
    std::string_view found;
    LONG result = enumeratedKey(key, index, found);
    if (result == ERROR_SUCCESS) result = copyFound(found, name, *nameSize);
    if (result != ERROR_SUCCESS) return result;
    if (keyClass != nullptr && classSize != nullptr && *classSize > 0) *keyClass = u'\0';
    if (classSize != nullptr) *classSize = 0;
    if (lastWrite != nullptr) *lastWrite = {};
    return ERROR_SUCCESS;
}
