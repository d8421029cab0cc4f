// What the window shows while a scan runs, at each of its records in the log.
#include "tests/scanner/scan_fixture.h"
#include "tests/support/shown_offline.h"

namespace bromvale::testing {
namespace {

class ScanDisplay : public EveryPump {
  protected:
    static std::string shown() {
        const bool busy = form().mousePointer() == MousePointer::Hourglass;
        return panel(1) + " | " + panel(2) + " | " + form().scan.lblScanTxt.caption() + " | " +
               form().scan.lblScanProzent.caption() + " | " + std::to_string(form().ProgressBar_.value()) +
               " of " + std::to_string(form().ProgressBar_.maximum()) + (busy ? " | busy" : "");
    }
};

constexpr const char* kSteps[] = {
    "ActiveX / DCOM-Controls", "ActiveX / DCOM-Controls", "ActiveX Interfaces",
    "ActiveX Interfaces",      "Typen-Bibliotheken",      "Typen-Bibliotheken",
    "Installierte Programme",  "Installierte Programme",  "Installierte Programme"};

TEST_F(ScanDisplay, FollowsTheScan) {
    form();
    switchTracingOn();
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\InprocServer32", "", "C:\\Fehlt\\a.dll");
    const Texts told = shownAtRecords("cmdStart_Click", scan, shown);
    Texts expected{"started: Status | Version 1.0.0 |  |  | 0 of 100",
                   "Verlauf festgelegt: Status | Version 1.0.0 |  |  | 0 of 100 | busy"};
    std::string before = "Status | Version 1.0.0 |  |  | 0 of 100 | busy";
    int number = 0;
    for (const char* step : kSteps) {
        const std::string place = std::to_string(++number);
        expected.push_back("Schritt " + place + " begonnen: " + before);
        expected.push_back("einlesen beginnt: Schritt " + place +
                           " von 9 läuft. Bitte warten... | Version 1.0.0 | " + step +
                           " werden eingelesen... |  | 0 of 100 | busy");
        before =
            "Einen Moment bitte... | Version 1.0.0 | Registrierungsschlüssel werden verarbeitet... |  | 0 of "
            "100 | busy";
        expected.push_back("einlesen beendet: " + before);
    }
    const std::string read =
        " | 11 relevante Einträge | Registrierungsschlüssel werden verarbeitet... |  | 0 of ";
    expected.push_back("alle Werte eingelesen: Einen Moment bitte..." + read + "100 | busy");
    expected.push_back("11 zu prüfende Keys: Einen Moment bitte..." + read + "100 | busy");
    for (const char* record : {"Verlauf erneut festgelegt", "Key-Auswertung beginnt"})
        expected.push_back(record + std::string(": Gefundene Einträge werden gescannt...") + read +
                           "11 | busy");
    expected.push_back(
        "Key-Auswertung beendet: Eintrag 11 wird gescannt... | Gefundene Fehler: 0 | Registryschlüssel "
        "werden auf Fehler gescannt... | 100% fertig | 11 of 11 | busy");
    const std::string done =
        "Status | Gefundene Fehler: 0 | Scanvorgang erfolgreich abgeschlossen. | 100% fertig | 0 of 11";
    expected.push_back("0 Fehler in 11 Keys gefunden; : " + done + " | busy");
    expected.push_back("Bericht ausgegeben: " + done + " | busy");
    expected.push_back("endet: " + done);
    EXPECT_EQ(told, expected);
}

}  // namespace
}  // namespace bromvale::testing
