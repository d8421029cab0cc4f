#pragma once
// What a random user did, as data: it can be printed, saved, shortened and done once more.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::proof {

// The machine that the seed gives, and the actions on it, one a line, in the words of bromvale-offline's
// scripts. In front of an action may stand
//   at N       it is done when the program serves events for the n-th time from now, in the midst of whatever
//   is at work inbox      it is done while the next message box or dialog of the system stands with NAME  the
//   next menu that opens is left by this entry
// Answers to boxes and dialogs hold for the one action behind them. An action that can't be done is passed
// over, so that a sequence stays one when actions are taken out of it.
struct Sequence {
    std::uint64_t seed = 0;
    std::vector<std::string> actions;  // Windows-1252
};

// "seed 17" and a line an action, in UTF-8; empty lines and those that begin with "#" are passed over.
[[nodiscard]] std::string toText(const Sequence& sequence);
// Nothing where the first line names no seed.
[[nodiscard]] std::optional<Sequence> sequenceOf(std::string_view text);

}  // namespace bromvale::proof
