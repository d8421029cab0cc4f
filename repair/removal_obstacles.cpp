#include "repair/removal_obstacles.h"

#include <string>

#include "core/registry_layer.h"
#include "core/routine.h"
#include "core/state.h"
#include "platform/rights.h"

namespace bromvale {
namespace {

constexpr Tags kTags{"frmMain", "ProblemeEntfernen"};

std::string folderIsClosed() {
    return "In den Ordner des Programms kann nicht geschrieben werden:\r\n" + AppPath +
           "\r\n\r\nOhne Sicherungsdatei wird nichts entfernt.";
}

constexpr const char* kRightsAreMissing =
    "Ihnen fehlen die Rechte, Schlüssel unterhalb von HKEY_LOCAL_MACHINE zu entfernen.";
constexpr const char* kWhatStays =
    "\r\nDiese Schlüssel bleiben erhalten, und der nächste Scan zeigt sie wieder. Entfernt wird, was "
    "unterhalb "
    "von HKEY_CURRENT_USER liegt.\r\n\r\nUm alles zu entfernen, starten Sie das Programm als Administrator.";

void tell(WishedBy who, const std::string& text, std::string_view record) {
    if (who == WishedBy::User) {
        MsgBox(text, kStyleInformation);
    } else {
        ErrHandle(kTags.modul, kTags.funktion, record, 0, "", kStyleExclamation, kHide);
    }
}

// A row that can't be read is the removal's to report.
bool isOfTheMachine(const ScanPage& page, int number) {
    bool is = false;
    quietly([&] { is = page.rowAt(number).hive == kHiveLocalMachine; });
    return is;
}

bool aimsAtTheMachine(const ScanPage& page) {
    const bool selectedOnly = page.chbMarkierteKeysEntfernen.value() == 1;
    for (int row = 1; row <= page.lvwRegKeys.count(); ++row) {
        if (selectedOnly && !page.lvwRegKeys.item(row).selected()) continue;
        if (isOfTheMachine(page, row)) return true;
    }
    return false;
}

}  // namespace

bool mayRemoveFaults(const ScanPage& page, WishedBy who) {
    if (!takesFiles(AppPath)) {
        tell(who, folderIsClosed(), "Es wurde nichts entfernt: kein Schreibzugriff auf " + AppPath);
        return false;
    }
    if (lacksMachineRights() && aimsAtTheMachine(page))
        tell(who, std::string(kRightsAreMissing) + kWhatStays, kRightsAreMissing);
    return true;
}

bool mayRemoveKey(std::int32_t hive) {
    if (!takesFiles(AppPath)) {
        tell(WishedBy::User, folderIsClosed(), {});
        return false;
    }
    if (hive != kHiveLocalMachine || !lacksMachineRights()) return true;
    tell(WishedBy::User, std::string(kRightsAreMissing) + "\r\nDer Eintrag bleibt erhalten.", {});
    return false;
}

}  // namespace bromvale
