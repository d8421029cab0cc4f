// Two hives compared: what is the same, and each thing that isn't, by our own reader and by the second one.
#include "tests/hives/compared_hives.h"
#include "tests/hives/hive_rounds.h"

namespace bromvale::offline {
namespace {

TEST_F(Comparison, OfAHiveWithItselfFindsNothing) {
    const std::string hive = fileOf(exampleHive());
    expectSame(hive, hive);
    EXPECT_EQ(PassedOver{}, passedOver());
}

TEST_F(Comparison, DoesNotCareWhereThingsLie) {
    for (const std::string_view kind : {key_list::kNames, key_list::kOffsets}) {
        MadeHive hive = exampleHive();
        hive.root.list.kind = kind;
        hive.freeCellEvery = 2;
        hive.binSize = 8192;
        expectSame(fileOf(exampleHive()), fileOf(hive));
    }
}

TEST_F(Comparison, FindsWhatIsOtherInAValue) {
    const std::string before = fileOf(exampleHive());
    const auto expectChange = [&](const std::string& text, const std::function<void(MadeKey&)>& change) {
        expectDifference("\\A\xC3\xA4\\B: " + text, before,
                         changed([&](MadeKey&, MadeKey&, MadeKey& b) { change(b); }));
    };
    expectChange("the value \"Long\" has other data", [](MadeKey& b) { b.values[2].data[39'999] = 'y'; });
    expectChange("the value \"Short\" has other data", [](MadeKey& b) { b.values[1].data = "abcD"; });
    expectChange("the value \"Short\" has data of another length",
                 [](MadeKey& b) { b.values[1].data = "abc"; });
    expectChange("the value \"\" has another type", [](MadeKey& b) { b.values[0].type = 2; });
    expectChange("the value \"short\" is additional", [](MadeKey& b) { b.values[1].name = u"short"; });
    expectChange("the value \"New\" is additional", [](MadeKey& b) { b.values.push_back({u"New", 1, ""}); });
    expectChange("the value \"Short\" is missing", [](MadeKey& b) { b.values.erase(b.values.begin() + 1); });
    expectChange("there are not as many values of each name as there should be, or they have another order",
                 [](MadeKey& b) { std::swap(b.values[1], b.values[2]); });
}

TEST_F(Comparison, FindsWhatIsOtherInAKey) {
    const std::string before = fileOf(exampleHive());
    expectDifference("\\C: another time", before,
                     changed([](MadeKey& root, MadeKey&, MadeKey&) { ++root.subKeys[1].lastWritten; }));
    expectDifference("\\: another time", before,
                     changed([](MadeKey& root, MadeKey&, MadeKey&) { ++root.lastWritten; }));
    expectDifference("\\: another name", before,
                     changed([](MadeKey& root, MadeKey&, MadeKey&) { root.name = u"boot"; }));
    expectDifference("\\: the key \"c\" is additional", before,
                     changed([](MadeKey& root, MadeKey&, MadeKey&) { root.subKeys[1].name = u"c"; }));
    expectDifference("\\A\xC3\xA4: the key \"B\" is missing", before,
                     changed([](MadeKey&, MadeKey& a, MadeKey&) { a.subKeys.clear(); }));
    expectDifference("\\A\xC3\xA4: the key \"New\" is additional", before,
                     changed([](MadeKey&, MadeKey& a, MadeKey& b) {
                         MadeKey added = b;
                         added.name = u"New";
                         a.subKeys.push_back(added);
                     }));
}

TEST_F(Comparison, ByOurOwnReaderFindsWhatTheSecondDoesNotKnow) {
    const std::string before = fileOf(exampleHive());
    const auto expectChange = [&](const std::string& text, const std::function<void(MadeKey&)>& change) {
        const std::string after = changed([&](MadeKey&, MadeKey&, MadeKey& b) { change(b); });
        EXPECT_EQ(Difference("\\A\xC3\xA4\\B: " + text), own(before, after));
        if (hasSecondReader()) {
            EXPECT_EQ(Difference(), second(before, after));
        }
    };
    expectChange("other flags", [](MadeKey& b) { b.flags = key_node::kFlagUndeletable; });
    expectChange("other flags of access or layers", [](MadeKey& b) { b.layered = 1; });
    expectChange("another class name", [](MadeKey& b) { b.className = u"clasS"; });
    expectChange("another class name", [](MadeKey& b) { b.className.clear(); });
    expectChange("another security", [](MadeKey& b) { b.security = 1; });
    expectChange("the value \"Short\" has other flags", [](MadeKey& b) { b.values[1].wideName = true; });
    expectChange("the value \"Short\" has other flags", [](MadeKey& b) { b.values[1].flags = 2; });
    expectChange("other flags", [](MadeKey& b) { b.wideName = true; });
}

// Control characters would reach the terminal.
TEST_F(Comparison, NamesOddCharactersByTheirNumbers) {
    const auto hive = [](std::uint64_t time, std::uint32_t type) {
        MadeHive made = exampleHive();
        made.root.subKeys[1].name = u"C \x1B[31m\x1F\x7F\u00e4~";
        made.root.subKeys[1].lastWritten = time;
        made.root.subKeys[1].values = {{u"a\n b", type, "x"}};
        return fileOf(made);
    };
    expectDifference("\\C \\x1B[31m\\x1F\\x7F\xC3\xA4~: another time", hive(1, 1), hive(2, 1));
    expectDifference("\\C \\x1B[31m\\x1F\\x7F\xC3\xA4~: the value \"a\\x0A b\" has another type", hive(1, 1),
                     hive(1, 2));
}

TEST_F(Comparison, OfSecurityThatIsNoneThrows) {
    const std::string hive = fileOf(exampleHive());
    std::string damaged = hive;
    const HiveBytes node = Hive(HiveBytes(hive)).cell(Hive(HiveBytes(hive)).root().security);
    damaged[node.place()] = 'x';
    try {
        static_cast<void>(own(hive, damaged));
        ADD_FAILURE() << "no damage";
    } catch (const HiveDamage& damage) {
        EXPECT_STREQ("an offset leads to no security", damage.what());
        EXPECT_EQ(node.place(), damage.place);
    }
}

TEST_F(Comparison, KeysThatAreToGoMustBeGone) {
    const std::string before = fileOf(exampleHive());
    const std::string without =
        changed([](MadeKey& root, MadeKey&, MadeKey&) { root.subKeys.erase(root.subKeys.begin() + 1); });
    const Cell c = cellOf(before, u"C");
    const Cell d = cellOf(before, u"D");
    expectSame(before, without, {c});
    expectDifference("\\: the key \"C\" is missing", before, without);
    expectDifference("\\: the key \"C\" is still there", before, before, {c});
    expectDifference("\\: the key \"D\" is still there", before, without, {c, d});
    expectDifference("\\: the key \"D\" is still there", before, without, {d});
    expectDifference("\\: the root itself is to go", before, before, {cellOf(before, u"")});
    EXPECT_THROW(static_cast<void>(own(before, before, {c + 8})), HiveDamage);
}

TEST_F(Comparison, WhatLiesBelowAKeyThatGoesNeedNotBeNamed) {
    const std::string before = fileOf(exampleHive());
    const Cell a = cellOf(before, u"A\u00e4");
    const Cell b = cellOf(before, u"A\u00e4\\B");
    ASSERT_NE(kNil, b);
    const std::string without =
        changed([](MadeKey& root, MadeKey&, MadeKey&) { root.subKeys.erase(root.subKeys.begin()); });
    expectSame(before, without, {a});
    expectSame(before, without, {a, b});
    expectSame(before, changed([](MadeKey&, MadeKey& key, MadeKey&) { key.subKeys.clear(); }), {b});
}

TEST_F(Comparison, OfDamagedHivesThrows) {
    const std::string hive = fileOf(exampleHive());
    std::string damaged = hive;
    const Cell c = cellOf(hive, u"C");
    damaged[kBinsStart + c + kCellHeaderSize] = 'x';
    EXPECT_THROW(static_cast<void>(own(hive, damaged)), HiveDamage);
    EXPECT_THROW(static_cast<void>(own(damaged, hive)), HiveDamage);
    if (!hasSecondReader()) return;
    EXPECT_THROW(static_cast<void>(second(damaged, hive)), HiveDamage);
    EXPECT_NE(Difference(), second(hive, damaged));
}

TEST_F(Comparison, OfMadeHivesFindsNothing) {
    const std::uint32_t rounds = std::min(hiveRounds(40), 2000u);
    for (std::uint32_t seed = 0; seed < rounds; ++seed) {
        SCOPED_TRACE(seed);
        const std::string hive = fileOf(randomHive(seed));
        expectSame(hive, hive);
        EXPECT_EQ(0u, passedOver().keyLists);
        if (seed % 8 != 7) {
            EXPECT_EQ(0u, passedOver().valueLists + passedOver().names);
        }
        if (HasFailure()) return;
    }
}

// A change of any byte in use is seen by our own reader unless it only moves things; by both, no crash.
TEST_F(Comparison, OfMutatedHivesEnds) {
    const std::string hive = fileOf(exampleHive());
    const std::uint32_t rounds = std::min(hiveRounds(100), 5000u);
    for (std::uint32_t round = 0; round < rounds; ++round) {
        std::string mutated = hive;
        const std::size_t at = kBinsStart + std::size_t{round} * 2654435761u % (mutated.size() - kBinsStart);
        mutated[at] = static_cast<char>(mutated[at] ^ 1 << (round % 8));
        try {
            static_cast<void>(own(hive, mutated));
        } catch (const HiveDamage&) {
        }
        if (hasSecondReader()) static_cast<void>(second(hive, mutated));
    }
}

}  // namespace
}  // namespace bromvale::offline
