#pragma once
// What the code pages hold of the letters that the generated machines use: tables of the proof's own, so that
// a mistake in the program's or the offline machine's shows.
#include <string>
#include <string_view>

namespace bromvale::proof {

using Text = std::u16string;
using View = std::u16string_view;

// The conversion to the page and back gives the same. On pages with several bytes a character only ASCII
// counts.
[[nodiscard]] bool isExactOn(unsigned codePage, View text);

// What the ANSI functions hand out on Windows-1252: the nearest letter, or "?". ASCII on any page.
[[nodiscard]] std::string nearest1252(View text);

// Letter by letter, for the letters of the machines.
[[nodiscard]] char16_t lower(char16_t letter);
[[nodiscard]] Text lower(View text);
[[nodiscard]] bool equalNoCase(View left, View right);
// As the registry orders its keys.
[[nodiscard]] bool comesBefore(View left, View right);

[[nodiscard]] std::string utf8(View text);
[[nodiscard]] Text fromUtf8(std::string_view text);
// For reports: what is no printable ASCII stands as <0141>.
[[nodiscard]] std::string readable(View text);
[[nodiscard]] std::string readable(std::string_view ansi);

// The bytes of a text in UTF-16LE, and back (an odd last byte is left out).
[[nodiscard]] std::string bytesOf(View text);
[[nodiscard]] Text textOf(std::string_view bytes);

}  // namespace bromvale::proof
