// A hive as it was after each of some changes, and what a replay must make of it.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "platform/offline/hives/replay.h"
#include "tests/hives/made_log.h"

namespace bromvale::offline {

// Clean, number 1; with each step the keys, the bins and the file grow.
std::string hiveState(int step);
// One that was left in the middle of writing: the number is what it held last.
std::string dirtyState(int step, std::uint32_t number);
// One whose base block was left in the middle of writing.
std::string tornState(int step);

// An entry that leads from one state to the next.
MadeEntry stepTo(int step, std::uint32_t sequence);
// Entries from that step on, numbered from `number`.
std::string logOfSteps(int from, int count, std::uint32_t number);

struct Replayed {
    Replay replay;
    std::string image;
};
Replayed replayed(const std::string& hive, std::initializer_list<std::pair<LogName, std::string>> logs);

// The file that is that step's state with the sequence number, and what it was before where nothing fits.
void expectState(const Replayed& result, int step, std::uint32_t sequence, const std::string& from);
void expectRefused(const Replayed& result, const std::string& hive, const std::string& problem);

}  // namespace bromvale::offline
