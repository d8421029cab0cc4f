// Logs of the old format, alone and beside new ones, and hives that no log helps.
#include "platform/offline/hives/hive.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/hive_states.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {
namespace {

constexpr LogName kLog = LogName::Log;
constexpr LogName kLog1 = LogName::Log1;
constexpr LogName kLog2 = LogName::Log2;
constexpr std::uint64_t kTime = 0x01D9000000000000u;  // of the states

std::string oldLogOfStep(int from, int to, std::uint32_t number, std::uint64_t time = kTime) {
    std::string after = hiveState(to);
    setTime(after, time);
    return oldLog(hiveState(from), after, number);
}

TEST(OldLog, WithTheHivesTimeIsApplied) {
    const std::string hive = dirtyState(0, 5);
    for (const LogName name : {kLog, kLog1, kLog2}) {
        const Replayed result = replayed(hive, {{name, oldLogOfStep(0, 2, 6)}});
        expectState(result, 2, 6, name == kLog ? "LOG" : name == kLog1 ? "LOG1" : "LOG2");
        EXPECT_TRUE(result.replay.oldFormat);
        EXPECT_EQ(6u, result.replay.firstSequence);
        EXPECT_GT(result.replay.entries, 8u);
        EXPECT_EQ("", result.replay.problem);
    }
}

TEST(OldLog, OfWindows2000HasAnotherType) {
    const std::string log = oldLog(hiveState(0), hiveState(2), 6, base_block::kTypeOlderLog);
    expectState(replayed(dirtyState(0, 5), {{kLog, log}}), 2, 6, "LOG");
}

TEST(OldLog, OfADiskWithLargeSectorsBeginsWithTheSecond) {
    std::string before = dirtyState(0, 5);
    std::string after = hiveState(2);
    for (const std::uint32_t factor : {2u, 8u}) {
        setInBaseBlock(after, base_block::kClusteringFactor, factor);
        setInBaseBlock(before, base_block::kClusteringFactor, factor);
        const Replayed result = replayed(before, {{kLog1, oldLog(hiveState(0), after, 6)}});
        EXPECT_EQ(Replay::State::Replayed, result.replay.state) << result.replay.problem;
        EXPECT_TRUE(after.substr(kBinsStart) == result.image.substr(kBinsStart));
    }
}

TEST(OldLog, OfAnotherTimeIsRefused) {
    const std::string hive = dirtyState(0, 5);
    expectRefused(replayed(hive, {{kLog1, oldLogOfStep(0, 2, 6, kTime + 1)}}), hive,
                  "LOG1 has another time than the hive");
}

// What boot loaders do, and the kernel before Windows 8.
TEST(OldLog, OfTwoThatMatchTheFirstIsUsed) {
    const std::string hive = dirtyState(0, 5);
    expectState(replayed(hive, {{kLog2, oldLogOfStep(0, 2, 6)}, {kLog1, oldLogOfStep(0, 1, 6)}}), 1, 6,
                "LOG1");
}

// As Windows 8 does, and 7 since 2016.
TEST(OldLog, TheSecondIsUsedWhereTheFirstIsUnusableOrDoesNotMatch) {
    const std::string hive = dirtyState(0, 5);
    const std::string second = oldLogOfStep(0, 2, 6);
    std::string unfinished = oldLogOfStep(0, 1, 6);
    setSequence(unfinished, 6, 5);
    for (const std::string& first :
         {std::string(), std::string(4096, '\0'), unfinished, oldLogOfStep(0, 1, 4, kTime - 1)}) {
        const Replayed result = replayed(hive, {{kLog1, first}, {kLog2, second}});
        expectState(result, 2, 6, "LOG2");
        EXPECT_EQ("", result.replay.problem);
    }
    const std::string cut = oldLogOfStep(0, 1, 6).substr(0, 2048);
    const Replayed result = replayed(hive, {{kLog1, cut}, {kLog2, second}});
    expectState(result, 2, 6, "LOG2");
    EXPECT_EQ("LOG1 is too short", result.replay.problem);
}

TEST(OldLog, ThatEndsWithinItsMapIsTooShort) {
    const std::string hive = dirtyState(0, 5);
    const std::string whole = oldLogOfStep(0, 1, 6);
    const std::size_t binsSize = readBaseBlock(HiveBytes(whole)).binsSize;
    const std::size_t map = 512 + 4 + binsSize / 4096;
    for (const std::size_t end : {map - 1, map - 2, std::size_t{516}, std::size_t{515}})
        expectRefused(replayed(hive, {{kLog1, whole.substr(0, end)}}), hive, "LOG1 is too short");
}

TEST(OldLog, WithAWrongBaseBlockTheLatestIsUsed) {
    const std::string hive = tornState(0);
    const std::string later = oldLogOfStep(0, 2, 7, kTime + 1);
    const std::string earlier = oldLogOfStep(0, 1, 6, kTime);
    std::string expected = hiveState(2);
    setTime(expected, kTime + 1);
    setSequence(expected, 7, 7);
    const Replayed second = replayed(hive, {{kLog1, earlier}, {kLog2, later}});
    EXPECT_EQ("LOG2", second.replay.from);
    EXPECT_TRUE(expected == second.image);
    EXPECT_EQ("the hive's base block is damaged", second.replay.problem);
    const Replayed first = replayed(hive, {{kLog1, later}, {kLog2, earlier}});
    EXPECT_EQ("LOG1", first.replay.from);
    EXPECT_TRUE(expected == first.image);
}

TEST(OldLog, WithAWrongBaseBlockMustNotBeOlderThanTheFirstBin) {
    const std::string hive = tornState(0);
    expectRefused(replayed(hive, {{kLog1, oldLogOfStep(0, 2, 6, kTime - 1)}}), hive,
                  "the hive's base block is damaged; LOG1 is older than the hive");
    std::string worse = hive;
    worse[kBinsStart] = 'x';
    expectRefused(replayed(worse, {{kLog1, oldLogOfStep(0, 2, 6)}}), worse,
                  "the hive's base block is damaged; the hive's first bin is damaged too");
}

TEST(OldLog, CutAnywhereIsRefused) {
    const std::string hive = dirtyState(0, 5);
    const std::string log = oldLogOfStep(0, 2, 6);
    for (std::size_t size = 0; size < log.size(); size += 64) {
        SCOPED_TRACE(size);
        const Replayed result = replayed(hive, {{kLog1, log.substr(0, size)}});
        EXPECT_EQ(Replay::State::NoUsableLog, result.replay.state);
        EXPECT_TRUE(hive == result.image);
    }
}

TEST(OldLog, ThatNamesNoSectorOrHasNoMapIsRefused) {
    const std::string hive = dirtyState(0, 5);
    expectRefused(replayed(hive, {{kLog1, oldLogOfStep(1, 1, 6)}}), hive,
                  "LOG1 names no sector that has changed");
    std::string log = oldLogOfStep(0, 1, 6);
    log[kSectorSize] = 'd';
    expectRefused(replayed(hive, {{kLog1, log}}), hive, "LOG1 says nothing of what has changed");
    log = oldLogOfStep(0, 1, 6);
    setInBaseBlock(log, base_block::kClusteringFactor, 0);
    expectRefused(replayed(hive, {{kLog1, log}}), hive, "LOG1 has an impossible size of sectors");
    setInBaseBlock(log, base_block::kClusteringFactor, 1);
    setInBaseBlock(log, base_block::kBinsSize, 0xFFFFF000u);
    expectRefused(replayed(hive, {{kLog1, log}}), hive, "LOG1 names an impossible size of bins");
}

TEST(OldLog, OfImpossibleSizesIsRefused) {
    const std::string hive = dirtyState(0, 5);
    const auto expect = [&](std::size_t at, std::uint32_t number, const std::string& problem) {
        std::string log = oldLogOfStep(0, 1, 6);
        setInBaseBlock(log, at, number);
        expectRefused(replayed(hive, {{kLog1, log}}), hive, problem);
    };
    expect(base_block::kClusteringFactor, 9, "LOG1 has an impossible size of sectors");
    expect(base_block::kClusteringFactor, 8, "LOG1 says nothing of what has changed");
    expect(base_block::kBinsSize, 0, "LOG1 names an impossible size of bins");
    expect(base_block::kBinsSize, 4095, "LOG1 names an impossible size of bins");
    expect(base_block::kBinsSize, 0x7FFFF000u + 4096, "LOG1 names an impossible size of bins");
    expect(base_block::kBinsSize, 0x7FFFF000u, "LOG1 is too short");
}

TEST(OldLog, TellsHowManySectorsItHas) {
    const std::string before = hiveState(0);
    std::string after = before;
    for (const std::size_t at : {kBinsStart + 600, kBinsStart + 4000, kBinsStart + 2000})
        after[at] = static_cast<char>(after[at] ^ 1);
    const Replayed result = replayed(dirtyState(0, 5), {{kLog1, oldLog(before, after, 6)}});
    EXPECT_EQ(3u, result.replay.entries);
    EXPECT_TRUE(std::string_view(after).substr(kBinsStart) ==
                std::string_view(result.image).substr(kBinsStart));
    EXPECT_EQ(6u, result.replay.firstSequence);
    EXPECT_EQ(6u, result.replay.lastSequence);
}

TEST(OldLog, ThatIsWrongIsToldBesideOthersThatDoNotMatch) {
    const std::string hive = dirtyState(0, 5);
    const std::string cut = oldLogOfStep(0, 1, 6).substr(0, 600);
    const std::string other = oldLogOfStep(0, 2, 6, kTime + 1);
    expectRefused(replayed(hive, {{kLog1, other}, {kLog2, cut}}), hive,
                  "LOG2 is too short; LOG1 has another time than the hive");
    const std::string torn = tornState(0);
    expectRefused(replayed(torn, {{kLog1, cut}}), torn,
                  "the hive's base block is damaged; LOG1 is too short");
}

TEST(LogFiles, LogBesideTheOthersIsALeftover) {
    const std::string hive = dirtyState(0, 5);
    const std::string leftover = oldLogOfStep(0, 1, 6);
    expectState(replayed(hive, {{kLog, leftover}, {kLog1, oldLogOfStep(0, 2, 6)}}), 2, 6, "LOG1");
    expectState(replayed(hive, {{kLog, leftover}, {kLog2, logOfSteps(1, 2, 5)}}), 2, 6, "LOG2");
    expectState(replayed(hive, {{kLog, leftover}, {kLog1, ""}, {kLog2, std::string(512, '\0')}}), 1, 6,
                "LOG");
    // Usable, though it does not match.
    expectRefused(replayed(hive, {{kLog, leftover}, {kLog1, oldLogOfStep(0, 2, 6, kTime + 9)}}), hive,
                  "LOG1 has another time than the hive; LOG is a leftover beside the others");
}

TEST(LogFiles, OfBothFormatsTheNewOneWins) {
    const std::string hive = dirtyState(0, 5);
    const std::string old = oldLogOfStep(0, 1, 6);
    expectState(replayed(hive, {{kLog1, old}, {kLog2, logOfSteps(1, 2, 5)}}), 2, 6, "LOG2");
    expectState(replayed(hive, {{kLog1, logOfSteps(1, 2, 5)}, {kLog2, old}}), 2, 6, "LOG1");
    // The time of a hive isn't kept up to date where logs are new, so it would match for ever.
    expectRefused(replayed(hive, {{kLog1, old}, {kLog2, logOfSteps(1, 2, 2)}}), hive,
                  "LOG2 begins with 2, and the hive already has 5; LOG1 is of the old format, beside one of "
                  "the new");
}

TEST(LogFiles, ThatCannotBeUsedAreNamed) {
    const std::string hive = dirtyState(0, 5);
    const std::string log = logOfSteps(1, 2, 5);
    const auto changed = [&log](std::size_t at, std::uint32_t number) {
        std::string bytes = log;
        setInBaseBlock(bytes, at, number);
        return bytes;
    };
    std::string checksum = log;
    checksum[base_block::kFileName] ^= 1;
    const std::pair<std::string, const char*> cases[] = {
        {"", "LOG1 is empty"},
        {std::string(65536, '\0'), "LOG1 has no first sector of a log"},
        {log.substr(0, 511), "LOG1 has no first sector of a log"},
        {checksum, "LOG1 has a wrong checksum in its first sector"},
        {changed(base_block::kSecondSequence, 4), "LOG1 was being written itself"},
        {changed(base_block::kType, 0), "LOG1 is no log"},
        {changed(base_block::kType, 3), "LOG1 is no log"},
        {changed(base_block::kMinorVersion, 2),
         "LOG1 is that of a hive whose version is none of 1.3 to 1.6"}};
    for (const auto& [bytes, problem] : cases) {
        expectRefused(replayed(hive, {{kLog1, bytes}}), hive, problem);
        expectState(replayed(hive, {{kLog1, bytes}, {kLog2, log}}), 2, 6, "LOG2");
    }
    expectRefused(replayed(hive, {}), hive, "there is no log");
}

TEST(LogFiles, DoNotHelpAHiveThatCannotBe) {
    const std::string log = logOfSteps(1, 2, 5);
    const auto refused = [&log](const std::string& hive, const std::string& problem) {
        expectRefused(replayed(hive, {{kLog1, log}}), hive, problem);
    };
    std::string hive = dirtyState(0, 5);
    setInBaseBlock(hive, base_block::kMinorVersion, 2);
    refused(hive, "the hive's version is none of 1.3 to 1.6");
    hive = dirtyState(0, 5);
    setInBaseBlock(hive, base_block::kType, 1);
    refused(hive, "the file is a log and no hive");
    hive = dirtyState(0, 5);
    setInBaseBlock(hive, base_block::kBinsSize, static_cast<std::uint32_t>(hive.size()));
    refused(hive, "the hive's bins reach beyond the end of the file");
}

TEST(LogFiles, RebuildAHiveWhoseFileIsEmptyOnlyAsFarAsTheySay) {
    const Replayed result = replayed("", {{kLog1, logOfSteps(1, 2, 5)}});
    EXPECT_EQ(Replay::State::Replayed, result.replay.state);
    EXPECT_EQ(hiveState(2).size(), result.image.size());
}

}  // namespace
}  // namespace bromvale::offline
