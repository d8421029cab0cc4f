#pragma once
#include "platform/machine.h"

namespace bromvale {

// True where this start is a second one and ends silently. From here on this process is the first, as long as
// it lives. Names of this kind are known within one session, so that two users of one machine don't get in
// each other's way.
[[nodiscard]] bool previousInstanceRuns();

// The question for an administrator's rights, from Windows Vista on; put before anything is touched. While
// the object lives other starts wait with theirs.
class RightsQuestion {
  public:
    RightsQuestion();
    ~RightsQuestion();
    RightsQuestion(const RightsQuestion&) = delete;
    RightsQuestion& operator=(const RightsQuestion&) = delete;

    // Another process has been started with the rights and does what this one was to do.
    [[nodiscard]] bool handedOver() const { return handedOver_; }

  private:
    HANDLE asking_ = nullptr;
    bool handedOver_ = false;
};

}  // namespace bromvale
