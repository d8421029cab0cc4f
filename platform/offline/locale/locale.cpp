#include "platform/offline/locale/locale.h"

#include "platform/offline/locale/clock.h"

namespace bromvale::offline {
namespace {

std::string digits(unsigned number, std::size_t width) {
    std::string text = std::to_string(number);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

// Replaces each run of a letter that `element` knows, and takes the quotes off quoted text. A doubled quote
// inside is one.
template <class Element>
std::string expand(std::string_view picture, const Element& element) {
    std::string result;
    for (std::size_t i = 0; i < picture.size();) {
        const char c = picture[i];
        if (c == '\'') {
            for (++i; i < picture.size(); ++i) {
                if (picture[i] == '\'') {
                    if (i + 1 >= picture.size() || picture[i + 1] != '\'') break;
                    ++i;
                }
                result += picture[i];
            }
            ++i;
            continue;
        }
        std::size_t run = 1;
        while (i + run < picture.size() && picture[i + run] == c) ++run;
        if (!element(result, c, run)) result.append(run, c);
        i += run;
    }
    return result;
}

struct LocaleRow {
    LCTYPE first;  // of the texts between the bars, whose numbers follow each other
    std::string_view german;
    std::string_view english;
};

// Weeks begin on Monday.
constexpr LocaleRow kTexts[] = {
    {LOCALE_SDECIMAL, ",", "."},
    {LOCALE_STHOUSAND, ".", ","},
    {LOCALE_SCURRENCY, "€", "$"},
    {LOCALE_SLIST, ";", ","},
    {LOCALE_SDATE, ".", "/"},
    {LOCALE_STIME, ":", ":"},
    {LOCALE_SSHORTDATE, "dd.MM.yyyy", "M/d/yyyy"},
    {LOCALE_SLONGDATE, "dddd, d. MMMM yyyy", "dddd, MMMM dd, yyyy"},
    {LOCALE_STIMEFORMAT, "HH:mm:ss", "h:mm:ss tt"},
    {LOCALE_S1159, "", "AM"},
    {LOCALE_S2359, "", "PM"},
    {LOCALE_SDAYNAME1, "Montag|Dienstag|Mittwoch|Donnerstag|Freitag|Samstag|Sonntag",
     "Monday|Tuesday|Wednesday|Thursday|Friday|Saturday|Sunday"},
    {LOCALE_SABBREVDAYNAME1, "Mo|Di|Mi|Do|Fr|Sa|So", "Mon|Tue|Wed|Thu|Fri|Sat|Sun"},
    {LOCALE_SMONTHNAME1, "Januar|Februar|März|April|Mai|Juni|Juli|August|September|Oktober|November|Dezember",
     "January|February|March|April|May|June|July|August|September|October|November|December"},
    {LOCALE_SABBREVMONTHNAME1, "Jan|Feb|Mrz|Apr|Mai|Jun|Jul|Aug|Sep|Okt|Nov|Dez",
     "Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec"},
};

Locale localeOf(std::string_view LocaleRow::*language) {
    Locale locale;
    for (const LocaleRow& row : kTexts) {
        LCTYPE type = row.first;
        for (std::string_view rest = row.*language;; rest.remove_prefix(1)) {
            const std::string_view text = rest.substr(0, rest.find('|'));
            locale[type++] = text;
            rest.remove_prefix(text.size());
            if (rest.empty()) break;
        }
    }
    return locale;
}

}  // namespace

Locale germanLocale() {
    return localeOf(&LocaleRow::german);
}

Locale englishLocale() {
    return localeOf(&LocaleRow::english);
}

std::string formatDate(const Locale& locale, const SYSTEMTIME& date, std::string_view picture) {
    // The weekday is the calendar's own, whatever the record says.
    const LCTYPE day = (toSystemTime(fromSystemTime(date)).wDayOfWeek + 6u) % 7u;
    return expand(picture, [&](std::string& out, char c, std::size_t run) {
        switch (c) {
            case 'd':
                out += run >= 4   ? locale.at(LOCALE_SDAYNAME1 + day)
                       : run == 3 ? locale.at(LOCALE_SABBREVDAYNAME1 + day)
                                  : digits(date.wDay, run);
                return true;
            case 'M':
                out += run >= 4   ? locale.at(LOCALE_SMONTHNAME1 + date.wMonth - 1u)
                       : run == 3 ? locale.at(LOCALE_SABBREVMONTHNAME1 + date.wMonth - 1u)
                                  : digits(date.wMonth, run);
                return true;
            case 'y': out += run >= 3 ? digits(date.wYear, 4) : digits(date.wYear % 100u, run); return true;
            case 'g': return true;
            default: return false;
        }
    });
}

std::string formatTime(const Locale& locale, const SYSTEMTIME& time, std::string_view picture, DWORD flags) {
    const bool full = (flags & TIME_FORCE24HOURFORMAT) != 0;
    const std::string& marker = locale.at(time.wHour < 12 ? LOCALE_S1159 : LOCALE_S2359);
    return expand(picture, [&](std::string& out, char c, std::size_t run) {
        const std::size_t width = run > 2 ? 2 : run;
        switch (c) {
            case 'h': out += digits(full ? time.wHour : (time.wHour + 11u) % 12u + 1u, width); return true;
            case 'H': out += digits(time.wHour, width); return true;
            case 'm': out += digits(time.wMinute, width); return true;
            case 's': out += digits(time.wSecond, width); return true;
            case 't':
                if ((flags & TIME_NOTIMEMARKER) == 0) out += run == 1 ? marker.substr(0, 1) : marker;
                return true;
            default: return false;
        }
    });
}

}  // namespace bromvale::offline
