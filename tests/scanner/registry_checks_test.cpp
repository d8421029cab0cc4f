#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

class CheckRegTest : public ScanTest {
  protected:
    // A default value. `key` with its "]".
    static void checkReg(std::string_view key, std::string_view value) {
        CheckReg({kHiveLocalMachine, "HKEY_LOCAL_MACHINE", key, "@", value}, entryGroup(), form().scan);
    }
};
using CrossLinkTest = ScanTest;

const std::string kClsid = "Software\\Classes\\CLSID";
const std::string kAppPaths = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths";
const std::string kUninstall = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

TEST_F(CheckRegTest, TheFirstEntryOfTheFirstScanOpensTheGroupWithoutAFlush) {
    EXPECT_EQ(entryGroup().prefix, "");
    EXPECT_FALSE(entryGroup().isOpen);
    checkReg("Software\\Classes\\CLSID\\{A}]", "Wert");
    EXPECT_EQ(entryGroup().prefix, "software\\classes\\clsid\\{a}");
    EXPECT_TRUE(entryGroup().isOpen);
    EXPECT_FALSE(entryGroup().repeat);
    ASSERT_EQ(entryGroup().count(), 1);
    EXPECT_EQ(entryGroup().at(1).key, "Software\\Classes\\CLSID\\{A}]");
    EXPECT_EQ(entryGroup().at(1).name, "@");
    EXPECT_EQ(entryGroup().at(1).value, "Wert");
    EXPECT_EQ(entryGroup().at(1).hive, -2147483646);
}

TEST_F(CheckRegTest, AGuidKeyAndAllBelowItIsOneGroupAndTheNextGuidIsRepeated) {
    enter(kClsid + "\\{A}", "@", "a");
    enter(kClsid + "\\{A}\\InprocServer32", "@", "a.dll");
    EXPECT_EQ(entryGroup().count(), 2);
    checkReg(kClsid + "\\{B}]", "b");
    EXPECT_TRUE(entryGroup().repeat);
    EXPECT_EQ(entryGroup().count(), 0);
    EXPECT_EQ(entryGroup().prefix, "software\\classes\\clsid\\{b}");
    EXPECT_TRUE(entryGroup().isOpen);
    entryGroup().repeat = false;
    checkReg(kClsid + "\\{B}]", "b");
    EXPECT_FALSE(entryGroup().repeat);
    EXPECT_EQ(entryGroup().count(), 1);
}

TEST_F(CheckRegTest, TheStartKeysBelongToNoObjectAndCloseNothing) {
    enter(kClsid + "\\{A}", "@", "");
    for (const std::string& key :
         {kClsid, std::string("Software\\Classes\\Interface"), kAppPaths, kUninstall}) {
        checkReg(key + "]", "");
        EXPECT_FALSE(entryGroup().isOpen) << key;
        EXPECT_FALSE(entryGroup().repeat) << key;
        EXPECT_EQ(entryGroup().count(), 1) << key;
    }
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CheckRegTest, TwoObjectsWithAnEntryOfNoObjectBetweenThemAreJudgedTogether) {
    enter(kClsid + "\\{A}", "@", "");
    enter("Software\\Classes\\Interface", "@", "");
    enter("Software\\Classes\\Interface\\{B}", "@", "");
    EXPECT_EQ(entryGroup().count(), 2);
    EXPECT_EQ(entryGroup().prefix, "software\\classes\\interface\\{b}");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});  // alone each would be an empty key
}

TEST_F(CheckRegTest, AFileThatIsThereEndsTheJudgingOfItsObjectWithoutAReport) {
    writeWholeFile(folder() + "da.dll", "x");
    enter(kClsid + "\\{A}\\InprocServer32", "@", folder() + "da.dll");
    enter(kClsid + "\\{A}\\InprocServer32", "ThreadingModel", "Both");
    enter(kClsid + "\\{A}\\ProgID", "@", "a.b");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(CheckRegTest, RowsCarryTheClosingEntrysHiveNameAndTheirOwnHandle) {
    enter(kClsid + "\\{A}\\InprocServer32", "@", "C:\\Fehlt\\a.dll", kHiveCurrentUser);
    enter(kClsid, "@", "", kHiveLocalMachine);
    enter(kClsid + "\\{B}", "@", "b", kHiveLocalMachine);
    enter(kClsid + "\\{C}", "@", "c", kHiveLocalMachine);
    EXPECT_EQ(rows(), (Texts{
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{B}] | @ | b | -2147483646",
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\InprocServer32] | @ | "
                          "C:\\\\Fehlt\\\\a.dll | -2147483647",
                      }));
}

TEST_F(CheckRegTest, AnAppPathsKeyIsAPrefixOfALongerOneAndBothAreOneGroup) {
    enter(kAppPaths + "\\foo.exe", "@", "x");
    EXPECT_EQ(entryGroup().prefix, "software\\microsoft\\windows\\currentversion\\app paths\\foo.exe");
    enter(kAppPaths + "\\foo.exe2", "@", "y");
    EXPECT_EQ(entryGroup().count(), 2);
    enter(kAppPaths + "\\goo.exe", "@", "z");
    EXPECT_EQ(entryGroup().count(), 1);
}

TEST_F(CheckRegTest, AnUninstallKeyStandsAloneAndItsSubKeyIsAnObjectOfItsOwn) {
    enter(kUninstall + "\\Foo", "DisplayName", "Foo");
    EXPECT_EQ(entryGroup().prefix, "software\\microsoft\\windows\\currentversion\\uninstall\\foo]");
    enter(kUninstall + "\\Foo2", "UninstallString", "x");
    EXPECT_EQ(entryGroup().count(), 1);
    EXPECT_EQ(rows().size(), 1u);
    enter(kUninstall + "\\Foo2\\Unten", "UninstallString", "x");
    EXPECT_EQ(entryGroup().count(), 1);
}

// The rule for App Paths asks for the backslash when a group is opened anew, and not when one is closed.
TEST_F(CheckRegTest, AnUninstallKeyNamedAppPathsKeepsItsBracketOnlyWhenNoGroupIsOpen) {
    enter(kUninstall + "\\App Paths", "UninstallString", "x");
    EXPECT_EQ(entryGroup().prefix, "software\\microsoft\\windows\\currentversion\\uninstall\\app paths]");
    enter(kClsid + "\\{A}", "@", "a");
    enter(kUninstall + "\\App Paths", "UninstallString", "x");
    EXPECT_EQ(entryGroup().prefix, "software\\microsoft\\windows\\currentversion\\uninstall\\app paths");
    enter(kUninstall + "\\App Paths2", "UninstallString", "x");
    EXPECT_EQ(entryGroup().count(), 2);
}

TEST_F(CheckRegTest, AnOpenGroupTakesEveryKeyThatHoldsItsPrefixAnywhere) {
    enter(kClsid + "\\{A}", "@", "a");
    enter("x\\" + kClsid + "\\{A}", "@", "b");
    EXPECT_EQ(entryGroup().count(), 2);
}

TEST_F(CheckRegTest, ABraceAtTheVeryStartMakesNoObject) {
    checkReg("}\\x]", "");
    EXPECT_EQ(entryGroup().count(), 0);
    EXPECT_FALSE(entryGroup().isOpen);
}

TEST_F(CheckRegTest, UmlautsAreLoweredByTheCodePageAndKeptInTheRow) {
    enter(kUninstall + "\\ÜBER", "DisplayName", "Öl");
    EXPECT_EQ(entryGroup().prefix, "software\\microsoft\\windows\\currentversion\\uninstall\\über]");
    closeGroup();
    EXPECT_EQ(rows(),
              (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\ÜBER] | "
                     "\"DisplayName\" | Öl | -2147483646"}));
}

TEST_F(CheckRegTest, EventsArePumpedOncePerEntryOfAClosingGroup) {
    for (const char* name : {"a", "b", "c"}) enter(kClsid + "\\{A}", name, "x");
    int pumps = 0;
    for (int n = 1; n <= 6; ++n) atPump(n, [&] { ++pumps; });
    closeGroup();
    EXPECT_EQ(pumps, 3);
}

TEST_F(CheckRegTest, AScanEndedByAnAbortLeavesItsGroupForTheNextOne) {
    enter(kClsid + "\\{A}", "@", "");
    form().scan.cmdAbbrechen_Click();
    EXPECT_EQ(entryGroup().count(), 1);
    closeGroup();
    EXPECT_EQ(rows(), (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}] | @ |  | -2147483646"}));
}

// --- dead links ---

TEST_F(CrossLinkTest, ALinkThatEitherHiveHasIsNoFaultWhereverTheEntryStands) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Classes\\TypeLib\\{L1}");
    makeKey(HKEY_CURRENT_USER, "Software\\Classes\\TypeLib\\{L2}");
    for (const std::int32_t hive : {kHiveLocalMachine, kHiveCurrentUser}) {
        enter(kClsid + "\\{A}\\TypeLib", "@", "{L1}", hive);
        enter(kClsid + "\\{A}\\TypeLib", "@", "{L2}", hive);
    }
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CrossLinkTest, ADeadLinkAsFourthEntryGivesOneRow) {
    enter(kClsid + "\\{A}", "@", "a");
    enter(kClsid + "\\{A}", "b", "b");
    enter(kClsid + "\\{A}", "c", "c");
    enter(kClsid + "\\{A}\\TypeLib", "@", "{L}");
    EXPECT_EQ(
        rows(),
        (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\TypeLib] | @ | {L} | -2147483646"}));
}

TEST_F(CrossLinkTest, ADeadLinkAsSecondEntryGivesTheWholeSmallObjectLastEntryFirst) {
    enter(kClsid + "\\{A}", "Name", "C:\\a", kHiveCurrentUser);
    enter(kClsid + "\\{A}\\TypeLib", "@", "{L}", kHiveCurrentUser);
    // Neither quotes nor doubled backslashes in such rows.
    EXPECT_EQ(rows(),
              (Texts{
                  "[HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\{A}\\TypeLib] | @ | {L} | -2147483647",
                  "[HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\{A}] | Name | C:\\a | -2147483647",
              }));
}

TEST_F(CrossLinkTest, LinksToClassesAndInterfacesHaveNoBackslashBehindTheHivesName) {
    enter("Software\\Classes\\Interface\\{A}\\ProxyStubClsid]\\{x}\\Clsid", "@", "{L}");
    EXPECT_EQ(
        rows(),
        (Texts{"[HKEY_LOCAL_MACHINESoftware\\Classes\\Interface\\{A}\\ProxyStubClsid]\\{x}\\Clsid] | @ | "
               "{L} | -2147483646"}));
    form().scan.lvwRegKeys.clear();
    enter(kClsid + "\\{B}\\Interface", "@", "{M}");
    EXPECT_EQ(
        rows(),
        (Texts{"[HKEY_LOCAL_MACHINESoftware\\Classes\\CLSID\\{B}\\Interface] | @ | {M} | -2147483646"}));
}

TEST_F(CrossLinkTest, LinksToLivingClassesAndInterfacesAreFound) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{L}");
    makeKey(HKEY_CURRENT_USER, "Software\\Classes\\Interface\\{M}");
    enter(kClsid + "\\{A}\\Clsid", "@", "{L}");
    enter(kClsid + "\\{A}\\Interface", "@", "{M}");
    enter(kClsid + "\\{A}\\Interface", "@", "{L}");
    EXPECT_EQ(rows().size(), 1u);
}

TEST_F(CrossLinkTest, AnEntryThatClosesAGroupIsListedOnItsSecondPass) {
    const std::string key = kClsid + "\\{B}\\TypeLib]";
    const Entry link{kHiveLocalMachine, "HKEY_LOCAL_MACHINE", key, "@", "{L}"};
    enter(kClsid + "\\{A}", "@", "a");
    checkOnce(link);
    EXPECT_TRUE(entryGroup().repeat);
    EXPECT_EQ(rows(), Texts{});
    entryGroup().repeat = false;
    checkOnce(link);
    EXPECT_EQ(
        rows(),
        (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{B}\\TypeLib] | @ | {L} | -2147483646"}));
}

TEST_F(CrossLinkTest, TwoDeadLinksGiveTheirRowsTwice) {
    enter(kClsid + "\\{A}\\TypeLib", "@", "{L}");
    enter(kClsid + "\\{A}\\x}\\TypeLib", "@", "{M}");
    EXPECT_EQ(rows(),
              (Texts{
                  "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\TypeLib] | @ | {L} | -2147483646",
                  "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\x}\\TypeLib] | @ | {M} | -2147483646",
                  "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\TypeLib] | @ | {L} | -2147483646",
              }));
}

TEST_F(CrossLinkTest, OtherKeysNamesAndHalfBracedValuesAreNeverLinks) {
    enter(kClsid + "\\{A}\\ProgID", "@", "{L}");
    enter(kClsid + "\\{A}\\TypeLib", "Name", "{L}");
    enter(kClsid + "\\{A}\\TypeLib", "@", "{L");
    enter(kClsid + "\\{A}\\TypeLib", "@", "L}");
    enter(kClsid + "\\{A}\\TypeLib", "@", "");
    enter(kClsid + "\\TypeLib", "@", "{L}");
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CrossLinkTest, AValueOfJustTheBracesIsTakenAndLookedForSo) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Classes\\TypeLib\\{}");
    enter(kClsid + "\\{A}\\TypeLib", "@", "{}");
    EXPECT_EQ(rows(), Texts{});
    switchTracingOn();
    enter(kClsid + "\\{A}\\Interface", "@", "{}");
    EXPECT_EQ(rows().size(), 2u);
    EXPECT_EQ(logLines(), (Texts{
                              "modKeyFunc; KeyExist; -2147483646; Software\\Classes\\interface\\{}; 0; 0; ",
                              "modKeyFunc; KeyExist; -2147483647; Software\\Classes\\interface\\{}; 0; 0; ",
                          }));
}

}  // namespace
}  // namespace bromvale::testing
