#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// Forwardings of web servers, for every carrier. A server that forwards on and on is given up: its answer
// counts as none.
inline constexpr int kMostForwardings = 10;

// By the status of an answer.
[[nodiscard]] bool isForwarding(int status);

// The address that a forwarding leads to: `location` is what the head says, a whole address or one that is to
// be read from where it stood.
[[nodiscard]] std::string forwardedAddress(std::string_view from, std::string_view location);

}  // namespace bromvale
