#include <array>
#include <utility>

#include "starter/texts.h"
#include "starter/win32/wide.h"
#include "starter/win32/windows_machine.h"

namespace bromvale::starter {
namespace {

// The half that 64-bit programs see; asked for on 64-bit systems alone, since older ones don't know it.
constexpr REGSAM kWideView = 0x0100;

constexpr DWORD kLongestName = 16384;  // units, with the NUL: the NT family's limit

REGSAM viewOf(const Place& place) {
    return place.view == View::Bits64 ? kWideView : 0;
}

HKEY hiveOf(const Place& place) {
    return place.hive == Hive::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

class OpenKey {
  public:
    OpenKey() = default;
    ~OpenKey() {
        if (key_ != nullptr) RegCloseKey(key_);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    LONG open(const Place& place, REGSAM access) {
        access |= viewOf(place);
        if (const WideCalls* const calls = wide()) {
            return calls->openKey(hiveOf(place), units(place.path), 0, access, &key_);
        }
        return RegOpenKeyExA(hiveOf(place), toCodePage(place.path).c_str(), 0, access, &key_);
    }
    LONG create(const Place& place, DWORD& disposition) {
        const REGSAM access = KEY_QUERY_VALUE | viewOf(place);
        if (const WideCalls* const calls = wide()) {
            return calls->createKey(hiveOf(place), units(place.path), 0, nullptr, 0, access, nullptr, &key_,
                                    &disposition);
        }
        return RegCreateKeyExA(hiveOf(place), toCodePage(place.path).c_str(), 0, nullptr, 0, access, nullptr,
                               &key_, &disposition);
    }
    operator HKEY() const { return key_; }

  private:
    HKEY key_ = nullptr;
};

bool isText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// One call of the form that the system has; the name's length comes back without its NUL.
LONG enumValue(HKEY key, DWORD index, Value& value, std::string& data, DWORD& size) {
    DWORD length = kLongestName;
    DWORD type = 0;
    BYTE* const buffer = reinterpret_cast<BYTE*>(data.data());
    LONG result;
    if (const WideCalls* const calls = wide()) {
        std::u16string name(kLongestName, u'\0');
        result = calls->enumValue(key, index, units(name), &length, nullptr, &type, buffer, &size);
        if (result == ERROR_SUCCESS) value.name = name.substr(0, length);
    } else {
        std::string name(kLongestName, '\0');
        result = RegEnumValueA(key, index, name.data(), &length, nullptr, &type, buffer, &size);
        if (result == ERROR_SUCCESS) value.name = fromCodePage({name.data(), length});
    }
    value.type = type;
    return result;
}

LONG readValue(HKEY key, DWORD index, Value& value) {
    std::string data(1024, '\0');
    for (;;) {
        auto size = static_cast<DWORD>(data.size());
        const LONG result = enumValue(key, index, value, data, size);
        if (result == ERROR_MORE_DATA) {
            data.resize(data.size() * 2);
            continue;
        }
        if (result != ERROR_SUCCESS) return result;
        data.resize(size);
        value.data =
            wide() == nullptr && isText(value.type) ? toUtf16Bytes(fromCodePage(data)) : std::move(data);
        return result;
    }
}

bool readValues(HKEY key, std::vector<Value>& values) {
    for (;;) {
        Value value{};
        const LONG result = readValue(key, static_cast<DWORD>(values.size()), value);
        if (result != ERROR_SUCCESS) return result == ERROR_NO_MORE_ITEMS;
        values.push_back(std::move(value));
    }
}

bool isNotThere(LONG result) {
    return result == ERROR_FILE_NOT_FOUND || result == ERROR_PATH_NOT_FOUND;
}

}  // namespace

Key WindowsMachine::readKey(const Place& place) {
    OpenKey key;
    const LONG opened = key.open(place, KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS);
    if (isNotThere(opened)) return {};
    Key result{Found::Unknown, {}, true};
    DWORD subKeys = 0;
    if (opened != ERROR_SUCCESS ||
        RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &subKeys, nullptr, nullptr, nullptr, nullptr,
                         nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
        return result;
    }
    result.hasSubKeys = subKeys != 0;
    if (readValues(key, result.values)) result.found = Found::Yes;
    return result;
}

bool WindowsMachine::mayCreate(const Place& place) {
    Place above = place;
    for (;;) {
        const std::size_t end = above.path.rfind(u'\\');
        above.path.erase(end == std::u16string::npos ? 0 : end);
        OpenKey key;
        const LONG result = key.open(above, KEY_CREATE_SUB_KEY);
        if (!isNotThere(result) || above.path.empty()) return result == ERROR_SUCCESS;
    }
}

Created WindowsMachine::createKey(const Place& place) {
    OpenKey key;
    DWORD disposition = 0;
    if (key.create(place, disposition) != ERROR_SUCCESS) return Created::Refused;
    return disposition == REG_CREATED_NEW_KEY ? Created::New : Created::WasThere;
}

bool WindowsMachine::setValue(const Place& place, const Value& value) {
    OpenKey key;
    if (key.open(place, KEY_SET_VALUE) != ERROR_SUCCESS) return false;
    if (const WideCalls* const calls = wide()) {
        // A text without its NUL stays so only where none stands behind it by chance.
        const std::string data = value.data + "\xFF\xFF";
        return calls->setValue(key, units(value.name), 0, value.type,
                               reinterpret_cast<const BYTE*>(data.data()),
                               static_cast<DWORD>(value.data.size())) == ERROR_SUCCESS;
    }
    const std::string data = isText(value.type) ? toCodePage(fromUtf16Bytes(value.data)) : value.data;
    return RegSetValueExA(key, toCodePage(value.name).c_str(), 0, value.type,
                          reinterpret_cast<const BYTE*>(data.c_str()),
                          static_cast<DWORD>(data.size())) == ERROR_SUCCESS;
}

bool WindowsMachine::removeValue(const Place& place, const std::u16string& name) {
    OpenKey key;
    if (key.open(place, KEY_SET_VALUE) != ERROR_SUCCESS) return false;
    const LONG result = wide() != nullptr ? wide()->deleteValue(key, units(name))
                                          : RegDeleteValueA(key, toCodePage(name).c_str());
    return result == ERROR_SUCCESS || isNotThere(result);
}

bool WindowsMachine::removeKey(const Place& place) {
    const WideCalls* const calls = wide();
    LONG result;
    if (calls == nullptr) {
        result = RegDeleteKeyA(hiveOf(place), toCodePage(place.path).c_str());
    } else if (calls->deleteKeyEx != nullptr) {
        result = calls->deleteKeyEx(hiveOf(place), units(place.path), viewOf(place), 0);
    } else {
        result = calls->deleteKey(hiveOf(place), units(place.path));
    }
    return result == ERROR_SUCCESS;
}

void WindowsMachine::flush() {
    RegFlushKey(HKEY_CURRENT_USER);
}

}  // namespace bromvale::starter
