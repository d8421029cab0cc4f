#include "platform/exact/registry.h"

#include <array>
#include <cstring>

#include "platform/exact/text.h"
#include "platform/wide.h"

namespace bromvale {
namespace {

constexpr DWORD kNameBytes = 255;  // with the NUL
constexpr DWORD kDataBytes = 256;

using WideName = std::array<char16_t, kNameBytes + 1>;
using WideData = std::array<char16_t, kDataBytes>;

// A text with a NUL behind it, in UTF-16. A value's name of plain letters, which nearly all are, needs no
// memory of its own: this stands in the middle of the scan.
class WideZ {
  public:
    explicit WideZ(const char* text) {
        std::size_t length = 0;
        for (; length < short_.size() && isPlainLetter(text[length]); ++length)
            short_[length] = static_cast<char16_t>(text[length]);
        if (length < short_.size() && text[length] == '\0') {
            short_[length] = u'\0';
        } else {
            long_ = wideText(text);
            text_ = long_.c_str();
        }
    }
    WideZ(const WideZ&) = delete;
    WideZ& operator=(const WideZ&) = delete;
    [[nodiscard]] const WCHAR* get() const { return units(text_); }

  private:
    static bool isPlainLetter(char c) { return c > kMark && static_cast<unsigned char>(c) < 0x80; }

    std::array<char16_t, kNameBytes + 1> short_;
    std::u16string long_;
    const char16_t* text_ = short_.data();
};

BYTE* bytes(WideData& data) {
    return reinterpret_cast<BYTE*>(data.data());
}

bool isQueriedText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

// Texts are handed out in the code page, all other data as it is. A byte behind the last whole unit of a text
// is dropped.
bool dataFits(DWORD type, const WideData& data, DWORD size) {
    const bool converted = isQueriedText(type) || type == REG_MULTI_SZ;
    if (!converted) return size <= kDataBytes;
    if (size > sizeof data) return false;
    return ansiSize({data.data(), size / sizeof(char16_t)}) <= kDataBytes;
}

bool nameFits(std::u16string_view name) {
    return ansiSize(name) < kNameBytes;
}

std::u16string_view beforeNul(const WideData& data, DWORD size) {
    const std::u16string_view text(data.data(), size / sizeof(char16_t));
    return text.substr(0, text.find(u'\0'));
}

LONG enumAnsiKey(HKEY key, DWORD index, std::string& name) {
    std::array<char, kNameBytes + 1> text;
    const LONG status = RegEnumKeyA(key, index, text.data(), kNameBytes);
    if (status == ERROR_SUCCESS) name.append(text.data(), strnlen(text.data(), kNameBytes));
    return status;
}

LONG enumAnsiValue(HKEY key, DWORD index, std::string& name) {
    std::array<char, kNameBytes + 1> text;
    std::array<BYTE, kDataBytes> data;
    DWORD nameLength = kNameBytes;
    DWORD dataLength = kDataBytes;
    DWORD type = 0;
    const LONG status =
        RegEnumValueA(key, index, text.data(), &nameLength, nullptr, &type, data.data(), &dataLength);
    if (status == ERROR_SUCCESS) name.append(text.data(), strnlen(text.data(), kNameBytes));
    return status;
}

LONG queryAnsiText(HKEY key, const char* name, std::string& text) {
    std::array<char, kDataBytes> data;
    DWORD length = kDataBytes;
    DWORD type = 0;
    const LONG status =
        RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &length);
    if (status == ERROR_SUCCESS && isQueriedText(type))
        text.append(data.data(), strnlen(data.data(), length));
    return status;
}

}  // namespace

LONG openExactKey(HKEY root, const char* path, REGSAM access, HKEY& key) {
    if (wide() == nullptr || isExact(path)) return RegOpenKeyExA(root, path, 0, access, &key);
    return wide()->openKey(root, WideZ(path).get(), 0, access, &key);
}

LONG enumExactKey(HKEY key, DWORD index, std::string& name) {
    if (wide() == nullptr) return enumAnsiKey(key, index, name);
    WideName text;
    auto length = static_cast<DWORD>(text.size());
    const LONG status =
        wide()->enumKey(key, index, units(text.data()), &length, nullptr, nullptr, nullptr, nullptr);
    if (status != ERROR_SUCCESS) return status;
    const std::u16string_view found(text.data(), length);
    if (!nameFits(found)) return ERROR_MORE_DATA;
    appendExact(name, found.substr(0, found.find(u'\0')));
    return status;
}

LONG enumExactValue(HKEY key, DWORD index, std::string& name) {
    if (wide() == nullptr) return enumAnsiValue(key, index, name);
    WideName text;
    WideData data;
    auto nameLength = static_cast<DWORD>(text.size());
    // Where a character is a byte, the size alone tells whether the data fits, and nothing need be copied.
    const bool sizeTells = codePageHasSingleBytes();
    DWORD dataLength = sizeof data;
    DWORD type = 0;
    const LONG status = wide()->enumValue(key, index, units(text.data()), &nameLength, nullptr, &type,
                                          sizeTells ? nullptr : bytes(data), &dataLength);
    if (status != ERROR_SUCCESS) return status;
    const std::u16string_view found(text.data(), nameLength);
    if (!dataFits(type, data, dataLength) || !nameFits(found)) return ERROR_MORE_DATA;
    appendExact(name, found.substr(0, found.find(u'\0')));
    return status;
}

LONG queryExactText(HKEY key, const char* name, std::string& text) {
    if (wide() == nullptr) return queryAnsiText(key, name, text);
    WideData data;
    DWORD length = sizeof data;
    DWORD type = 0;
    const LONG status = wide()->queryValue(key, WideZ(name).get(), nullptr, &type, bytes(data), &length);
    if (status != ERROR_SUCCESS) return status;
    if (!dataFits(type, data, length)) return ERROR_MORE_DATA;
    if (isQueriedText(type)) appendExact(text, beforeNul(data, length));
    return status;
}

}  // namespace bromvale
