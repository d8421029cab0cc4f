// The other systems, names beyond the code page, and every failure on the way to the complete copy.
#include "repair/complete_copy.h"

#include "platform/offline/machine.h"
#include "tests/repair/removal_fixture.h"

namespace bromvale::testing {
namespace {

using namespace std::string_literals;

constexpr const char* kPath = "HKEY_LOCAL_MACHINE\\Software\\Probe\\A";
constexpr const char* kA = "Software\\Probe\\A";

std::string wide(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

class CompleteCopyOfflineTest : public RemovalTest {
  protected:
    CompleteCopyOfflineTest() { offline::machine().clock.set(2026, 11, 15, 7, 12, 9); }

    static offline::Registry& registry() { return offline::machine().registry; }
    static void runOn(const char* system) { offline::machine().setOs(*offline::osByName(system)); }
    const std::string head = "\xFF\xFE" + wide(u"Windows Registry Editor Version 5.00\r\n");
    [[nodiscard]] std::size_t named() {
        std::size_t count = 0;
        for (const std::string& line : logLines()) count += line.find("wurde nicht entfernt") != line.npos;
        return count;
    }
};

TEST_F(CompleteCopyOfflineTest, FromWindows2000OnTheFormIsThatOfVersion5) {
    for (const char* system : {"Windows 2000", "Windows XP", "2.6.1.7601", "2.10.0.19045"}) {
        runOn(system);
        addKey("A");
        form().ProblemeEntfernen();
        EXPECT_EQ(completeCopy(),
                  head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n"))
            << system;
        EXPECT_TRUE(
            offline::machine().drives.erase("C:\\Programme\\Bromvale\\Backup\\Vollst\xE4ndig_"
                                            "15112026_071209.reg"));
    }
}

TEST_F(CompleteCopyOfflineTest, BeforeItIsRegedit4) {
    for (const char* system : {"Windows 95", "Windows 98", "Windows ME", "Windows NT4"}) {
        runOn(system);
        addKey("A");
        setRaw(HKEY_LOCAL_MACHINE, kA, "\xE4", REG_EXPAND_SZ, "\xF6\0"s);
        form().ProblemeEntfernen();
        EXPECT_EQ(completeCopy(),
                  "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n"
                  "@=\"Wert A\"\r\n\"\xE4\"=hex(2):f6,00\r\n")
            << system;
        EXPECT_TRUE(
            offline::machine().drives.erase("C:\\Programme\\Bromvale\\Backup\\Vollst\xE4ndig_"
                                            "15112026_071209.reg"));
    }
}

TEST_F(CompleteCopyOfflineTest, OnThe9xFamilyWhatLiesBelowIsInTheRecord) {
    runOn("Windows 98");
    addKey("A");
    for (const char* below : {"b", "a", "a\\tief", "a\\tief\\[er] "})
        setString(HKEY_LOCAL_MACHINE, std::string(kA) + "\\" + below, "Name", below);
    form().ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_EQ(completeCopy(),
              "REGEDIT4\r\n"
              "\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n"
              "\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A\\a]\r\n\"Name\"=\"a\"\r\n"
              "\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A\\a\\tief]\r\n\"Name\"=\"a\\\\tief\"\r\n"
              "\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A\\a\\tief\\[er] ]\r\n"
              "\"Name\"=\"a\\\\tief\\\\[er] \"\r\n"
              "\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A\\b]\r\n\"Name\"=\"b\"\r\n");
}

// The registry's depth is not the stack's.
TEST_F(CompleteCopyOfflineTest, OnThe9xFamilyATreeMayBeVeryDeep) {
    runOn("Windows 98");
    addKey("A");
    std::string path = kPath;
    for (int i = 0; i < 2000; ++i) path += "\\t";
    ASSERT_TRUE(registry().setText(path, "", "unten"));
    form().ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_TRUE(completeCopy().ends_with("[" + path + "]\r\n@=\"unten\"\r\n"));
}

TEST_F(CompleteCopyOfflineTest, TwoRemovalsInOneSecondShareAFileWithOneHead) {
    addKey("A");
    form().ProblemeEntfernen();
    addKey("B");
    form().ProblemeEntfernen();
    EXPECT_EQ(completeCopy(),
              head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n"
                          u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\B]\r\n@=\"Wert B\"\r\n"));
}

TEST_F(CompleteCopyOfflineTest, NoHandleStaysOpen) {
    for (const char* system : {"Windows XP", "Windows 98", "Windows NT4"}) {
        runOn(system);
        addKey("A");
        setString(HKEY_LOCAL_MACHINE, std::string(kA) + "\\b\\c", "", "");
        const std::size_t before = registry().openHandles();
        form().ProblemeEntfernen();
        EXPECT_EQ(registry().openHandles(), before) << system;
    }
}

TEST_F(CompleteCopyOfflineTest, AKeyThatMayNotBeReadStaysAndIsNamed) {
    addKey("A");
    addKey("B");
    registry().deny(kPath);
    form().ProblemeEntfernen();
    registry().allow(kPath);
    EXPECT_FALSE(isGone("A"));
    EXPECT_TRUE(isGone("B"));
    EXPECT_EQ(logLines(),
              Texts{"frmMain; ProblemeEntfernen; Der Schl\xFCssel [HKEY_LOCAL_MACHINE\\Software\\Probe\\A] "
                    "wurde nicht entfernt.; 0; Der Schl\xFCssel kann nicht vollst\xE4ndig gelesen und daher "
                    "nicht gesichert werden."});
}

TEST_F(CompleteCopyOfflineTest, OnThe9xFamilySoDoesOneWithAnUnreadableKeyBelow) {
    runOn("Windows 98");
    addKey("A");
    setString(HKEY_LOCAL_MACHINE, std::string(kA) + "\\b\\c", "", "");
    static_cast<void>(form());
    offline::faults().fail("RegOpenKeyExA", 3, ERROR_ACCESS_DENIED);  // A, A\b, A\b\c
    form().ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(named(), 1u);
    EXPECT_EQ(filesIn(BackupPath, "V*.reg"), Texts{});
}

// Each call of the reading fails once, with every error that it may have: the key stays, or it is whole in
// the copy.
TEST_F(CompleteCopyOfflineTest, WhateverReadingFailsTheKeyStays) {
    for (const char* system : {"Windows XP", "Windows NT4", "Windows 98"}) {
        runOn(system);
        for (const char* operation : {"RegOpenKeyExA", "RegQueryInfoKeyA", "RegEnumValueA", "RegEnumKeyA"}) {
            for (const long error : {ERROR_ACCESS_DENIED, ERROR_MORE_DATA, ERROR_NO_MORE_ITEMS, 8, 1018}) {
                for (unsigned nth = 1; nth < 20; ++nth) {
                    addKey("A");
                    setString(HKEY_LOCAL_MACHINE, kA, "Name", "x");
                    if (!offline::machine().os().isNt())
                        setString(HKEY_LOCAL_MACHINE, std::string(kA) + "\\b", "", "unten");
                    const auto before =
                        offline::machine().registry.wideValues(u"HKEY_LOCAL_MACHINE\\Software\\Probe\\A");
                    offline::faults().fail(operation, nth, error);
                    form().ProblemeEntfernen();
                    const unsigned long calls = offline::faults().calls(operation);
                    offline::faults().clear();
                    const Texts copies = filesIn(BackupPath, "V*.reg");
                    if (isGone("A")) {
                        ASSERT_EQ(copies.size(), 1u) << system << " " << operation << " " << nth;
                        const std::string bytes = readWholeFile(BackupPath + copies[0]);
                        const std::string last = offline::machine().os().isNt()
                                                     ? "\"Name\"=\"x\"\r\n"
                                                     : "\\A\\b]\r\n@=\"unten\"\r\n";
                        EXPECT_TRUE(bytes.ends_with(last) ||
                                    bytes.ends_with(wide(std::u16string(last.begin(), last.end()))))
                            << system << " " << operation << " " << nth;
                    } else {
                        EXPECT_EQ(
                            offline::machine().registry.wideValues(u"HKEY_LOCAL_MACHINE\\Software\\Probe\\A"),
                            before);
                    }
                    for (const std::string& name : copies)
                        ASSERT_TRUE(offline::machine().drives.erase(BackupPath + name));
                    registry().deleteKey(kPath);
                    if (calls < nth) break;
                }
            }
        }
    }
}

// What the disk took of a record is taken back: put back in part it would change a key that is still there.
TEST_F(CompleteCopyOfflineTest, AFullDiskLeavesNoPartOfARecord) {
    addKey("A");
    addKey("B");
    offline::faults().fail("WriteFile", 7 + 4, 112);
    form().ProblemeEntfernen();
    EXPECT_TRUE(isGone("B"));
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(completeCopy(),
              head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\B]\r\n@=\"Wert B\"\r\n"));
    EXPECT_EQ(list().count(), 2);
    EXPECT_EQ(form().lblScanBericht.caption(), "");
    EXPECT_EQ(openFileCount(), 1);  // the undo file
    EXPECT_EQ(logLines().size(), 1u);
}

TEST_F(CompleteCopyOfflineTest, AFileThatCannotBeOpenedEndsTheRemoval) {
    addKey("A");
    offline::faults().fail("CreateFileA", 2, ERROR_SHARING_VIOLATION);
    form().ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(list().count(), 1);
    EXPECT_EQ(logLines(), (Texts{"frmMain; ProblemeEntfernen; ; 70; Zugriff verweigert"}));
}

// --- characters that the code page lacks ---

class ForeignTextTest : public CompleteCopyOfflineTest {
  protected:
    ForeignTextTest() {
        addKey("A");
        registry().setText(u"HKEY_LOCAL_MACHINE\\Software\\Probe\\A", u"Zdj\u0119cie",
                           u"\u0141\u00F3d\u017A");
    }
};

TEST_F(ForeignTextTest, AreWholeInVersion5) {
    form().ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_EQ(completeCopy(), head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n"
                                          u"\"Zdj\u0119cie\"=\"\u0141\u00F3d\u017A\"\r\n"));
}

TEST_F(ForeignTextTest, HaveNoFormOnWindowsNt4) {
    runOn("Windows NT4");
    form().ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(named(), 1u);
    registry().deleteValue(u"HKEY_LOCAL_MACHINE\\Software\\Probe\\A", u"Zdj\u0119cie");
    registry().setText(u"HKEY_LOCAL_MACHINE\\Software\\Probe\\A", u"Bild", u"\u0141\u00F3d\u017A");
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]", "@", "");
    form().ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(named(), 2u);
}

// --- the entry of a program ---

TEST_F(CompleteCopyOfflineTest, WithoutACopyAnEntryStaysAndTheDialogTells) {
    constexpr Tags kTags{"frmMain", "cmdDeinstall_Click"};
    addKey("A");
    Texts shown;
    setErrorDialog([&](std::string_view, std::string_view, std::int32_t, std::string_view description,
                       std::int32_t) { shown.emplace_back(description); });
    offline::faults().fail("WriteFile", 1, 112);
    copyAndDelete(kTags, kHiveLocalMachine, kA);
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(shown.size(), 1u);

    registry().deny(kPath);
    copyAndDelete(kTags, kHiveLocalMachine, kA);
    registry().allow(kPath);
    EXPECT_FALSE(isGone("A"));
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[1],
              "Der Schl\xFCssel kann nicht vollst\xE4ndig gelesen und daher nicht gesichert werden.");

    const std::string path = BackupPath;
    BackupPath = folder() + "Fehlt\\Auch\\";
    copyAndDelete(kTags, kHiveLocalMachine, kA);
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(shown.size(), 3u);

    BackupPath = path;
    copyAndDelete(kTags, kHiveLocalMachine, kA);
    EXPECT_TRUE(isGone("A"));
    EXPECT_EQ(shown.size(), 3u);
    EXPECT_EQ(completeCopy(),
              head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n"));
    EXPECT_EQ(openFileCount(), 0);
    setErrorDialog({});
}

}  // namespace
}  // namespace bromvale::testing
