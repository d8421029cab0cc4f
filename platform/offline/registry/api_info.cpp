// What keys tell: their sub keys, RegQueryInfoKeyA and W, their true path.
#include <algorithm>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "platform/offline/registry/api.h"
#include "platform/offline/registry/data.h"
#include "platform/registry.h"

using namespace bromvale::offline;

namespace {

struct Longest {
    std::size_t subKeyName = 0;
    std::size_t valueName = 0;
    std::size_t valueData = 0;
};

// `nameSize` and `dataSize` tell what a function of the one or the other family counts.
template <class NameSize, class DataSize>
Longest longestOf(RegistryKey* key, const NameSize& nameSize, const DataSize& dataSize) {
    Longest longest;
    for (std::size_t i = 0; i < key->subKeyCount(); ++i) {
        longest.subKeyName =
            std::max(longest.subKeyName, nameSize(machine().registry.tree().subKey(key, i)->name()));
    }
    for (std::size_t i = 0; i < key->valueCount(); ++i) {
        longest.valueName = std::max(longest.valueName, nameSize(key->value(i).name()));
        longest.valueData = std::max(longest.valueData, dataSize(key->value(i)));
    }
    return longest;
}

template <typename Number>
void report(Number* out, std::size_t value) {
    if (out != nullptr) *out = static_cast<Number>(value);
}

Longest longestOf(RegistryKey* key, const char*) {
    return longestOf(
        key, [](std::string_view name) { return AnsiText(name).view().size(); },
        [](const auto& value) { return ansiData(value, textRules().codePage).view().size(); });
}

Longest longestOf(RegistryKey* key, const WCHAR*) {
    return longestOf(
        key, [](std::string_view name) { return unitCount(name); },
        [](const auto& value) { return windowsData(value).view().size(); });
}

struct Wanted {
    LPDWORD subKeys;
    LPDWORD longestSubKey;
    LPDWORD longestClass;
    LPDWORD values;
    LPDWORD longestValueName;
    LPDWORD longestData;
    LPDWORD securitySize;
    LPFILETIME lastWrite;
};

template <class Char>
LONG queryInfo(HKEY handle, Char* keyClass, LPDWORD classSize, const DWORD* reserved, const Wanted& wanted) {
    if (const auto fault = faults().at("RegQueryInfoKeyA")) return *fault;
    if (reserved != nullptr || (keyClass != nullptr && classSize == nullptr)) return ERROR_INVALID_PARAMETER;
    RegistryKey* key = nullptr;
    if (const LONG result = machine().registry.resolve(handle, KEY_QUERY_VALUE, key)) return result;
    const Longest longest = longestOf(key, keyClass);
    if (keyClass != nullptr && *classSize > 0) *keyClass = Char{};
    report(classSize, 0);
    report(wanted.subKeys, key->subKeyCount());
    report(wanted.longestSubKey, longest.subKeyName);
    report(wanted.longestClass, 0);
    report(wanted.values, key->valueCount());
    report(wanted.longestValueName, longest.valueName);
    report(wanted.longestData, longest.valueData);
    report(wanted.securitySize, 0);
    if (wanted.lastWrite != nullptr) *wanted.lastWrite = {};
    return ERROR_SUCCESS;
}

LONG enumeratedKey(HKEY handle, DWORD index, std::string_view& name) {
    RegistryKey* key = nullptr;
    if (const LONG result = machine().registry.resolve(handle, KEY_ENUMERATE_SUB_KEYS, key)) return result;
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

LONG RegQueryInfoKeyA(HKEY handle, LPSTR keyClass, LPDWORD classSize, LPDWORD reserved, LPDWORD subKeys,
                      LPDWORD longestSubKey, LPDWORD longestClass, LPDWORD values, LPDWORD longestValueName,
                      LPDWORD longestData, LPDWORD securitySize, LPFILETIME lastWrite) {
    return queryInfo(handle, keyClass, classSize, reserved,
                     {subKeys, longestSubKey, longestClass, values, longestValueName, longestData,
                      securitySize, lastWrite});
}

LONG RegQueryInfoKeyW(HKEY handle, LPWSTR keyClass, LPDWORD classSize, LPDWORD reserved, LPDWORD subKeys,
                      LPDWORD longestSubKey, LPDWORD longestClass, LPDWORD values, LPDWORD longestValueName,
                      LPDWORD longestData, LPDWORD securitySize, LPFILETIME lastWrite) {
    if (!machine().registry.ntFamily()) return ERROR_CALL_NOT_IMPLEMENTED;
    return queryInfo(handle, keyClass, classSize, reserved,
                     {subKeys, longestSubKey, longestClass, values, longestValueName, longestData,
                      securitySize, lastWrite});
}

namespace bromvale {

bool seesAnotherHalf() {
    return machine().otherHalf.seen == Halves::SeenBy32;
}

// The machine's registry has one tree, and its names are the true ones.
std::optional<std::u16string> realKeyPath(HKEY handle) {
    RegistryKey* key = nullptr;
    if (machine().registry.resolve(handle, 0, key) != ERROR_SUCCESS) return std::nullopt;
    return wideFromStored(pathOf(*key));
}

}  // namespace bromvale
