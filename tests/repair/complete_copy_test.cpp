// The second file of a removal, on both providers: whole keys in the form of the NT family.
#include "tests/repair/complete_copy_fixture.h"

namespace bromvale::testing {
namespace {

using namespace std::string_literals;

std::string stays(const std::string& reason) {
    return "frmMain; ProblemeEntfernen; Der Schl\xFCssel [HKEY_LOCAL_MACHINE\\Software\\Probe\\A] wurde "
           "nicht "
           "entfernt.; 0; " +
           reason;
}

TEST_F(CompleteCopyTest, HoldsEveryValueWithTypeAndBytes) {
    addKey("A");
    // In the order of their names, in which Wine tells them.
    setRaw(HKEY_LOCAL_MACHINE, kA, "fremd", 0x80000001u, "\xFF"s);
    setRaw(HKEY_LOCAL_MACHINE, kA, "kurz", REG_DWORD, "\1"s);
    setRaw(HKEY_LOCAL_MACHINE, kA, "leer", REG_SZ, "");
    setRaw(HKEY_LOCAL_MACHINE, kA, "nichts", REG_BINARY, "");
    setRaw(HKEY_LOCAL_MACHINE, kA, "Pfad\\", REG_SZ, "C:\\\"x\"\0"s);
    setRaw(HKEY_LOCAL_MACHINE, kA, "viele", REG_MULTI_SZ, "a\0b\0\0"s);
    setRaw(HKEY_LOCAL_MACHINE, kA, "weit", REG_EXPAND_SZ, "\xE4\0"s);
    setRaw(HKEY_LOCAL_MACHINE, kA, "Zahl", REG_DWORD, "\1\2\3\4"s);
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_EQ(completeCopy(), head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n"
                                          u"@=\"Wert A\"\r\n"
                                          u"\"fremd\"=hex(80000001):ff\r\n"
                                          u"\"kurz\"=hex(4):01\r\n"
                                          u"\"leer\"=hex(1):\r\n"
                                          u"\"nichts\"=hex:\r\n"
                                          u"\"Pfad\\\\\"=\"C:\\\\\\\"x\\\"\"\r\n"
                                          u"\"viele\"=hex(7):61,00,00,00,62,00,00,00,00,00\r\n"
                                          u"\"weit\"=hex(2):e4,00,00,00\r\n"
                                          u"\"Zahl\"=dword:04030201\r\n"));
    EXPECT_EQ(openFileCount(), 0);
}

// Longer than what a scan reads of names and data.
TEST_F(CompleteCopyTest, HoldsLongNamesAndData) {
    addKey("A");
    const std::string name(2000, 'n');
    setRaw(HKEY_LOCAL_MACHINE, kA, name, REG_SZ, std::string(100000, 'x') + '\0');
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_NE(completeCopy().find(wide(u"\"" + std::u16string(2000, u'n') + u"\"=\"" +
                                       std::u16string(100000, u'x') + u"\"\r\n")),
              std::string::npos);
}

TEST_F(CompleteCopyTest, HasTheStampOfTheUndoFile) {
    addKey("A");
    form().scan.ProblemeEntfernen();
    const Texts undo = filesIn(BackupPath, "R*.reg");
    const Texts copy = filesIn(BackupPath, "V*.reg");
    ASSERT_EQ(undo.size(), 1u);
    ASSERT_EQ(copy.size(), 1u);
    EXPECT_EQ(copy[0], "Vollst\xE4ndig_" + undo[0].substr(11));
}

TEST_F(CompleteCopyTest, IsMadeWithTheFirstKeyThatIsThere) {
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\Fort]", "@", "");
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(filesIn(BackupPath, "V*.reg"), Texts{});
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(CompleteCopyTest, OfTwoRowsOfOneKeyTheSecondFindsItGone) {
    addKey("A");
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]", "\"Name\"", "");
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(completeCopy(),
              head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n"));
}

// Such a row's path begins below `Classes` of the hive, and there may be a key.
TEST_F(CompleteCopyTest, HasTheKeyThatADeadLinkRowMeets) {
    setString(HKEY_LOCAL_MACHINE, "Classes\\CLSID\\{A}\\Interface", "", "hier");
    add("[HKEY_LOCAL_MACHINESoftware\\Classes\\CLSID\\{A}\\Interface]", "@", "{L}");
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Classes\\CLSID\\{A}\\Interface"));
    EXPECT_EQ(completeCopy(),
              head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Classes\\CLSID\\{A}\\Interface]\r\n@=\"hier\"\r\n"));
}

// The registry editor ends such a text, so that it would come back as another one.
TEST_F(CompleteCopyTest, AKeyWithATextWithoutItsNulStaysAndTheNextOneGoes) {
    addKey("A");
    setRaw(HKEY_LOCAL_MACHINE, kA, "offen", REG_EXPAND_SZ, "ab");
    addKey("B");
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_TRUE(isGone("B"));
    EXPECT_EQ(completeCopy(),
              head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\B]\r\n@=\"Wert B\"\r\n"));
    // Row, record and message are those of any key that refuses.
    EXPECT_NE(undoRecords().find("[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n"), std::string::npos);
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(form().scan.lblScanBericht.caption(), allMessage);
    EXPECT_EQ(logLines(),
              Texts{stays("Die Sicherungsdatei kann den Schl\xFCssel nicht vollst\xE4ndig aufnehmen.")});
    EXPECT_TRUE(boxes().empty());
}

TEST_F(CompleteCopyTest, AKeyWhoseValueNameHoldsALineBreakStays) {
    addKey("A");
    setString(HKEY_LOCAL_MACHINE, kA, "a\nb", "x");
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(logLines(),
              Texts{stays("Die Sicherungsdatei kann den Schl\xFCssel nicht vollst\xE4ndig aufnehmen.")});
    EXPECT_EQ(filesIn(BackupPath, "V*.reg"), Texts{});
}

TEST_F(CompleteCopyTest, AHiveIsNeverCopiedNorDeleted) {
    CompleteCopy copy("15112026_071209");
    EXPECT_EQ(copy.save(kHiveLocalMachine, ""), KeyCopy::NoForm);
    EXPECT_EQ(copy.save(kHiveLocalMachine, "\\"), KeyCopy::NoForm);
}

}  // namespace
}  // namespace bromvale::testing
