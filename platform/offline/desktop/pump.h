#pragma once
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "platform/offline/locale/clock.h"

namespace bromvale {
class Timer;
}

namespace bromvale::offline {

// The machine's user: what happens whenever the program serves events. A scan serves them once for every
// value, so a call with nothing due costs a few nanoseconds.
class Pump {
  public:
    explicit Pump(const Clock& clock) : clock_(clock) {}

    // Told of each call before anything else happens.
    void observe(std::function<void(std::uint64_t call)> observer);
    // Runs `action` at the n-th call from now (1: the next one).
    void at(std::uint64_t n, std::function<void()> action);
    [[nodiscard]] std::uint64_t calls() const { return calls_; }

    void serve() {
        ++calls_;
        if (calls_ >= attention_) serveDue();
    }
    // There is nothing to paint and no frame to take hold of: it is counted.
    void serveWindows() { ++windowServings_; }
    [[nodiscard]] std::uint64_t windowServings() const { return windowServings_; }

    // Time passes or has passed: timers that run must be known before, and looked at after.
    void noteTimers();
    void timePassed() { attention_ = 0; }

    // The next action of the machine's script for RunEventLoop; false when there is none left.
    std::function<bool()> nextAction;

  private:
    struct Running {
        Timer* timer;
        unsigned interval;
        Milliseconds due;
    };
    void serveDue();
    void runTimers();

    const Clock& clock_;
    std::uint64_t calls_ = 0;
    std::uint64_t windowServings_ = 0;
    std::uint64_t attention_ = UINT64_MAX;  // the call from which serveDue has something to do
    std::multimap<std::uint64_t, std::function<void()>> actions_;
    std::function<void(std::uint64_t)> observer_;
    std::vector<Running> running_;
};

}  // namespace bromvale::offline
