// Whole cleanings of made hives.
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>

#include "platform/offline/hives/cleaning/record.h"
#include "platform/offline/hives/cleaning/undo.h"
#include "tests/hives/cleaning/disk.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;
using State = CleaningResult::State;

TEST_F(CleaningTest, ADirtyHiveIsReplayedAndCleanedAndItsLogsGoAside) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    HostFiles files;
    std::vector<std::string> steps;
    const CleaningResult result =
        cleanHives(files, cleaningOf({order}), [&](const std::string& path, const std::string& step) {
            EXPECT_EQ(order.path, path);
            steps.push_back(step);
        });
    ASSERT_EQ("", describe(result));
    ASSERT_EQ(State::Done, result.state);
    expectCleaned(order, before);
    FolderState after = state();
    const std::string copy = "SOFTWARE.bromvale-2026-11-22_09-16-05";
    EXPECT_TRUE(before.at("SOFTWARE") == after[copy]);
    EXPECT_TRUE(before.at("SOFTWARE.LOG1") == after["SOFTWARE.LOG1.bromvale-2026-11-22_09-16-05"]);
    EXPECT_TRUE(before.at("SOFTWARE.LOG2") == after["SOFTWARE.LOG2.bromvale-2026-11-22_09-16-05"]);
    EXPECT_EQ(order.completeCopy, after[copy + ".reg"]);
    EXPECT_TRUE(readRecord(after[copy + ".list"]).has_value());
    EXPECT_EQ(6u, after.size());
    ASSERT_EQ(1u, result.hives.size());
    EXPECT_EQ(13u, result.hives[0].removed);  // three have a key of their own below
    EXPECT_EQ(path(copy), result.hives[0].copy);
    EXPECT_EQ(path(copy + ".reg"), result.hives[0].completeCopy);
    EXPECT_EQ(path(copy + ".list"), result.hives[0].list);
    EXPECT_EQ((std::vector<std::string>{"Copied to " + path(copy), "1 entries of LOG1 replayed",
                                        "13 keys taken out", "Proved by two readers", "Cleaned: 13 keys"}),
              steps);
}

TEST_F(CleaningTest, ACleanHiveKeepsItsTailAndItsLogsGoAsideToo) {
    HiveToClean order = placeClean("ntuser.dat");
    write("ntuser.dat.LOG1", std::string(8192, '\0'));
    order.logs.push_back({LogName::Log1, path("ntuser.dat.LOG1"), printOf(std::string(8192, '\0'))});
    const FolderState before = state();
    HostFiles files;
    ASSERT_EQ("", describe(cleanHives(files, cleaningOf({order}), {})));
    expectCleaned(order, before);
    EXPECT_TRUE(bytesOf(order.path).ends_with("what lies behind the bins"));
}

TEST_F(CleaningTest, SeveralHivesBelongToOneStamp) {
    const HiveToClean software = placeDirty("config/SOFTWARE");
    const HiveToClean user = placeClean("Users/M\xC3\xBCller \xC5\x81ukasz/NTUSER.DAT");
    HiveToClean nothing = placeClean("config/SYSTEM");
    nothing.keys.clear();
    const FolderState before = state();
    HostFiles files;
    const CleaningResult result = cleanHives(files, cleaningOf({software, nothing, user}), {});
    ASSERT_EQ("", describe(result));
    expectCleaned(software, before);
    expectCleaned(user, before);
    EXPECT_EQ(before.at("config/SYSTEM"), state().at("config/SYSTEM"));
    const ListedCleanings list = listCleanings(files, folders());
    ASSERT_EQ(1u, list.cleanings.size());
    EXPECT_EQ(2u, list.cleanings[0].hives.size());
    EXPECT_EQ(2u, list.cleanings[0].hivesThen);
    EXPECT_TRUE(list.cleanings[0].canBeUndone());
}

TEST_F(CleaningTest, WithoutKeysNothingIsDone) {
    HiveToClean order = placeClean("SOFTWARE");
    order.keys.clear();
    const FolderState before = state();
    TroubledFiles files;
    EXPECT_EQ(State::NothingToDo, cleanHives(files, cleaningOf({order}), {}).state);
    EXPECT_EQ(before, state());
    EXPECT_EQ(0, files.calls);
}

TEST_F(CleaningTest, ASecondRunWithTheKeysOfTheFirstIsRefused) {
    const HiveToClean order = placeDirty("SOFTWARE");
    HostFiles files;
    ASSERT_EQ("", describe(cleanHives(files, cleaningOf({order}), {})));
    const FolderState before = state();
    Cleaning again = cleaningOf({order});
    again.stamp = "later";
    EXPECT_EQ(State::Refused, cleanHives(files, again, {}).state);
    EXPECT_EQ(before, state());
}

std::string attributeOf(const std::string& file, const char* attribute) {
    std::string value(100, '\0');
    const ssize_t size = ::getxattr(file.c_str(), attribute, value.data(), value.size());
    value.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    return value;
}

// As far as the file system has them: on NTFS the owner stays whose it was mounted for, and hidden files
// stay hidden.
TEST_F(CleaningTest, OwnerModeAndAttributesAreThoseOfTheOldHive) {
    const HiveToClean order = placeClean("SOFTWARE");
    static_cast<void>(::chown(order.path.c_str(), 1234, 4321) == 0);
    static_cast<void>(::chmod(order.path.c_str(), 0640) == 0);
    ::setxattr(order.path.c_str(), "user.word", "value", 5, 0);
    ::setxattr(order.path.c_str(), "system.ntfs_attrib", "\x22\0\0", 4, 0);
    struct stat before {};
    ASSERT_EQ(0, ::stat(order.path.c_str(), &before));
    const std::string word = attributeOf(order.path, "user.word");
    const std::string hidden = attributeOf(order.path, "system.ntfs_attrib");
    const std::string access = attributeOf(order.path, "system.ntfs_acl");
    HostFiles files;
    ASSERT_EQ("", describe(cleanHives(files, cleaningOf({order}), {})));
    for (const std::string& name : {order.path, order.path + ".bromvale-" + kStamp}) {
        struct stat state {};
        ASSERT_EQ(0, ::stat(name.c_str(), &state));
        EXPECT_EQ(before.st_mode, state.st_mode);
        EXPECT_EQ(before.st_uid, state.st_uid);
        EXPECT_EQ(before.st_gid, state.st_gid);
        EXPECT_EQ(word, attributeOf(name, "user.word"));
        EXPECT_EQ(hidden, attributeOf(name, "system.ntfs_attrib"));
        EXPECT_EQ(access, attributeOf(name, "system.ntfs_acl"));
    }
}

}  // namespace
}  // namespace bromvale::offline
