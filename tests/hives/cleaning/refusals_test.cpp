// What is refused before a byte is written.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/hives/cleaning/disk.h"
#include "tests/hives/made_log.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;
using State = CleaningResult::State;

class CleaningRefusalTest : public CleaningTest {
  protected:
    // Exactly this, and nothing written.
    void expectRefused(const Cleaning& cleaning, RefusalKind kind, const std::string& what) const {
        HostFiles files;
        expectRefused(files, cleaning, kind, what);
    }
    void expectRefused(HostFiles& files, const Cleaning& cleaning, RefusalKind kind,
                       const std::string& what) const {
        SCOPED_TRACE(what);
        const FolderState before = state();
        const CleaningResult result = cleanHives(files, cleaning, {});
        EXPECT_EQ(State::Refused, result.state);
        ASSERT_EQ(1u, result.refusals.size()) << describe(result);
        EXPECT_EQ(kind, result.refusals[0].kind);
        EXPECT_EQ(what, result.refusals[0].what);
        EXPECT_NE("", result.refusals[0].why);
        EXPECT_NE("", result.refusals[0].help);
        EXPECT_EQ(before, state());
        EXPECT_EQ(result.refusals.size(), refusalsOf(files, cleaning).size());
    }
    [[nodiscard]] HiveToClean placeMade(const MadeHive& hive, const std::vector<std::u16string>& keys) const {
        return place("SOFTWARE", offline::bytesOf(hive), {}, keys);
    }
};

MadeHive hiveWith(const std::u16string& name, std::uint16_t flags) {
    MadeHive hive;
    hive.root.name = u"ROOT";
    MadeKey key;
    key.name = name;
    key.flags = flags;
    hive.root.subKeys.push_back(key);
    return hive;
}

TEST_F(CleaningRefusalTest, WhatTheDiskSays) {
    Cleaning cleaning = cleaningOf({placeDirty("SOFTWARE")});
    cleaning.disk.hibernated = true;
    cleaning.words.notHibernated = true;
    expectRefused(cleaning, RefusalKind::Hibernated,
                  "This Windows is hibernated, or was shut down for a fast start.");
    cleaning.disk = {false, true};
    cleaning.words = {};
    expectRefused(cleaning, RefusalKind::HibernationDoubtful,
                  "Whether this Windows is hibernated can't be told.");
    cleaning.words.notHibernated = true;
    HostFiles files;
    EXPECT_EQ(State::Done, cleanHives(files, cleaning, {}).state);
}

TEST_F(CleaningRefusalTest, StampsThatCannotBePartOfAName) {
    Cleaning cleaning = cleaningOf({placeDirty("SOFTWARE")});
    for (const char* const stamp : {"", "..", "a/b", "/", "a b", "2026:11", "\xC3\xA4", "a.b", "a\nb"}) {
        cleaning.stamp = stamp;
        expectRefused(cleaning, RefusalKind::BadStamp, "The stamp can't be part of a file's name.");
    }
    cleaning.stamp = std::string(65, 'a');
    expectRefused(cleaning, RefusalKind::BadStamp, "The stamp can't be part of a file's name.");
}

TEST_F(CleaningRefusalTest, HivesThatAreNotOurs) {
    HiveToClean order = placeDirty("SOFTWARE");
    Cleaning cleaning = cleaningOf({order});
    cleaning.hives[0].mandatoryProfile = true;
    expectRefused(cleaning, RefusalKind::MandatoryProfile, "The hive is that of a mandatory profile.");
    expectRefused(cleaningOf({placeClean("ntuser.man")}), RefusalKind::MandatoryProfile,
                  "The hive is that of a mandatory profile.");
    TroubledFiles files;
    files.user = 4711;
    files.calls = 0;
    const CleaningResult result = cleanHives(files, cleaningOf({order}), {});
    ASSERT_EQ(3u, result.refusals.size()) << describe(result);
    for (const Refusal& refusal : result.refusals) EXPECT_EQ(RefusalKind::ForeignOwner, refusal.kind);
    cleaning = cleaningOf({order, order});
    expectRefused(cleaning, RefusalKind::SameHiveTwice, "The hive is named twice.");
}

TEST_F(CleaningRefusalTest, LinksAndOtherNames) {
    const HiveToClean order = placeClean("SOFTWARE");
    fs::rename(order.path, path("true"));
    fs::create_symlink("true", order.path);
    expectRefused(cleaningOf({order}), RefusalKind::NotAFile, "The file is a symbolic link.");
    fs::remove(order.path);
    expectRefused(cleaningOf({order}), RefusalKind::Unreadable, "The file is not there.");
    fs::create_directory(order.path);
    expectRefused(cleaningOf({order}), RefusalKind::NotAFile, "This is no plain file.");
    fs::remove(order.path);
    ASSERT_EQ(0, ::mkfifo(order.path.c_str(), 0600));
    expectRefused(cleaningOf({order}), RefusalKind::NotAFile, "This is no plain file.");
    fs::remove(order.path);
    fs::create_hard_link(path("true"), order.path);
    expectRefused(cleaningOf({order}), RefusalKind::HardLinked, "The file has other names.");
}

// Whether the second name is the short one of NTFS, of which nothing else tells.
TEST_F(CleaningRefusalTest, OfAFileWithTwoNamesTheShortOneIsAskedFor) {
    class Asked : public HostFiles {
      public:
        std::vector<std::string> attributes;

      protected:
        int failureBefore(std::string_view call, const std::string& name) override {
            if (call == "read the attribute") attributes.push_back(name);
            return 0;
        }
    };
    const HiveToClean order = placeClean("SOFTWARE");
    Asked files;
    static_cast<void>(refusalsOf(files, cleaningOf({order})));
    EXPECT_EQ(files.attributes, std::vector<std::string>());
    fs::create_hard_link(order.path, path("other"));
    static_cast<void>(refusalsOf(files, cleaningOf({order})));
    EXPECT_EQ(files.attributes, std::vector<std::string>{"system.ntfs_dos_name"});
}

TEST_F(CleaningRefusalTest, LogsThatAreLinksElsewhereOrNotGiven) {
    HiveToClean order = placeDirty("SOFTWARE");
    fs::rename(path("SOFTWARE.LOG2"), path("true"));
    fs::create_symlink("true", path("SOFTWARE.LOG2"));
    expectRefused(cleaningOf({order}), RefusalKind::NotAFile, "The file is a symbolic link.");
    fs::remove(path("SOFTWARE.LOG2"));
    fs::rename(path("true"), path("SOFTWARE.LOG2"));
    write("software.log", "");
    expectRefused(cleaningOf({order}), RefusalKind::LogNotGiven,
                  "There is a log beside the hive that was not looked at.");
    fs::remove(path("software.log"));
    fs::create_directory(path("other"));
    fs::rename(path("SOFTWARE.LOG2"), path("other/SOFTWARE.LOG2"));
    order.logs[1].path = path("other/SOFTWARE.LOG2");
    expectRefused(cleaningOf({order}), RefusalKind::LogElsewhere,
                  "The log lies in another folder than its hive.");
}

TEST_F(CleaningRefusalTest, WhatWasChangedSinceItWasShown) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    for (const auto& [name, bytes] : before) {
        std::string changed = bytes;
        changed.back() ^= 1;
        for (const std::string& other : {bytes + "x", changed, bytes.substr(1)}) {
            write(name, other);
            expectRefused(cleaningOf({order}), RefusalKind::ChangedSinceShown,
                          "The file was changed since the keys were chosen.");
        }
        write(name, bytes);
    }
}

TEST_F(CleaningRefusalTest, DirtyOrDamagedHives) {
    HiveToClean order = placeClean("SOFTWARE");
    std::string bytes = bytesOf(order.path);
    setSequence(bytes, 9, 8);
    order.shown = printOf(bytes);
    write("SOFTWARE", bytes);
    HostFiles files;
    const std::vector<Refusal> refusals = refusalsOf(files, cleaningOf({order}));
    ASSERT_EQ(1u, refusals.size());
    EXPECT_EQ(RefusalKind::DirtyWithoutLogs, refusals[0].kind);

    setSequence(bytes, 9, 9);
    const Cell key = order.keys[0].cell;
    bytes[kBinsStart + key + kCellHeaderSize + key_node::kSubKeyCount] ^= 4;
    order.shown = printOf(bytes);
    write("SOFTWARE", bytes);
    const std::vector<Refusal> damaged = refusalsOf(files, cleaningOf({order}));
    ASSERT_EQ(1u, damaged.size());
    EXPECT_EQ(RefusalKind::Damaged, damaged[0].kind);
    for (const std::string& odd : {std::string(), std::string("regf"), std::string(4096, '\0')}) {
        write("SOFTWARE", odd);
        order.shown = printOf(odd);
        EXPECT_EQ(1u, refusalsOf(files, cleaningOf({order})).size());
    }
}

TEST_F(CleaningRefusalTest, KeysThatStay) {
    struct Row {
        std::uint16_t flags;
    };
    for (const Row& row : {Row{key_node::kFlagUndeletable}, Row{key_node::kFlagSymbolicLink}}) {
        const HiveToClean order = placeMade(hiveWith(u"Stays", row.flags), {u"Stays"});
        HostFiles files;
        const CleaningResult result = cleanHives(files, cleaningOf({order}), {});
        ASSERT_EQ(1u, result.refusals.size()) << describe(result);
        EXPECT_EQ(RefusalKind::KeyStays, result.refusals[0].kind) << describe(result);
    }
    HiveToClean order = placeMade(hiveWith(u"Key", 0), {u""});
    HostFiles files;
    EXPECT_EQ(RefusalKind::KeyStays, refusalsOf(files, cleaningOf({order})).at(0).kind);
    order.keys[0].cell = 0x7FFFFFF8;
    EXPECT_EQ(RefusalKind::KeyStays, refusalsOf(files, cleaningOf({order})).at(0).kind);
}

TEST_F(CleaningRefusalTest, TransactionsThatWait) {
    MadeHive hive = hiveWith(u"Key", 0);
    hive.flags = base_block::kFlagTransactions;
    Cleaning cleaning = cleaningOf({placeMade(hive, {u"Key"})});
    const std::string file = "software{016888b9}.TMContainer00000000000000000001.regtrans-ms";
    write(file, "something");
    expectRefused(cleaning, RefusalKind::Transactions,
                  "The hive expects transactions, and a file of them is not empty.");
    HostFiles files;
    write(file, std::string(512, '\0'));
    EXPECT_TRUE(refusalsOf(files, cleaning).empty());
    write(file, "something");
    cleaning.words.loseTransactions = true;
    EXPECT_TRUE(refusalsOf(files, cleaning).empty());
}

TEST_F(CleaningRefusalTest, AnotherOneAtWorkOrLeftInTheMiddle) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const int held = ::open(folder().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(0, ::flock(held, LOCK_EX));
    expectRefused(cleaningOf({order}), RefusalKind::Busy,
                  "Another cleaning or undo is at work in the folder.");
    ::close(held);
    TroubledFiles files;
    files.troubleAt = 100;
    EXPECT_THROW(static_cast<void>(cleanHives(files, cleaningOf({order}), {})), Killed);
    Cleaning later = cleaningOf({order});
    later.stamp = "later";
    expectRefused(later, RefusalKind::Unfinished,
                  "The cleaning 2026-11-22_09-16-05 of SOFTWARE was not finished (begun).");
    goOn();
    write("SOFTWARE.LOG2.bromvale-later", "");
    expectRefused(later, RefusalKind::StampUsed, "There is a cleaning of this hive with the same stamp.");
}

class SmallDisk : public HostFiles {
  public:
    HostSpace space(const HostHandle& folder) override {
        return {small.free != 0 ? small.free : HostFiles::space(folder).free, small.readOnly};
    }
    HostSpace small;
};

TEST_F(CleaningRefusalTest, ADiskThatIsFullOrReadOnly) {
    const HiveToClean order = placeDirty("SOFTWARE");
    SmallDisk files;
    files.small.readOnly = true;
    expectRefused(files, cleaningOf({order}), RefusalKind::ReadOnly, "The disk is mounted read-only.");
    // The hive, twice as it is after its replay, its logs, the complete copy and a reserve.
    const std::uint64_t replayed = 57344;
    std::uint64_t needed = (1u << 20) + order.shown.size + 2 * replayed + order.completeCopy.size();
    for (const LogToClean& log : order.logs) needed += log.shown.size;
    files.small = {needed - 1, false};
    expectRefused(files, cleaningOf({order}), RefusalKind::NoSpace,
                  "There are " + std::to_string(needed - 1) + " bytes free, and " + std::to_string(needed) +
                      " are needed.");
    files.small.free = needed;
    EXPECT_TRUE(refusalsOf(files, cleaningOf({order})).empty());
}

TEST_F(CleaningRefusalTest, AFolderThatCannotBeWrittenTo) {
    const HiveToClean order = placeClean("SOFTWARE");
    const uid_t we = ::geteuid();
    const uid_t somebody = we == 0 ? 4711 : we;
    ASSERT_TRUE(we != 0 || ::chown(order.path.c_str(), somebody, somebody) == 0);
    ASSERT_EQ(0, ::chmod(folder().c_str(), 0555));
    struct stat state {};
    ASSERT_EQ(0, ::stat(order.path.c_str(), &state));
    if (state.st_uid != somebody) GTEST_SKIP() << "this file system knows no owners";
    ASSERT_EQ(0, ::seteuid(somebody));
    {
        HostFiles files;
        expectRefused(files, cleaningOf({order}), RefusalKind::NotWritable,
                      "The folder can't be written to.");
    }
    ASSERT_EQ(0, ::seteuid(we));
    ASSERT_EQ(0, ::chmod(folder().c_str(), 0700));
}

}  // namespace
}  // namespace bromvale::offline
