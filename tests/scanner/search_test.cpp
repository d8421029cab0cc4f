#include "scanner/search.h"

#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

using SearchTest = ScanTest;

TEST_F(SearchTest, AKeyGivesItsValuesAndThenItsSubKeysAnEmptyOneWithAt) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "Eins", "1");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "Zwei", "2");
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Probe\\Leer");
    EXPECT_EQ(collect("Software\\Probe"), (Texts{
                                              "-2147483646[Software\\Probe]Eins=1",
                                              "-2147483646[Software\\Probe]Zwei=2",
                                              "-2147483646[Software\\Probe\\Leer]@=",
                                          }));
}

TEST_F(SearchTest, ADefaultValueAloneStandsAsAtWithItsData) {
    setString(HKEY_CURRENT_USER, "Software\\Probe", "", "C:\\x\\a.dll");
    EXPECT_EQ(collect("Software\\Probe", kHiveCurrentUser),
              (Texts{"-2147483647[Software\\Probe]@=C:\\x\\a.dll"}));
}

TEST_F(SearchTest, ValuesThatAreNoTextHaveTheirLineWithoutData) {
    setRaw(HKEY_LOCAL_MACHINE, "Software\\Probe", "Zahl", REG_DWORD, std::string_view("\x2a\0\0\0", 4));
    setRaw(HKEY_LOCAL_MACHINE, "Software\\Probe", "Bytes", REG_BINARY, "abc");
    setRaw(HKEY_LOCAL_MACHINE, "Software\\Probe", "Liste", REG_MULTI_SZ, std::string_view("a\0b\0\0", 5));
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "Text", "t");
    Texts lines = collect("Software\\Probe");
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(lines, (Texts{
                         "-2147483646[Software\\Probe]Bytes=",
                         "-2147483646[Software\\Probe]Liste=",
                         "-2147483646[Software\\Probe]Text=t",
                         "-2147483646[Software\\Probe]Zahl=",
                     }));
}

TEST_F(SearchTest, AnExpandableTextComesBackUnexpanded) {
    setRaw(HKEY_LOCAL_MACHINE, "Software\\Probe", "Pfad", REG_EXPAND_SZ,
           std::string_view("%SystemRoot%\\x.dll\0", 19));
    EXPECT_EQ(collect("Software\\Probe"), (Texts{"-2147483646[Software\\Probe]Pfad=%SystemRoot%\\x.dll"}));
}

TEST_F(SearchTest, ATextStoredWithANulInsideIsCutThere) {
    setRaw(HKEY_LOCAL_MACHINE, "Software\\Probe", "Text", REG_SZ, std::string_view("vorn\0hinten\0", 12));
    EXPECT_EQ(collect("Software\\Probe"), (Texts{"-2147483646[Software\\Probe]Text=vorn"}));
}

TEST_F(SearchTest, AValueOf300BytesHidesItselfAndAllBehindIt) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "a", "1");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "b", "2");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "c", std::string(299, 'x'));
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "d", "4");
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Probe\\Unten");
    EXPECT_EQ(collect("Software\\Probe"), (Texts{
                                              "-2147483646[Software\\Probe]a=1",
                                              "-2147483646[Software\\Probe]b=2",
                                              "-2147483646[Software\\Probe\\Unten]@=",
                                          }));
}

TEST_F(SearchTest, AValueOf300BytesAloneMakesTheKeyLookEmpty) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "lang", std::string(299, 'x'));
    EXPECT_EQ(collect("Software\\Probe"), (Texts{"-2147483646[Software\\Probe]@="}));
}

// Bytes with the terminating NUL.
TEST_F(SearchTest, DataOf254To256BytesIsSeenAndDataOf257IsNot) {
    for (const std::size_t bytes : {254u, 255u, 256u}) {
        const std::string key = "Software\\Probe" + std::to_string(bytes);
        const std::string text(bytes - 1, 'y');
        setString(HKEY_LOCAL_MACHINE, key, "w", text);
        EXPECT_EQ(collect(key), (Texts{"-2147483646[" + key + "]w=" + text}));
    }
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe257", "w", std::string(256, 'y'));
    EXPECT_EQ(collect("Software\\Probe257"), (Texts{"-2147483646[Software\\Probe257]@="}));
}

TEST_F(SearchTest, ANameOf254CharactersIsSeenAndOneOf255EndsTheList) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Kurz", std::string(254, 'n'), "1");
    EXPECT_EQ(collect("Software\\Kurz"),
              (Texts{"-2147483646[Software\\Kurz]" + std::string(254, 'n') + "=1"}));
    setString(HKEY_LOCAL_MACHINE, "Software\\Lang", std::string(255, 'n'), "1");
    EXPECT_EQ(collect("Software\\Lang"), (Texts{"-2147483646[Software\\Lang]@="}));
}

TEST_F(SearchTest, HostileNamesStandInTheLineAsTheyAre) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Pro[be]", "a=b", "c");
    EXPECT_EQ(collect("Software\\Pro[be]"), (Texts{"-2147483646[Software\\Pro[be]]a=b=c"}));
    setString(HKEY_LOCAL_MACHINE, "Software\\Größe", "Prüfung \"x\"", "Übergröße ß");
    EXPECT_EQ(collect("Software\\Größe"), (Texts{"-2147483646[Software\\Größe]Prüfung \"x\"=Übergröße ß"}));
    EXPECT_EQ(collect("Software\\Größe")[0].substr(12, 19),
              "Software\\Gr\xF6\xDF"
              "e]Pr\xFC"
              "f");
}

TEST_F(SearchTest, AKeyWithoutBackslashGetsOneInFront) {
    setString(HKEY_LOCAL_MACHINE, "Probe", "a", "1");
    setString(HKEY_LOCAL_MACHINE, "Probe\\Unten", "b", "2");
    EXPECT_EQ(collect("Probe"), (Texts{"-2147483646[\\Probe]a=1", "-2147483646[Probe\\Unten]b=2"}));
}

TEST_F(SearchTest, AMissingKeyGivesOneLineWithAt) {
    EXPECT_EQ(collect("Software\\Fehlt"), (Texts{"-2147483646[Software\\Fehlt]@="}));
}

TEST_F(SearchTest, SubKeysComeWithTheirWholeTreeBeforeTheNextOne) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A\\AA", "w", "1");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A", "w", "2");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\B", "w", "3");
    EXPECT_EQ(collect("Software\\Probe"), (Texts{
                                              "-2147483646[Software\\Probe]@=",
                                              "-2147483646[Software\\Probe\\A]w=2",
                                              "-2147483646[Software\\Probe\\A\\AA]w=1",
                                              "-2147483646[Software\\Probe\\B]w=3",
                                          }));
}

TEST_F(SearchTest, WithoutRecurseSubKeysAreLeftOut) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "w", "1");
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Probe\\Unten");
    SearchSpec spec;
    spec.SearchKey = "Software\\Probe";
    spec.SearchHive = kHiveLocalMachine;
    spec.Recurse = false;
    ScanLines lines(1);
    FindString(spec, lines);
    EXPECT_EQ(lines, (ScanLines{"", "-2147483646[Software\\Probe]w=1"}));
}

TEST_F(SearchTest, AnAbortAtEntryAddsNothingAndPutsTheKeyBack) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A", "w", "1");
    ScanAbort = true;
    EXPECT_EQ(collect("Software\\Probe"), Texts{});
}

TEST_F(SearchTest, AnAbortBetweenTwoSubKeysKeepsWhatWasCollected) {
    for (const char* name : {"A", "B", "C"})
        makeKey(HKEY_LOCAL_MACHINE, std::string("Software\\Probe\\") + name);
    // Pumps: the key's own line, sub key A, its line, sub key B.
    atPump(4, [] { ScanAbort = true; });
    EXPECT_EQ(collect("Software\\Probe"),
              (Texts{"-2147483646[Software\\Probe]@=", "-2147483646[Software\\Probe\\A]@="}));
}

TEST_F(SearchTest, EventsArePumpedOncePerValueAndOncePerSubKey) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "a", "1");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "b", "2");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\Unten", "c", "3");
    bool fourth = false;
    bool fifth = false;
    atPump(4, [&] { fourth = true; });
    atPump(5, [&] { fifth = true; });
    EXPECT_EQ(collect("Software\\Probe").size(), 3u);
    EXPECT_TRUE(fourth);
    EXPECT_FALSE(fifth);
}

TEST_F(SearchTest, AValueThatVanishesBeforeItsQueryHasItsLineWithoutData) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "a", "1");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "b", "2");
    atPump(1, [] { DelKeyValue(kHiveLocalMachine, "Software\\Probe", "a"); });
    EXPECT_EQ(collect("Software\\Probe"),
              (Texts{"-2147483646[Software\\Probe]a=", "-2147483646[Software\\Probe]b=2"}));
}

TEST_F(SearchTest, AKeyDeletedWhileTheWalkRunsHasOneLineAndTheNextIsRead) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A", "a", "1");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\B", "b", "2");
    // The second pump stands between the listing of the sub keys and the visit of A.
    atPump(2, [] { DelKey(kHiveLocalMachine, "Software\\Probe\\A", READ_CONTROL); });
    EXPECT_EQ(collect("Software\\Probe"), (Texts{
                                              "-2147483646[Software\\Probe]@=",
                                              "-2147483646[Software\\Probe\\A]@=",
                                              "-2147483646[Software\\Probe\\B]b=2",
                                          }));
}

TEST_F(SearchTest, LinesWithoutBoundsGetThemAndTheFirstLineLandsInElement0) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "a", "1");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "b", "2");
    Protokoll = 1;
    LogAlways = true;
    SearchSpec spec;
    spec.SearchKey = "Software\\Probe";
    spec.SearchHive = kHiveLocalMachine;
    ScanLines lines;
    FindString(spec, lines);
    EXPECT_EQ(lines, (ScanLines{"-2147483646[Software\\Probe]a=1", "-2147483646[Software\\Probe]b=2"}));
    EXPECT_EQ(logLines(), (Texts{"modSearch; FindString; ; 9; Index außerhalb des gültigen Bereichs"}));
}

// Each name of a list is ended by a NUL.
TEST_F(SearchTest, TheSingleListsHoldAtLeastOneEmptyName) {
    const std::string none(1, '\0');
    const std::string a("A\0", 2);
    EXPECT_EQ(EnumValueNames(kHiveLocalMachine, "Software\\Fehlt"), none);
    EXPECT_EQ(EnumSubKeys(kHiveLocalMachine, "Software\\Fehlt"), none);
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A", "", "Text");
    EXPECT_EQ(EnumSubKeys(kHiveLocalMachine, "Software\\Probe"), a);
    EXPECT_EQ(EnumSubKeys(kHiveLocalMachine, "Software\\Probe\\A"), none);
    EXPECT_EQ(EnumValueNames(kHiveLocalMachine, "Software\\Probe\\A"), none);
    EXPECT_EQ(QueryStringValue(kHiveLocalMachine, "Software\\Probe\\A", ""), "Text");
    EXPECT_EQ(QueryStringValue(kHiveLocalMachine, "Software\\Probe\\A", "fehlt"), "");
    EXPECT_EQ(LastRegStatus, 2);
}

// --- matching ---

class MatchTest : public ScanTest {
  protected:
    MatchTest() {
        setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "Name", "Daten");
        setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\Ziel", "x", "y");
        spec.SearchKey = "Software\\Probe";
        spec.SearchHive = kHiveLocalMachine;
    }
    Texts find() {
        ScanLines lines(1);
        FindString(spec, lines);
        return {lines.begin() + 1, lines.end()};
    }
    SearchSpec spec;
    const Texts first{"-2147483646[Software\\Probe]Name=Daten"};
    const Texts second{"-2147483646[Software\\Probe\\Ziel]x=y"};
};

TEST_F(MatchTest, Mode1FindsPartsWithoutCaseInDataNameOrKey) {
    spec.SearchText = "ATE";
    EXPECT_EQ(find(), first);
    spec.SearchText = "nAm";
    EXPECT_EQ(find(), first);
    spec.SearchText = "ziel";
    EXPECT_EQ(find(), second);
    spec.SearchText = "nirgends";
    EXPECT_EQ(find(), Texts{});
}

TEST_F(MatchTest, Mode1ObeysTheThreeSwitches) {
    spec.SearchText = "daten";
    spec.MatchValueData = false;
    EXPECT_EQ(find(), Texts{});
    spec.SearchText = "name";
    spec.MatchValueNames = false;
    EXPECT_EQ(find(), Texts{});
    spec.SearchText = "ziel";
    spec.MatchKeys = false;
    EXPECT_EQ(find(), Texts{});
}

TEST_F(MatchTest, AnEmptyTextStandsInAnyTextButAnEmptyOne) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\Ziel", "", "");
    spec.SearchKey = "Software\\Probe\\Ziel";
    spec.MatchKeys = false;
    EXPECT_EQ(find(), second);
    spec.MatchKeys = true;
    EXPECT_EQ(find().size(), 2u);
}

TEST_F(MatchTest, Mode0ComparesWholeTextsAndCase) {
    spec.MatchMode = 0;
    spec.SearchText = "Daten";
    EXPECT_EQ(find(), first);
    spec.SearchText = "daten";
    EXPECT_EQ(find(), Texts{});
    spec.SearchText = "Name";
    EXPECT_EQ(find(), first);
    spec.SearchText = "Ziel";
    EXPECT_EQ(find(), second);
    spec.MatchKeys = false;
    EXPECT_EQ(find(), Texts{});
}

TEST_F(MatchTest, Mode0TakesTheWholePathWhateverMatchKeysSays) {
    spec.MatchMode = 0;
    spec.MatchKeys = false;
    spec.SearchText = "Software\\Probe\\Ziel";
    EXPECT_EQ(find(), second);
}

TEST_F(MatchTest, TheFirstKeyOfAPathCountsWithABackslashBeforeIt) {
    spec.SearchKey = "Software";
    spec.Recurse = false;
    spec.MatchMode = 0;
    spec.SearchText = "\\Software";
    EXPECT_FALSE(find().empty());
    spec.SearchText = "xSoftware";
    EXPECT_TRUE(find().empty());
}

TEST_F(MatchTest, AnyOtherModeAddsNothing) {
    spec.MatchMode = 2;
    EXPECT_EQ(find(), Texts{});
}

}  // namespace
}  // namespace bromvale::testing
