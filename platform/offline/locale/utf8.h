// UTF-8 as Windows converts it: what is no character becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/locale/code_page.h"

namespace bromvale::offline {

std::string utf8FromWide(std::u16string_view wide);
WideConversion wideFromUtf8(std::string_view utf8);

// Number of bytes of the well-formed sequence that `text` starts with, 0 when it starts with none.
std::size_t utf8Length(std::string_view text, char32_t& number);
void appendUtf8(std::string& out, char32_t number);
void appendWide(std::u16string& out, char32_t number);

// The units of a surrogate pair at `place` are one character, any other unit is its own.
char32_t characterAt(std::u16string_view wide, std::size_t& place);

}  // namespace bromvale::offline
