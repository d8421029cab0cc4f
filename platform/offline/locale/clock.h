#pragma once
#include <cstdint>
#include <functional>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

// Milliseconds of local time since 1601-01-01, the epoch of FILETIME.
using Milliseconds = std::int64_t;

[[nodiscard]] Milliseconds fromSystemTime(const SYSTEMTIME& time);
[[nodiscard]] SYSTEMTIME toSystemTime(Milliseconds time);
[[nodiscard]] FILETIME toFileTime(Milliseconds time);
[[nodiscard]] Milliseconds fromFileTime(const FILETIME& time);
// False for a date that the calendar does not have.
[[nodiscard]] bool isValid(const SYSTEMTIME& time);

// The machine's clock stands still but for waits, which move it on and take no time. Local time and universal
// time are `bias` apart; both are settable.
class Clock {
  public:
    Clock();
    [[nodiscard]] Milliseconds now() const { return now_; }
    [[nodiscard]] Milliseconds universalNow() const { return now_ + bias; }
    // Local time. Does not count as time that has passed: no timer becomes due.
    void set(const SYSTEMTIME& time);
    void set(int year, int month, int day, int hour, int minute, int second, int millisecond = 0);
    void advance(Milliseconds time);
    [[nodiscard]] Milliseconds elapsed() const { return elapsed_; }
    // Universal time minus local time, as in Windows' time zones: -60 minutes in Berlin in winter.
    Milliseconds bias = Milliseconds{-60} * 60 * 1000;
    // Told before time passes.
    std::function<void()> beforeAdvance;

  private:
    Milliseconds now_ = 0;
    Milliseconds elapsed_ = 0;
};

}  // namespace bromvale::offline
