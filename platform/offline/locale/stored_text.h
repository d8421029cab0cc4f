// The form in which names stand in the registry's tree and on the drives, and the ways into it and out of it.
//
// A stored text is the UTF-16 of Windows, each unit for itself in the form that UTF-8 has for its number: one
// to three bytes. So ASCII is ASCII, half a surrogate pair survives, pieces of texts can be put together, and
// texts are ordered as their units are. What the host calls by other names (its files, the terminal) goes
// through utf8FromStored and storedFromUtf8.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

std::string storedFromWide(std::u16string_view wide);
std::u16string wideFromStored(std::string_view stored);
// Windows-1252, whatever the machine's code page is: for those who set up a machine. Back it goes with the
// nearest letters, then '?'.
std::string storedFromAnsi(std::string_view ansi);
std::string ansiFromStored(std::string_view stored);
// Names of the host's files. Bytes that are no UTF-8 stand as the units DC80 to DCFF and come back from
// there.
std::string storedFromUtf8(std::string_view utf8);
std::string utf8FromStored(std::string_view stored);
// UTF-16LE, as Windows keeps texts; an odd last byte is dropped.
std::string storedFromWideBytes(std::string_view bytes);
std::string wideBytesFromStored(std::string_view stored);

[[nodiscard]] bool isAscii(std::string_view text);
// UTF-16 units.
[[nodiscard]] std::size_t unitCount(std::string_view stored);
void appendUnit(std::string& stored, char16_t unit);
// Writes one to three bytes and returns the place behind them.
char* putUnit(char* to, char16_t unit);

// Upper case of UTF-16 units as Windows' file systems and its registry see it: one unit stays one unit, and
// what has no single counterpart (ß, the dotless i) stays as it is.
[[nodiscard]] char16_t upperBeyondAscii(char16_t unit);

[[nodiscard]] inline char16_t upperUnit(char16_t unit) {
    if (unit >= 0x80) return upperBeyondAscii(unit);
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 0x20) : unit;
}

// Takes the first unit off a text that is not empty.
inline char16_t takeUnit(std::string_view& stored) {
    const auto byteAt = [&stored](std::size_t place) { return static_cast<unsigned char>(stored[place]); };
    const unsigned first = byteAt(0);
    if (first < 0x80) {
        stored.remove_prefix(1);
        return static_cast<char16_t>(first);
    }
    const bool three = first >= 0xE0;
    const unsigned number = three ? (first & 0x0F) << 12 | (byteAt(1) & 0x3Fu) << 6 | (byteAt(2) & 0x3Fu)
                                  : (first & 0x1F) << 6 | (byteAt(1) & 0x3Fu);
    stored.remove_prefix(three ? 3 : 2);
    return static_cast<char16_t>(number);
}

// Orders by the units of the upper-cased texts, as Windows keeps sub keys and folders. Below, equal to or
// above 0.
[[nodiscard]] int compareStored(std::string_view left, std::string_view right);
// Without case.
[[nodiscard]] bool sameStored(std::string_view left, std::string_view right);
[[nodiscard]] std::string upperStored(std::string_view stored);

// A text as somebody else wants it. Refers to the one that it was made of where that needs no conversion.
class Converted {
  public:
    explicit Converted(std::string_view given) : given_(given) {}
    explicit Converted(std::string&& own) : own_(std::move(own)) {}

    [[nodiscard]] std::string_view view() const { return own_ ? std::string_view(*own_) : given_; }

  private:
    std::string_view given_;
    std::optional<std::string> own_;
};

// A name or path that a caller hands in, in the stored form. On the 9x family a wide text comes in as what
// the code page holds of it.
class StoredText : public Converted {
  public:
    // In the machine's code page; null is the empty text.
    explicit StoredText(LPCSTR ansi) : StoredText(ansi == nullptr ? std::string_view() : ansi) {}
    explicit StoredText(std::string_view ansi);
    explicit StoredText(LPCWSTR wide) : StoredText(wide == nullptr ? std::u16string_view() : wide) {}
    explicit StoredText(std::u16string_view wide);
};

// What the ANSI functions give for a stored text.
class AnsiText : public Converted {
  public:
    explicit AnsiText(std::string_view stored);
    operator std::string_view() const { return view(); }
};
// What the ANSI or the wide functions give for it.
template <class Char>
auto textFor(std::string_view stored) {
    if constexpr (std::is_same_v<Char, char>) {
        return AnsiText(stored);
    } else {
        return wideFromStored(stored);
    }
}

// What the 9x family knows of a name: as the code page holds it, with an underscore where it lacks a letter.
[[nodiscard]] std::string withinCodePage(std::string_view stored);

// The answers of functions that fill a buffer and give its length without NUL, or the size that is needed
// with it.
DWORD answerLength(std::string_view text, LPSTR buffer, DWORD size);
DWORD answerLength(std::u16string_view text, LPWSTR buffer, DWORD size);

}  // namespace bromvale::offline
