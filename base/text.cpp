#include "base/text.h"

#include "base/text_case.h"
#include "base/text_parts.h"

namespace bromvale {
namespace {

void mapInPlace(std::string& text, const CaseTable& table) {
    for (char& c : text) c = table[static_cast<unsigned char>(c)];
}

}  // namespace

std::string Left(std::string_view text, std::int64_t length) {
    return std::string(leftPart(text, length));
}

std::string Right(std::string_view text, std::int64_t length) {
    return std::string(rightPart(text, length));
}

std::string Mid(std::string_view text, std::int64_t start, std::int64_t length) {
    return std::string(midPart(text, start, length));
}

std::string Mid(std::string_view text, std::int64_t start) {
    return std::string(midPart(text, start, static_cast<std::int64_t>(text.size())));
}

std::int32_t InStr(std::string_view text, std::string_view sought) {
    return text.empty() ? 0 : static_cast<std::int32_t>(positionOf(text, sought));
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
    mapInPlace(result, lowerCaseTable());
    return result;
}

std::string UCase(std::string_view text) {
    std::string result(text);
    mapInPlace(result, upperCaseTable());
    return result;
}

void lowerInPlace(std::string& text) {
    mapInPlace(text, lowerCaseTable());
}

std::string withBackslash(std::string_view folder) {
    std::string result(folder);
    if (result.empty() || result.back() != '\\') result += '\\';
    return result;
}

}  // namespace bromvale
