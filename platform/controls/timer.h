#pragma once
#include "platform/controls/control_of.h"
#include "platform/events.h"

namespace bromvale {

// Runs onTimer every `interval` milliseconds while it is enabled and events are served. Interval 0 never
// fires.
class Timer : public ControlOf<Timer, ControlKind::Timer> {
  public:
    Timer(Form* form, std::string_view name) : ControlOf(form, name) { setEnabled(false); }
    std::function<void()> onTimer;
    [[nodiscard]] unsigned interval() const { return interval_; }
    void setInterval(unsigned milliseconds) {
        if (interval_ == milliseconds) return;
        interval_ = milliseconds;
        notify(Property::Interval);
    }
    void tick() {
        if (enabled() && interval_ > 0) dispatchUserEvent(onTimer);
    }

  private:
    unsigned interval_ = 0;
};

}  // namespace bromvale
