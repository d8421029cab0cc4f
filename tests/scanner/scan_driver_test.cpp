#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

class ScanDriverTest : public EveryPump {
  protected:
    void makeFaultySmallRegistry() {
        setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\InprocServer32", "",
                  "C:\\Fehlt\\a.dll");
        setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{B}", "", "b");
    }
    void expectIdle() {
        EXPECT_TRUE(form().scan.cmdStart.enabled());
        EXPECT_EQ(form().mousePointer(), MousePointer::Default);
        EXPECT_FALSE(form().tmrTimer.enabled());
        EXPECT_EQ(form().ProgressBar_.value(), 0);
        EXPECT_TRUE(ScanAbort);
        EXPECT_EQ(panel(1), "Status");
    }
    void expectAborted() {
        expectIdle();
        EXPECT_EQ(caption(), "Start");
        EXPECT_EQ(panel(2), "Version 1.0.0");
        EXPECT_EQ(form().scan.lblScanTxt.caption(), "");
        EXPECT_EQ(form().scan.lblScanProzent.caption(), "");
        EXPECT_EQ(report(), "");
        EXPECT_TRUE(form().scan.lblScanBericht.visible());
        EXPECT_FALSE(form().scan.lvwRegKeys.visible());
        EXPECT_FALSE(form().scan.chbRegKeysShow.enabled());
        EXPECT_FALSE(form().scan.chbMarkierteKeysEntfernen.enabled());
    }
};

TEST_F(ScanDriverTest, AnEmptyRegistryHasOneEntryPerStartKeyAndNoFault) {
    EXPECT_FALSE(ScanAbort);  // before the first scan
    scan();
    expectIdle();
    EXPECT_EQ(report(), "Hervorragend, keine Fehler gefunden. (0 von 9 Einträgen = 0%)");
    EXPECT_EQ(form().scan.lblScanTxt.caption(), "Scanvorgang erfolgreich abgeschlossen.");
    EXPECT_EQ(form().scan.lblScanProzent.caption(), "100% fertig");
    EXPECT_EQ(panel(2), "Gefundene Fehler: 0");
    EXPECT_EQ(caption(), "&Start");
    EXPECT_FALSE(form().scan.chbRegKeysShow.enabled());
    EXPECT_EQ(form().ProgressBar_.maximum(), 9);
}

TEST_F(ScanDriverTest, WithoutFaultsNothingIsRemovedAutomatically) {
    AutoEntfernen = 1;
    scan();
    EXPECT_EQ(caption(), "&Start");
    EXPECT_EQ(filesIn(folder() + "Backup\\", "*"), Texts{});
}

TEST_F(ScanDriverTest, FaultsTurnTheButtonAndTheListStaysHidden) {
    makeFaultySmallRegistry();
    scan();
    expectIdle();
    EXPECT_EQ(caption(), "&Entfernen");
    EXPECT_TRUE(form().scan.chbRegKeysShow.enabled());
    EXPECT_EQ(form().scan.chbRegKeysShow.value(), 0);
    EXPECT_FALSE(form().scan.lvwRegKeys.visible());
    EXPECT_EQ(panel(2), "Gefundene Fehler: 2");
    EXPECT_EQ(rows(), (Texts{
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\InprocServer32] | @ | "
                          "C:\\\\Fehlt\\\\a.dll | -2147483646",
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}] | @ |  | -2147483646",
                      }));
}

TEST_F(ScanDriverTest, ExactlyFivePercentHasNoRatingButTheOffer) {
    fillRegistry(100, 5);
    scan();
    EXPECT_EQ(report(), " (5 von 100 Einträgen = 5%)");
    EXPECT_EQ(caption(), "&Entfernen");
}

TEST_F(ScanDriverTest, OneOfAHundredIsSome) {
    fillRegistry(100, 1);
    scan();
    EXPECT_EQ(report(), "Einige Fehler gefunden. (1 von 100 Einträgen = 1%)");
}

TEST_F(ScanDriverTest, ThreeOfAHundredAreMany) {
    fillRegistry(100, 3);
    scan();
    EXPECT_EQ(report(), "Viele Fehler gefunden. (3 von 100 Einträgen = 3%)");
}

TEST_F(ScanDriverTest, TheLastObjectIsOnlyJudgedInTheNextScan) {
    makeKey(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Letzter");
    scan();
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(entryGroup().count(), 1);
    setString(HKEY_CURRENT_USER, "Software\\Classes\\CLSID\\{A}", "", "a");
    setString(HKEY_CURRENT_USER, "Software\\Classes\\CLSID\\{B}", "", "b");
    scan();
    // {A} joins it behind the start key, and {B} closes both: two entries are no empty key any more.
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(ScanDriverTest, TheLastObjectAndTheFirstOfTheNextStepAreOneGroupUnderTheLaterHive) {
    setString(HKEY_CURRENT_USER, "Software\\Classes\\CLSID\\{A}\\InprocServer32", "", "C:\\Fehlt\\a.dll");
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{B}", "", "b");
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{C}", "", "c");
    scan();
    EXPECT_EQ(rows(), (Texts{
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{B}] | @ | b | -2147483646",
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\InprocServer32] | @ | "
                          "C:\\\\Fehlt\\\\a.dll | -2147483647",
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}] | @ |  | -2147483647",
                      }));
}

// The fourth entry closes the group of the third: it shows once in the group's own pump and twice at its end.
TEST_F(ScanDriverTest, AnEntryThatClosesAGroupIsShownTwiceAndTheTotalStays) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}", "", "a");
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{B}", "", "b");
    Texts seen;
    atEveryPump([&] {
        if (panel(1).starts_with("Eintrag"))
            seen.push_back(panel(1) + " " + form().scan.lblScanProzent.caption() + " " +
                           std::to_string(form().ProgressBar_.value()) + "/" +
                           std::to_string(form().ProgressBar_.maximum()));
    });
    scan();
    EXPECT_EQ(seen, (Texts{
                        "Eintrag 1 wird gescannt... 9% fertig 1/11",
                        "Eintrag 2 wird gescannt... 18% fertig 2/11",
                        "Eintrag 3 wird gescannt... 27% fertig 3/11",
                        "Eintrag 4 wird gescannt... 36% fertig 4/11",
                        "Eintrag 4 wird gescannt... 36% fertig 4/11",
                        "Eintrag 4 wird gescannt... 36% fertig 4/11",
                        "Eintrag 5 wird gescannt... 45% fertig 5/11",
                        "Eintrag 6 wird gescannt... 55% fertig 6/11",
                        "Eintrag 7 wird gescannt... 64% fertig 7/11",
                        "Eintrag 8 wird gescannt... 73% fertig 8/11",
                        "Eintrag 9 wird gescannt... 82% fertig 9/11",
                        "Eintrag 10 wird gescannt... 91% fertig 10/11",
                        "Eintrag 11 wird gescannt... 100% fertig 11/11",
                    }));
}

TEST_F(ScanDriverTest, PercentsAreRoundedHalfToEven) {
    fillRegistry(40, 0);
    Texts seen;
    atEveryPump([&] {
        if (panel(1) == "Eintrag 1 wird gescannt..." || panel(1) == "Eintrag 3 wird gescannt...")
            seen.push_back(form().scan.lblScanProzent.caption());
    });
    scan();
    EXPECT_EQ(seen, (Texts{"2% fertig", "8% fertig"}));  // 2.5 and 7.5
}

TEST_F(ScanDriverTest, TheStepsShowTheirTextsInOrder) {
    Texts seen;
    atEveryPump([&] {
        const std::string now = panel(1) + " | " + form().scan.lblScanTxt.caption();
        if ((seen.empty() || seen.back() != now) && !panel(1).starts_with("Eintrag")) seen.push_back(now);
    });
    scan();
    const std::string between = "Einen Moment bitte... | Registrierungsschlüssel werden verarbeitet...";
    EXPECT_EQ(seen,
              (Texts{
                  "Schritt 1 von 9 läuft. Bitte warten... | ActiveX / DCOM-Controls werden eingelesen...",
                  between,
                  "Schritt 2 von 9 läuft. Bitte warten... | ActiveX / DCOM-Controls werden eingelesen...",
                  between,
                  "Schritt 3 von 9 läuft. Bitte warten... | ActiveX Interfaces werden eingelesen...",
                  between,
                  "Schritt 4 von 9 läuft. Bitte warten... | ActiveX Interfaces werden eingelesen...",
                  between,
                  "Schritt 5 von 9 läuft. Bitte warten... | Typen-Bibliotheken werden eingelesen...",
                  between,
                  "Schritt 6 von 9 läuft. Bitte warten... | Typen-Bibliotheken werden eingelesen...",
                  between,
                  "Schritt 7 von 9 läuft. Bitte warten... | Installierte Programme werden eingelesen...",
                  between,
                  "Schritt 8 von 9 läuft. Bitte warten... | Installierte Programme werden eingelesen...",
                  between,
                  "Schritt 9 von 9 läuft. Bitte warten... | Installierte Programme werden eingelesen...",
                  between,
              }));
}

TEST_F(ScanDriverTest, WhileEntriesAreCheckedTheLabelSaysSo) {
    Texts seen;
    atEveryPump([&] {
        const std::string& now = form().scan.lblScanTxt.caption();
        if ((seen.empty() || seen.back() != now) && !form().scan.lblScanProzent.caption().empty())
            seen.push_back(now);
    });
    scan();
    EXPECT_EQ(seen, Texts{"Registryschlüssel werden auf Fehler gescannt..."});
    EXPECT_EQ(form().scan.lblScanTxt.caption(), "Scanvorgang erfolgreich abgeschlossen.");
}

TEST_F(ScanDriverTest, WhileItRunsTheButtonIsDisabledAndTheHourglassShows) {
    bool looked = false;
    atPump(2, [&] {
        looked = true;
        EXPECT_FALSE(form().scan.cmdStart.enabled());
        EXPECT_EQ(form().mousePointer(), MousePointer::Hourglass);
        EXPECT_TRUE(form().tmrTimer.enabled());
        EXPECT_EQ(form().tmrTimer.interval(), 50u);
        EXPECT_FALSE(ScanAbort);
    });
    scan();
    EXPECT_TRUE(looked);
}

TEST_F(ScanDriverTest, BetweenThePhasesTheNumberOfEntriesShows) {
    bool looked = false;
    atPump(28, [&] {  // three pumps a step before it
        looked = true;
        EXPECT_EQ(panel(2), "9 relevante Einträge");
        EXPECT_FALSE(form().tmrTimer.enabled());
    });
    scan();
    EXPECT_TRUE(looked);
}

TEST_F(ScanDriverTest, AnAbortInPhase1KeepsTheRowsUntilTheNextScanClearsThem) {
    switchTracingOn();
    form().show();
    form().scan.lvwRegKeys.add({"[alt]", "@", "", "-2147483646"}, 1);
    atPump(2, [&] {
        form().scan.lvwRegKeys.add({"[neu]", "@", "", "-2147483646"}, 1);
        form().scan.cmdAbbrechen.userClick();
    });
    scan();
    expectAborted();
    EXPECT_EQ(rows(), (Texts{"[neu] | @ |  | -2147483646"}));
    EXPECT_EQ(form().focused(), &form().scan.cmdStart);
    const Texts log = logLines();
    EXPECT_EQ(log.back(), "frmMain; cmdStart_Click; Scan abgebrochen; 0; ");
    EXPECT_EQ(std::count(log.begin(), log.end(), "frmMain; cmdStart_Click; Schritt 2 begonnen; 0; "), 0);
    scan();
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(report(), "Hervorragend, keine Fehler gefunden. (0 von 9 Einträgen = 0%)");
    EXPECT_EQ(caption(), "Start");
}

TEST_F(ScanDriverTest, AnAbortInPhase2EndsWithTheNextEntry) {
    switchTracingOn();
    form().show();
    Texts seen;
    atPump(29, [&] { form().scan.cmdAbbrechen.userClick(); });
    atPump(30, [&] { seen.push_back("zu spät"); });
    scan();
    expectAborted();
    EXPECT_EQ(seen, Texts{});
    EXPECT_EQ(logLines().back(), "frmMain; cmdStart_Click; Der Scan wurde abgebrochen; 0; ");
}

TEST_F(ScanDriverTest, AnAbortWhileAGroupIsJudgedKeepsTheRowsFoundSoFar) {
    makeFaultySmallRegistry();
    form().show();
    atEveryPump([&] {
        if (panel(1) == "Eintrag 5 wird gescannt...") form().scan.cmdAbbrechen.userClick();
    });
    scan();
    expectAborted();
    EXPECT_EQ(rows().size(), 2u);
    EXPECT_TRUE(entryGroup().repeat);
}

// Disabling the button is the only guard, and the menu goes past it.
TEST_F(ScanDriverTest, AScanStartedFromTheMenuRunsInsideTheFirstWhichThenEnds) {
    switchTracingOn();
    atPump(29, [&] { form().scan.mnuPopUpStartScan_Click(); });
    scan();
    expectAborted();
    const Texts log = logLines();
    const auto count = [&](const char* text) {
        return std::count(log.begin(), log.end(), std::string("frmMain; cmdStart_Click; ") + text + "; 0; ");
    };
    EXPECT_EQ(count("started"), 2);
    EXPECT_EQ(count("Bericht ausgegeben"), 1);
    EXPECT_EQ(count("endet"), 1);
    EXPECT_EQ(count("Der Scan wurde abgebrochen"), 1);
}

TEST_F(ScanDriverTest, AbbrechenDiscardsTheOfferAndKeepsTheRows) {
    makeFaultySmallRegistry();
    scan();
    form().scan.chbRegKeysShow.setValue(1);
    form().scan.cmdAbbrechen_Click();
    expectAborted();
    EXPECT_EQ(rows().size(), 2u);
    EXPECT_EQ(form().scan.chbRegKeysShow.value(), 0);
    scan();
    EXPECT_EQ(caption(), "&Entfernen");
}

TEST_F(ScanDriverTest, RemovingAllResetsThePageAndKeepsTheReport) {
    makeFaultySmallRegistry();
    scan();
    form().scan.chbRegKeysShow.setValue(1);
    scan();
    EXPECT_EQ(caption(), "&Start");
    EXPECT_EQ(form().scan.lvwRegKeys.count(), 0);
    EXPECT_FALSE(form().scan.lvwRegKeys.visible());
    EXPECT_EQ(form().scan.chbRegKeysShow.value(), 0);
    EXPECT_FALSE(form().scan.chbRegKeysShow.enabled());
    EXPECT_FALSE(form().scan.chbMarkierteKeysEntfernen.enabled());
    EXPECT_FALSE(form().scan.lblScanProzent.visible());
    EXPECT_EQ(form().scan.lblScanTxt.caption(), "Scanvorgang erfolgreich abgeschlossen.");
    EXPECT_EQ(report(), "Die erkannten Fehler wurden erfolgreich entfernt und gesichert.");
    EXPECT_EQ(panel(1), "Status");
    EXPECT_EQ(panel(2), "Version 1.0.0");
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\InprocServer32"));
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{B}"));
}

TEST_F(ScanDriverTest, RemovingMarkedRowsKeepsTheOffer) {
    makeFaultySmallRegistry();
    AutoClose = 1;
    AutoEntfernen = 0;
    // AutoClose would end the process here, were it looked at.
    form().scan.lvwRegKeys.add({"[HKEY_LOCAL_MACHINE\\Software\\Nichts]", "@", "", "-2147483646"}, 1);
    form().scan.cmdStart.setCaption("&Entfernen");
    form().scan.chbMarkierteKeysEntfernen.setValue(1);
    form().scan.cmdStart_Click();
    EXPECT_EQ(caption(), "&Entfernen");
    EXPECT_EQ(form().scan.lvwRegKeys.count(), 1);
    EXPECT_EQ(report(), "Die markierten Fehler wurden erfolgreich entfernt und gesichert.");
    EXPECT_EQ(form().scan.chbMarkierteKeysEntfernen.value(), 1);
}

TEST_F(ScanDriverTest, AutoEntfernenRemovesAtTheEndOfTheScan) {
    makeFaultySmallRegistry();
    switchTracingOn();
    AutoEntfernen = 1;
    scan();
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\InprocServer32"));
    EXPECT_EQ(caption(), "&Start");
    const Texts log = logLines();
    // Directly followed by the running number, which stands one behind the last of the twelve entries.
    EXPECT_EQ(
        std::count(log.begin(), log.end(), "frmMain; cmdStart_Click; AutoEntfernen wird gestartet13; 0; "),
        1);
    EXPECT_EQ(log.back(), "frmMain; ProblemeEntfernen; endet; 0; ");
}

TEST_F(ScanDriverTest, TheLogOfASmallScanReadsSo) {
    makeFaultySmallRegistry();
    static_cast<void>(form());
    switchTracingOn();
    scan();
    Texts expected{"started", "Verlauf festgelegt"};
    for (const char* n : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
        expected.push_back(std::string("Schritt ") + n + " begonnen");
        expected.push_back("einlesen beginnt");
        expected.push_back("einlesen beendet");
    }
    for (const char* text : {"alle Werte eingelesen", "12 zu prüfende Keys", "Verlauf erneut festgelegt",
                             "Key-Auswertung beginnt"})
        expected.push_back(text);
    for (std::string& text : expected) text = "frmMain; cmdStart_Click; " + text + "; 0; ";
    for (const char* line : {
             "modFiles; FileExists; c:\\fehlt\\a.dll; Falsch; 0; ",
             "modCheckKeys; CheckFile; HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}\\InprocServer32];@="
             "C:\\Fehlt\\a.dll; wird zum Entfernen vorgesehen; 0; ",
             "modCheckKeys; CheckFile; HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}];@=; wird zum "
             "Entfernen "
             "vorgesehen; 0; ",
             "frmMain; cmdStart_Click; Key-Auswertung beendet; 0; ",
             "frmMain; cmdStart_Click; 2 Fehler in 12 Keys gefunden; ; 0; ",
             "frmMain; cmdStart_Click; Bericht ausgegeben; 0; ",
             "frmMain; cmdStart_Click; endet; 0; ",
         })
        expected.push_back(line);
    EXPECT_EQ(logLines(), expected);
}

TEST_F(ScanDriverTest, WithProtokollOffAScanLogsNothing) {
    makeFaultySmallRegistry();
    scan();
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(ScanDriverTest, AnEqualSignInAKeyIsReportedAndTheScanGoesOn) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A=B}", "", "x");
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{C}");
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{D}", "", "x");
    scan();
    EXPECT_EQ(logLines(),
              (Texts{"frmMain; cmdStart_Click; ; 5; Ungültiger Prozeduraufruf oder ungültiges Argument"}));
    EXPECT_EQ(rows(), (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{C}] | @ |  | -2147483646"}));
}

TEST_F(ScanDriverTest, HostileNamesReachTheListByteForByte) {
    setString(HKEY_LOCAL_MACHINE,
              "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Gr\xF6\xDF"
              "e",
              "Pr\xFC"
              "f\"er\"",
              "\x84 \xE4\"\xFF");
    setString(HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Z",
              "UninstallString", "z");
    scan();
    EXPECT_EQ(
        rows(),
        (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Gr\xF6\xDF"
               "e] | \"Pr\xFC"
               "f\"er\"\" | \x84 \xE4\"\xFF | -2147483646"}));
}

}  // namespace
}  // namespace bromvale::testing
