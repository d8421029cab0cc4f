#include "core/registry_layer.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "base/c_text.h"
#include "base/failure.h"
#include "base/numbers.h"
#include "core/log.h"
#include "core/value_reader.h"

namespace bromvale {
namespace {

constexpr std::string_view kModule = "modKeyFunc";

struct HiveRow {
    std::uint32_t handle;
    std::string_view name;
};

// In the order of the comparison.
constexpr std::array kHives{
    HiveRow{0x80000000u, "HKEY_CLASSES_ROOT"}, HiveRow{0x80000005u, "HKEY_CURRENT_CONFIG"},
    HiveRow{0x80000001u, "HKEY_CURRENT_USER"}, HiveRow{0x80000002u, "HKEY_LOCAL_MACHINE"},
    HiveRow{0x80000006u, "HKEY_DYN_DATA"},     HiveRow{0x80000004u, "HKEY_PERFORMANCE_DATA"},
    HiveRow{0x80000003u, "HKEY_USERS"},
};

std::string keyText(std::int32_t hive, std::string_view subKey) {
    return std::to_string(hive).append("; ").append(subKey);
}

// "hive; sub key; third".
std::string keyText(std::int32_t hive, std::string_view subKey, std::string_view third) {
    return keyText(hive, subKey).append("; ").append(third);
}

// A key that stays null where it couldn't be opened; the calls that follow then fail by themselves.
HKEY openKey(std::int32_t hive, std::string_view subKey, REGSAM access) {
    HKEY key = nullptr;
    static_cast<void>(RegOpenKeyExA(hiveHandle(hive), CText(subKey).get(), 0, access, &key));
    return key;
}

HKEY openKey(std::int32_t hive, std::string_view subKey) {
    HKEY key = nullptr;
    static_cast<void>(RegOpenKeyA(hiveHandle(hive), CText(subKey).get(), &key));
    return key;
}

RegistryValue queryText(HKEY key, const char* name, DWORD size) {
    std::string buffer(size, '\0');
    if (RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(buffer.data()), &size) != 0)
        return {};
    return TrimNull(buffer);
}

RegistryValue queryNumber(HKEY key, const char* name, DWORD size) {
    std::array<BYTE, 4> bytes{};
    size = std::min<DWORD>(size, static_cast<DWORD>(bytes.size()));  // longer data gives no result
    if (RegQueryValueExA(key, name, nullptr, nullptr, bytes.data(), &size) != 0) return {};
    return static_cast<std::int16_t>(bytes[0] | bytes[1] << 8);
}

}  // namespace

HKEY hiveHandle(std::int32_t number) {
    return reinterpret_cast<HKEY>(static_cast<std::intptr_t>(number));
}

std::int32_t handleNumber(HKEY handle) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle)));
}

std::int32_t KeyExist(std::int32_t hive, std::string_view subKey, REGSAM access) {
    const HKEY key = openKey(hive, subKey, access);
    const std::int32_t number = handleNumber(key);
    if (number < 1) trace(kModule, "KeyExist", [&] { return keyText(hive, subKey, std::to_string(number)); });
    static_cast<void>(RegCloseKey(key));
    return number;
}

void DelKey(std::int32_t hive, std::string_view subKey, REGSAM access) {
    const HKEY key = openKey(hive, subKey, access);
    // The empty name means the opened key itself.
    static_cast<void>(RegDeleteKeyA(key, ""));
    trace(kModule, "DelKey", [&] { return keyText(hive, subKey, std::to_string(handleNumber(key))); });
    static_cast<void>(RegCloseKey(key));
}

void DelMissingKey(std::int32_t hive, std::string_view subKey) {
    trace(kModule, "DelKey", [&] { return keyText(hive, subKey, "0"); });
}

void DelKeyValue(std::int32_t hive, std::string_view subKey, std::string_view name) {
    try {
        const HKEY key = openKey(hive, subKey);
        if (key != nullptr) {
            static_cast<void>(RegDeleteValueA(key, CText(name).get()));
            trace(kModule, "DelKeyValue", [&] { return keyText(hive, subKey, name); });
        }
        static_cast<void>(RegCloseKey(key));
    } catch (const Failure&) {
        // Goes unreported, and the key stays open.
    }
}

void SetKeyValue(std::int32_t hive, std::string_view subKey, std::string_view name, std::string_view value,
                 std::uint32_t type, REGSAM access) {
    const HKEY key = openKey(hive, subKey, access);
    if (type == REG_SZ) {
        // The length leaves the terminator out; the platform finds it behind the text and stores it.
        static_cast<void>(RegSetValueExA(key, CText(name).get(), 0, REG_SZ,
                                         reinterpret_cast<const BYTE*>(CText(value).get()),
                                         static_cast<DWORD>(value.size())));
    } else {
        const std::array<BYTE, 4> word{toByte(value)};
        static_cast<void>(RegSetValueExA(key, CText(name).get(), 0, type, word.data(), 4));
    }
    trace(kModule, "SetKeyValue", [&] {
        return keyText(hive, subKey, std::to_string(type))
            .append("; ")
            .append(name)
            .append("; ")
            .append(value);
    });
    static_cast<void>(RegCloseKey(key));
}

RegistryValue ReadValue(std::int32_t hive, std::string_view subKey, std::string_view name) {
    const HKEY key = openKey(hive, subKey);
    const CText nameText(name);
    RegistryValue value;
    DWORD type = 0;
    DWORD size = 0;
    if (RegQueryValueExA(key, nameText.get(), nullptr, &type, nullptr, &size) == 0) {
        if (type == REG_SZ) value = queryText(key, nameText.get(), size);
        if (type == REG_BINARY) value = queryNumber(key, nameText.get(), size);
    }
    static_cast<void>(RegCloseKey(key));
    return value;
}

std::string FindValue(std::int32_t hive, std::string_view subKey, std::string_view name) {
    HKEY key = nullptr;
    if (RegOpenKeyA(hiveHandle(hive), CText(subKey).get(), &key) != 0) return {};
    for (ValueReader reader(key); reader.next();) {
        if (reader.dataLength() > 0 && reader.name() == name) return std::string(reader.text());
    }
    return {};
}

std::string_view HiveName(std::int32_t hive) {
    for (const HiveRow& row : kHives) {
        if (static_cast<std::int32_t>(row.handle) == hive) return row.name;
    }
    return {};
}

std::string TrimNull(std::string& text) {
    const std::size_t end = text.find('\0');
    if (end != std::string::npos) text.erase(end);
    return text;
}

}  // namespace bromvale
