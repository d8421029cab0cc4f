#include "core/time.h"

#include <array>

#include "platform/events.h"

namespace bromvale {
namespace {

// Long enough for every day and month name of a long format.
using Buffer = std::array<char, 128>;

std::string formatted(const Buffer& buffer, int length) {
    return length > 0 ? std::string(buffer.data(), static_cast<std::size_t>(length - 1)) : std::string();
}

std::string dateOf(DWORD flags, const char* picture) {
    Buffer buffer{};
    return formatted(buffer, GetDateFormatA(LOCALE_USER_DEFAULT, flags, nullptr, picture, buffer.data(),
                                            static_cast<int>(buffer.size())));
}

// How long Pause sleeps at most before it serves events again.
constexpr unsigned kPauseSlice = 10;

}  // namespace

double secondsOfDay() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return now.wHour * 3600 + now.wMinute * 60 + now.wSecond + now.wMilliseconds / 1000.0;
}

std::string dateText() {
    return dateOf(DATE_SHORTDATE, nullptr);
}

std::string dateText(const char* picture) {
    return dateOf(0, picture);
}

std::string timeText() {
    return timeText(nullptr);
}

std::string timeText(const char* picture) {
    Buffer buffer{};
    return formatted(buffer, GetTimeFormatA(LOCALE_USER_DEFAULT, 0, nullptr, picture, buffer.data(),
                                            static_cast<int>(buffer.size())));
}

std::string dateTimeText(const SYSTEMTIME& time) {
    std::array<char, 128> date{};
    std::array<char, 128> clock{};
    GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, date.data(),
                   static_cast<int>(date.size()));
    GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &time, nullptr, clock.data(), static_cast<int>(clock.size()));
    return std::string(date.data()) + " " + clock.data();
}

void Pause(double seconds) {
    const double start = secondsOfDay();
    while (secondsOfDay() < start + seconds) {
        DoEvents();
        WaitForEvents(kPauseSlice);
    }
}

}  // namespace bromvale
