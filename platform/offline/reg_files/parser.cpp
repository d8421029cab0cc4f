#include "platform/offline/reg_files/parser.h"

#include <array>
#include <utility>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/registry/data.h"
#include "platform/offline/registry/registry.h"

namespace bromvale::offline {

namespace {

constexpr std::string_view kHeaderAnsi = "REGEDIT4";
constexpr std::string_view kHeaderWide = "Windows Registry Editor Version 5.00";
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

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
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

bool holdsLongName(std::string_view path) {
    if (path.size() <= kLongestKeyName) return false;
    for (auto name = nextPathName(path); !name.empty(); name = nextPathName(path)) {
        if (unitCount(name) > kLongestKeyName) return true;
    }
    return false;
}

}  // namespace

RegFileParser::RegFileParser(RegFileLines::Read read, RegFileActions& actions)
    : lines_(std::move(read)), actions_(actions) {}

void RegFileParser::fail(std::string reason) const {
    throw RegFileMalformed{statementLine_, std::move(reason)};
}

void RegFileParser::run() {
    statementLine_ = 1;
    readHeader();
    while (lines_.next(line_)) {
        statementLine_ = lines_.number();
        rest_ = line_.text;
        readLine();
    }
    if (lines_.endsWithinCharacter()) fail("the file ends within a UTF-16 character");
}

void RegFileParser::readHeader() {
    const bool any = lines_.next(line_);
    const std::string_view header = any ? withoutTrailingBlanks(line_.text) : std::string_view();
    wideData_ = header == kHeaderWide;
    if (!wideData_ && header != kHeaderAnsi) {
        fail("no header: the first line must be \"REGEDIT4\" or \"Windows Registry Editor Version 5.00\"");
    }
}

void RegFileParser::readLine() {
    if (rest_.find('\0') != std::string_view::npos) fail("a NUL character");
    skipBlanks();
    if (rest_.empty() || rest_.front() == ';') return;
    switch (rest_.front()) {
        case '[': readKey(); return;
        case '"':
        case '@': readValue(); return;
        default: fail("neither a key, a value nor a comment");
    }
}

// Nothing in a key line or in a row of bytes tells that it is whole; only the line break does. Without one it
// may be what a cut file has left of a longer line, and to load that would change the wrong key or half a
// value.
void RegFileParser::requireLineBreak() {
    if (line_.ending.empty()) fail("the last line has no line break, so it may be cut off");
}

// Key names may hold brackets, so the last one of the line closes the key.
void RegFileParser::readKey() {
    const std::size_t close = rest_.rfind(']');
    if (close == std::string_view::npos) fail("key without closing bracket");
    std::string_view path = rest_.substr(1, close - 1);
    rest_.remove_prefix(close + 1);
    expectLineEnd("key");
    requireLineBreak();

    const bool remove = !path.empty() && path.front() == '-';
    if (remove) path.remove_prefix(1);
    const std::string_view hiveText = path.substr(0, path.find('\\'));
    const auto hive = hiveByName(hiveText);
    if (!hive) fail("unknown hive \"" + ansiFromStored(hiveText) + "\"");
    path.remove_prefix(hiveText.size());
    if (holdsLongName(path)) fail("a key name is longer than 255 characters");
    inKey_ = true;
    if (remove) {
        if (path.find_first_not_of('\\') == std::string_view::npos) fail("a hive cannot be deleted");
        actions_.deleteKey(*hive, path);
    } else {
        actions_.key(*hive, path);
    }
}

void RegFileParser::readValue() {
    if (!inKey_) fail("a value before the first key");
    std::string_view name;
    if (!take("@")) name = quoted(name_);
    if (unitCount(name) > kLongestValueName) fail("the value name is longer than 16383 characters");
    if (name.data() != name_.data() && !name.empty()) {
        name_.assign(name);  // reading the data may move the line on
        name = name_;
    }
    skipBlanks();
    if (!take("=")) fail("no \"=\" behind the value name");
    skipBlanks();
    if (!rest_.empty() && rest_.front() == '"') {
        readText(name);
    } else if (take("-")) {
        expectLineEnd("\"-\"");
        actions_.deleteValue(name);
    } else if (take("dword:")) {
        readNumber(name, rest_);
    } else if (take("hex:")) {
        readBytes(name, REG_BINARY);
    } else if (take("hex(")) {
        readTypedBytes(name);
    } else {
        fail("unknown kind of data");
    }
}

void RegFileParser::readText(std::string_view name) {
    const std::string_view text = quoted(data_);
    expectLineEnd("text");
    if (text.data() != data_.data()) data_.assign(text);
    data_ += '\0';
    actions_.value(name, REG_SZ, StoredData::fromText(data_).view());
}

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

bool RegFileParser::take(std::string_view word) {
    if (!equalNoCase(rest_.substr(0, word.size()), word)) return false;
    rest_.remove_prefix(word.size());
    return true;
}

void RegFileParser::skipBlanks() {
    while (!rest_.empty() && isBlank(rest_.front())) rest_.remove_prefix(1);
}

// Blanks and a comment may follow.
void RegFileParser::expectLineEnd(std::string_view behind) {
    skipBlanks();
    if (!rest_.empty() && rest_.front() != ';') fail("unexpected text behind the " + std::string(behind));
}

}  // namespace bromvale::offline
