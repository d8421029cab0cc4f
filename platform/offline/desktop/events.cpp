#include "platform/offline/desktop/events.h"

#include <algorithm>
#include <iterator>

namespace bromvale::offline {

void Events::record(Event event) {
    if (sink) sink(event);
    if (keep) all_.push_back(std::move(event));
}

std::vector<Event> Events::of(EventKind kind) const {
    std::vector<Event> found;
    std::copy_if(all_.begin(), all_.end(), std::back_inserter(found),
                 [kind](const Event& event) { return event.kind == kind; });
    return found;
}

}  // namespace bromvale::offline
