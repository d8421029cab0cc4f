// What a hive holds is known by the keys below its root, and that of a user's classes by the root's name.
#include <gtest/gtest.h>

#include "platform/offline/hives/disk/open_hive.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {
namespace {

HiveContent contentWith(const std::vector<std::u16string>& keys, const std::u16string& root = u"ROOT") {
    MadeHive made;
    made.root.name = root;
    for (const std::u16string& key : keys) made.root.subKeys.emplace_back().name = key;
    const std::string bytes = bytesOf(made);
    return contentOf(Hive{HiveBytes(bytes)});
}

TEST(HiveContents, AreKnownByTheirKeysWithoutCase) {
    EXPECT_EQ(HiveContent::System, contentWith({u"SELECT"}));
    EXPECT_EQ(HiveContent::Software, contentWith({u"classes", u"microsoft"}));
    EXPECT_EQ(HiveContent::System, contentWith({u"Classes", u"Microsoft", u"Select"}));
    for (const char16_t* const key :
         {u"Control Panel", u"Environment", u"Console", u"Keyboard Layout", u"AppEvents"}) {
        EXPECT_EQ(HiveContent::User, contentWith({key, u"Software"}));
        EXPECT_EQ(HiveContent::Unknown, contentWith({key}));
    }
    for (const char16_t* const key : {u"Software", u"Classes", u"Microsoft", u"Other"})
        EXPECT_EQ(HiveContent::Unknown, contentWith({key}));
    EXPECT_EQ(HiveContent::Unknown, contentWith({}));
}

TEST(HiveContents, OfAUsersClassesAreKnownByTheRootsName) {
    EXPECT_EQ(HiveContent::UserClasses, contentWith({}, u"S-1-5-21-1_CLASSES"));
    EXPECT_EQ(HiveContent::UserClasses, contentWith({u"Select"}, u"S_Classes"));
    EXPECT_EQ(HiveContent::Unknown, contentWith({}, u"_Classes"));
    EXPECT_EQ(HiveContent::Unknown, contentWith({}, u"S_Classes2"));
}

class HiveFileTest : public HiveFilesTest {};

TEST_F(HiveFileTest, OneWhoseRootCannotBeReadIsNoneAndSaysWhy) {
    std::string bytes = offline::bytesOf(MadeHive());
    bytes[kBinsStart + Hive{HiveBytes(bytes)}.base().root + kCellHeaderSize] = 'x';
    write("SOFTWARE", bytes);
    const OpenHive open = openHive((folder() / "SOFTWARE").string(), {});
    EXPECT_FALSE(open.hive);
    EXPECT_NE(open.problem, "");
}

}  // namespace
}  // namespace bromvale::offline
