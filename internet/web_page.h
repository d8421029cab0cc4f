#pragma once
#include <string>
#include <string_view>

#include "core/routine.h"

namespace bromvale {

// Scheme and host of the web services, without a slash at its end.
[[nodiscard]] std::string webServices();

// What one read of the page gives, without its blanks. Empty without an answer: no network, a refused address
// and an empty page look alike.
[[nodiscard]] std::string readPage(const std::string& address);

// Behind a page without a single byte: reports the failure of this number under the routine's tags and asks
// whether the user wants another try. `what` is told between the two sentences about the line.
[[nodiscard]] bool asksToTryAgain(const Routine<>& routine, int failure, std::string_view what,
                                  std::string_view question);

}  // namespace bromvale
