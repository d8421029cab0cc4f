#include "platform/offline/registry/data.h"

#include <utility>

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
StoredData StoredData::fromWide(std::string&& wide) {
    std::string narrow;
    if (narrowed(wide, narrow)) return {Converted(std::move(narrow)), true};
    return {Converted(std::move(wide)), false};
}

StoredData StoredData::fromWindows(DWORD type, std::string_view bytes) {
    return isText(type) ? fromWide(std::string(bytes)) : StoredData(Converted(bytes), false);
}

StoredData StoredData::fromAnsi(DWORD type, std::string_view bytes, UINT codePage) {
    if (isText(type) && codePage != kNarrow && !isAscii(bytes))
        return fromWide(bytesOf(wideFromAnsi(bytes, codePage).text));
    return {Converted(bytes), isText(type)};
}

StoredData StoredData::fromText(std::string_view stored) {
    return isAscii(stored) ? StoredData(Converted(stored), true) : fromWide(wideBytesFromStored(stored));
}

Converted ansiData(const RegistryValueNode& value, UINT codePage) {
    const auto [bytes, narrow] = value.data();
    if (!isText(value.type()) || (narrow && (codePage == kNarrow || isAscii(bytes)))) return Converted(bytes);
    const std::u16string wide = narrow ? utf16FromAnsi(bytes) : wideFromStored(storedFromWideBytes(bytes));
    return Converted(ansiFromWide(wide, codePage).text);
}

Converted windowsData(const RegistryValueNode& value) {
    const auto [bytes, narrow] = value.data();
    return narrow ? Converted(utf16BytesFromAnsi(bytes)) : Converted(bytes);
}

}  // namespace bromvale::offline
