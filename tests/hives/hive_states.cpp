#include "tests/hives/hive_states.h"

#include <gtest/gtest.h>

#include "platform/offline/hives/hive.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {

std::string hiveState(int step) {
    MadeHive hive;
    hive.root.name = u"root";
    for (int i = 0; i < 20 * (step + 1); ++i) {
        MadeKey key;
        const std::string number = std::to_string(1000 + i);
        key.name.assign(number.begin(), number.end());
        key.values.push_back({u"Step", 3, std::string(40, static_cast<char>('a' + i % 20))});
        hive.root.subKeys.push_back(key);
    }
    return bytesOf(hive);
}

std::string dirtyState(int step, std::uint32_t number) {
    std::string hive = hiveState(step);
    setSequence(hive, number + 1, number);
    return hive;
}

std::string tornState(int step) {
    std::string hive = hiveState(step);
    hive[base_block::kChecksum] = static_cast<char>(hive[base_block::kChecksum] ^ 0x55);
    return hive;
}

MadeEntry stepTo(int step, std::uint32_t sequence) {
    return {sequence, hiveState(step - 1), hiveState(step)};
}

std::string logOfSteps(int from, int count, std::uint32_t number) {
    std::vector<MadeEntry> entries;
    for (int i = 0; i < count; ++i)
        entries.push_back(stepTo(from + i, number + static_cast<std::uint32_t>(i)));
    return newLog(hiveState(from - 1), number, entries);
}

Replayed replayed(const std::string& hive, std::initializer_list<std::pair<LogName, std::string>> logs) {
    HiveImage image{std::string_view(hive)};
    std::vector<HiveLog> given;
    for (const auto& [name, bytes] : logs) given.push_back({name, HiveBytes(bytes)});
    const Replay replay = replayLogs(image, given);
    return {replay, std::string(image.bytes().all())};
}

void expectState(const Replayed& result, int step, std::uint32_t sequence, const std::string& from) {
    std::string expected = hiveState(step);
    setSequence(expected, sequence, sequence);
    EXPECT_EQ(Replay::State::Replayed, result.replay.state) << result.replay.problem;
    EXPECT_EQ(from, result.replay.from);
    EXPECT_EQ(sequence, result.replay.lastSequence);
    EXPECT_TRUE(expected == result.image) << "the image is not the state " << step;
}

void expectRefused(const Replayed& result, const std::string& hive, const std::string& problem) {
    EXPECT_EQ(Replay::State::NoUsableLog, result.replay.state);
    EXPECT_EQ(problem, result.replay.problem);
    EXPECT_TRUE(hive == result.image) << "the image has changed";
}

}  // namespace bromvale::offline
