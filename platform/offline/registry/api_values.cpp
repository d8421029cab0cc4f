// Values: reading and enumerating.
#include <algorithm>
#include <cstring>
#include <string_view>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "platform/offline/registry/api.h"
#include "platform/offline/registry/data.h"

using namespace bromvale::offline;

namespace {

DWORD sizeOf(std::string_view text) {
    return static_cast<DWORD>(text.size());
}

bool endsWithNul(std::string_view stored, std::size_t width) {
    const std::size_t tail = std::min(width, stored.size());
    return stored.substr(stored.size() - tail).find_first_not_of('\0') == std::string_view::npos;
}

// Copies the data if the buffer holds it, and reports its size in any case. A text stored without its NUL
// gets one of `width` bytes in the buffer when there is room; the size does not count it.
LONG copyData(std::string_view stored, bool text, std::size_t width, LPBYTE data, LPDWORD dataSize) {
    LONG result = ERROR_SUCCESS;
    if (data != nullptr) {
        if (stored.size() > *dataSize) {
            result = ERROR_MORE_DATA;
        } else if (!stored.empty()) {
            std::memcpy(data, stored.data(), stored.size());
            const bool room = stored.size() + width <= *dataSize;
            if (text && !endsWithNul(stored, width) && room) std::memset(data + stored.size(), 0, width);
        }
    }
    if (dataSize != nullptr) *dataSize = sizeOf(stored);
    return result;
}

LONG copyData(const RegistryValueNode& value, LPBYTE data, LPDWORD dataSize, const char*) {
    return copyData(ansiData(value, textRules().codePage).view(), isText(value.type()), 1, data, dataSize);
}

// The usual text: widened right into the caller's buffer.
bool copyWidened(const RegistryValueNode& value, LPBYTE data, DWORD& dataSize) {
    const std::string_view narrow = value.data().bytes;
    const std::size_t size = narrow.size() * sizeof(WCHAR);
    if (!value.data().narrow || size > dataSize || !narrow.ends_with('\0')) return false;
    for (std::size_t i = 0; i < narrow.size(); ++i) {
        const WCHAR unit = wideOf(narrow[i]);
        std::memcpy(data + i * sizeof unit, &unit, sizeof unit);
    }
    dataSize = static_cast<DWORD>(size);
    return true;
}

LONG copyData(const RegistryValueNode& value, LPBYTE data, LPDWORD dataSize, const WCHAR*) {
    if (data != nullptr && copyWidened(value, data, *dataSize)) return ERROR_SUCCESS;
    if (data == nullptr && dataSize != nullptr && value.data().narrow) {
        *dataSize = static_cast<DWORD>(value.data().bytes.size() * sizeof(WCHAR));
        return ERROR_SUCCESS;
    }
    return copyData(windowsData(value).view(), isText(value.type()), sizeof(WCHAR), data, dataSize);
}

// A name that does not fit is cut to the buffer, and the size stays what it was.
template <class Text, class Char>
LONG copyFound(Text found, Char* name, LPDWORD nameSize) {
    const bool fits = found.size() < *nameSize;
    if (*nameSize > 0) {
        const std::size_t size = std::min<std::size_t>(found.size(), *nameSize - 1);
        std::copy_n(found.begin(), size, name);
        name[size] = Char{};
    }
    if (!fits) return ERROR_MORE_DATA;
    *nameSize = static_cast<DWORD>(found.size());
    return ERROR_SUCCESS;
}

LONG copyValueName(std::string_view stored, LPSTR name, LPDWORD nameSize) {
    return copyFound(AnsiText(stored).view(), name, nameSize);
}

LONG copyValueName(std::string_view stored, LPWSTR name, LPDWORD nameSize) {
    if (isAscii(stored)) return copyFound(stored, name, nameSize);
    return copyFound(std::u16string_view(wideFromStored(stored)), name, nameSize);
}

template <class Char>
LONG enumValue(HKEY handle, DWORD index, Char* name, LPDWORD nameSize, const DWORD* reserved, LPDWORD type,
               LPBYTE data, LPDWORD dataSize) {
    if (const auto fault = faults().at("RegEnumValueA")) return *fault;
    const bool noSize = data != nullptr && dataSize == nullptr;
    if (name == nullptr || nameSize == nullptr || reserved != nullptr || noSize)
        return ERROR_INVALID_PARAMETER;
    RegistryKey* key = nullptr;
    if (const LONG result = machine().registry.resolve(handle, KEY_QUERY_VALUE, key)) return result;
    if (index >= key->valueCount()) return ERROR_NO_MORE_ITEMS;
    const RegistryValueNode& value = key->value(index);
    if (type != nullptr) *type = value.type();
    const LONG result = copyData(value, data, dataSize, name);
    return result == ERROR_SUCCESS ? copyValueName(value.name(), name, nameSize) : result;
}

template <class Char>
LONG queryValue(HKEY handle, const Char* valueName, const DWORD* reserved, LPDWORD type, LPBYTE data,
                LPDWORD dataSize) {
    if (const auto fault = faults().at("RegQueryValueExA")) return *fault;
    if (reserved != nullptr || (data != nullptr && dataSize == nullptr)) return ERROR_INVALID_PARAMETER;
    RegistryKey* key = nullptr;
    if (const LONG result = machine().registry.resolve(handle, KEY_QUERY_VALUE, key)) return result;
    const RegistryValueNode* value = machine().registry.tree().value(key, StoredText(valueName).view());
    if (value == nullptr) {
        if (type != nullptr) *type = REG_NONE;
        if (data == nullptr && dataSize != nullptr) *dataSize = 0;
        return ERROR_FILE_NOT_FOUND;
    }
    if (type != nullptr) *type = value->type();
    return copyData(*value, data, dataSize, valueName);
}

}  // namespace

LONG RegEnumValueA(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                   LPBYTE data, LPDWORD dataSize) {
    return enumValue(key, index, name, nameSize, reserved, type, data, dataSize);
}

LONG RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                   LPBYTE data, LPDWORD dataSize) {
    if (!machine().registry.ntFamily()) return ERROR_CALL_NOT_IMPLEMENTED;
    return enumValue(key, index, name, nameSize, reserved, type, data, dataSize);
}

LONG RegQueryValueExA(HKEY key, LPCSTR valueName, LPDWORD reserved, LPDWORD type, LPBYTE data,
                      LPDWORD dataSize) {
    return queryValue(key, valueName, reserved, type, data, dataSize);
}

LONG RegQueryValueExW(HKEY key, LPCWSTR valueName, LPDWORD reserved, LPDWORD type, LPBYTE data,
                      LPDWORD dataSize) {
    if (!machine().registry.ntFamily()) return ERROR_CALL_NOT_IMPLEMENTED;
    return queryValue(key, valueName, reserved, type, data, dataSize);
}
