#include "tests/fuzz/hive_input.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/replay.h"

namespace bromvale::fuzz {
namespace {

using namespace offline;

constexpr std::size_t kKept = base_block::kFlags + 4;  // of the first sector

std::size_t startOf(HiveFile file) {
    return file == HiveFile::Hive ? kBinsStart : kSectorSize;
}

template <class Number>
void put(std::string& bytes, std::size_t at, Number number) {
    std::memcpy(bytes.data() + at, &number, sizeof number);
}

}  // namespace

std::string expanded(std::string_view input, HiveFile file) {
    const std::size_t unit = file == HiveFile::Hive ? kPageSize : kSectorSize;
    std::string bytes(input.substr(0, kKept));
    bytes.resize(startOf(file), '\0');
    bytes.append(input.substr(std::min(kKept, input.size())));
    bytes.resize((bytes.size() + unit - 1) / unit * unit, '\0');
    return bytes;
}

std::string compact(std::string_view file, HiveFile kind) {
    std::string input(file.substr(0, kKept));
    input.append(file.substr(std::min(startOf(kind), file.size())));
    input.resize(input.find_last_not_of('\0') + 1);
    return input;
}

void setChecksum(std::string& file) {
    put(file, base_block::kChecksum, baseBlockChecksum(HiveBytes(file)));
}

void setHashes(std::string& log) {
    std::size_t at = kSectorSize;
    while (at + log_entry::kPages <= log.size()) {
        const HiveBytes bytes(log);
        const std::size_t size = bytes.u32(at + log_entry::kSize);
        if (size < log_entry::kPages || !bytes.holds(at, size)) return;
        put(log, at + log_entry::kHash1,
            marvin32(std::string_view(log).substr(at + log_entry::kPages, size - log_entry::kPages)));
        put(log, at + log_entry::kHash2, marvin32(std::string_view(log).substr(at, log_entry::kHash2)));
        at += size;
    }
}

}  // namespace bromvale::fuzz
