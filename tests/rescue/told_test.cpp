// What the tool says to people, word for word: which users, hives and rows are meant.
#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;
using offline::keyAt;
using offline::MadeHive;
using offline::textValue;

const std::string kFirstUser = "J\xC3\xBCrgen Gro\xC3\x9F";
const std::string kSecondUser = "\xC5\x81ukasz";
const std::u16string kProfileList = u"Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\";

const std::string kList = "  " + kFirstUser + "  S-1-5-21-1-2-3-1001\n";
const std::string kSecondOfList = "  " + kSecondUser + "  S-1-5-21-1-2-3-1002\n";
const std::string kElsewhere = "the profile lies on a drive that is not at hand: E:\\Profile\\Otto";
const std::string kNoFolder = "the profile's folder is not there";
// What clears the line of the progress.
const std::string kCleared = "\r" + std::string(34, ' ') + "\r";

class Told : public RescueTest {
  protected:
    // With users whose profiles can't be had, one of them called like the first one's account.
    void makeDiskOfManyUsers() {
        static_cast<void>(makeDiskWith(
            [](MadeHive& software) {
                for (const auto& [sid, path] : {std::pair(u"S-1-5-21-7", u"E:\\Profile\\Otto"),
                                                std::pair(u"S-1-5-21-8", u"C:\\Users\\JGROSS")})
                    keyAt(software.root, kProfileList + sid)
                        .values.push_back(textValue(u"ProfileImagePath", path, 2));
            },
            Generation::Seven));
    }
    const std::string same_ = "  JGROSS  S-1-5-21-8  (" + kNoFolder + ")\n";
    const std::string many_ = kList + kSecondOfList + "  Otto  S-1-5-21-7  (" + kElsewhere + ")\n" + same_;
};

TEST_F(Told, WhichUsersThereAre) {
    makeDiskOfManyUsers();
    const std::string choose =
        "bromvale-offline: this Windows has several users; choose with --user NAME, --user SID or --user "
        "all:\n" +
        many_;
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{}, choose},
        {{"--user", "Niemand"}, "bromvale-offline: this Windows has no user 'Niemand'; there are:\n" + many_},
        {{"--user", "jgross"},
         "bromvale-offline: several users of this Windows are called 'jgross'; choose by SID:\n" + kList +
             same_},
    };
    for (const auto& [arguments, text] : rows) {
        const Outcome outcome = onDisk(arguments);
        EXPECT_EQ(2, outcome.status);
        EXPECT_EQ("", outcome.out);
        EXPECT_EQ(text, behindHives(outcome.err));
    }
    const Outcome nothing = onDiskAtTerminal({}, "");
    EXPECT_EQ(2, nothing.status);
    EXPECT_TRUE(nothing.err.ends_with("Which one? (a name, or all) " + choose)) << nothing.err;
}

TEST_F(Told, WhoseProfileCannotBeHad) {
    makeDiskOfManyUsers();
    const std::string all = onDisk({"--user", "all"}).err;
    EXPECT_NE(std::string::npos,
              all.find(": clean\n" + said({"user Otto: " + kElsewhere, "user JGROSS: " + kNoFolder}) +
                       "bromvale-offline: " + disk().string() + "/Users/" + kFirstUser))
        << all;
    EXPECT_EQ(said({"user Otto: " + kElsewhere}), behindHives(onDisk({"--user", "S-1-5-21-7"}).err));
}

TEST_F(Told, AtATerminalTheUserIsAsked) {
    makeDiskOfManyUsers();
    const Outcome asked = onDiskAtTerminal({}, kSecondUser);
    EXPECT_EQ(0, asked.status);
    const std::string folder = disk().string() + "/Windows";
    const std::string profile = disk().string() + "/Users/" + kSecondUser;
    EXPECT_EQ(said({"Windows 7 Professional Service Pack 1, 6.1.7601, 32-bit in " + folder,
                    folder + "/System32/config/SOFTWARE: clean", folder + "/System32/config/SYSTEM: clean",
                    folder + "/System32/config/DEFAULT: clean"}) +
                  "This Windows has several users:\n" + many_ + "Which one? (a name, or all) " +
                  said({profile + "/NTUSER.DAT: clean",
                        profile + "/AppData/Local/Microsoft/Windows/UsrClass.dat: clean"}) +
                  kCleared,
              asked.err);
    EXPECT_NE(std::string::npos, asked.out.find("\nuser " + kSecondUser + ": Hervorragend")) << asked.out;
}

TEST_F(Told, WhatOfTheHivesIsWrong) {
    const offline::MadeDisk made = makeDisk(Generation::Seven);
    const std::string software = made.software.string();
    const std::string given = "HKEY_LOCAL_MACHINE\\Software=" + software;
    const auto saidBehind = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--hive", given});
        return behindHives(run(arguments).err);
    };
    EXPECT_EQ(said({"hkey_local_machine\\SOFTWARE is given twice; a key has one hive"}),
              saidBehind({"--hive", "hkey_local_machine\\SOFTWARE=" + made.system.string()}));
    std::filesystem::create_symlink(made.software, folder() / "link");
    EXPECT_EQ(said({path("link") + " and " + software + " are the same file; give it once"}),
              saidBehind({"--hive", "HKEY_LOCAL_MACHINE\\Neu=" + path("link")}));
    EXPECT_EQ(said({"no drive is at hand; --drive C:=FOLDER says which folder is drive C"}), saidBehind({}));
    EXPECT_EQ("", saidBehind({"--drive", "C:=" + disk().string()}));
    const Outcome view = onDisk({"--user", "all", "--view", "64"});
    EXPECT_EQ(2, view.status);
    EXPECT_EQ(said({"this Windows has one view, that of 32 bits"}), behindHives(view.err));
    EXPECT_EQ(0, onDisk({"--user", "all", "--view", "32"}).status);
}

TEST_F(Told, AHibernatedWindowsIsOlderThanItIs) {
    makeDisk(Generation::Seven);
    const std::string file = disk().string() + "/hiberfil.sys";
    const std::string warning = said(
        {file +
         ": this Windows is hibernated or was shut down for a fast start; what its registry holds now may "
         "be newer than its files"});
    offline::writeFile(file, "hibr" + std::string(8192, '\0'));
    EXPECT_NE(std::string::npos, onDisk({"--user", "all"}).err.find(warning));
    offline::writeFile(file, "wake" + std::string(8192, '\0'));
    EXPECT_EQ(std::string::npos, onDisk({"--user", "all"}).err.find(warning));
}

TEST_F(Told, WhichRowsAreMeant) {
    makeDisk(Generation::Seven);
    const std::string unknown = file("unbekannt.txt", "# Rest\n\nHKEY_CURRENT_USER\\Nichts  \n");
    const std::string odd = file("keine.txt", "1-2\r\nkeine\r\n");
    const std::pair<std::string, std::string> rows[] = {
        {"0", "there is no row 0; the report has 6"},
        {"7", "there is no row 7; the report has 6"},
        {"5-7", "there is no row 7; the report has 6"},
        {",", "',' are no rows; write 1,3-5"},
        {"3-2", "'3-2' are no rows; write 1,3-5"},
        {"1-", "'1-' are no rows; write 1,3-5"},
        {"-1", "'-1' are no rows; write 1,3-5"},
        {"1-2-3", "'1-2-3' are no rows; write 1,3-5"},
        {"99999999999999999999", "'99999999999999999999' are no rows; write 1,3-5"},
        {"x", "'x' is neither all, nor rows as 1,3-5, nor a file that can be read"},
        {unknown, "no row has the key HKEY_CURRENT_USER\\Nichts"},
        {odd, odd + ": 'keine' is no row"},
    };
    for (const auto& [option, text] : rows) {
        const Outcome outcome = onDisk({"--user", "all", "--remove", option});
        EXPECT_EQ(2, outcome.status) << option;
        EXPECT_EQ("", outcome.out) << option;
        EXPECT_EQ(said({text}), behindHives(outcome.err));
    }
}

}  // namespace
}  // namespace bromvale::testing
