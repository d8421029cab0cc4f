// The list of what was done, as text.
#include "platform/offline/hives/cleaning/record.h"

#include <filesystem>
#include <tuple>

#include "tests/hives/hive_files.h"

namespace bromvale::offline {
namespace {

TEST(CleaningRecordText, ComesBackAndACutOneIsSeen) {
    CleaningRecord record;
    record.stamp = "2026-11-22_09-16-05";
    record.state = CleaningState::Ready;
    record.hive = "NTUSER\n.DAT %";
    record.part = 2;
    record.parts = 3;
    record.old = {4096, 0x0123456789ABCDEFu};
    record.fresh = {8192, 1};
    record.logs = {{"NTUSER\n.DAT %.LOG1", {512, 0xFFFFFFFFFFFFFFFFu}}};
    record.removed = 12;
    record.keys = {"HKEY_CURRENT_USER\\Software\\M\xC3\xBCller: end", "a\r\nend\n"};
    const std::string text = textOfRecord(record);
    EXPECT_EQ(
        "bromvale cleaning 1\nstamp: 2026-11-22_09-16-05\nstate: ready\nhive: NTUSER%0A.DAT %25\npart: 2 of "
        "3\n"
        "old: 4096 0123456789abcdef\nreplayed: 0 0000000000000000\nnew: 8192 0000000000000001\n"
        "present: 0 0000000000000000\nlog: 512 ffffffffffffffff NTUSER%0A.DAT %25.LOG1\nremoved: 12\n"
        "key: HKEY_CURRENT_USER\\Software\\M\xC3\xBCller: end\nkey: a%0D%0Aend%0A\nend\n",
        text);
    const std::optional<CleaningRecord> read = readRecord(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(text, textOfRecord(*read));
    for (std::size_t size = 0; size + 1 < text.size(); ++size)
        EXPECT_FALSE(readRecord(text.substr(0, size))) << size;
    for (const char* const line : {"hive: a/b\n", "hive: ..\n", "log: 1 2 ../x\n", "stamp: a/b\n",
                                   "state: x\n", "log: 1\n", "part: 1\n", "odd: 1\n", "key: %4\n"}) {
        EXPECT_FALSE(readRecord(std::string(text).insert(text.size() - 4, line))) << line;
    }
}

CleaningRecord example() {
    CleaningRecord record;
    record.stamp = "S";
    record.hive = "SOFTWARE";
    return record;
}

TEST(CleaningRecordText, EveryFieldComesBack) {
    CleaningRecord record = example();
    record.part = 2;
    record.parts = 3;
    record.old = {1, 0xA};
    record.replayed = {2, 0xB};
    record.fresh = {3, 0xC};
    record.present = {4, 0xD};
    record.forced = true;
    record.logs = {{"a b", {5, 0xE}}, {"c", {6, 0xF}}};
    record.removed = 7;
    record.keys = {"x", ""};
    const CleaningRecord read = readRecord(textOfRecord(record)).value();
    EXPECT_EQ("S", read.stamp);
    EXPECT_EQ("SOFTWARE", read.hive);
    EXPECT_EQ(2u, read.part);
    EXPECT_EQ(3u, read.parts);
    EXPECT_EQ(record.old, read.old);
    EXPECT_EQ(record.replayed, read.replayed);
    EXPECT_EQ(record.fresh, read.fresh);
    EXPECT_EQ(record.present, read.present);
    EXPECT_TRUE(read.forced);
    ASSERT_EQ(2u, read.logs.size());
    EXPECT_EQ("a b", read.logs[0].name);
    EXPECT_EQ((FilePrint{6, 0xF}), read.logs[1].print);
    EXPECT_EQ(7u, read.removed);
    EXPECT_EQ(record.keys, read.keys);
    EXPECT_FALSE(readRecord(textOfRecord(example())).value().forced);
}

TEST(CleaningRecordText, EachStateHasItsWordAndThreeAreUnfinished) {
    const std::tuple<CleaningState, const char*, bool> states[] = {
        {CleaningState::Begun, "begun", true},    {CleaningState::Ready, "ready", true},
        {CleaningState::Done, "done", false},     {CleaningState::Undoing, "undoing", true},
        {CleaningState::Undone, "undone", false}, {CleaningState::Abandoned, "abandoned", false}};
    for (const auto& [state, word, unfinished] : states) {
        CleaningRecord record = example();
        record.state = state;
        EXPECT_EQ(word, nameOfState(state));
        const std::string text = textOfRecord(record);
        EXPECT_NE(std::string::npos, text.find("\nstate: " + std::string(word) + "\n"));
        EXPECT_EQ(state, readRecord(text).value().state);
        EXPECT_EQ(unfinished, record.unfinished()) << word;
    }
}

TEST(CleaningRecordText, NamesTheFilesOfACleaning) {
    const CleaningRecord record = example();
    EXPECT_EQ("SOFTWARE.bromvale-S", record.hiveCopy());
    EXPECT_EQ("x.bromvale-S", record.copyOf("x"));
    EXPECT_EQ("x.bromvale-S.aside", record.asideOf("x"));
}

TEST(CleaningRecordText, AStampIsPartOfANameEverywhere) {
    for (const std::string& good : {std::string("09AZaz-_"), std::string("a"), std::string(64, 'x')})
        EXPECT_TRUE(isStamp(good)) << good;
    for (const std::string& bad : {std::string(), std::string(65, 'x'), std::string("/"), std::string(":"),
                                   std::string("@"), std::string("["), std::string("`"), std::string("{"),
                                   std::string("^"), std::string(","), std::string("a b")})
        EXPECT_FALSE(isStamp(bad)) << bad;
}

// Everything that can't be is none, not a list with something else in it.
TEST(CleaningRecordText, ALineThatCannotBeMakesItNone) {
    const std::string good = textOfRecord(example());
    ASSERT_TRUE(readRecord(good));
    const auto with = [&](const std::string& from, const std::string& to) {
        std::string text = good;
        const std::size_t at = text.find(from);
        EXPECT_NE(std::string::npos, at) << from;
        return readRecord(text.replace(at, from.size(), to)).has_value();
    };
    EXPECT_TRUE(with("part: 1 of 1", "part: 12 of 34"));
    EXPECT_TRUE(with("hive: SOFTWARE", "hive: %41%7f"));
    EXPECT_TRUE(with("old: 0 0", "old: 18446744073709551615 F"));
    EXPECT_FALSE(with("cleaning 1", "cleaning 2"));
    EXPECT_FALSE(with("stamp: S", "stamp: a b"));
    EXPECT_FALSE(with("stamp: S\n", ""));
    EXPECT_FALSE(with("hive: SOFTWARE\n", ""));
    EXPECT_FALSE(with("hive: SOFTWARE", "hive: ."));
    EXPECT_FALSE(with("hive: SOFTWARE", "hive: %"));
    EXPECT_FALSE(with("hive: SOFTWARE", "hive: %4"));
    EXPECT_FALSE(with("hive: SOFTWARE", "hive: %4g"));
    EXPECT_FALSE(with("hive: SOFTWARE", "hive: %g4"));
    EXPECT_FALSE(with("hive: SOFTWARE", "hive: %2f"));
    EXPECT_FALSE(with("part: 1 of 1", "part: 1 of x"));
    EXPECT_FALSE(with("part: 1 of 1", "part: x of 1"));
    EXPECT_FALSE(with("part: 1 of 1", "part: 1x of 1"));
    EXPECT_FALSE(with("old: 0 0", "old: x 0"));
    EXPECT_FALSE(with("old: 0 0000000000000000", "old: 0"));
    EXPECT_FALSE(with("old: 0 0", "old: 18446744073709551616 0"));
    EXPECT_FALSE(with("new: 0 0", "new: 0 g"));
    EXPECT_FALSE(with("removed: 0", "removed: -1"));
    EXPECT_FALSE(with("removed: 0", "removed: "));
    EXPECT_FALSE(with("removed: 0\n", "removed: 0\nforced: no\n"));
    EXPECT_FALSE(with("removed: 0\n", "removed: 0\nlog: 1 2 \n"));
    EXPECT_FALSE(with("removed: 0\n", "removed: 0\nlog: 1 2 .\n"));
    EXPECT_FALSE(with("removed: 0\n", "removed: 0\n\n"));
    EXPECT_FALSE(with("end\n", "end\nmore\n"));
}

class CleaningRecordFiles : public HiveFilesTest {};

TEST_F(CleaningRecordFiles, AreFoundByTheirNamesAndInOrder) {
    HostFiles files;
    HostFolder folder(files, HiveFilesTest::folder().string());
    for (const auto& [stamp, hive] : {std::pair("2", "B"), {"2", "A"}, {"1", "C"}}) {
        CleaningRecord record = example();
        record.stamp = stamp;
        record.hive = hive;
        storeRecord(folder, record);
    }
    write("D.bromvale-1.list", textOfRecord(example()));  // of another name
    write("E.bromvale-1.list", "cut");
    std::filesystem::create_symlink("C.bromvale-1.list", folder.pathOf("SOFTWARE.bromvale-S.list"));
    write("F.bromvale-1.list.new", "half");
    write("SOFTWARE.list", textOfRecord(example()));
    write("SOFTWARE.bromvale-1", textOfRecord(example()));
    const FoundRecords found = findRecords(folder);
    ASSERT_EQ(3u, found.records.size());
    EXPECT_EQ("C", found.records[0].hive);
    EXPECT_EQ("A", found.records[1].hive);
    EXPECT_EQ("B", found.records[2].hive);
    EXPECT_EQ(
        (std::vector<std::string>{"D.bromvale-1.list", "E.bromvale-1.list", "SOFTWARE.bromvale-S.list"}),
        found.unreadable);
    EXPECT_EQ((std::vector<std::string>{"F.bromvale-1.list.new"}), found.halfMade);
}

// The half one of an end in the middle is no hindrance.
TEST_F(CleaningRecordFiles, AStoredOneTakesThePlaceOfTheOneBefore) {
    HostFiles files;
    HostFolder folder(files, HiveFilesTest::folder().string());
    CleaningRecord record = example();
    storeRecord(folder, record);
    write("SOFTWARE.bromvale-S.list.new", "half");
    record.state = CleaningState::Done;
    storeRecord(folder, record);
    EXPECT_EQ(textOfRecord(record), bytesOf(folder.pathOf("SOFTWARE.bromvale-S.list")));
    EXPECT_FALSE(folder.has("SOFTWARE.bromvale-S.list.new"));
}

}  // namespace
}  // namespace bromvale::offline
