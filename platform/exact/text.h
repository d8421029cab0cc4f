#pragma once
#include <string>
#include <string_view>

#include "base/system.h"

namespace bromvale {

// Text inside the program is bytes in the system's ANSI code page, while Windows keeps UTF-16. Its ANSI
// functions put the nearest letter or "?" where the page has none, and such a text names something else, or
// nothing. So what comes from Windows carries a mark there: the byte 0x1A (SUBSTITUTE) and the number of the
// UTF-16 unit in five decimal digits, which neither upper nor lower case changes. Nothing may be judged dead,
// deleted, emptied, started or offered for removal on the strength of a text with marks.
//
// What counts is whether the conversion there and back gives the same. On code pages with several bytes a
// character (Japanese, UTF-8) only ASCII counts: positions in the program are bytes, and the second byte of a
// character may look like a backslash. U+001A itself is marked, too.
inline constexpr char kMark = '\x1A';
inline constexpr std::size_t kMarkSize = 6;

// No marks.
[[nodiscard]] bool isExact(std::string_view text);

// Adds a text of Windows with its marks.
void appendExact(std::string& text, std::u16string_view wide);
[[nodiscard]] std::string exactText(std::u16string_view wide);
// Adds the mark of one unit, whether the code page has it or not.
void appendMark(std::string& text, char16_t unit);

// The text that Windows holds. Bytes that aren't marks count as the code page has them.
[[nodiscard]] std::u16string wideText(std::string_view text);

// What the ANSI functions would have given, the nearest letter or "?" in place of the marks: for rows,
// records, captions and the log.
[[nodiscard]] std::string plainText(std::string_view text);

// A text of the program's own, whose literals are Windows-1252, in the system's code page. For the names of
// files: exact on every page, "ü" stands as "ue" where the page has none (and on pages with several bytes a
// character).
[[nodiscard]] std::string fileNameText(std::string_view literal);
// For what is written into files: the nearest letter where the page has none.
[[nodiscard]] std::string systemText(std::string_view literal);

// Bytes that the ANSI functions would need for a text, without a NUL.
[[nodiscard]] std::size_t ansiSize(std::u16string_view wide);

// False on a system of the 9x family with several bytes a character: nothing there says where one ends.
[[nodiscard]] bool textsCanBeTold();

}  // namespace bromvale
