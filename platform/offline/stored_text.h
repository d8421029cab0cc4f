// The form in which names stand in the registry's tree and on the drives, and the ways into it and out of it.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

std::string storedFromWide(std::u16string_view wide);
std::u16string wideFromStored(std::string_view stored);

[[nodiscard]] bool isAscii(std::string_view text);

// A name or path that a caller hands in, in the stored form. Refers to the caller's text where that is ASCII.
class StoredText {
  public:
    // In the machine's code page; null is the empty text.
    explicit StoredText(LPCSTR ansi);
    explicit StoredText(LPCWSTR wide);
    StoredText(const StoredText&) = delete;
    StoredText& operator=(const StoredText&) = delete;

    [[nodiscard]] std::string_view view() const { return view_; }

  private:
    std::string converted_;
    std::string_view view_;
};

// What the ANSI functions give for a stored text. Refers to it where it is ASCII.
class AnsiText {
  public:
    explicit AnsiText(std::string_view stored);
    AnsiText(const AnsiText&) = delete;
    AnsiText& operator=(const AnsiText&) = delete;

    [[nodiscard]] std::string_view view() const { return view_; }

  private:
    std::string converted_;
    std::string_view view_;
};

// The answers of functions that fill a buffer and give its length without NUL, or the size that is needed
// with it.
DWORD answerLength(std::string_view text, LPSTR buffer, DWORD size);
DWORD answerLength(std::u16string_view text, LPWSTR buffer, DWORD size);

}  // namespace bromvale::offline
