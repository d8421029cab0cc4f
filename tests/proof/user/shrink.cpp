#include "tests/proof/user/shrink.h"

#include <algorithm>

namespace bromvale::proof {
namespace {

using Size = Actions::difference_type;

Actions without(const Actions& actions, Size from, Size count) {
    Actions rest(actions.begin(), actions.begin() + from);
    rest.insert(rest.end(), actions.begin() + from + count, actions.end());
    return rest;
}

}  // namespace

// From the end, since what comes behind the fault goes first.
Actions shrink(Actions actions, const std::function<bool(const Actions&)>& fails, int tries) {
    auto size = static_cast<Size>(actions.size());
    for (Size part = std::max<Size>(size / 2, 1); part > 0;) {
        bool shorter = false;
        for (Size from = size - part; from > -part; from -= part) {
            const Size at = std::max<Size>(from, 0);
            const Size count = std::min(part, size - at);
            if (count == 0) break;
            if (tries-- <= 0) return actions;
            Actions fewer = without(actions, at, count);
            if (!fails(fewer)) continue;
            actions = std::move(fewer);
            size -= count;
            shorter = true;
        }
        if (part == 1 && !shorter) break;
        part = part == 1 ? 1 : part / 2;
        part = std::min(part, std::max<Size>(size, 1));
        if (size == 0) break;
    }
    return actions;
}

}  // namespace bromvale::proof
