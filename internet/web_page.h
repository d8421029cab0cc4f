#pragma once
#include <string>

namespace bromvale {

// Scheme and host of the web services, without a slash at its end.
[[nodiscard]] std::string webServices();

// What one read of the page gives, without its blanks. Empty without an answer: no network, a refused address
// and an empty page look alike.
[[nodiscard]] std::string readPage(const std::string& address);

}  // namespace bromvale
