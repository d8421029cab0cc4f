#pragma once
#include <vector>

namespace bromvale {

class Label;

// Labels whose texts are told to those who don't see them: one a second at most, however often they change.
class Announcements {
  public:
    // The label's text is another one; it waits behind the others.
    void changed(const Label& label);
    void forget(const Label& label);
    [[nodiscard]] bool waiting() const { return !waiting_.empty(); }
    // The label to tell now; null where none waits or the last one was told less than a second ago. `now` in
    // milliseconds of a clock that may wrap round. Labels that are hidden or empty by then are passed over.
    [[nodiscard]] const Label* next(unsigned now);

  private:
    std::vector<const Label*> waiting_;
    unsigned toldAt_ = 0;
    bool told_ = false;
};

}  // namespace bromvale
