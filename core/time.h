#pragma once
#include <string>

#include "platform/machine.h"

namespace bromvale {

// Local date and time.

// Seconds since midnight, with fractions.
[[nodiscard]] double secondsOfDay();
// In the user's short date and long time format.
[[nodiscard]] std::string dateText();
[[nodiscard]] std::string timeText();
// By a picture of GetDateFormatA / GetTimeFormatA in the user's locale, such as "ddMMyyyy" or "HH':'mm':'ss".
[[nodiscard]] std::string dateText(const char* picture);
[[nodiscard]] std::string timeText(const char* picture);

// Waits and serves events until the time of day has reached the start plus `seconds`. Past midnight the time
// of day falls back to 0, so that a wait begun just before it never ends: kept, since a target of the next
// day would need a date, and every caller waits seconds.
void Pause(double seconds);

// Date and time in the user's short date and long time format, a blank between them.
[[nodiscard]] std::string dateTimeText(const SYSTEMTIME& time);

}  // namespace bromvale
