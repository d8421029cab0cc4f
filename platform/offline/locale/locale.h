#pragma once
#include <map>
#include <string>
#include <string_view>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

// What GetLocaleInfoA, GetDateFormatA and GetTimeFormatA know of the user's country, by the numbers of
// GetLocaleInfoA. Every text may be set.
using Locale = std::map<LCTYPE, std::string>;

[[nodiscard]] Locale germanLocale();
[[nodiscard]] Locale englishLocale();

// By the pictures of GetDateFormatA and GetTimeFormatA: d, M, y and h, H, m, s, t; text in single quotes
// stands as it is.
[[nodiscard]] std::string formatDate(const Locale& locale, const SYSTEMTIME& date, std::string_view picture);
[[nodiscard]] std::string formatTime(const Locale& locale, const SYSTEMTIME& time, std::string_view picture,
                                     DWORD flags);

}  // namespace bromvale::offline
