// What stands behind a value's name: texts, numbers and rows of bytes.
#include <array>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/reg_files/parser.h"
#include "platform/offline/registry/data.h"

namespace bromvale::offline {

namespace {

constexpr unsigned kNoDigit = 16;

constexpr std::array<unsigned char, 256> makeDigits() {
    std::array<unsigned char, 256> table{};
    for (auto& digit : table) digit = kNoDigit;
    for (unsigned i = 0; i < 10; ++i) table['0' + i] = static_cast<unsigned char>(i);
    for (unsigned i = 0; i < 6; ++i) {
        table['a' + i] = table['A' + i] = static_cast<unsigned char>(10 + i);
    }
    return table;
}

constexpr auto kDigits = makeDigits();

unsigned digitOf(char c) {
    return kDigits[static_cast<unsigned char>(c)];
}

// False when there is no digit, more than eight, or something else.
bool parseHex(std::string_view digits, std::uint32_t& number) {
    if (digits.empty() || digits.size() > 8) return false;
    number = 0;
    for (const char c : digits) {
        if (digitOf(c) == kNoDigit) return false;
        number = number << 4 | digitOf(c);
    }
    return true;
}

// The first quote or backslash; std::string_view::find_first_of is several times slower.
std::size_t specialAt(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"' || text[i] == '\\') return i;
    }
    return std::string_view::npos;
}

}  // namespace

// Text between quotes at the front of the rest. It may hold line breaks: the registry editor writes them raw.
// The result lies in the line itself or in `buffer`.
std::string_view RegFileParser::quoted(std::string& buffer) {
    rest_.remove_prefix(1);
    const std::size_t special = specialAt(rest_);
    if (special != std::string_view::npos && rest_[special] == '"') {
        const std::string_view text = rest_.substr(0, special);
        rest_.remove_prefix(special + 1);
        return text;
    }
    buffer.clear();
    for (;;) {
        const std::size_t stop = specialAt(rest_);
        buffer.append(rest_.substr(0, stop));
        if (stop == std::string_view::npos) {
            buffer.append(line_.ending);
            if (!lines_.next(line_)) fail("text without closing quote");
            rest_ = line_.text;
            if (rest_.find('\0') != std::string_view::npos) fail("a NUL character");
            continue;
        }
        const bool closed = rest_[stop] == '"';
        rest_.remove_prefix(stop + 1);
        if (closed) return buffer;
        if (rest_.empty() && line_.ending.empty()) fail("text without closing quote");
        if (rest_.empty() || (rest_.front() != '"' && rest_.front() != '\\')) {
            fail("wrong escape: only \\\\ and \\\" may follow a backslash in a text");
        }
        buffer += rest_.front();
        rest_.remove_prefix(1);
    }
}

void RegFileParser::readText(std::string_view name) {
    const std::string_view text = quoted(data_);
    expectLineEnd("text");
    if (text.data() != data_.data()) data_.assign(text);
    data_ += '\0';
    actions_.value(name, REG_SZ, StoredData::fromText(data_).view());
}

void RegFileParser::readNumber(std::string_view name, std::string_view digits) {
    const std::size_t length = std::min(digits.find_first_of(" \t;"), digits.size());
    std::uint32_t number = 0;
    if (!parseHex(digits.substr(0, length), number)) fail("a dword needs one to eight hex digits");
    rest_.remove_prefix(length);
    expectLineEnd("dword");
    if (length < 8) requireLineBreak();
    std::array<char, 4> bytes{};
    for (char& byte : bytes) {
        byte = static_cast<char>(number & 0xFF);
        number >>= 8;
    }
    actions_.value(name, REG_DWORD, {{bytes.data(), bytes.size()}});
}

void RegFileParser::readTypedBytes(std::string_view name) {
    const std::size_t close = rest_.find(')');
    std::uint32_t type = 0;
    if (close == std::string_view::npos || !parseHex(rest_.substr(0, close), type)) {
        fail("a type needs one to eight hex digits and a closing parenthesis");
    }
    rest_.remove_prefix(close + 1);
    if (!take(":")) fail("no \":\" behind the type");
    readBytes(name, type);
}

// A backslash at the line's end: the bytes go on in the next line.
bool RegFileParser::continued() {
    if (!take("\\")) return false;
    skipBlanks();
    if (!rest_.empty()) fail("text behind the backslash that continues the line");
    if (line_.ending.empty() || !lines_.next(line_)) fail("the line that continues the bytes is missing");
    statementLine_ = lines_.number();
    rest_ = line_.text;
    skipBlanks();
    return true;
}

void RegFileParser::readBytes(std::string_view name, std::uint32_t type) {
    data_.clear();
    skipBlanks();
    bool more = continued() || (!rest_.empty() && rest_.front() != ';');
    while (more) {
        const bool both = rest_.size() >= 2 && digitOf(rest_[0]) != kNoDigit && digitOf(rest_[1]) != kNoDigit;
        if (!both) fail("bytes need two hex digits each, with a comma between them");
        data_ += static_cast<char>(digitOf(rest_[0]) << 4 | digitOf(rest_[1]));
        rest_.remove_prefix(2);
        skipBlanks();
        more = take(",");
        if (!more) break;
        skipBlanks();
        while (continued()) {
        }
    }
    expectLineEnd("bytes");
    requireLineBreak();
    const StoredData data = wideData_ ? StoredData::fromWindows(type, data_)
                                      : StoredData::fromAnsi(type, data_, textRules().codePage);
    actions_.value(name, type, data.view());
}

}  // namespace bromvale::offline
