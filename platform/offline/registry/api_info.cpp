// What RegQueryInfoKeyA and W tell.
#include <algorithm>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "platform/offline/registry/api.h"
#include "platform/offline/registry/data.h"

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
        [](const auto& value) { return GivenData::asAnsi(value, textRules().codePage).view().size(); });
}

Longest longestOf(RegistryKey* key, const WCHAR*) {
    return longestOf(
        key, [](std::string_view name) { return unitCount(name); },
        [](const auto& value) { return GivenData::asWindows(value).view().size(); });
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
    const LONG result = machine().registry.resolve(handle, KEY_QUERY_VALUE, key);
    if (result != ERROR_SUCCESS) return result;
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

}  // namespace

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
