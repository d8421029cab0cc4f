// Logs of the new format: which are used, in which order, how far.
#include <sys/resource.h>

#include <tuple>

#include "platform/offline/hives/child_process.h"
#include "platform/offline/hives/hive.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/hive_states.h"

namespace bromvale::offline {
namespace {

constexpr LogName kLog1 = LogName::Log1;
constexpr LogName kLog2 = LogName::Log2;

TEST(Marvin, HasTheTestValues) {
    std::string bytes;
    for (char c = 0; c < 32; ++c) bytes += c;
    EXPECT_EQ(0xB39EFCA403966E08u, marvin32(""));
    EXPECT_EQ(0x914527932CF336DDu, marvin32("HvLE"));
    EXPECT_EQ(0xC64FEEE425C2E24Cu, marvin32(bytes));
}

TEST(NewLog, OfACleanHiveIsIgnored) {
    const std::string hive = hiveState(0);
    const Replayed result = replayed(hive, {{kLog1, logOfSteps(1, 2, 1)}});
    EXPECT_EQ(Replay::State::Clean, result.replay.state);
    EXPECT_TRUE(hive == result.image);
}

TEST(NewLog, EntriesAreAppliedAndTheHiveIsClean) {
    const Replayed result = replayed(dirtyState(0, 5), {{kLog1, logOfSteps(1, 3, 5)}});
    expectState(result, 3, 7, "LOG1");
    EXPECT_EQ(3u, result.replay.entries);
    EXPECT_EQ(5u, result.replay.firstSequence);
    EXPECT_EQ("", result.replay.problem);
    EXPECT_FALSE(result.replay.oldFormat);
}

TEST(NewLog, TheLastEntrysFlagComesIntoTheBaseBlock) {
    for (const std::uint32_t last : {0u, 1u}) {
        MadeEntry first = stepTo(1, 5);
        MadeEntry second = stepTo(2, 6);
        first.flags = 1 - last;
        second.flags = last | 6;  // of which the lowest bit counts alone
        std::string hive = dirtyState(0, 5);
        setInBaseBlock(hive, base_block::kFlags, base_block::kFlagLayered | (1 - last));
        const Replayed result = replayed(hive, {{kLog1, newLog(hive, 5, {first, second})}});
        const BaseBlock base = readBaseBlock(HiveBytes(result.image));
        EXPECT_EQ(base_block::kFlagLayered | last, base.flags);
        EXPECT_TRUE(base.checksumRight);
        EXPECT_FALSE(base.dirty());
    }
}

TEST(NewLog, BinsMayShrinkAndTheFileKeepsItsLength) {
    const std::string hive = dirtyState(3, 5);
    const Replayed result = replayed(hive, {{kLog1, newLog(hive, 5, {{5, hiveState(3), hiveState(0)}})}});
    EXPECT_EQ(hive.size(), result.image.size());
    const std::string expected = hiveState(0);
    EXPECT_EQ(expected.size() - kBinsStart, readBaseBlock(HiveBytes(result.image)).binsSize);
    EXPECT_TRUE(expected.substr(kBinsStart) == result.image.substr(kBinsStart, expected.size() - kBinsStart));
}

TEST(NewLog, TheEarlierLogGoesFirst) {
    const std::string hive = dirtyState(0, 5);
    const std::string earlier = logOfSteps(1, 2, 5);
    const std::string later = logOfSteps(3, 2, 7);
    expectState(replayed(hive, {{kLog1, earlier}, {kLog2, later}}), 4, 8, "LOG1 and LOG2");
    expectState(replayed(hive, {{kLog1, later}, {kLog2, earlier}}), 4, 8, "LOG2 and LOG1");
    expectState(replayed(hive, {{kLog2, earlier}, {kLog1, later}}), 4, 8, "LOG2 and LOG1");
}

TEST(NewLog, NumbersBeginAnewBehindTheLast) {
    const std::string hive = dirtyState(0, 0xFFFFFFFEu);
    const std::string earlier = logOfSteps(1, 3, 0xFFFFFFFEu);
    const std::string later = logOfSteps(4, 1, 1);
    expectState(replayed(hive, {{kLog1, earlier}, {kLog2, later}}), 4, 1, "LOG1 and LOG2");
    expectState(replayed(hive, {{kLog1, later}, {kLog2, earlier}}), 4, 1, "LOG2 and LOG1");
}

// Zeros are no entry, though their number would be due.
TEST(NewLog, ZerosBehindTheLastNumberAreAnOrdinaryEnd) {
    const std::string log = logOfSteps(1, 1, 0xFFFFFFFFu) + std::string(4096, '\0');
    const Replayed result = replayed(dirtyState(0, 0xFFFFFFFFu), {{kLog1, log}});
    expectState(result, 1, 0xFFFFFFFFu, "LOG1");
    EXPECT_EQ("", result.replay.problem);
}

TEST(NewLog, AStaleOneIsSkipped) {
    const std::string hive = dirtyState(2, 7);
    const std::string stale = logOfSteps(1, 2, 5);
    const std::string fresh = logOfSteps(3, 2, 7);
    expectState(replayed(hive, {{kLog1, fresh}, {kLog2, stale}}), 4, 8, "LOG1");
    expectState(replayed(hive, {{kLog1, stale}, {kLog2, fresh}}), 4, 8, "LOG2");
    expectRefused(replayed(hive, {{kLog2, stale}}), hive, "LOG2 begins with 5, and the hive already has 7");
}

TEST(NewLog, AGapInTheNumbersEndsIt) {
    const std::string hive = dirtyState(0, 5);
    const std::string log = newLog(hive, 5, {stepTo(1, 5), stepTo(2, 6), stepTo(3, 8), stepTo(4, 9)});
    const Replayed result = replayed(hive, {{kLog1, log}});
    expectState(result, 2, 6, "LOG1");
    EXPECT_EQ("LOG1 ends early: what should be entry 7 has the number 8", result.replay.problem);
}

TEST(NewLog, WhatAnEarlierUseLeftBehindTheEntriesIsAnOrdinaryEnd) {
    const std::string hive = dirtyState(0, 50);
    const std::string log = newLog(hive, 50, {stepTo(1, 50), stepTo(2, 51), stepTo(3, 22), stepTo(4, 23)});
    for (const std::string& end : {std::string(), std::string(8192, '\0'), std::string(512, 'x')}) {
        const Replayed result = replayed(hive, {{kLog1, log + end}});
        expectState(result, 2, 51, "LOG1");
        EXPECT_EQ("", result.replay.problem);
    }
}

TEST(NewLog, ABadEntryInTheMiddleEndsIt) {
    const std::string hive = dirtyState(0, 5);
    const std::string good = logOfSteps(1, 4, 5);
    const std::size_t third = logOfSteps(1, 2, 5).size();
    const std::pair<std::size_t, const char*> damages[] = {
        {0, "has no signature"},
        {log_entry::kSequence, "has a header whose hash is wrong"},
        {log_entry::kHash1, "has a header whose hash is wrong"},
        {log_entry::kHash2, "has a header whose hash is wrong"},
        {log_entry::kPages + 100, "has pages whose hash is wrong"}};
    for (const auto& [at, what] : damages) {
        std::string log = good;
        log[third + at] = static_cast<char>(log[third + at] ^ 0x10);
        const Replayed result = replayed(hive, {{kLog1, log}});
        SCOPED_TRACE(what);
        expectState(result, 2, 6, "LOG1");
        EXPECT_EQ(std::string("LOG1 ends early: what should be entry 7 ") + what, result.replay.problem);
    }
}

TEST(NewLog, AnEntryWithRightHashesAndAnImpossiblePageIsBad) {
    const std::string hive = dirtyState(0, 5);
    std::string bad = bytesOf(stepTo(2, 6));
    const std::uint32_t size = 4096;  // of bins that have more pages
    bad.replace(log_entry::kBinsSize, 4, reinterpret_cast<const char*>(&size), 4);
    const std::uint64_t hash = marvin32(std::string_view(bad).substr(0, log_entry::kHash2));
    bad.replace(log_entry::kHash2, 8, reinterpret_cast<const char*>(&hash), 8);
    const Replayed result = replayed(hive, {{kLog1, newLog(hive, 5, {stepTo(1, 5)}) + bad}});
    expectState(result, 1, 5, "LOG1");
    EXPECT_EQ("LOG1 ends early: what should be entry 6 has a page behind the bins", result.replay.problem);
}

// An entry with other numbers in its header and the hashes that follow.
std::string entryWith(std::string entry,
                      std::initializer_list<std::pair<std::size_t, std::uint32_t>> numbers) {
    const auto put = [&entry](std::size_t at, auto number) {
        entry.replace(at, sizeof number, reinterpret_cast<const char*>(&number), sizeof number);
    };
    for (const auto& [at, number] : numbers) put(at, number);
    const std::string_view all(entry);
    put(log_entry::kHash1, marvin32(all.substr(log_entry::kPages)));
    put(log_entry::kHash2, marvin32(all.substr(0, log_entry::kHash2)));
    return entry;
}

TEST(NewLog, AnEntryWithRightHashesThatCannotBeIsBad) {
    const std::string hive = dirtyState(0, 5);
    const std::string good = bytesOf(stepTo(2, 6));
    const auto size = static_cast<std::uint32_t>(good.size());
    constexpr std::size_t kFirstPage = log_entry::kPages;
    const std::tuple<std::size_t, std::uint32_t, const char*> cases[] = {
        {log_entry::kSize, 0u, "has an impossible length"},
        {log_entry::kSize, 256u, "has an impossible length"},
        {log_entry::kSize, size - 256, "has an impossible length"},
        {log_entry::kBinsSize, 0u, "names an impossible size of bins"},
        {log_entry::kBinsSize, 8191u, "names an impossible size of bins"},
        {log_entry::kBinsSize, 0x7FFFF000u + 4096, "names an impossible size of bins"},
        {kFirstPage, 0xFFFFF000u, "has a page behind the bins"},
        {kFirstPage + 4, 0x7FFFF000u, "the file ends, or its cell does, before what it is said to hold"},
        {log_entry::kPageCount, 0x10000u, "the file ends, or its cell does, before what it is said to hold"}};
    for (const auto& [at, number, what] : cases) {
        SCOPED_TRACE(what);
        const std::string log = newLog(hive, 5, {stepTo(1, 5)}) + entryWith(good, {{at, number}});
        const Replayed result = replayed(hive, {{kLog1, log}});
        expectState(result, 1, 5, "LOG1");
        EXPECT_EQ(std::string("LOG1 ends early: what should be entry 6 ") + what, result.replay.problem);
    }
}

// The most that bins may have, where so much can't be had: the hive stays what it was.
TEST(NewLog, ThatMakesAHiveLargerThanTheMemoryIsRefused) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs all addresses";
#else
    const ChildAnswer answer = answerOfChild(
        [] {
            const std::string hive = dirtyState(0, 5);
            const std::string entry = entryWith(bytesOf(stepTo(1, 5)), {{log_entry::kBinsSize, 0x7FFFF000u}});
            rlimit little{};
            ::getrlimit(RLIMIT_AS, &little);
            little.rlim_cur = rlim_t{1} << 30;
            ::setrlimit(RLIMIT_AS, &little);
            const Replayed result = replayed(hive, {{kLog1, newLog(hive, 5, {}) + entry}});
            return (result.image == hive ? "" : "changed: ") + result.replay.problem;
        },
        std::chrono::seconds(60));
    EXPECT_EQ("there is too little memory for the hive as its log says it is", answer.text);
    EXPECT_EQ("", answer.problem);
#endif
}

// The last page of the bins is one of them; a byte further is none.
TEST(NewLog, APageMayEndWhereTheBinsEnd) {
    const std::string hive = dirtyState(0, 5);
    const std::string good = bytesOf(stepTo(1, 5));
    const HiveBytes entry(good);
    const std::size_t pages = entry.u32(log_entry::kPageCount);
    const std::size_t last = log_entry::kPages + (pages - 1) * 8;
    ASSERT_EQ(entry.u32(log_entry::kBinsSize), entry.u32(last) + entry.u32(last + 4));
    const std::string first = newLog(hive, 5, {});
    expectState(replayed(hive, {{kLog1, first + good}}), 1, 5, "LOG1");
    expectRefused(replayed(hive, {{kLog1, first + entryWith(good, {{last, entry.u32(last) + 1}})}}), hive,
                  "LOG1 ends early: what should be entry 5 has a page behind the bins; no log has an entry "
                  "that fits");
}

TEST(NewLog, TheOtherLogMustFollowWithoutAGap) {
    const std::string hive = dirtyState(0, 5);
    const Replayed result = replayed(hive, {{kLog1, logOfSteps(1, 2, 5)}, {kLog2, logOfSteps(3, 2, 8)}});
    expectState(result, 2, 6, "LOG1");
    EXPECT_EQ("LOG2 begins with 8 and not with 7, so it is not used", result.replay.problem);
}

TEST(NewLog, ThatEndsEarlyIsNotFollowedByTheOther) {
    const std::string hive = dirtyState(0, 5);
    std::string first = logOfSteps(1, 2, 5);
    first[first.size() - 1] = 'x';
    const Replayed result = replayed(hive, {{kLog1, first}, {kLog2, logOfSteps(3, 2, 7)}});
    expectState(result, 1, 5, "LOG1");
    EXPECT_EQ(
        "LOG1 ends early: what should be entry 6 has pages whose hash is wrong; LOG2 begins with 7 and "
        "not with 6, so it is not used",
        result.replay.problem);
}

// What was taken out of both is told by the names of those that gave something.
TEST(NewLog, ThatFollowsWithoutAGoodEntryIsNotNamed) {
    const std::string hive = dirtyState(0, 5);
    const std::string empty = newLog(hive, 7, {}) + std::string(4096, '\0');
    expectState(replayed(hive, {{kLog1, logOfSteps(1, 2, 5)}, {kLog2, empty}}), 2, 6, "LOG1");
}

TEST(NewLog, WhoseFirstEntryDoesNotFitIsRefused) {
    const std::string hive = dirtyState(0, 5);
    expectRefused(replayed(hive, {{kLog1, newLog(hive, 5, {stepTo(1, 6), stepTo(2, 7)})}}), hive,
                  "LOG1 ends early: what should be entry 5 has the number 6; no log has an entry that fits");
}

TEST(NewLog, WithoutEntriesIsFollowedByTheOtherOfItsNumber) {
    const std::string hive = dirtyState(0, 5);
    const std::string empty = newLog(hive, 5, {}) + std::string(4096, '\0');
    expectState(replayed(hive, {{kLog1, empty}, {kLog2, logOfSteps(1, 2, 5)}}), 2, 6, "LOG2");
    expectRefused(replayed(hive, {{kLog1, empty}}), hive, "no log has an entry that fits");
}

TEST(NewLog, WithAWrongBaseBlockTheLaterLogAloneCounts) {
    const std::string hive = tornState(2);
    const std::string earlier = logOfSteps(1, 2, 5);
    const std::string later = logOfSteps(3, 2, 7);
    const Replayed result = replayed(hive, {{kLog1, earlier}, {kLog2, later}});
    expectState(result, 4, 8, "LOG2");
    EXPECT_EQ("the hive's base block is damaged", result.replay.problem);
    expectState(replayed(hive, {{kLog1, later}, {kLog2, earlier}}), 4, 8, "LOG1");
    std::string zeros = hive;
    zeros.replace(0, kSectorSize, kSectorSize, '\0');
    expectState(replayed(zeros, {{kLog1, earlier}, {kLog2, later}}), 4, 8, "LOG2");
}

TEST(NewLog, GivesItsFirstSectorToAHiveWithAWrongBaseBlock) {
    std::string earlier = logOfSteps(1, 2, 5);
    std::string later = logOfSteps(3, 2, 7);
    setInBaseBlock(earlier, base_block::kFileName, 0x00410041u);
    setInBaseBlock(later, base_block::kFileName, 0x00420042u);
    const Replayed torn = replayed(tornState(2), {{kLog1, earlier}, {kLog2, later}});
    EXPECT_EQ(0x00420042u, HiveBytes(torn.image).u32(base_block::kFileName));
    EXPECT_EQ(base_block::kTypeHive, readBaseBlock(HiveBytes(torn.image)).type);
    const Replayed whole = replayed(dirtyState(0, 5), {{kLog1, earlier}, {kLog2, later}});
    EXPECT_EQ(0u, HiveBytes(whole.image).u32(base_block::kFileName));
}

TEST(NewLog, WithAWrongBaseBlockAndALaterLogWithoutAGoodEntryNothingIsUsed) {
    const std::string hive = tornState(2);
    std::string later = logOfSteps(3, 2, 7);
    later[kSectorSize + log_entry::kHash2] ^= 1;
    expectRefused(replayed(hive, {{kLog1, logOfSteps(1, 2, 5)}, {kLog2, later}}), hive,
                  "the hive's base block is damaged; LOG2 ends early: what should be entry 7 has a header "
                  "whose hash is wrong; no log has an entry that fits");
}

TEST(NewLog, NumbersMayStartFarAhead) {
    expectState(replayed(dirtyState(0, 1621), {{kLog1, logOfSteps(1, 2, 2107)}}), 2, 2108, "LOG1");
}

TEST(NewLog, CutAnywhereGivesTheLastWholeEntry) {
    const std::string hive = dirtyState(0, 5);
    const std::string log = logOfSteps(1, 3, 5);
    std::vector<std::size_t> ends;
    for (int count = 0; count <= 3; ++count) ends.push_back(logOfSteps(1, count, 5).size());
    for (std::size_t size = 0; size <= log.size(); size += 64) {
        SCOPED_TRACE(size);
        std::size_t whole = 0;
        while (whole < 3 && ends[whole + 1] <= size) ++whole;
        const Replayed result = replayed(hive, {{kLog1, log.substr(0, size)}});
        if (whole == 0) {
            EXPECT_EQ(Replay::State::NoUsableLog, result.replay.state);
            EXPECT_TRUE(hive == result.image);
            continue;
        }
        expectState(result, static_cast<int>(whole), static_cast<std::uint32_t>(4 + whole), "LOG1");
        EXPECT_EQ(size != ends[whole], !result.replay.problem.empty());
    }
}

}  // namespace
}  // namespace bromvale::offline
