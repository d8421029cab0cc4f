// A hive and its logs, of both formats: the image is what it was, or clean and as large as it says; a replay
// of what was replayed changes nothing.
#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/replay.h"
#include "tests/fuzz/hive_input.h"
#include "tests/fuzz/target.h"
#include "tests/hives/made_hive.h"
#include "tests/hives/made_log.h"

namespace bromvale::fuzz {
namespace {

using namespace offline;

enum Choice : std::uint8_t { kWrongHive = 1, kWrongLogs = 2, kWrongHashes = 4, kOneLog = 8 };

std::string logFrom(std::string_view input, std::uint8_t choice) {
    if (input.empty()) return {};
    std::string log = expanded(input, HiveFile::Log);
    if ((choice & kWrongLogs) == 0) setChecksum(log);
    if ((choice & kWrongHashes) == 0) setHashes(log);
    return log;
}

void run(std::string_view input) {
    Pieces pieces(input);
    const std::uint8_t choice = pieces.byte();
    std::string hive = expanded(pieces.take(pieces.number()), HiveFile::Hive);
    if ((choice & kWrongHive) == 0) setChecksum(hive);
    const std::string first = logFrom(pieces.take(pieces.number()), choice);
    const std::string second = logFrom(pieces.rest(), choice);
    std::vector<HiveLog> logs{{LogName::Log1, HiveBytes(first)}, {LogName::Log2, HiveBytes(second)}};
    if ((choice & kOneLog) != 0) logs = {{LogName::Log, HiveBytes(first)}};
    HiveImage image{std::string_view(hive)};
    const Replay replay = replayLogs(image, logs);
    if (replay.state != Replay::State::Replayed) {
        require(image.bytes().all() == hive, "an image that nothing fits is as it was");
        return;
    }
    require(replay.entries > 0 && !replay.from.empty(), "something was replayed");
    const BaseBlock base = readBaseBlock(image.bytes());
    require(!base.dirty(), "the hive is clean");
    require(image.bytes().holds(kBinsStart, base.binsSize), "its bins are there");
    require(base.firstSequence == replay.lastSequence || replay.oldFormat, "the number is the last entry's");
    const std::string replayed(image.bytes().all());
    require(replayLogs(image, logs).state == Replay::State::Clean, "there is nothing to do a second time");
    require(image.bytes().all() == replayed, "and nothing is done");
}

std::string stateOf(std::size_t keys) {
    MadeHive hive;
    hive.root.name = u"root";
    for (std::size_t i = 0; i < keys; ++i) {
        MadeKey& key = hive.root.subKeys.emplace_back();
        key.name = std::u16string(1, static_cast<char16_t>(u'a' + i));
        key.values.push_back({u"v", 3, std::string(9, static_cast<char>('a' + i))});
    }
    return bytesOf(hive);
}

std::string numbered(std::size_t number) {
    return {static_cast<char>(number & 0xFF), static_cast<char>(number >> 8)};
}

std::string inputOf(char choice, std::string hive, const std::string& first, const std::string& second) {
    setSequence(hive, 3, 2);
    hive = compact(hive, HiveFile::Hive);
    const std::string log = first.empty() ? first : compact(first, HiveFile::Log);
    return choice + numbered(hive.size()) + hive + numbered(log.size()) + log +
           (second.empty() ? second : compact(second, HiveFile::Log));
}

std::vector<std::string> seeds() {
    const std::string before = stateOf(2);
    const std::string between = stateOf(3);
    const std::string after = stateOf(4);
    const std::string whole = newLog(before, 2, {{2, before, between}, {3, between, after}});
    const std::string ahead = newLog(between, 3, {{3, between, after}});
    const std::string old = oldLog(before, after, 3);
    return {inputOf(0, before, whole, ""),
            inputOf(0, before, newLog(before, 2, {{2, before, between}}), ahead),
            inputOf(kWrongHive, before, whole, ""),
            inputOf(kOneLog, before, old, ""),
            inputOf(0, before, old, ""),
            inputOf(0, before, "", "")};
}

const KnownTarget kTarget({"hive_logs", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
