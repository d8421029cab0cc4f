// bromvale-offline from outside: scripts and their transcripts.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "platform/offline/locale/code_page.h"
#include "tests/offline/full_registry.h"
#include "tests/offline/tool_run.h"

namespace bromvale::testing {
namespace {

// App Paths with one program that is there and stands first, since the first object of a place is judged
// together with the last one of the place before, one more that is there, one that is gone, one that is gone
// and has a sub key, and a last one: the last object of a scan is never judged.
constexpr const char* kPrograms =
    "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\ab.exe]\n"
    "@=\"C:\\\\Programme\\\\Gut\\\\gut.exe\"\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\alt.exe]\n"
    "@=\"C:\\\\Programme\\\\Weg\\\\alt.exe\"\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\gut.exe]\n"
    "@=\"C:\\\\Programme\\\\Gut\\\\gut.exe\"\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\tot.exe]\n"
    "@=\"C:\\\\Programme\\\\Weg\\\\tot.exe\"\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\tot.exe\\Unten]\n"
    "\"Wert\"=\"x\"\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\zuletzt.exe]\n"
    "@=\"C:\\\\Programme\\\\Gut\\\\gut.exe\"\n";
constexpr const char* kSettings = "[HKEY_CURRENT_USER\\Software\\Bromvale]\n\"1stRun\"=\"0\"\n";
constexpr const char* kAutomatic =
    "[HKEY_CURRENT_USER\\Software\\Bromvale]\n\"1stRun\"=\"0\"\n\"AutoScan\"=\"1\"\n"
    "\"AutoEntfernen\"=\"1\"\n\"AutoClose\"=\"1\"\n";

class Script : public ToolTest {
  protected:
    Script() {
        std::filesystem::create_directories(folder() / "c" / "programme" / "GUT");
        std::filesystem::create_directories(folder() / "c" / "windows" / "system32");
        file("c/windows/system32/wininet.dll", "");
        file("c/programme/GUT/gut.exe", "");
    }
    std::vector<std::string> machine(const std::string& settings = kSettings) {
        return {"--registry", registry("machine.reg", settings + std::string(kPrograms)),
                "--registry", (BROMVALE_SOURCE_DIR "/resources/components.reg"),
                "--drive",    "C:=" + path("c"),
                "--save",     path("out.reg")};
    }
    [[nodiscard]] bool keyIsLeft(const std::string& name) const {
        return readRegistry("out.reg").find("App Paths\\" + name + "]") != std::string::npos;
    }
};

TEST_F(Script, TheScanPageFromStartToRemoval) {
    const Outcome outcome = runScript(machine(), R"(# scan, mark one row, remove it
click cmdStart
print lblScanBericht
check chbRegKeysShow 1
rows lvwRegKeys
select lvwRegKeys 2
mouseup lvwRegKeys right
menu mnuPopUpRegKeyEinzeln
print lblScanBericht
rows lvwRegKeys
print cmdStart
close
)");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(
        outcome.out,
        offline::utf8FromAnsi(
            R"(make file: C:\Programme\Bromvale\bromvale.log
write C:\Programme\Bromvale\bromvale.log: 15.11.2026 07:12:09; started; Bromvale; )" BROMVALE_VERSION
            R"(; für Windows 98/ME und NT4\n
tray icon added: Bromvale
make file: C:\Programme\Bromvale\liste.txt
window frmMain shown: "Bromvale"
Sehr viele Fehler gefunden. (3 von 22 Einträgen = 13,64%)
[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\alt.exe]	@	C:\\Programme\\Weg\\alt.exe	-2147483646
[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\tot.exe\Unten]	"Wert"	x	-2147483646
[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\tot.exe]	@	C:\\Programme\\Weg\\tot.exe	-2147483646
menu: &markierten Eintrag entfernen | &alle Einträge entfernen
make folder: C:\Programme\Bromvale\Backup
write C:\Programme\Bromvale\bromvale.log: 15.11.2026 07:12:09; frmMain; ProblemeEntfernen; Ordner C:\Programme\Bromvale\Backup\ angelegt; 76; Pfad nicht gefunden\n
make file: C:\Programme\Bromvale\Backup\Rückgängig_15112026_071209.reg
write C:\Programme\Bromvale\Backup\Rückgängig_15112026_071209.reg: Windows Registry Editor Version 5.00\n\n\n
write C:\Programme\Bromvale\Backup\Rückgängig_15112026_071209.reg: ; Die nachfolgenden  Registryschlüssel wurden von Bromvale Version )" BROMVALE_VERSION
            R"(\n; als falsch erkannt und entfernt.\n; Mit einem Doppelklick im Windows-Explorer auf diese Datei, werden die hier\n; gesicherten Registryschlüssel wieder in die Registrierungs-Datenbank eingetragen.\n
write C:\Programme\Bromvale\Backup\Rückgängig_15112026_071209.reg: \n\n
write C:\Programme\Bromvale\Backup\Rückgängig_15112026_071209.reg: ; erstellt am: Sonntag, 15. Nov 2026 - 07:12:09\n
write C:\Programme\Bromvale\Backup\Rückgängig_15112026_071209.reg: ; erstellt von: Benutzer Computername: RECHNER\n
write C:\Programme\Bromvale\Backup\Rückgängig_15112026_071209.reg: ; Betriebssystem: Windows XP\n
write C:\Programme\Bromvale\Backup\Rückgängig_15112026_071209.reg: \r\n
write C:\Programme\Bromvale\Backup\Rückgängig_15112026_071209.reg: [HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\tot.exe\Unten]\n"Wert"="x"\n\n
make file: C:\Programme\Bromvale\Backup\Vollständig_15112026_071209.reg
write C:\Programme\Bromvale\Backup\Vollständig_15112026_071209.reg: Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\tot.exe\Unten]\n"Wert"="x"\n
delete key: HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\tot.exe\Unten
Die markierten Fehler wurden erfolgreich entfernt und gesichert.
[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\tot.exe]	@	C:\\Programme\\Weg\\tot.exe	-2147483646
[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\alt.exe]	@	C:\\Programme\\Weg\\alt.exe	-2147483646
&Entfernen
tray icon removed: Bromvale
help: command 18 ""
end: exit code 0
)"));
    EXPECT_TRUE(keyIsLeft("gut.exe"));
    EXPECT_TRUE(keyIsLeft("tot.exe"));
    EXPECT_FALSE(keyIsLeft("tot.exe\\Unten"));
    EXPECT_TRUE(keyIsLeft("zuletzt.exe"));
}

TEST_F(Script, OnNtAKeyWithSubKeysStaysAndOn9xItGoesWithThem) {
    const Outcome nt = run(machine(kAutomatic));
    EXPECT_EQ(nt.status, 0);
    EXPECT_FALSE(keyIsLeft("alt.exe"));
    EXPECT_TRUE(keyIsLeft("tot.exe"));
    EXPECT_FALSE(keyIsLeft("tot.exe\\Unten"));
    EXPECT_TRUE(keyIsLeft("gut.exe"));

    std::vector<std::string> arguments = machine(kAutomatic);
    arguments.insert(arguments.end(), {"--os", "Windows 98"});
    EXPECT_EQ(run(arguments).status, 0);
    EXPECT_FALSE(keyIsLeft("tot.exe"));
    EXPECT_TRUE(keyIsLeft("gut.exe"));
}

TEST_F(Script, SettingsAloneScanRemoveAndEnd) {
    const Outcome outcome = run(machine(kAutomatic));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(linesOf(outcome.out).back(), "end: exit code 0");
    const std::string undo = read(
        "c/programme/Bromvale/Backup/R\xC3\xBC"
        "ckg\xC3\xA4ngig_15112026_071209.reg");
    EXPECT_TRUE(
        undo.starts_with("Windows Registry Editor Version 5.00\r\n\r\n\r\n; Die nachfolgenden  Registry"))
        << undo;
    EXPECT_NE(undo.find("; erstellt am: Sonntag, 15. Nov 2026 - 07:12:09\r\n"), std::string::npos);
    EXPECT_TRUE(undo.ends_with(
        "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\alt.exe]\r\n"
        "@=\"C:\\\\Programme\\\\Weg\\\\alt.exe\"\r\n\r\n"))
        << undo;
    EXPECT_TRUE(
        read("c/programme/Bromvale/bromvale.log").starts_with("15.11.2026 07:12:09; started; Bromvale; "));
}

// In the undo file and then in the complete copy.
TEST_F(Script, EachRecordIsWrittenBeforeItsKeyIsDeleted) {
    const std::vector<std::string> lines = linesOf(run(machine(kAutomatic)).out);
    int deletions = 0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (!lines[i].starts_with("delete key: ")) continue;
        ++deletions;
        const std::string key = "[" + lines[i].substr(12) + "]\\n";
        EXPECT_NE(lines[i - 1].find(key), std::string::npos) << lines[i - 1];
        EXPECT_NE(lines[i - 1].find("Vollst"), std::string::npos) << lines[i - 1];
        std::size_t undo = i - 2;
        while (undo > 0 && !lines[undo].starts_with("write ")) --undo;
        EXPECT_NE(lines[undo].find(key), std::string::npos) << lines[undo];
        EXPECT_EQ(lines[undo].find("Vollst"), std::string::npos) << lines[undo];
    }
    EXPECT_EQ(deletions, 2);
}

TEST_F(Script, AnActionAtTheNthPumpAbortsARunningScan) {
    const Outcome outcome =
        runScript(machine(), "at 7 click cmdAbbrechen\nclick cmdStart\nprint cmdStart\nprint StatusBar\n");
    EXPECT_EQ(outcome.status, 0);
    const std::vector<std::string> lines = linesBehind(outcome.out, "window frmMain shown");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "Start");
    EXPECT_TRUE(lines[1].starts_with("Status | Version " BROMVALE_VERSION)) << lines[1];
}

TEST_F(Script, WhatCannotBeDoneIsAnErrorThatSaysSo) {
    struct Row {
        const char* script;
        const char* error;
    };
    const Row rows[] = {
        {"click cmdNix", "script line 1: click cmdNix: cmdNix does not exist"},
        {"\n# leer\nhuepfe", "script line 3: huepfe: unknown action 'huepfe'"},
        {"click", "script line 1: click: which control?"},
        {"check chbRegKeysShow 1", "script line 1: check chbRegKeysShow 1: chbRegKeysShow is disabled"},
        {"select lvwRegKeys 1", "script line 1: select lvwRegKeys 1: lvwRegKeys is hidden"},
        {"click lblStartText", "script line 1: click lblStartText: lblStartText is a label, not a button"},
        {"check cmdStart 1", "script line 1: check cmdStart 1: cmdStart is a button, not a check box"},
        {"nav Nirgends", "script line 1: nav Nirgends: the navigation bar has no icon 'Nirgends'"},
        {"answer Vielleicht", "script line 1: answer Vielleicht: unknown button 'Vielleicht'"},
        {"tray unten", "script line 1: tray unten: write left, right or double"},
        {"resize viel 1", "script line 1: resize viel 1: 'viel' is no number"},
        {"wait lange", "script line 1: wait lange: write a number of seconds"},
        {"key cmdStart F99", "script line 1: key cmdStart F99: unknown key 'F99'"},
        {"at x click cmdStart", "script line 1: at x click cmdStart: 'x' is no number"},
        {"at 1 click cmdNix\nwait 1", "script line 1: click cmdNix: cmdNix does not exist"},
        {"close frmNix", "script line 1: close frmNix: frmNix is not there"},
        {"click cmdStart\ncheck chbRegKeysShow 1\nselect lvwRegKeys 2-9",
         "script line 3: select lvwRegKeys 2-9: there is no row 2-9, the list has 3"},
    };
    for (const Row& row : rows) {
        const Outcome outcome = runScript(machine(), row.script);
        EXPECT_EQ(outcome.status, 1) << row.script;
        EXPECT_EQ(outcome.err, std::string("bromvale-offline: ") + row.error + "\n");
    }
}

TEST_F(Script, WhatAnActionWantsIsSaid) {
    struct Row {
        const char* before;  // lines that can be done
        const char* action;
        const char* error;
    };
    const char* const scanned = "click cmdStart\ncheck chbRegKeysShow 1\n";
    const Row rows[] = {
        {scanned, "check chbRegKeysShow 2", "write 0 or 1"},
        {scanned, "check chbRegKeysShow ", "write 0 or 1"},
        {scanned, "select lvwRegKeys", "which rows?"},
        {scanned, "column lvwRegKeys 0", "no such column"},
        {scanned, "column lvwRegKeys 5", "no such column"},
        {scanned, "column lvwRegKeys 4", "the column is hidden"},
        {scanned, "doubleclick lvwRegKeys 1-2", "name one row"},
        {scanned, "doubleclick lvwRegKeys none", "name one row"},
        {scanned, "mouseup lvwRegKeys oben", "write left, right or middle"},
        {"", "resize -1 100", "a size is not negative"},
        {"", "resize 100 -1", "a size is not negative"},
        {"", "wait -1", "write a number of seconds"},
        {"", "wait 1x", "write a number of seconds"},
        {"", "at 0 click cmdStart", "write: at N ACTION"},
        {"", "at 1", "write: at N ACTION"},
        {"", "answer", "unknown button ''"},
        {"", "close frmLogin", "frmLogin is not there"},
    };
    for (const Row& row : rows) {
        const Outcome outcome = runScript(machine(), row.before + std::string(row.action) + "\n");
        EXPECT_EQ(outcome.status, 1) << row.action;
        std::string action = row.action;
        while (action.ends_with(' ')) action.pop_back();
        const std::size_t number = linesOf(row.before).size() + 1;
        EXPECT_EQ(outcome.err, "bromvale-offline: script line " + std::to_string(number) + ": " + action +
                                   ": " + row.error + "\n");
    }
}

TEST_F(Script, AMarkOfUtf8IsNoPartOfTheFirstLine) {
    const Outcome outcome = runScript(machine(), "\xEF\xBB\xBFprint cmdStart");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.out.find("\n&Start\n"), std::string::npos) << outcome.out;
}

TEST_F(Script, AWindowIsResizedAndPrinted) {
    const std::string out = runScript(machine(), "resize 12000 9000\nwindow\n").out;
    const std::vector<std::string> lines = linesBehind(out, "window frmMain shown");
    ASSERT_GT(lines.size(), 5u);
    EXPECT_NE(lines[0].find(" 12000x9000 inner 11880x8595 normal \"Bromvale\""), std::string::npos)
        << lines[0];
    const auto has = [&lines](const std::string& start) {
        return std::any_of(lines.begin(), lines.end(),
                           [&](const std::string& line) { return line.starts_with(start); });
    };
    EXPECT_TRUE(has("  cmdStart button "));
    EXPECT_TRUE(has("  StatusBar status bar "));
    EXPECT_FALSE(has("  lvwRegKeys "));
}

TEST_F(Script, TheInputFilesStayAsTheyAre) {
    const std::vector<std::string> arguments = machine(kAutomatic);
    const std::string before = read("machine.reg");
    EXPECT_EQ(run(arguments).status, 0);
    EXPECT_EQ(read("machine.reg"), before);
}

TEST_F(Script, AFolderDriveHoldsOnlyWhatWasWritten) {
    EXPECT_EQ(runScript(machine(), "close\n").status, 0);
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder() / "c")) {
        if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"bromvale.log", "gut.exe", "liste.txt", "wininet.dll"}));
    EXPECT_FALSE(std::filesystem::exists(folder() / "c" / "WINDOWS"));
}

TEST_F(Script, ARegistryOfARealOnesSizeIsReadAndScanned) {
    std::ofstream(path("full.reg"), std::ios::binary) << makeFullRegistry().file;
    const Outcome outcome = run({"--registry", path("full.reg"), "--os", "2.6.1.7601"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_NE(outcome.out.find("(36469 von 70043 Eintr\xC3\xA4gen = 52,07%)"), std::string::npos);
}

// The two real registries, where they lie beside the project.
class RealRegistry : public ToolTest {
  protected:
    void isReadAndScanned(const std::string& name, const std::string& os, const std::string& entries) {
        const std::string packed = std::string(BROMVALE_SHARED_DATA_DIR) + "/" + name + ".xz";
        ASSERT_EQ(std::system(("xz -dkc '" + packed + "' > '" + path(name) + "'").c_str()), 0) << packed;
        const Outcome outcome = run({"--registry", path(name), "--os", os});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_NE(outcome.out.find(" von " + entries + " Eintr\xC3\xA4gen = "), std::string::npos);
    }
};

TEST_F(RealRegistry, OfWindows7IsReadAndScanned) {
    isReadAndScanned("win7-x86-hklm.reg", "2.6.1.7601", "71953");
}
TEST_F(RealRegistry, OfWindowsMeIsReadAndScanned) {
    isReadAndScanned("winme-hklm.reg", "Windows ME", "81");
}

}  // namespace
}  // namespace bromvale::testing
