#include "scanner/file_checks.h"

#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

const std::string kObject = "Software\\Classes\\CLSID\\{A}";
const std::string kServer = kObject + "\\InprocServer32";
const std::string kAppPaths = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe";
const std::string kUninstall = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\a";

class CheckFileTest : public ScanTest {
  protected:
    // The file that was tested, taken from the log line of a missing one; empty where none was.
    std::string testedFile(std::string_view key, std::string_view name, std::string_view value) {
        switchTracingOn();
        enter(key, name, value);
        closeGroup();
        const std::string before = "modFiles; FileExists; ";
        for (const std::string& line : logLines()) {
            if (line.starts_with(before))
                return line.substr(before.size(), line.find("; Falsch") - before.size());
        }
        return "";
    }
    static std::string reference(std::string_view value) {
        std::string result;
        toFileReference(value, result);
        return result;
    }
};

TEST_F(CheckFileTest, AMissingServerListsAllThirteenEntriesLastFirstWithDoubledBackslashes) {
    enter(kServer, "@", "C:\\Fehlt\\a.dll");
    for (int i = 1; i <= 12; ++i)
        enter(kServer, std::string("w") + std::to_string(i), std::string("D:\\") + std::to_string(i));
    closeGroup();
    const std::string key = "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\InprocServer32] | ";
    EXPECT_EQ(rows(), (Texts{
                          key + "\"w12\" | D:\\\\12 | -2147483646",
                          key + "\"w11\" | D:\\\\11 | -2147483646",
                          key + "\"w10\" | D:\\\\10 | -2147483646",
                          key + "\"w9\" | D:\\\\9 | -2147483646",
                          key + "\"w8\" | D:\\\\8 | -2147483646",
                          key + "\"w7\" | D:\\\\7 | -2147483646",
                          key + "\"w6\" | D:\\\\6 | -2147483646",
                          key + "\"w5\" | D:\\\\5 | -2147483646",
                          key + "\"w4\" | D:\\\\4 | -2147483646",
                          key + "\"w3\" | D:\\\\3 | -2147483646",
                          key + "\"w2\" | D:\\\\2 | -2147483646",
                          key + "\"w1\" | D:\\\\1 | -2147483646",
                          key + "@ | C:\\\\Fehlt\\\\a.dll | -2147483646",
                      }));
}

TEST_F(CheckFileTest, AnExistingFirstReferenceClearsTheObject) {
    writeWholeFile(folder() + "da.dll", "");
    enter(kServer, "@", folder() + "da.dll");
    enter(kObject + "\\LocalServer32", "@", "C:\\Fehlt\\a.exe");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CheckFileTest, AMissingFirstReferenceListsAllWhateverTheSecondSays) {
    writeWholeFile(folder() + "da.exe", "");
    enter(kServer, "@", "C:\\Fehlt\\a.dll");
    enter(kObject + "\\LocalServer32", "@", folder() + "da.exe");
    closeGroup();
    EXPECT_EQ(rows().size(), 2u);
}

TEST_F(CheckFileTest, AFolderCountsAsAFile) {
    makeFolderOnDisk(folder() + "Ordner");
    enter(kServer, "@", folder() + "Ordner");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CheckFileTest, ValuesAreLoweredAndCutBehindTheirFile) {
    EXPECT_EQ(reference("C:\\Programme\\App\\Tool.EXE -x"), "c:\\programme\\app\\tool.exe");
    EXPECT_EQ(reference("rundll32.exe c:\\x\\y.dll,Run"), "c:\\x\\y.dll");
    EXPECT_EQ(reference("c:\\x.exe\\y.dll"), "c:\\x.exe");
    EXPECT_EQ(reference("\"C:\\x y\\a.exe\" /Automation"), "c:\\x y\\a.exe");
    EXPECT_EQ(reference("C:\\x\\a.tlb /y"), "c:\\x\\a.tlb /y");
    EXPECT_EQ(reference("c:\\a.ocx.dll.exe.x"), "c:\\a.ocx");
    EXPECT_EQ(reference(".exe"), ".exe");
    EXPECT_EQ(reference("a.dll"), "a.dll");
    EXPECT_EQ(reference(""), "");
    EXPECT_EQ(reference("C:\\ÄRGER\\Ü.DLL"), "c:\\ärger\\ü.dll");
}

TEST_F(CheckFileTest, VariablesBecomeFoldersWithTheirBackslash) {
    EXPECT_EQ(reference("%SystemRoot%\\system32\\x.dll"), "C:\\WINDOWS\\\\system32\\x.dll");
    EXPECT_EQ(reference("%WinDir%x.dll"), "C:\\WINDOWS\\x.dll");
    EXPECT_EQ(reference("%ProgrammFiles%\\x.exe %1"), "C:\\Programme\\\\x.exe");
    EXPECT_EQ(reference("%ProgramFiles%\\x.exe %1"), "%programfiles%\\x.exe");
    EXPECT_EQ(reference("%windir%;%windir%"), "C:\\WINDOWS\\;C:\\WINDOWS\\");
}

TEST_F(CheckFileTest, TheUsualVariableWithOneMIsNoFileReference) {
    enter(kServer, "@", "%ProgramFiles%\\Fehlt\\x.dll");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CheckFileTest, ColonAndBackslashAtTheStartIsAReportedFailureAndNoFile) {
    enter(kServer, "@", ":\\x\\a.dll");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(logLines(),
              (Texts{"modCheckKeys; CheckFile; ; 5; Ungültiger Prozeduraufruf oder ungültiges Argument"}));
}

TEST_F(CheckFileTest, TheTestedFileIsWhatStandsBehindTheDriveLetter) {
    EXPECT_EQ(testedFile(kObject + "\\LocalServer32", "@", "\"C:\\Fehlt\\a.exe\" /Automation"),
              "c:\\fehlt\\a.exe");
}

TEST_F(CheckFileTest, ANetworkPathIsTestedLikeALocalOne) {
    EXPECT_EQ(testedFile(kServer, "@", "\\\\Server\\Freigabe\\a.dll"), "\\\\server\\freigabe\\a.dll");
    EXPECT_EQ(rows(), (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\InprocServer32] | @ | "
                             "\\\\\\\\Server\\\\Freigabe\\\\a.dll | -2147483646"}));
}

TEST_F(CheckFileTest, OnlySomeKeysNameFiles) {
    const std::string file = "C:\\Fehlt\\a.dll";
    const struct {
        std::string key;
        const char* name;
        bool tested;
    } cases[] = {
        {kObject + "\\InprocServer32", "@", true},
        {kObject + "\\InprocServer32", "andere", true},
        {kObject + "\\InprocServer32", "ThreadingModel", false},
        {kObject + "\\InprocServer32", "threadingmodel", true},
        {kObject + "\\InprocHandler32", "@", true},
        {kObject + "\\LocalServer32", "@", true},
        {kObject + "\\shell\\open\\command", "@", true},
        {kObject + "\\Commandline", "@", true},
        {"Software\\Classes\\TypeLib\\{A}\\1.0\\0\\win32", "@", true},
        {"Software\\Classes\\TypeLib\\{A}\\1.0\\HELPDIR", "@", false},
        {kObject + "\\InprocServer", "@", false},
        {kAppPaths, "@", true},
        {kAppPaths, "Path", false},
        {kUninstall, "UninstallString", false},
    };
    for (const auto& one : cases) {
        enter(one.key, one.name, file);
        closeGroup();
        EXPECT_EQ(rows().size(), one.tested ? 1u : 0u) << one.key << " " << one.name;
        form().scan.lvwRegKeys.clear();
        entryGroup().clear();
        entryGroup().isOpen = false;
    }
}

TEST_F(CheckFileTest, ValuesWithoutDriveOrShareAreNoFiles) {
    for (const char* value :
         {"a.dll", "Apartment", "ole32.dll", "%ProgramFiles%\\a.dll", "c:a.dll", "\\a.dll"}) {
        enter(kServer, "@", value);
        closeGroup();
        EXPECT_EQ(rows(), Texts{}) << value;
        entryGroup().clear();
        entryGroup().isOpen = false;
    }
}

TEST_F(CheckFileTest, AnObjectOfOneEmptyDefaultValueIsAnEmptyKey) {
    enter(kObject, "@", "");
    closeGroup();
    EXPECT_EQ(rows(), (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}] | @ |  | -2147483646"}));
}

TEST_F(CheckFileTest, AnEmptyKeyWithASecondEntryIsNone) {
    enter(kObject, "@", "");
    enter(kObject + "\\Unten", "@", "");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CheckFileTest, AnEmptyValueUnderAnotherNameIsNoEmptyKey) {
    enter(kObject, "Name", "");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CheckFileTest, AnUninstallKeyWithOneSingleOtherValueIsStale) {
    enter(kUninstall, "DisplayName", "C:\\Rest");
    closeGroup();
    EXPECT_EQ(rows(),
              (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\a] | "
                     "\"DisplayName\" | C:\\Rest | -2147483646"}));
}

TEST_F(CheckFileTest, AnUninstallKeyWithASingleEmptyNamedValueIsStaleToo) {
    enter(kUninstall, "DisplayName", "");
    closeGroup();
    EXPECT_EQ(rows().size(), 1u);
}

TEST_F(CheckFileTest, AnUninstallKeyWithUninstallStringSystemComponentOrTwoValuesIsSound) {
    enter(kUninstall, "UninstallString", "C:\\Fehlt\\u.exe");
    enter(kUninstall + "2", "SystemComponent", "1");
    enter(kUninstall + "3", "DisplayName", "x");
    enter(kUninstall + "3", "Version", "1");
    closeGroup();
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CheckFileTest, AnUninstallKeyWithoutAnyValueIsAnEmptyKeyFirst) {
    static_cast<void>(form());
    switchTracingOn();
    enter(kUninstall, "@", "");
    closeGroup();
    EXPECT_EQ(
        rows(),
        (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\a] | @ |  | "
               "-2147483646"}));
    EXPECT_EQ(
        logLines(),
        (Texts{"modCheckKeys; CheckFile; HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\"
               "Uninstall\\a];@=; wird zum Entfernen vorgesehen; 0; "}));
}

TEST_F(CheckFileTest, TheLogLineHoldsTheValueUnchanged) {
    static_cast<void>(form());
    switchTracingOn();
    enter(kServer, "@", "C:\\Fehlt\\a.dll");
    closeGroup();
    EXPECT_EQ(logLines(), (Texts{
                              "modFiles; FileExists; c:\\fehlt\\a.dll; Falsch; 0; ",
                              "modCheckKeys; CheckFile; HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\"
                              "InprocServer32];@=C:\\Fehlt\\a.dll; wird zum Entfernen vorgesehen; 0; ",
                          }));
}

TEST_F(CheckFileTest, AnIndexBeyondTheGroupIsReportedOnce) {
    CheckFile("HKEY_LOCAL_MACHINE", 1, entryGroup(), form().scan);
    EXPECT_EQ(logLines(), (Texts{"modCheckKeys; CheckFile; ; 9; Index außerhalb des gültigen Bereichs"}));
}

}  // namespace
}  // namespace bromvale::testing
