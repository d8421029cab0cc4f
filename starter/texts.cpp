#include "starter/texts.h"

#include <algorithm>

namespace bromvale::starter {
namespace {

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::u16string widened(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

bool isSameName(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, lowered, lowered);
}

std::string toUtf16Bytes(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

std::u16string fromUtf16Bytes(std::string_view bytes) {
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = static_cast<unsigned char>(bytes[i + 1]);
        text += static_cast<char16_t>(low | high << 8);
    }
    return text;
}

Value textValue(std::u16string name, std::u16string_view text) {
    std::u16string stored(text);
    stored += u'\0';
    return {std::move(name), kTextType, toUtf16Bytes(stored)};
}

std::optional<std::u16string> textOf(const Key& key, std::u16string_view name) {
    const auto found = std::ranges::find(key.values, name, &Value::name);
    if (found == key.values.end() || found->type != kTextType) return std::nullopt;
    std::u16string text = fromUtf16Bytes(found->data);
    text.erase(std::min(text.find(u'\0'), text.size()));
    return text;
}

}  // namespace bromvale::starter
