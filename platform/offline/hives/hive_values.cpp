#include "platform/offline/hives/hive_values.h"

#include <algorithm>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr std::uint32_t kLongestText = 65536;  // bytes: none that is looked for is longer

}  // namespace

bool sameName(std::u16string_view left, std::u16string_view right) {
    return std::ranges::equal(left, right,
                              [](char16_t a, char16_t b) { return upperUnit(a) == upperUnit(b); });
}

std::u16string textOfBytes(std::string_view utf16Bytes) {
    std::u16string text = hiveName(utf16Bytes, false);
    if (const std::size_t end = text.find(u'\0'); end != std::u16string::npos) text.resize(end);
    return text;
}

std::optional<HiveValue> valueAt(const Hive& hive, std::u16string_view path, std::u16string_view name) {
    const Cell cell = hive.find(hive.root(), path);
    if (cell == kNil) return std::nullopt;
    for (const Cell value : hive.values(hive.key(cell))) {
        HiveValue found = hive.value(value);
        if (sameName(found.name(), name)) return found;
    }
    return std::nullopt;
}

std::optional<std::u16string> textAt(const Hive& hive, std::u16string_view path, std::u16string_view name) {
    const std::optional<HiveValue> value = valueAt(hive, path, name);
    if (!value || (value->type != REG_SZ && value->type != REG_EXPAND_SZ) || value->size > kLongestText)
        return std::nullopt;
    return textOfBytes(hive.data(*value));
}

std::optional<std::uint32_t> numberAt(const Hive& hive, std::u16string_view path, std::u16string_view name) {
    const std::optional<HiveValue> value = valueAt(hive, path, name);
    if (!value || value->type != REG_DWORD || value->size != sizeof(std::uint32_t)) return std::nullopt;
    return HiveBytes(hive.data(*value)).u32(0);
}

}  // namespace bromvale::offline
