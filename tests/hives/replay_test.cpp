// The replay of real logs, and of logs that were damaged by chance.
#include "platform/offline/hives/replay.h"

#include <algorithm>
#include <random>
#include <vector>

#include "platform/offline/hives/hive.h"
#include "tests/hives/hive_counts.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/hive_rounds.h"
#include "tests/hives/hive_states.h"

namespace bromvale::offline {
namespace {

Counts countsOf(const std::string& file) {
    return countsOf(Hive(HiveBytes(file)));
}

TEST(RealRegistryLogs, TheDirtyHiveOfWindows10HasMoreInItsFirstLog) {
    const std::string hive = realHive("win10-dirty-NTUSER.DAT");
    const Replayed result = replayed(hive, {{LogName::Log1, realHive("win10-dirty-NTUSER.DAT.LOG1")},
                                            {LogName::Log2, realHive("win10-dirty-NTUSER.DAT.LOG2")}});
    EXPECT_EQ(Replay::State::Replayed, result.replay.state);
    EXPECT_EQ("LOG1", result.replay.from);
    EXPECT_EQ(23u, result.replay.entries);
    EXPECT_EQ(566u, result.replay.firstSequence);
    EXPECT_EQ(588u, result.replay.lastSequence);
    EXPECT_EQ("", result.replay.problem);
    EXPECT_EQ((Counts{2590, 4119}), countsOf(hive));
    EXPECT_EQ((Counts{3105, 4695}), countsOf(result.image));
    const BaseBlock base = readBaseBlock(HiveBytes(result.image));
    EXPECT_FALSE(base.dirty());
    EXPECT_EQ(588u, base.firstSequence);
    EXPECT_EQ(925696u, base.binsSize);
    EXPECT_EQ(hive.size(), result.image.size());
}

TEST(RealRegistryLogs, TheLogOfWindows10CutAnywhereGivesTheLastWholeEntry) {
    const std::string hive = realHive("win10-dirty-NTUSER.DAT");
    const std::string log = realHive("win10-dirty-NTUSER.DAT.LOG1");
    const std::size_t step = hiveRounds(0) >= 100'000 ? 64 : 64 * 499;
    for (std::size_t size = 0; size < log.size(); size += step) {
        SCOPED_TRACE(size);
        const Replayed result = replayed(hive, {{LogName::Log1, log.substr(0, size)}});
        if (size < 512 + 241'152) {
            EXPECT_EQ(Replay::State::NoUsableLog, result.replay.state);
            EXPECT_TRUE(hive == result.image);
        } else {
            EXPECT_EQ(Replay::State::Replayed, result.replay.state);
            EXPECT_EQ(565 + result.replay.entries, result.replay.lastSequence);
            if (size < 348'160) {
                EXPECT_EQ(1u, result.replay.entries);
            }
        }
    }
}

TEST(RealRegistryLogs, TheOldLogHasFourMoreKeys) {
    const std::string hive = realHive("made-old-NTUSER.DAT");
    const Replayed result =
        replayed(hive, {{LogName::Log1, realHive("made-old-NTUSER.DAT.LOG1")}, {LogName::Log2, ""}});
    EXPECT_EQ(Replay::State::Replayed, result.replay.state);
    EXPECT_EQ("LOG1", result.replay.from);
    EXPECT_TRUE(result.replay.oldFormat);
    EXPECT_EQ(288u, result.replay.entries);
    EXPECT_EQ(749u, result.replay.lastSequence);
    EXPECT_EQ((Counts{1808, 4090}), countsOf(hive));
    EXPECT_EQ((Counts{1812, 4094}), countsOf(result.image));
    EXPECT_FALSE(readBaseBlock(HiveBytes(result.image)).dirty());
}

TEST(RealRegistryLogs, HivesThatNoLogHelpsAreRefused) {
    const std::string checksum = realHive("made-checksum");
    expectRefused(replayed(checksum, {}), checksum, "the hive's base block is damaged; there is no log");
    const std::string dirty = realHive("made-dirty-nolog");
    expectRefused(replayed(dirty, {}), dirty, "there is no log");
    const std::string old = realHive("made-old-NTUSER.DAT");
    expectRefused(replayed(old, {{LogName::Log1, realHive("win10-dirty-NTUSER.DAT.LOG2")}}), old,
                  "LOG1 begins with 562, and the hive already has 748");
}

using Chance = std::mt19937;

std::size_t below(Chance& chance, std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(chance);
}

// Some bytes, a number or a piece, mostly where structures are; the checksum often follows, so that what lies
// behind it is reached.
void damage(std::string& bytes, Chance& chance) {
    const std::size_t first = bytes.size() < 1024 || below(chance, 2) == 0 ? bytes.size() : 1024;
    for (std::size_t times = 1 + below(chance, 4); times > 0 && !bytes.empty(); --times) {
        const std::size_t at = below(chance, std::min(first, bytes.size()));
        switch (below(chance, 5)) {
            case 0: bytes[at] = static_cast<char>(below(chance, 256)); break;
            case 1: bytes[at] = static_cast<char>(bytes[at] ^ 1 << below(chance, 8)); break;
            case 2: bytes.replace(at, 4, "\xFF\xFF\xFF\xFF"); break;
            case 3: bytes.erase(at, below(chance, 600)); break;
            default: bytes.insert(at, bytes.substr(below(chance, bytes.size()), 512)); break;
        }
    }
    if (bytes.size() >= kSectorSize && below(chance, 4) != 0) setInBaseBlock(bytes, base_block::kFileName, 0);
}

// Whatever comes out: no read beyond the end, no endless walk, and the hive itself where nothing was used.
void expectOrderly(const std::string& hive, const Replayed& result) {
    if (result.replay.state != Replay::State::Replayed) {
        EXPECT_TRUE(hive == result.image);
        return;
    }
    EXPECT_GT(result.replay.entries, 0u);
    const BaseBlock base = readBaseBlock(HiveBytes(result.image));
    EXPECT_FALSE(base.dirty());
    EXPECT_TRUE(HiveBytes(result.image).holds(kBinsStart, base.binsSize));
    try {
        static_cast<void>(countsOf(result.image));
    } catch (const HiveDamage&) {
    }
}

TEST(DamagedLogs, AreAnErrorOrTheEntriesBeforeTheDamage) {
    const std::string hives[] = {dirtyState(0, 5), tornState(0)};
    const std::string logs[] = {logOfSteps(1, 2, 5), logOfSteps(3, 1, 7),
                                oldLog(hiveState(0), hiveState(2), 6)};
    const std::uint32_t rounds = hiveRounds(1000);
    for (std::uint32_t round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        Chance chance(round);
        std::string hive = hives[below(chance, 4) == 0 ? 1 : 0];
        if (below(chance, 8) == 0) damage(hive, chance);
        std::string first = logs[below(chance, 3)];
        std::string second = logs[below(chance, 3)];
        damage(first, chance);
        if (below(chance, 2) == 0) damage(second, chance);
        expectOrderly(hive, replayed(hive, {{LogName::Log1, first}, {LogName::Log2, second}}));
        if (HasFailure()) return;
    }
}

// The hashes let no changed entry through: each result is a state that was.
TEST(DamagedLogs, OfTheNewFormatGiveAStateThatWas) {
    const std::string hive = dirtyState(0, 5);
    const std::string log = logOfSteps(1, 3, 5);
    const std::uint32_t rounds = hiveRounds(500);
    for (std::uint32_t round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        Chance chance(round);
        std::string changed = log;
        const std::size_t at = kSectorSize + below(chance, log.size() - kSectorSize);
        changed[at] = static_cast<char>(changed[at] ^ 1 << below(chance, 8));
        const Replayed result = replayed(hive, {{LogName::Log1, changed}});
        if (result.replay.entries == 0) {
            EXPECT_TRUE(hive == result.image);
        } else {
            expectState(result, static_cast<int>(result.replay.entries),
                        static_cast<std::uint32_t>(4 + result.replay.entries), "LOG1");
        }
        EXPECT_NE("", result.replay.problem);
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace bromvale::offline
