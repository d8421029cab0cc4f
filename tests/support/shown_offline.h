#pragma once
// What the window shows each time a routine writes a record into the log: between two pumps, too.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/machine.h"

namespace bromvale::testing {

// A text a record of `routine`: what it tells, then what `describe` gives at that time. Tracing must be on.
template <class Action, class Describe>
std::vector<std::string> shownAtRecords(std::string_view routine, Action action, Describe describe) {
    std::vector<std::string> shown;
    auto& events = offline::machine().events;
    events.sink = [&](const offline::Event& event) {
        if (event.kind != offline::EventKind::FileWritten || !event.text.ends_with("bromvale.log")) return;
        const std::string start = "; " + std::string(routine) + "; ";
        const std::size_t found = event.caption.find(start);
        if (found == std::string::npos) return;
        const std::size_t told = found + start.size();
        shown.push_back(event.caption.substr(told, event.caption.rfind("; 0; ") - told) + ": " + describe());
    };
    action();
    events.sink = nullptr;
    // A record may be written in parts of which each counts.
    shown.erase(std::unique(shown.begin(), shown.end()), shown.end());
    return shown;
}

}  // namespace bromvale::testing
