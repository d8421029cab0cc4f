#include "scanner/fault_texts.h"

#include "base/system.h"
#include "platform/exact/text.h"

namespace bromvale {
namespace {

std::string doubled(std::string_view text) {
    std::string result;
    for (const char c : text) result.append(c == '\\' ? 2 : 1, c);
    return result;
}

// Where a character has several bytes, the second one may look like a backslash: there the doubling comes
// before the text is made plain. Elsewhere behind it, since a letter may become a backslash.
std::string dataOf(std::string_view value, Data form) {
    if (form == Data::AsItIs) return plainText(value);
    return codePageHasSingleBytes() ? doubled(plainText(value)) : plainText(doubled(value));
}

std::string keyLineOf(const Entry& entry, std::string_view behindHiveName) {
    std::string line = "[";
    return line.append(entry.hiveName).append(behindHiveName).append(entry.key);
}

}  // namespace

ResultRow objectRow(const Entry& entry, Data form) {
    const std::string name = plainText(entry.name);
    return {keyLineOf(entry, "\\"), entry.name == "@" ? name : '"' + name + '"', dataOf(entry.value, form),
            entry.hive};
}

ResultRow linkRow(const Entry& entry, std::string_view behindHiveName) {
    return {keyLineOf(entry, behindHiveName), plainText(entry.name), plainText(entry.value), entry.hive};
}

std::string entryText(const Entry& entry) {
    std::string text(entry.hiveName);
    text.append("\\").append(plainText(entry.key)).append(";").append(plainText(entry.name));
    return text.append("=").append(plainText(entry.value));
}

}  // namespace bromvale
