// By which names the logs of a hive are known, and what the lists of sub keys hold of names.
#include "platform/offline/hives/log_names.h"

#include <gtest/gtest.h>

#include "platform/offline/hives/cleaning/work.h"
#include "platform/offline/hives/key_names.h"

namespace bromvale::offline {
namespace {

TEST(LogNames, AreTheHivesNameAndAnEndInAnyCase) {
    EXPECT_EQ(LogName::Log, logOfHive("SOFTWARE.LOG", "SOFTWARE"));
    EXPECT_EQ(LogName::Log1, logOfHive("software.log1", "SOFTWARE"));
    EXPECT_EQ(LogName::Log2, logOfHive("AZaz.Log2", "azAZ"));
    EXPECT_EQ(LogName::Log1, logOfHive("ntuser.dat.LOG1", "NTUSER.DAT"));
    for (const char* const name : {"SOFTWARE", "SOFTWARE.LOG3", "SOFTWARE.LOG1.bak", "SYSTEM.LOG1",
                                   "XSOFTWARE.LOG", ".LOG", "LOG", "", "SOFTWARELOG1"})
        EXPECT_EQ(std::nullopt, logOfHive(name, "SOFTWARE")) << name;
    EXPECT_EQ(LogName::Log, logNameOf(".log"));
    EXPECT_EQ(LogName::Log2, logNameOf("x.LOG2"));
    EXPECT_EQ(std::nullopt, logNameOf("LOG"));
}

// Letters alone have two forms: the neighbours of A and Z, and those of a and z, have none.
TEST(LogNames, OnlyLettersAreTheSameInAnyCase) {
    EXPECT_TRUE(sameHostName("AMZ", "amz"));
    EXPECT_FALSE(sameHostName("@", "`"));
    EXPECT_FALSE(sameHostName("[", "{"));
    EXPECT_FALSE(sameHostName("\xC4", "\xE4"));
    EXPECT_FALSE(sameHostName("A", "AA"));
}

TEST(HivePaths, AreAFolderAndAName) {
    using Parts = std::pair<std::string, std::string>;
    EXPECT_EQ((Parts{"/disk/config", "SOFTWARE"}), splitPath("/disk/config/SOFTWARE"));
    EXPECT_EQ((Parts{"/", "SOFTWARE"}), splitPath("/SOFTWARE"));
    EXPECT_EQ((Parts{"a", "b"}), splitPath("a/b"));
    EXPECT_EQ((Parts{".", "SOFTWARE"}), splitPath("SOFTWARE"));
    EXPECT_EQ((Parts{"a", ""}), splitPath("a/"));
}

TEST(KeyNames, AreUpperCasedAsWindowsDoesIt) {
    std::u16string name = u"what was there before";
    upperCasedName("az\xe4\xff", true, name);
    EXPECT_EQ(u"AZ\u00c4\u0178", name);
    upperCasedName(std::string_view("a\0\x42\x01", 4), false, name);
    EXPECT_EQ(u"A\u0141", name);
    upperCasedName("", true, name);
    EXPECT_EQ(u"", name);
}

TEST(KeyNames, AHashIsThirtySevenTimesTheOneBeforeAndTheNextUnit) {
    EXPECT_EQ(0u, nameHash(u""));
    EXPECT_EQ(65u, nameHash(u"A"));
    EXPECT_EQ(65u * 37 + 66, nameHash(u"AB"));
    EXPECT_EQ((65u * 37 + 66) * 37 + 0x0141, nameHash(u"AB\u0141"));
}

}  // namespace
}  // namespace bromvale::offline
