// Names and texts that the code page lacks: what a scan makes of them. The machine is set up with what
// Windows keeps, and the real objects stand beside those whose names look the same in the code page.
#include "platform/exact/text.h"
#include "platform/files.h"
#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

const std::u16string kClsid = u"Software\\Classes\\CLSID\\";
const std::u16string kAppPaths = u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
const std::u16string kUninstall = u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
const std::string kObject = "Software\\Classes\\CLSID\\{A}";
const std::string kServer = kObject + "\\InprocServer32";

class ExactNames : public ScanTest {
  protected:
    // The last object of a step and the first of the next are judged together: these are sound.
    ExactNames() {
        setString(HKEY_LOCAL_MACHINE, kClsid + u"{zz}", u"", u"x");
        for (const char16_t* name : {u"00", u"zz"}) {
            setString(HKEY_LOCAL_MACHINE, kAppPaths + name + u".exe", u"", u"x");
            setString(HKEY_LOCAL_MACHINE, kUninstall + name, u"UninstallString", u"x");
        }
        setString(HKEY_CURRENT_USER, kUninstall + u"zz", u"UninstallString", u"x");
    }

    [[nodiscard]] std::u16string makeProgram(const std::u16string& folderName) {
        makeFolderOnDisk(wideFolder() + folderName);
        std::u16string path = wideFolder() + folderName + u"\\srv.exe";
        writeWholeFile(path, "MZ");
        return path;
    }
    void server(const std::u16string& guid, const std::u16string& path) {
        setString(HKEY_LOCAL_MACHINE, kClsid + guid + u"\\LocalServer32", u"", path);
    }
    Texts scanned() {
        scan();
        return rows();
    }
};

// --- what is collected ---

TEST_F(ExactNames, TwinsOfOneAnsiNameAreTwoKeysWithTheirOwnValues) {
    setString(HKEY_LOCAL_MACHINE, u"Software\\Probe\\lap.exe", u"", u"eins");
    setString(HKEY_LOCAL_MACHINE, u"Software\\Probe\\\u0142ap.exe", u"", u"zwei");
    EXPECT_EQ(collect("Software\\Probe"), (Texts{
                                              "-2147483646[Software\\Probe]@=",
                                              "-2147483646[Software\\Probe\\lap.exe]@=eins",
                                              "-2147483646[Software\\Probe\\\x1A"
                                              "00322ap.exe]@=zwei",
                                          }));
}

TEST_F(ExactNames, AValueIsReadByItsTrueNameAndKeepsItsTrueText) {
    setString(HKEY_LOCAL_MACHINE, u"Software\\Probe", u"Zdj\u0119cia", u"\u041F\u0451");
    setString(HKEY_LOCAL_MACHINE, u"Software\\Probe", u"Zdjecia", u"J\u00F6rg");
    Texts lines = collect("Software\\Probe");
    std::sort(lines.begin(), lines.end());  // a system may list values in the order of their names
    EXPECT_EQ(lines, (Texts{
                         "-2147483646[Software\\Probe]Zdj\x1A"
                         "00281cia=\x1A"
                         "01055\x1A"
                         "01105",
                         "-2147483646[Software\\Probe]Zdjecia=Jörg",
                     }));
}

TEST_F(ExactNames, KeysBelowSuchANameAreReadToo) {
    setString(HKEY_LOCAL_MACHINE, u"Software\\Probe\\\u0142\\Unten", u"w", u"1");
    EXPECT_EQ(collect("Software\\Probe").back(),
              "-2147483646[Software\\Probe\\\x1A"
              "00322\\Unten]w=1");
}

// Marks are no part of a text's length.
TEST_F(ExactNames, TheLimitsAreThoseOfTheTextsAndNotOfTheirMarks) {
    setString(HKEY_LOCAL_MACHINE, u"Software\\A", u"a", std::u16string(255, u'\u0142'));
    setString(HKEY_LOCAL_MACHINE, u"Software\\B", std::u16string(254, u'\u0142'), u"b");
    setString(HKEY_LOCAL_MACHINE, u"Software\\C", u"c", std::u16string(256, u'\u0142'));
    setString(HKEY_LOCAL_MACHINE, u"Software\\D", std::u16string(255, u'\u0142'), u"d");
    EXPECT_EQ(collect("Software\\A").at(0).size(), 25 + 255 * kMarkSize);
    EXPECT_EQ(collect("Software\\B").at(0).size(), 25 + 254 * kMarkSize);
    EXPECT_EQ(collect("Software\\C"), (Texts{"-2147483646[Software\\C]@="}));
    EXPECT_EQ(collect("Software\\D"), (Texts{"-2147483646[Software\\D]@="}));
}

TEST_F(ExactNames, ABracketInSuchAKeyDoesNotCutItsMarksOff) {
    setString(HKEY_LOCAL_MACHINE, kAppPaths + u"x]\u0142.exe", u"", u"C:\\Fehlt\\x.exe");
    setString(HKEY_LOCAL_MACHINE, kAppPaths + u"y].exe", u"Path", u"C:\\");
    EXPECT_EQ(scanned(), Texts{});
}

// --- files ---

TEST_F(ExactNames, AServerInAFolderOfAnotherLanguageIsNotDead) {
    server(u"{1}", makeProgram(u"\u0141ukasz"));
    server(u"{2}", makeProgram(u"\u015Eule"));
    server(u"{3}", makeProgram(u"\u041F\u0451\u0442\u0440"));
    server(u"{4}", makeProgram(u"J\u00F6rg"));
    server(u"{5}", makeProgram(u"S\u00F8ren"));
    EXPECT_EQ(scanned(), Texts{});
    EXPECT_NE(report().find("0 von"), std::string::npos) << report();
}

// A twin of the ANSI name that isn't there says nothing about the file that is.
TEST_F(ExactNames, AnInexactPathClearsItsObjectAndTheNextOneIsJudged) {
    server(u"{1}", u"C:\\Fehlt\\\u0141ukasz\\srv.exe");
    server(u"{2}", u"C:\\Fehlt\\J\u00F6rg\\srv.exe");
    EXPECT_EQ(scanned(), (Texts{
                             "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{2}\\LocalServer32] | @ | "
                             "C:\\\\Fehlt\\\\Jörg\\\\srv.exe | -2147483646",
                             "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{2}] | @ |  | -2147483646",
                         }));
}

TEST_F(ExactNames, MarksThatACutTakesAwayCountToo) {
    server(u"{1}", u"C:\\Fehlt\\a.exe-Ordner\\\u0141\\srv.exe");
    server(u"{2}", u"\u0141auncher C:\\Fehlt\\srv.exe");
    EXPECT_EQ(scanned(), Texts{});
}

TEST_F(ExactNames, AFolderOfTheMachineThatTheCodePageLacksMakesNoFileDead) {
    enter(kServer, "@", "%windir%\\a.dll");
    const std::string sound = std::exchange(WinDir, exactText(u"C:\\W\u0141\\"));
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
    WinDir = sound;
    enter(kServer, "@", "%windir%\\fehlt\\a.dll");
    closeGroup();
    EXPECT_EQ(rows().size(), 1u);
}

TEST_F(ExactNames, WideSeparatorsAreNone) {
    server(u"{1}", u"C:\uFF3CFehlt\\srv.exe");
    server(u"{2}", u"C\uFF1A\\Fehlt\\srv.exe");
    EXPECT_EQ(scanned(), Texts{});
}

// --- keys ---

TEST_F(ExactNames, ALiveAppPathOfSuchANameIsLeftAloneAndItsDeadTwinIsNot) {
    setString(HKEY_LOCAL_MACHINE, kAppPaths + u"\u0142ap.exe", u"", makeProgram(u"da"));
    makeKey(HKEY_LOCAL_MACHINE, kAppPaths + u"\u0142eer.exe");
    setString(HKEY_LOCAL_MACHINE, kAppPaths + u"lap.exe", u"", u"C:\\Fehlt\\lap.exe");
    EXPECT_EQ(scanned(), (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App "
                                "Paths\\lap.exe] | @ | C:\\\\Fehlt\\\\lap.exe | -2147483646"}));
}

TEST_F(ExactNames, AnObjectWithOneSuchKeyIsLeftAloneWhole) {
    server(u"{1}", u"C:\\Fehlt\\srv.exe");
    makeKey(HKEY_LOCAL_MACHINE, kClsid + u"{1}\\\u0142");
    server(u"{2}", u"C:\\Fehlt\\srv.exe");
    EXPECT_EQ(scanned().size(), 2u);
    EXPECT_EQ(form().scan.lvwRegKeys.item(1).column(kKeyLine),
              "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{2}\\LocalServer32]");
}

TEST_F(ExactNames, SuchEntriesCountInTheTotals) {
    const auto total = [this] {
        scan();
        const std::string& text = report();
        return std::stoi(text.substr(text.find("von ") + 4));
    };
    makeKey(HKEY_LOCAL_MACHINE, kClsid + u"{1}\\l");
    const int before = total();
    makeKey(HKEY_LOCAL_MACHINE, kClsid + u"{1}\\\u0142");
    EXPECT_EQ(total(), before + 1);
}

TEST_F(ExactNames, TheLogNamesWhatIsLeftAlone) {
    static_cast<void>(form());
    switchTracingOn();
    enter(kObject +
              "\\\x1A"
              "00322",
          "@", "x");
    enter("Software\\Classes\\CLSID\\{B}\\InprocServer32", "@",
          "C:\\\x1A"
          "00322.dll");
    enter("Software\\Classes\\CLSID\\{C}\\TypeLib", "@",
          "{\x1A"
          "00322}");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
    const std::string end = "; bleibt unberührt, da nicht alle Zeichen dargestellt werden können; 0; ";
    const std::string clsid = "HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\";
    EXPECT_EQ(logLines(), (Texts{
                              "modCheckKeys; CheckReg; " + clsid + "{A}\\l]" + end,
                              "modCheckKeys; CheckFile; " + clsid + "{B}\\InprocServer32];@=C:\\l.dll" + end,
                              "modCheckKeys; CheckQuerVerbindung; " + clsid + "{C}\\TypeLib];@={l}" + end,
                          }));
}

TEST_F(ExactNames, ALeftAloneObjectStaysSoIntoTheNextScan) {
    form();
    enter(kObject +
              "\\\x1A"
              "00322",
          "@", "x");
    server(u"{1}", u"C:\\Fehlt\\srv.exe");  // joins the object that was left open
    server(u"{2}", u"C:\\Fehlt\\srv.exe");
    EXPECT_EQ(scanned().size(), 2u);
}

// --- dead links ---

TEST_F(ExactNames, AGuidOfSuchATextIsNotJudgedDead) {
    setString(HKEY_LOCAL_MACHINE, kClsid + u"{1}\\TypeLib", u"", u"{D\u0142}");
    setString(HKEY_LOCAL_MACHINE, kClsid + u"{2}\\TypeLib", u"", u"{Dl}");
    EXPECT_EQ(scanned(), (Texts{
                             "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{2}\\TypeLib] | @ | {Dl} | "
                             "-2147483646",
                             "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{2}] | @ |  | -2147483646",
                         }));
}

TEST_F(ExactNames, RowsOfADeadLinkAreTakenBackWhenSuchAKeyFollows) {
    enter("Software\\Classes\\CLSID\\{0}", "@", "bleibt");
    enter("Software\\Classes\\CLSID\\{0}\\TypeLib", "@", "{D}");
    enter(kObject, "@",
          "\x1A"
          "00322");
    enter(kObject + "\\TypeLib", "@", "{D}");
    ASSERT_EQ(rows().size(), 4u);
    form().scan.sortBy(1);  // the user sorts meanwhile
    enter(kObject +
              "\\\x1A"
              "00322",
          "@", "");
    const Texts left = rows();
    ASSERT_EQ(left.size(), 2u);
    for (const std::string& row : left) EXPECT_NE(row.find("{0}"), std::string::npos) << row;
    enter(kObject + "\\Unten\\TypeLib", "@", "{D}");
    enter(kObject + "\\{X}\\TypeLib", "@", "{D}");
    EXPECT_EQ(rows().size(), 2u);
}

TEST_F(ExactNames, ALargerObjectsOneRowIsTakenBackAsWell) {
    for (const char* name : {"a", "b", "c"}) enter(kObject, name, "x");
    enter(kObject + "\\TypeLib", "@", "{D}");
    ASSERT_EQ(rows().size(), 1u);
    enter(kObject +
              "\\\x1A"
              "00322",
          "@", "");
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(ExactNames, AClearedListHasNothingToTakeBack) {
    enter(kObject, "@", "");
    enter(kObject + "\\TypeLib", "@", "{D}");
    form().scan.lvwRegKeys.clear();
    enter(kObject +
              "\\\x1A"
              "00322",
          "@", "");
    EXPECT_EQ(rows(), Texts{});
    enter("Software\\Classes\\CLSID\\{B}", "@", "");
    closeGroup();
    EXPECT_EQ(rows().size(), 1u);  // {B} is a new object
}

// --- description ---

TEST_F(ExactNames, ADescriptionIsJudgedAsEverAndItsRowShowsWhatTheCodePageHas) {
    setString(HKEY_LOCAL_MACHINE, kUninstall + u"a", u"DisplayName", u"\u0141\u00F3d\u017A");
    EXPECT_EQ(scanned(),
              (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\a] | "
                     "\"DisplayName\" | Lódz | -2147483646"}));
}

TEST_F(ExactNames, ANameThatOnlyLooksLikeOneOfTheRulesIsAnother) {
    setString(HKEY_LOCAL_MACHINE, kUninstall + u"a", u"\uFF35ninstallString", u"x");
    setString(HKEY_LOCAL_MACHINE, kUninstall + u"b", u"SystemComponent", u"1");
    EXPECT_EQ(scanned(),
              (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\a] | "
                     "\"UninstallString\" | x | -2147483646"}));
}

TEST_F(ExactNames, AValueNamedByAWideAtIsNotTheDefaultValue) {
    setString(HKEY_LOCAL_MACHINE, kAppPaths + u"a.exe", u"\uFF20", u"C:\\Fehlt\\a.exe");
    setString(HKEY_LOCAL_MACHINE, kAppPaths + u"b.exe", u"\uFF20", u"");
    EXPECT_EQ(scanned(), Texts{});
}

TEST_F(ExactNames, AWideThreadingModelNamesAFile) {
    setString(HKEY_LOCAL_MACHINE, kClsid + u"{1}\\InprocServer32", u"\uFF34hreadingModel",
              u"C:\\Fehlt\\a.dll");
    EXPECT_EQ(scanned().size(), 2u);
}

}  // namespace
}  // namespace bromvale::testing
