// What the keyboard does to the navigation bar.
#include <algorithm>

#include "platform/controls/list_bar.h"
#include "platform/controls/virtual_keys.h"

namespace bromvale {

void ListBar::showKeyboard(bool on) {
    if (keyboardShown_ == on) return;
    keyboardShown_ = on;
    notify(Property::Focus);
}

int ListBar::itemCount() const {
    return bars_.empty() ? 0 : static_cast<int>(items(openBar_).size());
}

bool ListBar::exists(Part part) const {
    return part.bar >= 0 && part.bar < static_cast<int>(bars_.size()) && part.item >= -1 &&
           part.item < static_cast<int>(items(part.bar).size());
}

// From top to bottom.
std::vector<ListBar::Part> ListBar::reachableParts() const {
    std::vector<Part> parts;
    for (int bar = 0; bar < static_cast<int>(bars_.size()); ++bar) {
        parts.push_back({bar, -1});
        for (int item = 0; bar == openBar_ && item < itemCount(); ++item) parts.push_back({bar, item});
    }
    return parts;
}

void ListBar::userPart(Part part, bool shown) {
    if (!exists(part)) return;
    keyboardShown_ = shown;
    if (!part.isHeader()) setOpenBar(part.bar);
    part_ = part;
    notify(Property::Focus);
}

void ListBar::userPress(Part part) {
    if (!reachable() || !exists(part)) return;
    if (part.isHeader()) {
        setOpenBar(part.bar);
        return;
    }
    const std::string caption = item(part.bar, part.item).caption;
    userItemClick(caption);
}

void ListBar::openByKey(int bar) {
    keyboardShown_ = true;
    setOpenBar(std::clamp(bar, 0, std::max(0, static_cast<int>(bars_.size()) - 1)));
    notify(Property::Focus);
}

void ListBar::moveBy(int step) {
    const std::vector<Part> parts = reachableParts();
    if (parts.empty()) return;
    const int here = static_cast<int>(std::ranges::find(parts, part_) - parts.begin());
    const int wanted = std::clamp(here + step, 0, static_cast<int>(parts.size()) - 1);
    userPart(parts[static_cast<std::size_t>(wanted)]);
}

bool ListBar::pressByKey(bool held) {
    if (!keyboardShown_) return false;
    if (!held) userPress(part_);
    return true;
}

bool ListBar::userKey(int key, bool control, bool held) {
    switch (key) {
        case kUp:
        case kDown: {
            const int step = key == kUp ? -1 : 1;
            if (control) {
                openByKey(openBar_ + step);
            } else {
                moveBy(step);
            }
            return true;
        }
        case kPageUp: openByKey(openBar_ - 1); return true;
        case kPageDown: openByKey(openBar_ + 1); return true;
        case kHome: userPart({openBar_, 0}); return true;
        case kEnd: userPart({openBar_, itemCount() - 1}); return true;
        case kReturn:
        case kSpace: return pressByKey(held);
        default: return false;
    }
}

}  // namespace bromvale
