// The second reader: what it can't tell, and real hives after their logs' replay as both readers see them.
#include "tests/hives/compared_hives.h"
#include "tests/hives/hive_states.h"

namespace bromvale::offline {
namespace {

class SecondReader : public Comparison {};

TEST_F(SecondReader, PassesOverWhatItCannotTell) {
    if (!hasSecondReader()) GTEST_SKIP();
    MadeHive hive = exampleHive();
    hive.root.subKeys[1].name = std::u16string(u"C\0x", 3);
    hive.root.subKeys[2].name = u"D\xd800";
    hive.root.subKeys[2].lastWritten = 0x8000000000000000u;
    hive.root.subKeys[0].values = {{std::u16string(u"V\0x", 3), 1, "ab"}, {u"None", 7, "", 0, false, true}};
    const std::string before = fileOf(hive);
    expectSame(before, before);
    EXPECT_EQ((PassedOver{.names = 3, .times = 1, .data = 1, .valueLists = 0, .keyLists = 0}), passedOver());
    hive.root.subKeys[0].values[0].name[0] = u'W';
    EXPECT_EQ(Difference("\\A\xC3\xA4: the value \"W\" is additional"), second(before, fileOf(hive)));
    hive.root.subKeys[0].values[1].type = 8;
    hive.root.subKeys[0].values[0].name[0] = u'V';
    EXPECT_EQ(Difference("\\A\xC3\xA4: the value \"None\" has another type"), second(before, fileOf(hive)));
}

TEST_F(SecondReader, KnowsCharactersOfTwoUnits) {
    if (!hasSecondReader()) GTEST_SKIP();
    MadeHive hive = exampleHive();
    hive.root.subKeys[1].name = u"C\xd83d\xdc80\xdbff\xdfff\ufeff\uffff";
    const std::string before = fileOf(hive);
    expectSame(before, before);
    EXPECT_EQ(PassedOver{}, passedOver());
}

TEST_F(SecondReader, KnowsHalvesOfPairsWhereverTheyStand) {
    if (!hasSecondReader()) GTEST_SKIP();
    const std::pair<std::u16string, std::size_t> names[] = {
        {u"\xd800", 1},       {u"\xdc00x", 1},      {u"\xdfff", 1},       {u"\xdbffx", 1},
        {u"\xd800\xd800", 1}, {u"\xd800\xe000", 1}, {u"\xd800\xdc00", 0}, {u"\xdbff\xdfff\xdc00", 1},
        {u"\xd7ff\xe000", 0}};
    for (const auto& [name, count] : names) {
        MadeHive hive = exampleHive();
        hive.root.subKeys.back().name = name;
        const std::string before = fileOf(hive);
        expectSame(before, before);
        EXPECT_EQ(PassedOver{.names = count}, passedOver()) << &name - &names[0].first;
    }
}

TEST_F(SecondReader, KnowsItsLimits) {
    if (!hasSecondReader()) GTEST_SKIP();
    MadeHive hive = exampleHive();
    hive.root.subKeys[1].values = {{u"Most", 3, std::string(8'000'000, 'm')},
                                   {u"More", 3, std::string(8'000'001, 'm')}};
    const std::string before = fileOf(hive);
    expectSame(before, before);
    EXPECT_EQ(PassedOver{.data = 1}, passedOver());
}

TEST_F(SecondReader, KnowsDataOfNoBytes) {
    if (!hasSecondReader()) GTEST_SKIP();
    MadeHive hive = exampleHive();
    hive.root.subKeys[1].values = {{u"Empty", 3, ""}, {u"Text", 1, ""}, {u"Full", 3, "abcd"}};
    const std::string before = fileOf(hive);
    expectSame(before, before);
    EXPECT_EQ(PassedOver{}, passedOver());
    hive.root.subKeys[1].values[0].data = "x";
    expectDifference("\\C: the value \"Empty\" has data of another length", before, fileOf(hive));
}

// The number as two characters, so that all sort as they are counted.
std::u16string numbered(std::size_t number) {
    return {static_cast<char16_t>(0x4E00 + number / 1000), static_cast<char16_t>(0x4E00 + number % 1000)};
}

TEST_F(SecondReader, KnowsHowManyItLists) {
    if (!hasSecondReader()) GTEST_SKIP();
    MadeHive hive;
    hive.root.name = u"root";
    hive.root.list.partSize = 1000;
    hive.root.subKeys.resize(70'000);
    hive.root.values.resize(110'000);
    for (std::size_t i = 0; i < 70'000; ++i) hive.root.subKeys[i].name = numbered(i);
    for (std::size_t i = 0; i < 110'000; ++i) hive.root.values[i].name = numbered(i);
    const auto expectPassedOver = [&](const PassedOver& expected) {
        const std::string before = fileOf(hive);
        expectSame(before, before);
        EXPECT_EQ(expected, passedOver());
    };
    expectPassedOver({});
    hive.root.values.push_back({u"one more", 1, ""});
    expectPassedOver({.valueLists = 1});
    hive.root.subKeys.resize(70'001);
    hive.root.subKeys.back().name = u"one more";
    expectPassedOver({.valueLists = 1, .keyLists = 1});
}

TEST_F(SecondReader, ThatIsNotThereNamesItsPackage) {
    if (hasSecondReader()) GTEST_SKIP();
    const std::string hive = fileOf(exampleHive());
    EXPECT_EQ(Difference("the program was built without its second reader of hives (package libhivex-dev)"),
              second(hive, hive));
}

TEST_F(SecondReader, MissesTheEndOfBigDataInCellsOfTheLeastSize) {
    if (!hasSecondReader()) GTEST_SKIP();
    MadeHive hive = exampleHive();
    hive.root.subKeys[1].values = {{u"Four", 3, std::string(16'344 + 12, 'x')},
                                   {u"Five", 3, std::string(16'344 + 13, 'x')}};
    const std::string before = fileOf(hive);
    expectSame(before, before);
    EXPECT_EQ(PassedOver{.data = 1}, passedOver());
    std::string& four = hive.root.subKeys[1].values[0].data;
    four[16'344 + 8] = 'y';  // of the last four, which it doesn't give
    EXPECT_EQ(Difference("\\C: the value \"Four\" has other data"), own(before, fileOf(hive)));
    EXPECT_EQ(Difference(), second(before, fileOf(hive)));
    four[16'344 + 7] = 'y';
    EXPECT_EQ(Difference("\\C: the value \"Four\" has other data"), second(before, fileOf(hive)));
}

TEST_F(SecondReader, ThatCannotOpenTheFileHasADifference) {
    if (!hasSecondReader()) GTEST_SKIP();
    const std::string hive = fileOf(exampleHive());
    const Hive before{HiveBytes(hive)};
    EXPECT_EQ(Difference("can't open the file: No such file or directory"),
              differenceForSecondReader((folder() / "none").string(), before, {}));
    std::string wrong = hive;
    wrong[base_block::kChecksum] ^= 1;
    EXPECT_NE(Difference(), second(hive, wrong));
    EXPECT_NE(Difference(), second(hive, hive.substr(0, 6000)));
}

// Ours is whole.
TEST_F(SecondReader, ThatCannotReadAPartOfTheFileSaysWhich) {
    if (!hasSecondReader()) GTEST_SKIP();
    const std::string hive = fileOf(exampleHive());
    const auto with = [&](std::u16string_view path, std::size_t field, std::uint32_t number) {
        std::string bytes = hive;
        const std::size_t place = Hive(HiveBytes(hive)).cell(cellOf(hive, path)).place() + field;
        bytes.replace(place, 4, reinterpret_cast<const char*>(&number), 4);
        return second(hive, bytes).value_or("none");
    };
    EXPECT_EQ(with(u"", key_node::kSubKeys, 4), "\\: can't list the sub keys: Bad address");
    EXPECT_EQ(with(u"A\u00E4\\B", key_node::kValues, 4),
              "\\A\xC3\xA4\\B: can't list the values: Bad address");
    EXPECT_EQ(with(u"C", key_node::kNameSize, 0xFFFF), "\\C: can't read the name: Bad address");
}

struct RealCase {
    const char* name;
    PassedOver passedOver = {};
};

class RealRegistryComparison : public Comparison, public ::testing::WithParamInterface<RealCase> {};

TEST_P(RealRegistryComparison, FindsNothing) {
    const std::string name = GetParam().name;
    std::string hive = realHive(name);
    const std::string log = name == "made-old-NTUSER.DAT" || name == "win10-dirty-NTUSER.DAT"
                                ? realHive(name + ".LOG1")
                                : std::string();
    if (!log.empty()) hive = replayed(hive, {{LogName::Log1, log}}).image;
    expectSame(hive, hive);
    if (hasSecondReader()) {
        EXPECT_EQ(GetParam().passedOver, passedOver());
    }
}

INSTANTIATE_TEST_SUITE_P(Of, RealRegistryComparison,
                         ::testing::Values(RealCase{"hivex-minimal"}, RealCase{"hivex-rlenvalue_test_hive"},
                                           RealCase{"hivex-special", {.names = 2}},
                                           RealCase{"made-li-SOFTWARE"}, RealCase{"made-size0", {.data = 1}},
                                           RealCase{"win7-SYSTEM"}, RealCase{"win7-x86-SOFTWARE"},
                                           RealCase{"win81-UsrClass.dat"}, RealCase{"winxp-NTUSER.DAT"},
                                           RealCase{"win10-dirty-NTUSER.DAT"},
                                           RealCase{"made-old-NTUSER.DAT"}));

class RealRegistryAbort : public Comparison {};

// Its data's offset is that of no cell.
TEST_F(RealRegistryAbort, IsDamage) {
    const std::string damaged = realHive("made-abort");
    const std::string whole = realHive("hivex-special");
    EXPECT_THROW(static_cast<void>(own(damaged, damaged)), HiveDamage);
    if (hasSecondReader()) {
        EXPECT_NE(Difference(), second(whole, damaged));
    }
}

}  // namespace
}  // namespace bromvale::offline
