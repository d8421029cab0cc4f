// The complete copy on other systems, and with names beyond the code page.
#include "platform/offline/files/other_half.h"
#include "tests/repair/complete_copy_systems_offline.h"

namespace bromvale::testing {
namespace {

using namespace std::string_literals;

TEST_F(CompleteCopyOfflineTest, FromWindows2000OnTheFormIsThatOfVersion5) {
    for (const char* system : {"Windows 2000", "Windows XP", "2.6.1.7601", "2.10.0.19045"}) {
        runOn(system);
        addKey("A");
        form().scan.ProblemeEntfernen();
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
        form().scan.ProblemeEntfernen();
        EXPECT_EQ(completeCopy(),
                  "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n"
                  "@=\"Wert A\"\r\n\"\xE4\"=hex(2):f6,00\r\n")
            << system;
        EXPECT_TRUE(
            offline::machine().drives.erase("C:\\Programme\\Bromvale\\Backup\\Vollst\xE4ndig_"
                                            "15112026_071209.reg"));
    }
}

// Another system may have written a file of that name while its clock stood there.
TEST_F(CompleteCopyOfflineTest, AFileOfAnotherFormIsLeftAloneAndTheNextNameTaken) {
    const std::string first = BackupPath + "Vollständig_15112026_071209.reg";
    for (const std::string& there : {std::string("REGEDIT4\r\n\r\n"), head + "x", std::string("?")}) {
        writeWholeFile(first, there);
        addKey("A");
        form().scan.ProblemeEntfernen();
        EXPECT_TRUE(isGone("A"));
        EXPECT_EQ(readWholeFile(first), there);
        const std::string second = BackupPath + "Vollständig_15112026_071209_2.reg";
        EXPECT_EQ(readWholeFile(second),
                  head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n"));
        EXPECT_TRUE(offline::machine().drives.erase(second));
    }
}

TEST_F(CompleteCopyOfflineTest, OnThe9xFamilyWhatLiesBelowIsInTheRecord) {
    runOn("Windows 98");
    addKey("A");
    for (const char* below : {"b", "a", "a\\tief", "a\\tief\\[er] "})
        setString(HKEY_LOCAL_MACHINE, std::string(kA) + "\\" + below, "Name", below);
    form().scan.ProblemeEntfernen();
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
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_TRUE(completeCopy().ends_with("[" + path + "]\r\n@=\"unten\"\r\n"));
}

TEST_F(CompleteCopyOfflineTest, TwoRemovalsInOneSecondShareAFileWithOneHead) {
    addKey("A");
    form().scan.ProblemeEntfernen();
    addKey("B");
    form().scan.ProblemeEntfernen();
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
        form().scan.ProblemeEntfernen();
        EXPECT_EQ(registry().openHandles(), before) << system;
    }
}

// A 32-bit program that the system shows an old version of itself, on a 64-bit Windows.
TEST_F(CompleteCopyOfflineTest, NamesWhereAKeyReallyLiesInTheOldFormToo) {
    runOn("Windows NT4");
    offline::setHalves(offline::Halves::SeenBy32);
    addKey("A");
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_EQ(completeCopy(),
              "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\Probe\\A]\r\n@=\"Wert A\"\r\n");
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
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_EQ(completeCopy(), head + wide(u"\r\n[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n"
                                          u"\"Zdj\u0119cie\"=\"\u0141\u00F3d\u017A\"\r\n"));
}

TEST_F(ForeignTextTest, HaveNoFormOnWindowsNt4) {
    runOn("Windows NT4");
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(named(), 1u);
    registry().deleteValue(u"HKEY_LOCAL_MACHINE\\Software\\Probe\\A", u"Zdj\u0119cie");
    registry().setText(u"HKEY_LOCAL_MACHINE\\Software\\Probe\\A", u"Bild", u"\u0141\u00F3d\u017A");
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]", "@", "");
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(named(), 2u);
}

}  // namespace
}  // namespace bromvale::testing
