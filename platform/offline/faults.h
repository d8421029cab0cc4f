// Fault points of the offline machine. Every operation of the provider asks at(...) under its Windows name
// before it does anything, so a test can watch the calls in order, count them, or make one of them fail.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

class Faults {
  public:
    using Observer = std::function<void(std::string_view operation)>;

    // The result that the operation gives instead of working; nothing when it is to work.
    std::optional<LONG> at(std::string_view operation) {
        if (!armed_) return std::nullopt;
        return hit(operation);
    }

    // Told of every call before it works or fails; a kill test ends the process in here. One at a time.
    void observe(Observer observer);

    // The nth call from now (1 is the next one) gives `result`, once.
    void fail(std::string_view operation, unsigned nth, long result) {
        addRule(operation, nth, false, result);
    }
    // The nth call from now and all behind it give `result`.
    void failFrom(std::string_view operation, unsigned nth, long result) {
        addRule(operation, nth, true, result);
    }

    // Calls are counted from the first call of observe, fail, failFrom or this on; without one of them the
    // operations run at full speed and count nothing.
    void startCounting() { armed_ = true; }
    [[nodiscard]] unsigned long calls(std::string_view operation) const;
    [[nodiscard]] unsigned long allCalls() const { return all_; }

    // No observer, no faults, no counts.
    void clear() { *this = Faults(); }

  private:
    struct Rule {
        unsigned long call;
        bool onwards;
        LONG result;
    };
    struct Operation {
        unsigned long calls = 0;
        std::vector<Rule> rules;
    };

    void addRule(std::string_view operation, unsigned nth, bool onwards, long result);
    std::optional<LONG> hit(std::string_view operation);
    Operation& operation(std::string_view name);

    bool armed_ = false;
    unsigned long all_ = 0;
    Observer observer_;
    std::map<std::string, Operation, std::less<>> operations_;
};

// The fault points of the process's one machine.
Faults& faults();

}  // namespace bromvale::offline
