#pragma once
#include "platform/controls/control.h"

namespace bromvale {

// Runs onTimer every `interval` milliseconds while it is enabled and events are served. Interval 0 never
// fires.
class Timer : public Control {
  public:
    Timer(Form* form, std::string_view name) : Control(form, name, ControlKind::Timer) { setEnabled(false); }
    std::function<void()> onTimer;
    [[nodiscard]] unsigned interval() const { return interval_; }
    void setInterval(unsigned milliseconds);
    void tick();

  private:
    unsigned interval_ = 0;
};

}  // namespace bromvale
