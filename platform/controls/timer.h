#pragma once
#include "platform/controls/control_of.h"

namespace bromvale {

// Runs onTimer every `interval` milliseconds while it is enabled and events are served. Interval 0 never
// fires.
class Timer : public ControlOf<Timer, ControlKind::Timer> {
  public:
    Timer(Form* form, std::string_view name) : ControlOf(form, name) { setEnabled(false); }
    std::function<void()> onTimer;
    [[nodiscard]] unsigned interval() const { return interval_; }
    void setInterval(unsigned milliseconds);
    void tick();

  private:
    unsigned interval_ = 0;
};

}  // namespace bromvale
