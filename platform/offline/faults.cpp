#include "platform/offline/faults.h"

#include <utility>

namespace bromvale::offline {

void Faults::observe(Observer observer) {
    observer_ = std::move(observer);
    armed_ = true;
}

void Faults::addRule(std::string_view name, unsigned nth, bool onwards, long result) {
    auto& entry = operation(name);
    entry.rules.push_back({entry.calls + nth, onwards, static_cast<LONG>(result)});
    armed_ = true;
}

unsigned long Faults::calls(std::string_view name) const {
    const auto found = operations_.find(name);
    return found == operations_.end() ? 0 : found->second.calls;
}

std::optional<LONG> Faults::hit(std::string_view name) {
    auto& entry = operation(name);
    ++all_;
    const auto call = ++entry.calls;
    if (observer_) {
        // The observer may clear or replace itself and the rules, so it runs on a copy.
        const auto observer = observer_;
        observer(name);
    }
    for (const auto& rule : operation(name).rules) {
        if (call == rule.call || (rule.onwards && call > rule.call)) return rule.result;
    }
    return std::nullopt;
}

Faults::Operation& Faults::operation(std::string_view name) {
    const auto found = operations_.find(name);
    return found != operations_.end() ? found->second : operations_[std::string(name)];
}

}  // namespace bromvale::offline
