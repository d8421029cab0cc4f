#include "platform/offline/locale/clock.h"

#include "base/calendar.h"

namespace bromvale::offline {
namespace {

constexpr Milliseconds kDay = Milliseconds{24} * 60 * 60 * 1000;

// Days from 1601-01-01 to the first of January.
Milliseconds daysSince1601(int year) {
    return daysBefore(year) - daysBefore(1601);
}

}  // namespace

bool isValid(const SYSTEMTIME& time) {
    return isDate(time.wDay, time.wMonth, time.wYear) && time.wHour < 24 && time.wMinute < 60 &&
           time.wSecond < 60 && time.wMilliseconds < 1000;
}

Milliseconds fromSystemTime(const SYSTEMTIME& time) {
    Milliseconds days = daysSince1601(time.wYear) + time.wDay - 1;
    for (int month = 1; month < time.wMonth; ++month) days += daysInMonth(month, time.wYear);
    return days * kDay + ((time.wHour * 60 + time.wMinute) * 60 + time.wSecond) * Milliseconds{1000} +
           time.wMilliseconds;
}

SYSTEMTIME toSystemTime(Milliseconds time) {
    Milliseconds days = time / kDay;
    Milliseconds rest = time % kDay;
    SYSTEMTIME result{};
    result.wDayOfWeek = static_cast<WORD>((days + 1) % 7);  // 1601 began on a Monday
    int year = 1601 + static_cast<int>(days / 366);         // never too late
    while (daysSince1601(year + 1) <= days) ++year;
    days -= daysSince1601(year);
    int month = 1;
    while (days >= daysInMonth(month, year)) days -= daysInMonth(month++, year);
    result.wYear = static_cast<WORD>(year);
    result.wMonth = static_cast<WORD>(month);
    result.wDay = static_cast<WORD>(days + 1);
    result.wMilliseconds = static_cast<WORD>(rest % 1000);
    rest /= 1000;
    result.wSecond = static_cast<WORD>(rest % 60);
    rest /= 60;
    result.wMinute = static_cast<WORD>(rest % 60);
    result.wHour = static_cast<WORD>(rest / 60);
    return result;
}

FILETIME toFileTime(Milliseconds time) {
    const auto ticks = static_cast<std::uint64_t>(time) * 10000u;
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

Milliseconds fromFileTime(const FILETIME& time) {
    const std::uint64_t ticks = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    return static_cast<Milliseconds>(ticks / 10000u);
}

Clock::Clock() {
    set(2026, 11, 15, 7, 12, 9);
}

void Clock::set(const SYSTEMTIME& time) {
    now_ = fromSystemTime(time);
}

void Clock::set(int year, int month, int day, int hour, int minute, int second, int millisecond) {
    const auto word = [](int number) { return static_cast<WORD>(number); };
    set({word(year), word(month), 0, word(day), word(hour), word(minute), word(second), word(millisecond)});
}

void Clock::advance(Milliseconds time) {
    if (beforeAdvance) beforeAdvance();
    now_ += time;
    elapsed_ += time;
}

}  // namespace bromvale::offline
