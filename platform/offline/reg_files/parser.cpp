#include "platform/offline/reg_files/parser.h"

#include <utility>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/registry/data.h"
#include "platform/offline/registry/registry.h"

namespace bromvale::offline {

namespace {

constexpr std::string_view kHeaderAnsi = "REGEDIT4";
constexpr std::string_view kHeaderWide = "Windows Registry Editor Version 5.00";

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
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
    if (!namesFit(path)) fail("a key name is longer than 255 characters");
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
