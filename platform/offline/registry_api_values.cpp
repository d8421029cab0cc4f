// Values: reading, writing, deleting, enumerating.
#include <algorithm>
#include <cstring>
#include <string_view>

#include "platform/offline/faults.h"
#include "platform/offline/registry.h"
#include "platform/offline/registry_api.h"
#include "platform/offline/registry_events.h"

using bromvale::offline::currentRegistry;
using bromvale::offline::faults;
using bromvale::offline::kLongestValueName;
using bromvale::offline::RegistryKey;
using bromvale::offline::RegistryValueNode;

namespace {

std::string_view textOf(LPCSTR text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

bool isText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

DWORD sizeOf(std::string_view text) {
    return static_cast<DWORD>(text.size());
}

// Copies the data if the buffer holds it, and reports its size in any case. A text stored without its NUL
// gets one in the buffer when there is room; the size does not count it.
LONG copyData(const RegistryValueNode& value, LPBYTE data, LPDWORD dataSize) {
    LONG result = ERROR_SUCCESS;
    const std::string_view stored = value.data();
    if (data != nullptr) {
        if (stored.size() > *dataSize) {
            result = ERROR_MORE_DATA;
        } else if (!stored.empty()) {
            std::memcpy(data, stored.data(), stored.size());
            const bool addNul = isText(value.type()) && stored.back() != '\0' && stored.size() < *dataSize;
            if (addNul) data[stored.size()] = 0;
        }
    }
    if (dataSize != nullptr) *dataSize = sizeOf(stored);
    return result;
}

// A name that does not fit is cut to the buffer, and the size stays what it was.
LONG copyValueName(std::string_view found, LPSTR name, LPDWORD nameSize) {
    const bool fits = found.size() < *nameSize;
    if (*nameSize > 0) {
        const std::size_t copied = fits ? found.size() : *nameSize - 1;
        if (copied > 0) std::memcpy(name, found.data(), copied);
        name[copied] = '\0';
    }
    if (!fits) return ERROR_MORE_DATA;
    *nameSize = sizeOf(found);
    return ERROR_SUCCESS;
}

template <typename Number>
void report(Number* out, std::size_t value) {
    if (out != nullptr) *out = static_cast<Number>(value);
}

}  // namespace

LONG RegEnumValueA(HKEY handle, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                   LPBYTE data, LPDWORD dataSize) {
    if (const auto fault = faults().at("RegEnumValueA")) return static_cast<LONG>(*fault);
    const bool noSize = data != nullptr && dataSize == nullptr;
    if (name == nullptr || nameSize == nullptr || reserved != nullptr || noSize)
        return ERROR_INVALID_PARAMETER;
    RegistryKey* key = nullptr;
    LONG result = currentRegistry().resolve(handle, KEY_QUERY_VALUE, key);
    if (result != ERROR_SUCCESS) return result;
    if (index >= key->valueCount()) return ERROR_NO_MORE_ITEMS;
    const RegistryValueNode& value = key->value(index);
    if (type != nullptr) *type = value.type();
    result = copyData(value, data, dataSize);
    return result == ERROR_SUCCESS ? copyValueName(value.name(), name, nameSize) : result;
}

LONG RegQueryValueExA(HKEY handle, LPCSTR valueName, LPDWORD reserved, LPDWORD type, LPBYTE data,
                      LPDWORD dataSize) {
    if (const auto fault = faults().at("RegQueryValueExA")) return static_cast<LONG>(*fault);
    if (reserved != nullptr || (data != nullptr && dataSize == nullptr)) return ERROR_INVALID_PARAMETER;
    RegistryKey* key = nullptr;
    const LONG result = currentRegistry().resolve(handle, KEY_QUERY_VALUE, key);
    if (result != ERROR_SUCCESS) return result;
    const RegistryValueNode* value = currentRegistry().tree().value(key, textOf(valueName));
    if (value == nullptr) {
        if (type != nullptr) *type = REG_NONE;
        if (data == nullptr && dataSize != nullptr) *dataSize = 0;
        return ERROR_FILE_NOT_FOUND;
    }
    if (type != nullptr) *type = value->type();
    return copyData(*value, data, dataSize);
}

LONG RegSetValueExA(HKEY handle, LPCSTR valueName, DWORD /*reserved*/, DWORD type, const BYTE* data,
                    DWORD dataSize) {
    if (const auto fault = faults().at("RegSetValueExA")) return static_cast<LONG>(*fault);
    RegistryKey* key = nullptr;
    const LONG result = currentRegistry().resolve(handle, KEY_SET_VALUE, key);
    if (result != ERROR_SUCCESS) return result;
    const std::string_view name = textOf(valueName);
    if (name.size() > kLongestValueName) return ERROR_INVALID_PARAMETER;
    if (dataSize > 0 && data == nullptr) return ERROR_NOACCESS;
    std::size_t stored = dataSize;
    // The callers give a text's length without its NUL. Windows looks one byte further and takes the NUL
    // along.
    if (isText(type) && dataSize > 0 && data[dataSize - 1] != 0 && data[dataSize] == 0) ++stored;
    const std::string_view bytes(reinterpret_cast<const char*>(data), stored);
    currentRegistry().tree().setValue(key, name, type, bytes);
    recordValueSet(*key, name, type, bytes);
    return ERROR_SUCCESS;
}

LONG RegDeleteValueA(HKEY handle, LPCSTR valueName) {
    if (const auto fault = faults().at("RegDeleteValueA")) return static_cast<LONG>(*fault);
    RegistryKey* key = nullptr;
    const LONG result = currentRegistry().resolve(handle, KEY_SET_VALUE, key);
    if (result != ERROR_SUCCESS) return result;
    if (!currentRegistry().tree().removeValue(key, textOf(valueName))) return ERROR_FILE_NOT_FOUND;
    recordValueDeleted(*key, textOf(valueName));
    return ERROR_SUCCESS;
}

LONG RegQueryInfoKeyA(HKEY handle, LPSTR keyClass, LPDWORD classSize, LPDWORD reserved, LPDWORD subKeys,
                      LPDWORD longestSubKey, LPDWORD longestClass, LPDWORD values, LPDWORD longestValueName,
                      LPDWORD longestData, LPDWORD securitySize, LPFILETIME lastWrite) {
    if (const auto fault = faults().at("RegQueryInfoKeyA")) return static_cast<LONG>(*fault);
    if (reserved != nullptr || (keyClass != nullptr && classSize == nullptr)) return ERROR_INVALID_PARAMETER;
    RegistryKey* key = nullptr;
    const LONG result = currentRegistry().resolve(handle, KEY_QUERY_VALUE, key);
    if (result != ERROR_SUCCESS) return result;
    std::size_t subKeyName = 0;
    std::size_t valueName = 0;
    std::size_t valueData = 0;
    for (std::size_t i = 0; i < key->subKeyCount(); ++i) {
        subKeyName = std::max(subKeyName, currentRegistry().tree().subKey(key, i)->name().size());
    }
    for (std::size_t i = 0; i < key->valueCount(); ++i) {
        valueName = std::max(valueName, key->value(i).name().size());
        valueData = std::max(valueData, key->value(i).data().size());
    }
    if (keyClass != nullptr && *classSize > 0) *keyClass = '\0';
    report(classSize, 0);
    report(subKeys, key->subKeyCount());
    report(longestSubKey, subKeyName);
    report(longestClass, 0);
    report(values, key->valueCount());
    report(longestValueName, valueName);
    report(longestData, valueData);
    report(securitySize, 0);
    if (lastWrite != nullptr) *lastWrite = {};
    return ERROR_SUCCESS;
}
