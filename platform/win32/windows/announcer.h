#pragma once
#include "platform/controls/text.h"

namespace bromvale {

// Tells assistive tools of a label's new text, in a moment: at most one of all labels a second. The label's
// window has the text already.
void announce(const Label& label);
void forgetAnnouncement(const Label& label);

}  // namespace bromvale
