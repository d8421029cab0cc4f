#include "platform/offline/stored_text.h"

#include <algorithm>

#include "platform/offline/code_page.h"

namespace bromvale::offline {
namespace {

template <class Char>
DWORD answer(std::basic_string_view<Char> text, Char* buffer, DWORD size) {
    if (size <= text.size()) return static_cast<DWORD>(text.size() + 1);
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = Char{};
    return static_cast<DWORD>(text.size());
}

}  // namespace

std::string storedFromWide(std::u16string_view wide) {
    return ansiFromUtf16(wide);
}

std::u16string wideFromStored(std::string_view stored) {
    return utf16FromAnsi(stored);
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

StoredText::StoredText(LPCSTR ansi) : view_(ansi == nullptr ? std::string_view() : std::string_view(ansi)) {}

StoredText::StoredText(LPCWSTR wide)
    : converted_(storedFromWide(wide == nullptr ? std::u16string_view() : std::u16string_view(wide))),
      view_(converted_) {}

AnsiText::AnsiText(std::string_view stored) : view_(stored) {}

DWORD answerLength(std::string_view text, LPSTR buffer, DWORD size) {
    return answer(text, buffer, size);
}

DWORD answerLength(std::u16string_view text, LPWSTR buffer, DWORD size) {
    return answer(text, buffer, size);
}

}  // namespace bromvale::offline
