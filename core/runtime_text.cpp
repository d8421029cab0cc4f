#include <algorithm>

#include "core/runtime.h"
#include "platform/machine.h"
#include "platform/text_case.h"

namespace bromvale {
namespace {

void mapInPlace(std::string& text, const CaseTable& table) {
    for (char& c : text) c = table[static_cast<unsigned char>(c)];
}

// Letters beyond ASCII have their partners elsewhere on other code pages: there they stay as they are, since
// what is lowered may be a path.
constexpr CaseTable asciiOnly(CaseTable table) {
    for (std::size_t code = 0x80; code < table.size(); ++code) table[code] = static_cast<char>(code);
    return table;
}
const CaseTable kUpperAscii = asciiOnly(kUpperCase);
const CaseTable kLowerAscii = asciiOnly(kLowerCase);
constexpr UINT kWestern = 1252;

const CaseTable& upperTable() {
    return GetACP() == kWestern ? kUpperCase : kUpperAscii;
}

const CaseTable& lowerTable() {
    return GetACP() == kWestern ? kLowerCase : kLowerAscii;
}

std::size_t checkedLength(std::int64_t length, std::size_t available) {
    if (length < 0) raise(5);
    return static_cast<std::size_t>(std::min<std::int64_t>(length, static_cast<std::int64_t>(available)));
}

std::string_view from(std::string_view text, std::int64_t start) {
    if (start < 1) raise(5);
    return text.substr(std::min(static_cast<std::size_t>(start - 1), text.size()));
}

}  // namespace

std::string Left(std::string_view text, std::int64_t length) {
    return std::string(text.substr(0, checkedLength(length, text.size())));
}

std::string Right(std::string_view text, std::int64_t length) {
    return std::string(text.substr(text.size() - checkedLength(length, text.size())));
}

std::string Mid(std::string_view text, std::int64_t start, std::int64_t length) {
    const std::string_view rest = from(text, start);
    return std::string(rest.substr(0, checkedLength(length, rest.size())));
}

std::string Mid(std::string_view text, std::int64_t start) {
    return std::string(from(text, start));
}

std::int32_t InStr(std::string_view text, std::string_view sought) {
    if (text.empty()) return 0;
    const std::size_t at = text.find(sought);
    return at == std::string_view::npos ? 0 : static_cast<std::int32_t>(at + 1);
}

std::string Replace(std::string_view text, std::string_view sought, std::string_view with) {
    std::string result;
    if (sought.empty()) return result = text;
    for (std::size_t at; (at = text.find(sought)) != std::string_view::npos;) {
        result.append(text.substr(0, at)).append(with);
        text.remove_prefix(at + sought.size());
    }
    return result.append(text);
}

std::string LCase(std::string_view text) {
    std::string result(text);
    mapInPlace(result, lowerTable());
    return result;
}

std::string UCase(std::string_view text) {
    std::string result(text);
    mapInPlace(result, upperTable());
    return result;
}

void lowerInPlace(std::string& text) {
    mapInPlace(text, lowerTable());
}

std::string withBackslash(std::string_view folder) {
    std::string result(folder);
    if (result.empty() || result.back() != '\\') result += '\\';
    return result;
}

}  // namespace bromvale
