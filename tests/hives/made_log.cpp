#include "tests/hives/made_log.h"

#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/replay.h"

namespace bromvale::offline {
namespace {

template <class Number>
void put(std::string& bytes, std::size_t at, Number number) {
    bytes.replace(at, sizeof number, reinterpret_cast<const char*>(&number), sizeof number);
}

std::string_view binsOf(std::string_view file) {
    return file.substr(kBinsStart, readBaseBlock(HiveBytes(file)).binsSize);
}

void pad(std::string& bytes, std::size_t size) {
    bytes.resize((bytes.size() + size - 1) / size * size);
}

std::string firstSector(std::string hive, std::uint32_t number, std::uint32_t type) {
    hive.resize(kSectorSize);
    setInBaseBlock(hive, base_block::kType, type);
    setSequence(hive, number, number);
    return hive;
}

}  // namespace

void setInBaseBlock(std::string& file, std::size_t at, std::uint32_t number) {
    put(file, at, number);
    put(file, base_block::kChecksum, baseBlockChecksum(HiveBytes(file)));
}

void setTime(std::string& file, std::uint64_t lastWritten) {
    setInBaseBlock(file, base_block::kLastWritten, static_cast<std::uint32_t>(lastWritten));
    setInBaseBlock(file, base_block::kLastWritten + 4, static_cast<std::uint32_t>(lastWritten >> 32));
}

void setSequence(std::string& file, std::uint32_t first, std::uint32_t second) {
    setInBaseBlock(file, base_block::kFirstSequence, first);
    setInBaseBlock(file, base_block::kSecondSequence, second);
}

std::string bytesOf(const MadeEntry& entry) {
    const std::string_view before = binsOf(entry.before);
    const std::string_view after = binsOf(entry.after);
    std::string pairs;
    std::string pages;
    for (std::size_t at = 0; at < after.size(); at += kPageSize) {
        const std::string_view page = after.substr(at, kPageSize);
        if (at < before.size() && before.substr(at, kPageSize) == page) continue;
        pairs.resize(pairs.size() + 8);
        put(pairs, pairs.size() - 8, static_cast<std::uint32_t>(at));
        put(pairs, pairs.size() - 4, static_cast<std::uint32_t>(page.size()));
        pages += page;
    }
    std::string bytes(log_entry::kPages, '\0');
    bytes += pairs + pages;
    pad(bytes, kSectorSize);
    bytes.replace(0, 4, log_entry::kSignature);
    put(bytes, log_entry::kSize, static_cast<std::uint32_t>(bytes.size()));
    put(bytes, log_entry::kFlags, entry.flags);
    put(bytes, log_entry::kSequence, entry.sequence);
    put(bytes, log_entry::kBinsSize, static_cast<std::uint32_t>(after.size()));
    put(bytes, log_entry::kPageCount, static_cast<std::uint32_t>(pairs.size() / 8));
    const std::string_view all(bytes);
    put(bytes, log_entry::kHash1, marvin32(all.substr(log_entry::kPages)));
    put(bytes, log_entry::kHash2, marvin32(all.substr(0, log_entry::kHash2)));
    return bytes;
}

std::string newLog(std::string hive, std::uint32_t number, const std::vector<MadeEntry>& entries) {
    std::string log = firstSector(std::move(hive), number, base_block::kTypeNewLog);
    for (const MadeEntry& entry : entries) log += bytesOf(entry);
    return log;
}

std::string oldLog(std::string_view before, std::string after, std::uint32_t number, std::uint32_t type) {
    const std::string_view bins = binsOf(after);
    const std::string_view earlier = binsOf(before);
    const std::size_t sector = kSectorSize * readBaseBlock(HiveBytes(after)).clusteringFactor;
    std::string map(bins.size() / kSectorSize / 8, '\0');
    std::string sectors;
    for (std::size_t i = 0; i < bins.size() / kSectorSize; ++i) {
        const std::string_view content = bins.substr(i * kSectorSize, kSectorSize);
        const std::size_t at = i * kSectorSize;
        if (at < earlier.size() && earlier.substr(at, kSectorSize) == content) continue;
        map[i / 8] = static_cast<char>(map[i / 8] | 1 << (i % 8));
        sectors += content;
    }
    std::string log = firstSector(after, number, type);
    pad(log, sector);
    log += std::string(old_log::kSignature) + map;
    pad(log, sector);
    return log + sectors;
}

}  // namespace bromvale::offline
