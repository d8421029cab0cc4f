#include "platform/offline/registry/data.h"

#include <utility>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr UINT kNarrow = 1252;

// One byte a character, where that loses nothing.
bool narrowed(std::string_view bytes, std::string& narrow) {
    if (bytes.size() % 2 != 0) return false;
    narrow.resize(bytes.size() / 2);
    for (std::size_t i = 0; i < narrow.size(); ++i) {
        const auto low = static_cast<unsigned char>(bytes[2 * i]);
        const auto high = static_cast<unsigned char>(bytes[2 * i + 1]);
        const auto unit = static_cast<char16_t>(low | high << 8);
        narrow[i] = ansiOf(unit);
        if (wideOf(narrow[i]) != unit) return false;
    }
    return true;
}

std::string bytesOf(std::u16string_view wide) {
    return wideBytesFromStored(storedFromWide(wide));
}

}  // namespace

bool isText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// Any text fits as Windows keeps it; most fit in half of that.
void StoredData::takeWide(std::string&& wide) {
    converts_ = true;
    narrow_ = narrowed(wide, converted_);
    if (!narrow_) converted_ = std::move(wide);
}

StoredData StoredData::fromWindows(DWORD type, std::string_view bytes) {
    StoredData data;
    data.given_ = bytes;
    if (isText(type)) data.takeWide(std::string(bytes));
    return data;
}

StoredData StoredData::fromAnsi(DWORD type, std::string_view bytes, UINT codePage) {
    StoredData data;
    data.given_ = bytes;
    data.narrow_ = isText(type);
    if (data.narrow_ && codePage != kNarrow && !isAscii(bytes))
        data.takeWide(bytesOf(wideFromAnsi(bytes, codePage).text));
    return data;
}

StoredData StoredData::fromText(std::string_view stored) {
    StoredData data;
    data.given_ = stored;
    data.narrow_ = true;
    if (!isAscii(stored)) data.takeWide(wideBytesFromStored(stored));
    return data;
}

GivenData GivenData::asAnsi(const RegistryValueNode& value, UINT codePage) {
    GivenData data;
    const RegistryData stored = value.data();
    data.given_ = stored.bytes;
    if (!isText(value.type()) || (stored.narrow && (codePage == kNarrow || isAscii(stored.bytes))))
        return data;
    const std::u16string wide =
        stored.narrow ? utf16FromAnsi(stored.bytes) : wideFromStored(storedFromWideBytes(stored.bytes));
    data.converted_ = ansiFromWide(wide, codePage).text;
    data.converts_ = true;
    return data;
}

GivenData GivenData::asWindows(const RegistryValueNode& value) {
    GivenData data;
    const RegistryData stored = value.data();
    data.given_ = stored.bytes;
    if (!stored.narrow) return data;
    data.converted_ = utf16BytesFromAnsi(stored.bytes);
    data.converts_ = true;
    return data;
}

}  // namespace bromvale::offline
