#include "repair/key_record.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "base/registry_file_text.h"
#include "core/registry_layer.h"
#include "platform/exact/text.h"
#include "platform/exact/whole_key.h"
#include "platform/machine.h"
#include "platform/registry.h"
#include "platform/wide.h"

namespace bromvale {
namespace {

constexpr DWORD kWindows2000 = 5;

// By the system itself: the header of the undo file is that of an old system on every one behind Windows XP.
// Nothing where it doesn't tell.
std::optional<bool> editorHasUnicode() {
    OSVERSIONINFOA info{};
    info.dwOSVersionInfoSize = sizeof info;
    if (GetVersionExA(&info) == 0) return std::nullopt;
    return info.dwPlatformId == VER_PLATFORM_WIN32_NT && info.dwMajorVersion >= kWindows2000;
}

// The form of the last record. The header above it has the same: it is not asked for a second time, since
// records below the header of the other form could not be put back.
bool lastRecordHasUnicode = false;

bool isText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// The hive's name and the sub key without empty elements, which no key has.
std::string namedPath(std::int32_t hive, std::string_view subKey) {
    std::string path(HiveName(hive));
    path.append("\\").append(subKey);
    const auto areBoth = [](char a, char b) { return a == '\\' && b == '\\'; };
    path.erase(std::unique(path.begin(), path.end(), areBoth), path.end());
    if (path.back() == '\\') path.pop_back();
    return path;
}

// Nothing where the system doesn't tell where the key lies.
std::optional<std::u16string> widePath(HKEY key, std::int32_t hive, std::string_view subKey) {
    if (seesAnotherHalf()) return realKeyPath(key);
    return wideText(namedPath(hive, subKey));
}

// The same in the code page. A program that runs in the manner of an old system on a 64-bit Windows is a
// 32-bit one there, too.
std::optional<std::string> narrowPath(HKEY key, std::int32_t hive, std::string_view subKey) {
    std::string path = namedPath(hive, subKey);
    if (seesAnotherHalf()) {
        const auto real = realKeyPath(key);
        if (!real) return std::nullopt;
        path = exactText(*real);
    }
    if (!isExact(path)) return std::nullopt;
    return path;
}

// The record of keys that lie at or below `top`, written by the empty `file`.
template <class Char>
KeyRecord recordOf(const std::vector<WholeKey<Char>>& keys, const std::optional<std::basic_string<Char>>& top,
                   RegistryFileText<Char> file, std::string& record) {
    if (!top) return KeyRecord::NoForm;
    record.clear();
    file.bytes() = std::move(record);
    for (const WholeKey<Char>& key : keys) {
        const std::basic_string<Char> path = *top + key.path;
        if (!file.holdsKey(path)) return KeyRecord::NoForm;
        file.key(path);
        for (const WholeValue<Char>& value : key.values) {
            if (!file.holdsName(value.name) || !file.holdsData(value.type, value.data))
                return KeyRecord::NoForm;
            file.value(value.name, value.type, value.data);
        }
    }
    record = std::move(file.bytes());
    return KeyRecord::Whole;
}

std::u16string unitsOf(std::string_view data) {
    std::u16string units;
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        units += static_cast<char16_t>(static_cast<unsigned char>(data[i]) |
                                       static_cast<unsigned char>(data[i + 1]) << 8);
    }
    return units;
}

// The value in the code page, nothing where that lacks a character of it.
std::optional<WholeValue<char>> inCodePage(const WholeValue<char16_t>& value) {
    WholeValue<char> result{exactText(value.name), value.type, value.data};
    if (isText(value.type)) {
        if (value.data.size() % sizeof(char16_t) != 0) return std::nullopt;
        result.data = exactText(unitsOf(value.data));
        if (!isExact(result.data)) return std::nullopt;
    }
    if (!isExact(result.name)) return std::nullopt;
    return result;
}

KeyRecord wideRecord(HKEY key, std::int32_t hive, std::string_view subKey, std::string& record) {
    std::vector<WholeKey<char16_t>> keys(1);
    if (!readWholeKey(key, keys[0])) return KeyRecord::Unreadable;
    return recordOf(keys, widePath(key, hive, subKey), RegistryFileText<char16_t>(), record);
}

// Windows NT4 keeps Unicode, and its registry editor can't write it down.
KeyRecord narrowedRecord(HKEY key, std::int32_t hive, std::string_view subKey, std::string& record) {
    WholeKey<char16_t> whole;
    if (!readWholeKey(key, whole)) return KeyRecord::Unreadable;
    std::vector<WholeKey<char>> keys(1);
    for (const WholeValue<char16_t>& value : whole.values) {
        const auto narrowed = inCodePage(value);
        if (!narrowed) return KeyRecord::NoForm;
        keys[0].values.push_back(*narrowed);
    }
    return recordOf(keys, narrowPath(key, hive, subKey), RegistryFileText<char>(codePageHasSingleBytes()),
                    record);
}

KeyRecord treeRecord(HKEY key, std::int32_t hive, std::string_view subKey, std::string& record) {
    std::vector<WholeKey<char>> keys;
    if (!readWholeTree(key, keys)) return KeyRecord::Unreadable;
    return recordOf(keys, narrowPath(key, hive, subKey), RegistryFileText<char>(codePageHasSingleBytes()),
                    record);
}

}  // namespace

std::string keyFileHeader() {
    return lastRecordHasUnicode ? RegistryFileText<char16_t>::header() : RegistryFileText<char>::header();
}

KeyRecord keyRecord(HKEY key, std::int32_t hive, std::string_view subKey, std::string& record) {
    const std::optional<bool> unicode = editorHasUnicode();
    if (!unicode) return KeyRecord::Unreadable;
    lastRecordHasUnicode = *unicode;
    if (wide() == nullptr) return treeRecord(key, hive, subKey, record);
    return *unicode ? wideRecord(key, hive, subKey, record) : narrowedRecord(key, hive, subKey, record);
}

}  // namespace bromvale
