// Every failure on the way to the complete copy.
#include "tests/repair/complete_copy_systems_offline.h"

namespace bromvale::testing {
namespace {

TEST_F(CompleteCopyOfflineTest, AKeyThatMayNotBeReadStaysAndIsNamed) {
    addKey("A");
    addKey("B");
    registry().deny(kPath);
    form().scan.ProblemeEntfernen();
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
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(named(), 1u);
    EXPECT_EQ(filesIn(BackupPath, "V*.reg"), Texts{});
}

TEST_F(CompleteCopyOfflineTest, AKeyWhoseValuesCannotBeReadStaysAndTheLogSaysThat) {
    for (const char* system : {"Windows XP", "Windows NT4"}) {
        runOn(system);
        addKey("A");
        static_cast<void>(form());
        offline::faults().fail("RegEnumValueA", 1, ERROR_ACCESS_DENIED);
        form().scan.ProblemeEntfernen();
        offline::faults().clear();
        EXPECT_FALSE(isGone("A")) << system;
        ASSERT_FALSE(logLines().empty());
        EXPECT_TRUE(logLines().back().ends_with(
            "Der Schlüssel kann nicht vollständig gelesen und daher nicht gesichert werden."))
            << logLines().back();
    }
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
                    form().scan.ProblemeEntfernen();
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
    // The head and the two writes for B, then the record of A; the disk takes a part of its copy.
    unsigned writes = 0;
    offline::faults().observe([&](std::string_view operation) {
        if (operation != "WriteFile" || ++writes != 7 + 4) return;
        const std::string path = BackupPath + "Vollst\xE4ndig_15112026_071209.reg";
        offline::Drives& drives = offline::machine().drives;
        EXPECT_TRUE(drives.writeFile(path, *drives.readFile(path) + wide(u"\r\n[HKEY_LOCAL")));
    });
    offline::faults().fail("WriteFile", 7 + 4, 112);
    form().scan.ProblemeEntfernen();
    offline::faults().clear();
    EXPECT_TRUE(isGone("B"));
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(completeCopy(),
              head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\B]\r\n@=\"Wert B\"\r\n"));
    EXPECT_EQ(list().count(), 2);
    EXPECT_EQ(form().scan.lblScanBericht.caption(), "");
    EXPECT_EQ(openFileCount(), 1);  // the undo file
    EXPECT_EQ(logLines().size(), 1u);
}

TEST_F(CompleteCopyOfflineTest, AFileThatCannotBeOpenedEndsTheRemoval) {
    addKey("A");
    offline::faults().fail("CreateFileA", 2, ERROR_SHARING_VIOLATION);
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(list().count(), 1);
    EXPECT_EQ(logLines(), (Texts{"frmMain; ProblemeEntfernen; ; 70; Zugriff verweigert"}));
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
