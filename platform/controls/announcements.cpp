#include "platform/controls/announcements.h"

#include "platform/controls/text.h"

namespace bromvale {

void Announcements::changed(const Label& label) {
    forget(label);
    waiting_.push_back(&label);
}

void Announcements::forget(const Label& label) {
    std::erase(waiting_, &label);
}

const Label* Announcements::next(unsigned now) {
    constexpr unsigned kPause = 1000;
    if (told_ && now - toldAt_ < kPause) return nullptr;
    std::erase_if(waiting_, [](const Label* label) { return !label->shown() || label->caption().empty(); });
    if (waiting_.empty()) return nullptr;
    const Label* const label = waiting_.front();
    waiting_.erase(waiting_.begin());
    toldAt_ = now;
    told_ = true;
    return label;
}

}  // namespace bromvale
