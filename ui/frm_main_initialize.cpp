#include <string_view>

#include "core/handling.h"
#include "core/settings.h"
#include "core/state.h"
#include "ui/frm_main.h"
#include "ui/layout_main.h"
#include "ui/navigation.h"
#include "ui/pages.h"

namespace bromvale {
namespace {

std::string startText() {
    constexpr std::string_view kGap = "\r\n\r\n";
    std::string text = AppTitle;
    text +=
        " ist ein Programm, das nach Fehlern in der Windows Registrierungs-Datenbank sucht und diese behebt.";
    text += kGap;
    text +=
        "Sollten Fehler in der Windows Registrierungs-Datenbank gefunden werden, können diese von Ihnen "
        "entfernt "
        "werden. Die entfernten Registryeinträge werden anschließend in Form einer Datei im Backup-Bereich "
        "abgelegt und können bei Bedarf wieder in die Registrierungs-Datenbank eingetragen werden.";
    text += kGap;
    text +=
        "Falls der Computer nach dem Neustart nicht mehr einwandfrei funktioniert, können Sie die entfernten "
        "Registrierungseinträge über die Backup-Funktion wieder in die Registrierungs-Datenbank einfügen. "
        "Als ob "
        "sie nie entfernt worden sind.";
    return text;
}

// An item's key counts the bars that exist when it is added: "2Item6" is the sixth item, in the second bar.
void fillMenu(FrmMain& form) {
    int number = 0;
    int bars = 0;
    std::string_view openBar;
    for (const NavigationItem& item : navigationItems()) {
        ++number;
        if (openBar != item.bar) bars = form.Menu.addBar(item.bar);
        openBar = item.bar;
        form.Menu.addItem({std::to_string(bars) + "Item" + std::to_string(number), form.imgMenu1.key(number),
                           number - 1, item.toolTip});
    }
}

void fillErrHow(ComboBox& box) {
    const std::string answers[] = {
        AppTitle + " installieren",
        "Registry-Scan",
        "Reg-Dateien eintragen",
        "Reg-Dateien bearbeiten",
        "Reg-Dateien löschen",
        "Animation aktivieren",
        "Anmation wechseln",
        "Hilfe anzeigen",
        "Bug-Report senden",
        "Live-Update",
        "Optionen",
        "Programme deinstallieren",
        "Programm beenden",
        AppTitle + " deinstallieren",
    };
    int index = 0;
    for (const std::string& answer : answers) box.addItem(answer, index++);
    box.setText(box.item(0));
}

void fillOS(ComboBox& box) {
    if (!OSName.empty()) {
        box.setText(OSName);
        box.setEnabled(false);
        box.setBackColor(BackColor::Greyed);
        return;
    }
    for (const char* name :
         {"Windows 98", "Windows 98 SE", "Windows NT4", "Windows 2000", "Windows ME", "Windows XP"}) {
        box.addItem(name);
    }
    box.setText(box.item(0));
}

void fillServicePack(ComboBox& box) {
    for (const char* name : {"", "SP 1", "SP 2", "SP 3", "SP 4", "SP 5", "SP 6"}) box.addItem(name);
    box.setText(OSBuild.empty() ? box.item(0) : "Build " + OSBuild);
}

void fillAutoRegFileDel(ComboBox& box) {
    for (const char* days : {"", "10", "20", "30", "50", "100"}) box.addItem(days);
    box.setText(box.item(0));
}

void placePages(FrmMain& form) {
    for (Frame* page : pages(form)) {
        page->setTop(kPagePlace.top);
        page->setLeft(kPagePlace.left);
        page->setVisible(page == &form.Frame1);
    }
}

// The remains of an animated helper: its settings are kept, its controls stay switched off.
void switchAgentOff(FrmMain& form) {
    form.cboAgentType.setEnabled(false);
    form.chbLoadAgent.setEnabled(false);
    form.lblAgentType.setEnabled(false);
    form.lblNoAgents.setVisible(true);
    form.lblNoAgents.setCaption("Diese Funktion steht nicht zur Verfügung.");
}

}  // namespace

void FrmMain::Form_Initialize() {
    const ReportAnd onFailure{Ending::Next, {"frmMain", "Form_Initialize"}, kStyleStop, kShow};
    const auto run = [&](auto&& statement) { attempt(onFailure, statement); };
    run([&] { load(); });
    run([&] { setCaption(AppTitle); });
    run([&] { StatusBar_.setPanelText(2, "Version " + AppVersion); });
    run([&] { Menu.setImageList(&imgMenu1); });
    run([&] { fillMenu(*this); });
    run([&] { lblStartText.setCaption(startText()); });
    run([&] { txtAppVer.setText(AppVersion); });
    run([&] { txtErrNr.setText(""); });
    run([&] { txtErrDesc.setText(""); });
    run([&] { fillErrHow(cboErrHow); });
    run([&] { fillOS(cboOS); });
    run([&] { fillServicePack(cboServicePack); });
    run([&] { fillAutoRegFileDel(cboAutoRegFileDel); });
    run([&] { placePages(*this); });
    for (Label* label : {&lblScanBericht, &lblScanProzent, &lblScanTxt}) label->setCaption("");
    run([&] { switchAgentOff(*this); });
    run([&] { Ordnerliste_laden(); });
    if (AutoScan != 1) return;
    run([&] { showBehindErrorDialog(); });
    run([&] { cmdStart_Click(); });
}

}  // namespace bromvale
