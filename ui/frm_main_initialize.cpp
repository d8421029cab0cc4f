#include <string_view>

#include "core/routine.h"
#include "core/settings.h"
#include "core/state.h"
#include "ui/frm_main.h"
#include "ui/navigation.h"

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
    for (Page* page : form.pages()) {
        page->frame().setTop(kPagePlace.top);
        page->frame().setLeft(kPagePlace.left);
    }
    form.scan.show();
}

// The remains of an animated helper: its settings are kept, its controls stay switched off.
void switchAgentOff(OptionsPage& page) {
    page.cboAgentType.setEnabled(false);
    page.chbLoadAgent.setEnabled(false);
    page.lblAgentType.setEnabled(false);
    page.lblNoAgents.setVisible(true);
    page.lblNoAgents.setCaption("Diese Funktion steht nicht zur Verfügung.");
}

}  // namespace

void FrmMain::Form_Initialize() {
    constexpr Routine routine{{"frmMain", "Form_Initialize"}, Report{Ending::Next, kStyleStop, kShow}};
    routine.step([&] { load(); });
    routine.step([&] { setCaption(AppTitle); });
    routine.step([&] { StatusBar_.setPanelText(2, "Version " + AppVersion); });
    routine.step([&] { Menu.setImageList(&imgMenu1); });
    routine.step([&] { fillMenu(*this); });
    routine.step([&] { scan.lblStartText.setCaption(startText()); });
    routine.step([&] { bugReport.txtAppVer.setText(AppVersion); });
    routine.step([&] { bugReport.txtErrNr.setText(""); });
    routine.step([&] { bugReport.txtErrDesc.setText(""); });
    routine.step([&] { fillErrHow(bugReport.cboErrHow); });
    routine.step([&] { fillOS(bugReport.cboOS); });
    routine.step([&] { fillServicePack(bugReport.cboServicePack); });
    routine.step([&] { fillAutoRegFileDel(options.cboAutoRegFileDel); });
    routine.step([&] { placePages(*this); });
    for (Label* label : {&scan.lblScanBericht, &scan.lblScanProzent, &scan.lblScanTxt}) label->setCaption("");
    routine.step([&] { switchAgentOff(options); });
    routine.step([&] { cleanup.Ordnerliste_laden(); });
    if (AutoScan != 1) return;
    routine.step([&] { showBehindErrorDialog(); });
    routine.step([&] { scan.cmdStart_Click(); });
}

}  // namespace bromvale
