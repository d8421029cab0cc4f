#include "platform/offline/faults.h"

#include <utility>

namespace bromvale::offline {

void Faults::observe(Observer observer) {
    observer_ = std::move(observer);
    armed_ = true;
}

void Faults::fail(std::string_view name, unsigned nth, long result) {
    auto& entry = operation(name);
    entry.rules.push_back({entry.calls + nth, false, static_cast<LONG>(result)});
    armed_ = true;
}

void Faults::failFrom(std::string_view name, unsigned nth, long result) {
    auto& entry = operation(name);
    entry.rules.push_back({entry.calls + nth, true, static_cast<LONG>(result)});
    armed_ = true;
}

unsigned long Faults::calls(std::string_view name) const {
    const auto found = operations_.find(name);
    return found == operations_.end() ? 0 : found->second.calls;
}

void Faults::clear() {
    *this = Faults();
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
    auto found = operations_.find(name);
    if (found == operations_.end()) found = operations_.emplace(name, Operation{}).first;
    return found->second;
}

}  // namespace bromvale::offline
