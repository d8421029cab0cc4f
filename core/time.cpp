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

// Of now, where `time` is null.
std::string dateOf(const SYSTEMTIME* time, DWORD flags, const char* picture) {
    Buffer buffer{};
    return formatted(buffer, GetDateFormatA(LOCALE_USER_DEFAULT, flags, time, picture, buffer.data(),
                                            static_cast<int>(buffer.size())));
}

std::string timeOf(const SYSTEMTIME* time, const char* picture) {
    Buffer buffer{};
    return formatted(buffer, GetTimeFormatA(LOCALE_USER_DEFAULT, 0, time, picture, buffer.data(),
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
    return dateOf(nullptr, DATE_SHORTDATE, nullptr);
}

std::string dateText(const char* picture) {
    return dateOf(nullptr, 0, picture);
}

std::string timeText() {
    return timeOf(nullptr, nullptr);
}

std::string timeText(const char* picture) {
    return timeOf(nullptr, picture);
}

std::string dateTimeText(const SYSTEMTIME& time) {
    return dateOf(&time, DATE_SHORTDATE, nullptr) + " " + timeOf(&time, nullptr);
}

void Pause(double seconds) {
    const double start = secondsOfDay();
    while (secondsOfDay() < start + seconds) {
        DoEvents();
        WaitForEvents(kPauseSlice);
    }
}

}  // namespace bromvale
