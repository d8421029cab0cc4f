// Logs of hives for tests: what is written between two states of a hive, in both formats.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::offline {

// Writes the number and the checksum that follows.
void setInBaseBlock(std::string& file, std::size_t at, std::uint32_t number);
void setTime(std::string& file, std::uint64_t lastWritten);
// As a hive or a log that is whole, or (two numbers) whose writing has begun and not ended.
void setSequence(std::string& file, std::uint32_t first, std::uint32_t second);

struct MadeEntry {
    std::uint32_t sequence = 0;
    std::string before;  // whole files
    std::string after;
    std::uint32_t flags = 0;
};
std::string bytesOf(const MadeEntry& entry);

// The first sector is that of `hive`, with the number; then the entries as they are given.
std::string newLog(std::string hive, std::uint32_t number, const std::vector<MadeEntry>& entries);
// Of the time of `after`.
std::string oldLog(std::string_view before, std::string after, std::uint32_t number, std::uint32_t type = 1);

}  // namespace bromvale::offline
