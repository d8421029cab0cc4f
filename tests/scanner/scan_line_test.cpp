#include "scanner/scan_line.h"

#include "base/failure.h"
#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

class ScanLineTest : public ScanTest {
  protected:
    LineParts parts;
    std::string take(std::string_view line) {
        ScanLine(line).takeInto(parts, Routine<>{{"frmMain", "cmdStart_Click"}});
        std::string result = std::to_string(parts.hive);
        for (const std::string_view part : {parts.hiveName, parts.key, parts.name, parts.value})
            result.append("|").append(part);
        return result;
    }
};

TEST_F(ScanLineTest, ALineFallsIntoItsPartsAndTheKeyKeepsItsBracket) {
    EXPECT_EQ(take("-2147483646[Software\\Probe]Name=Daten"),
              "-2147483646|HKEY_LOCAL_MACHINE|Software\\Probe]|Name|Daten");
    EXPECT_EQ(take("-2147483647[Software\\Probe]@="), "-2147483647|HKEY_CURRENT_USER|Software\\Probe]|@|");
}

TEST_F(ScanLineTest, ANameIsCutAtItsFirstEqualSign) {
    EXPECT_EQ(take("-2147483646[K]a=b=c"), "-2147483646|HKEY_LOCAL_MACHINE|K]|a|b=c");
}

TEST_F(ScanLineTest, AKeyIsCutAtItsFirstClosingBracket) {
    EXPECT_EQ(take("-2147483646[Pro[be]x]n=v"), "-2147483646|HKEY_LOCAL_MACHINE|Pro[be]|x]n|v");
}

TEST_F(ScanLineTest, AnEqualSignInTheKeyIsReportedAndKeepsTheNameOfTheEntryBefore) {
    take("-2147483646[K]Vorher=1");
    EXPECT_EQ(take("-2147483646[a=b]n=v"), "-2147483646|HKEY_LOCAL_MACHINE|a=b]|Vorher|b]n=v");
    EXPECT_EQ(logLines(),
              (Texts{"frmMain; cmdStart_Click; ; 5; Ungültiger Prozeduraufruf oder ungültiges Argument"}));
    EXPECT_EQ(take("-2147483646[K]n=v"), "-2147483646|HKEY_LOCAL_MACHINE|K]|n|v");
}

TEST_F(ScanLineTest, APlaceBeyond32767IsReportedAndKeepsThePlaceBefore) {
    take("-2147483646[K]Vorher=1");
    const std::string line = "-2147483646[" + std::string(40000, 'k') + "]n=v";
    take(line);
    EXPECT_EQ(logLines(),
              (Texts{"frmMain; cmdStart_Click; ; 6; Überlauf", "frmMain; cmdStart_Click; ; 6; Überlauf"}));
    EXPECT_EQ(parts.key, "kk");
}

TEST_F(ScanLineTest, QuotesAndUmlautsStayAsTheyAre) {
    EXPECT_EQ(take("-2147483646[Größe]\"Ü\"=\"ß\""), "-2147483646|HKEY_LOCAL_MACHINE|Größe]|\"Ü\"|\"ß\"");
}

// --- taken apart whole, as the list of installed programs does it ---

TEST(WholeLine, ALineIsCutAtTheFirstOfEachSign) {
    const Entry entry = ScanLine("-2147483646[Software\\A [x]DisplayName=B [c]=d").entry();
    EXPECT_EQ(entry.hive, -2147483646);
    EXPECT_EQ(entry.hiveName, "HKEY_LOCAL_MACHINE");
    EXPECT_EQ(entry.key, "Software\\A [x]");
    EXPECT_EQ(entry.name, "DisplayName");
    EXPECT_EQ(entry.value, "B [c]=d");
}

TEST(WholeLine, AnEmptyNameAndEmptyDataAreThere) {
    const Entry entry = ScanLine("-2147483647[K]=").entry();
    EXPECT_EQ(entry.key, "K]");
    EXPECT_EQ(entry.name, "");
    EXPECT_EQ(entry.value, "");
}

TEST(WholeLine, AnEqualsSignBeforeTheKeysEndFails) {
    try {
        static_cast<void>(ScanLine("-2147483646[A=B]DisplayName=x").entry());
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 5);
    }
}

}  // namespace
}  // namespace bromvale::testing
