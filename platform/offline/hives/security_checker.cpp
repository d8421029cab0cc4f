#include "platform/offline/hives/security_checker.h"

#include <algorithm>

namespace bromvale::offline {

bool SecurityChecker::join(Cell cell, HiveBytes node) {
    namespace at = security_node;
    if (node.text(0, 2) != at::kSignature) {
        addFault(check_, node.place(), "an offset leads to no security");
        return false;
    }
    members_.push_back({cell, node.place(), node.u32(at::kUseCount)});
    if (!node.holds(at::kDescriptor, node.u32(at::kDescriptorSize)))
        addFault(check_, node.place(), "a security descriptor is longer than its cell");
    return true;
}

void SecurityChecker::walkRing(Cell first) {
    Cell previous = kNil;
    for (Cell cell = first; cell != first || previous == kNil;) {
        const auto node = cells_.claim(cell, "security");
        if (!node || !join(cell, *node)) return cells_.setIncomplete();
        if (previous != kNil && node->u32(security_node::kPrevious) != previous)
            addFault(check_, node->place(), "the ring of security does not lead back the way it came");
        previous = cell;
        cell = node->u32(security_node::kNext);
    }
    if (cells_.content(first)->u32(security_node::kPrevious) != previous)
        addFault(check_, members_.front().place, "the ring of security does not lead back the way it came");
    std::ranges::sort(members_, {}, &Member::cell);
    whole_ = true;
}

void SecurityChecker::use(Cell security, std::size_t place) {
    if (!whole_) return;
    if (last_ >= members_.size() || members_[last_].cell != security) {
        const auto found = std::ranges::lower_bound(members_, security, {}, &Member::cell);
        if (found == members_.end() || found->cell != security)
            return addFault(check_, place, "a key's security is not in the ring");
        last_ = static_cast<std::size_t>(found - members_.begin());
    }
    ++members_[last_].used;
}

void SecurityChecker::compareCounts() const {
    for (const Member& member : members_) {
        if (member.used != member.stored)
            addFault(check_, member.place, "security counts other than the keys that have it");
    }
}

}  // namespace bromvale::offline
