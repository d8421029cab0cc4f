#include "base/registry_file_text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace bromvale {
namespace {

constexpr std::size_t kColumns = 80;
constexpr std::string_view kHexDigits = "0123456789abcdef";

constexpr std::uint32_t kText = 1;  // the types under the system's own numbers
constexpr std::uint32_t kExpandText = 2;
constexpr std::uint32_t kBinary = 3;
constexpr std::uint32_t kNumber = 4;
constexpr std::uint32_t kTexts = 7;

bool isText(std::uint32_t type) {
    return type == kText || type == kExpandText || type == kTexts;
}

// The text of a value, byte for byte as the form has it.
template <class Char>
class Units {
  public:
    explicit Units(std::string_view data) : data_(data) {}
    [[nodiscard]] std::size_t size() const { return data_.size() / sizeof(Char); }
    [[nodiscard]] bool isWhole() const { return data_.size() % sizeof(Char) == 0; }
    [[nodiscard]] Char operator[](std::size_t index) const {
        if constexpr (sizeof(Char) == 1) {
            return data_[index];
        } else {
            const auto low = static_cast<unsigned char>(data_[index * 2]);
            const auto high = static_cast<unsigned char>(data_[index * 2 + 1]);
            return static_cast<Char>(low | high << 8);
        }
    }

  private:
    std::string_view data_;
};

template <class Char>
unsigned numberOf(Char c) {
    return static_cast<std::make_unsigned_t<std::conditional_t<sizeof(Char) == 1, char, short>>>(c);
}

bool isControl(unsigned unit) {
    return unit < 0x20 || unit == 0x7F;
}

// What a reader of files may take for a line break, a mark or half a character stands as bytes.
bool isOddInUtf16(unsigned unit) {
    return (unit >= 0x80 && unit < 0xA0) || unit == 0x2028 || unit == 0x2029 ||
           (unit >= 0xD800 && unit < 0xE000) || unit == 0xFEFF || unit >= 0xFFFE;
}

constexpr unsigned kEndOfTextFile = 0x1A;  // for programs that read a file of the code page as text

template <class Char>
bool isLineBreakOrEnd(Char c) {
    const unsigned unit = numberOf(c);
    return unit == 0 || unit == '\r' || unit == '\n' || (sizeof(Char) == 1 && unit == kEndOfTextFile);
}

// Of one byte.
struct Digits {
    std::array<char, 2> both;
    [[nodiscard]] std::string_view view() const { return {both.data(), both.size()}; }
};
Digits digitsOf(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return {{kHexDigits[byte >> 4], kHexDigits[byte & 0xF]}};
}

// Puts a unit where there is room for it; where the next one goes.
template <class Char>
char* put(char* to, Char c) {
    *to++ = static_cast<char>(c);
    if constexpr (sizeof(Char) == 2) *to++ = static_cast<char>(c >> 8);
    return to;
}

}  // namespace

template <class Char>
std::string RegistryFileText<Char>::header() {
    RegistryFileText file;
    if constexpr (sizeof(Char) == 1) {
        file.ascii("REGEDIT4\r\n");
    } else {
        file.units(View(u"\xFEFF"));
        file.ascii("Windows Registry Editor Version 5.00\r\n");
    }
    return file.bytes_;
}

template <class Char>
void RegistryFileText<Char>::key(View path) {
    ascii("\r\n[");
    units(path);
    ascii("]\r\n");
}

template <class Char>
void RegistryFileText<Char>::value(View name, std::uint32_t type, std::string_view data) {
    const std::size_t start = bytes_.size();
    if (name.empty()) {
        ascii("@");
    } else {
        quoted(name, name.size());
    }
    ascii("=");
    if (isPlainText(type, data)) {
        const Units<Char> text(data);
        quoted(text, text.size() - 1);
    } else if (type == kNumber && data.size() == 4) {
        number(data);
    } else {
        hex(type, data, (bytes_.size() - start) / sizeof(Char));
    }
    ascii("\r\n");
}

template <class Char>
bool RegistryFileText<Char>::holdsKey(View path) const {
    return std::none_of(path.begin(), path.end(), [](Char c) { return isLineBreakOrEnd(c); });
}

template <class Char>
bool RegistryFileText<Char>::holdsName(View name) const {
    if (!holdsKey(name)) return false;
    if (singleBytes_) return true;
    const auto isSecondByte = [](Char first, Char second) {
        return numberOf(first) >= 0x80 && (second == '"' || second == '\\');
    };
    return std::adjacent_find(name.begin(), name.end(), isSecondByte) == name.end();
}

template <class Char>
bool RegistryFileText<Char>::holdsData(std::uint32_t type, std::string_view data) {
    if (!isText(type) || data.empty()) return true;
    const Units<Char> units(data);
    return units.isWhole() && units[units.size() - 1] == 0;
}

// One NUL at the end and nothing that a quoted text can't hold for certain.
template <class Char>
bool RegistryFileText<Char>::isPlainText(std::uint32_t type, std::string_view data) const {
    if (type != kText || data.empty() || !holdsData(type, data)) return false;
    const Units<Char> units(data);
    for (std::size_t i = 0; i + 1 < units.size(); ++i) {
        const unsigned unit = numberOf(units[i]);
        if (isControl(unit)) return false;
        if (sizeof(Char) == 2 ? isOddInUtf16(unit) : !singleBytes_ && unit >= 0x80) return false;
    }
    return true;
}

// Room for that many more units, to be filled by put: thousands of keys are written, unit by unit.
template <class Char>
char* RegistryFileText<Char>::roomFor(std::size_t count) {
    const std::size_t start = bytes_.size();
    bytes_.resize(start + count * sizeof(Char));
    return bytes_.data() + start;
}

template <class Char>
void RegistryFileText<Char>::units(View text) {
    char* to = roomFor(text.size());
    for (const Char c : text) to = put(to, c);
}

template <class Char>
void RegistryFileText<Char>::ascii(std::string_view text) {
    char* to = roomFor(text.size());
    for (const char c : text) to = put(to, static_cast<Char>(c));
}

template <class Char>
template <class Text>
void RegistryFileText<Char>::quoted(const Text& text, std::size_t size) {
    constexpr Char kQuote = '"';
    constexpr Char kEscape = '\\';
    char* to = put(roomFor(2 * size + 2), kQuote);
    for (std::size_t i = 0; i < size; ++i) {
        const Char c = text[i];
        if (c == kQuote || c == kEscape) to = put(to, kEscape);
        to = put(to, c);
    }
    to = put(to, kQuote);
    bytes_.resize(static_cast<std::size_t>(to - bytes_.data()));
}

template <class Char>
void RegistryFileText<Char>::number(std::string_view data) {
    ascii("dword:");
    for (std::size_t i = 4; i-- > 0;) ascii(digitsOf(data[i]).view());
}

template <class Char>
void RegistryFileText<Char>::hex(std::uint32_t type, std::string_view data, std::size_t column) {
    std::string line = "hex";
    if (type != kBinary) {
        char digits[8];
        const auto* const end = std::to_chars(digits, digits + sizeof digits, type, 16).ptr;
        line.append("(").append(std::string_view(digits, static_cast<std::size_t>(end - digits))).append(")");
    }
    line += ':';
    column += line.size();
    for (std::size_t i = 0; i < data.size(); ++i) {
        line += digitsOf(data[i]).view();
        column += 3;
        if (i + 1 == data.size()) break;
        line += ',';
        if (column + 3 >= kColumns) {
            ascii(line);
            line = "\\\r\n  ";
            column = 2;
        }
    }
    ascii(line);
}

template class RegistryFileText<char>;
template class RegistryFileText<char16_t>;

}  // namespace bromvale
