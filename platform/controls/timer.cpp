#include "platform/controls/timer.h"

#include "platform/events.h"

namespace bromvale {

void Timer::setInterval(unsigned milliseconds) {
    if (interval_ == milliseconds) return;
    interval_ = milliseconds;
    notify(Property::Interval);
}

void Timer::tick() {
    if (enabled() && interval_ > 0) dispatchUserEvent(onTimer);
}

}  // namespace bromvale
