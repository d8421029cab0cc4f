#pragma once
#include <array>
#include <string>
#include <string_view>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

// What GetLocaleInfoA, GetDateFormatA and GetTimeFormatA know of the user's country. Every field may be set.
struct Locale {
    std::string name;
    std::string decimal;
    std::string thousand;
    std::string currency;
    std::string list;
    std::string dateSign;
    std::string timeSign;
    std::string shortDate;
    std::string longDate;
    std::string timeFormat;
    std::string morning;
    std::string afternoon;
    std::array<std::string, 7> dayNames;  // from Monday on
    std::array<std::string, 7> shortDayNames;
    std::array<std::string, 12> monthNames;
    std::array<std::string, 12> shortMonthNames;
};

[[nodiscard]] Locale germanLocale();
[[nodiscard]] Locale englishLocale();

// By the pictures of GetDateFormatA and GetTimeFormatA: d, M, y and h, H, m, s, t; text in single quotes
// stands as it is.
[[nodiscard]] std::string formatDate(const Locale& locale, const SYSTEMTIME& date, std::string_view picture);
[[nodiscard]] std::string formatTime(const Locale& locale, const SYSTEMTIME& time, std::string_view picture,
                                     DWORD flags);

}  // namespace bromvale::offline
