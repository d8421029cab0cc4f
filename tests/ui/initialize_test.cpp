// The main window as Form_Initialize leaves it.
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

using Initialize = MainFormTest;

std::vector<std::string> entries(const ComboBox& box) {
    std::vector<std::string> all;
    for (int i = 0; i < box.count(); ++i) all.push_back(box.item(i));
    return all;
}

TEST_F(Initialize, TheWindowIsLoadedButNotShown) {
    EXPECT_TRUE(frmMain().loaded());
    EXPECT_FALSE(frmMain().visible());
    EXPECT_EQ(&frmMain(), &frmMain());
}

TEST_F(Initialize, CaptionAndPanelsTellTitleAndVersion) {
    EXPECT_EQ(frmMain().caption(), "Bromvale");
    EXPECT_EQ(frmMain().StatusBar_.panelText(1), "Status");
    EXPECT_EQ(frmMain().StatusBar_.panelText(2), "Version 1.0.0");
    EXPECT_EQ(frmMain().StatusBar_.panelText(3), "");
    EXPECT_EQ(frmMain().StatusBar_.panels()[1].width, 2300);
    EXPECT_EQ(frmMain().StatusBar_.panels()[2].width, 2721);
    EXPECT_EQ(frmMain().ProgressBar_.minimum(), 0);
    EXPECT_EQ(frmMain().ProgressBar_.maximum(), 100);
    EXPECT_EQ(frmMain().bugReport.txtAppVer.text(), "1.0.0");
    EXPECT_EQ(frmMain().bugReport.txtErrNr.text(), "");
    EXPECT_EQ(frmMain().bugReport.txtErrDesc.text(), "");
}

TEST_F(Initialize, TheNavigationBarHasThreeBarsWithElevenItems) {
    std::vector<std::string> lines;
    for (const ListBar::Bar& bar : frmMain().Menu.bars()) {
        for (const ListBar::Item& item : bar.items) {
            lines.push_back(bar.caption + " | " + item.key + " | " + item.caption + " | " +
                            std::to_string(item.iconIndex) + " | " + item.toolTip);
        }
    }
    EXPECT_EQ(
        lines,
        (std::vector<std::string>{
            ("Allgemein | 1Item1 | Registry Scan starten | 0 | Startet die Suche nach ungültigen oder "
             "fehlerhaften Einträgen der Windows Registrierungs-Datenbank."),
            ("Allgemein | 1Item2 | Backup | 1 | Hier können Sie die entfernten Einträgen wieder in die "
             "Windows Registrierungs-Datenbank eintragen."),
            "Allgemein | 1Item3 | Registriereditor starten | 2 | Das Programm Regedit starten.",
            "Allgemein | 1Item4 | Hilfe | 3 | Hilfe zum Handling und zu den Begriffen des Programms.",
            "Allgemein | 1Item5 | Beenden | 4 | Hier können Sie das Programm beenden.",
            ("Features | 2Item6 | Programme deinstallieren | 5 | Hier können Sie bequem wie in der "
             "Systemsteuerung Programme deinstallieren."),
            "Features | 2Item7 | Festplatte aufräumen | 6 | Hier können die Festplatte aufräumen.",
            ("Features | 2Item8 | Optionen | 7 | Legen Sie hier ihre persönlichen Programm-Einstellungen "
             "fest."),
            "Service | 3Item9 | Bug-Report | 8 | Sie haben ein Programmfehler? Dann melden Sie ihn mir.",
            ("Service | 3Item10 | Live-Update | 9 | Nach einer neuen Version des Programms im Internet "
             "suchen."),
            "Service | 3Item11 | Homepage | 10 | Homepage aufrufen."}));
    EXPECT_EQ(frmMain().Menu.imageList(), &frmMain().imgMenu1);
    EXPECT_EQ(frmMain().Menu.openBar(), 0);
}

TEST_F(Initialize, TheStartTextHasThreeParagraphs) {
    EXPECT_EQ(
        frmMain().scan.lblStartText.caption(),
        "Bromvale ist ein Programm, das nach Fehlern in der Windows Registrierungs-Datenbank sucht und diese "
        "behebt.\r\n\r\n"
        "Sollten Fehler in der Windows Registrierungs-Datenbank gefunden werden, können diese von Ihnen "
        "entfernt "
        "werden. Die entfernten Registryeinträge werden anschließend in Form einer Datei im Backup-Bereich "
        "abgelegt und können bei Bedarf wieder in die Registrierungs-Datenbank eingetragen werden.\r\n\r\n"
        "Falls der Computer nach dem Neustart nicht mehr einwandfrei funktioniert, können Sie die entfernten "
        "Registrierungseinträge über die Backup-Funktion wieder in die Registrierungs-Datenbank einfügen. "
        "Als "
        "ob sie nie entfernt worden sind.");
}

TEST_F(Initialize, TheAnswersToWhereTheErrorCameUpStandInOrder) {
    EXPECT_EQ(entries(frmMain().bugReport.cboErrHow),
              (std::vector<std::string>{
                  "Bromvale installieren", "Registry-Scan", "Reg-Dateien eintragen", "Reg-Dateien bearbeiten",
                  "Reg-Dateien löschen", "Animation aktivieren", "Anmation wechseln", "Hilfe anzeigen",
                  "Bug-Report senden", "Live-Update", "Optionen", "Programme deinstallieren",
                  "Programm beenden", "Bromvale deinstallieren"}));
    EXPECT_EQ(frmMain().bugReport.cboErrHow.text(), "Bromvale installieren");
}

TEST_F(Initialize, AKnownSystemIsShownGreyedAndTheServicePackStaysEditable) {
    EXPECT_EQ(frmMain().bugReport.cboOS.text(), "Windows XP");
    EXPECT_FALSE(frmMain().bugReport.cboOS.enabled());
    EXPECT_EQ(frmMain().bugReport.cboOS.backColor(), BackColor::Greyed);
    EXPECT_EQ(frmMain().bugReport.cboOS.count(), 0);
    frmMain().bugReport.cboOS.userText("Windows 98");
    EXPECT_EQ(frmMain().bugReport.cboOS.text(), "Windows XP");

    EXPECT_EQ(entries(frmMain().bugReport.cboServicePack),
              (std::vector<std::string>{"", "SP 1", "SP 2", "SP 3", "SP 4", "SP 5", "SP 6"}));
    EXPECT_EQ(frmMain().bugReport.cboServicePack.text(), "Build 2600");
    EXPECT_TRUE(frmMain().bugReport.cboServicePack.enabled());
}

TEST_F(Initialize, AnUnknownSystemIsChosenFromAList) {
    OSName = "";
    OSBuild = "";
    EXPECT_EQ(entries(frmMain().bugReport.cboOS),
              (std::vector<std::string>{"Windows 98", "Windows 98 SE", "Windows NT4", "Windows 2000",
                                        "Windows ME", "Windows XP"}));
    EXPECT_EQ(frmMain().bugReport.cboOS.text(), "Windows 98");
    EXPECT_TRUE(frmMain().bugReport.cboOS.enabled());
    EXPECT_EQ(frmMain().bugReport.cboOS.backColor(), BackColor::Default);
    EXPECT_EQ(frmMain().bugReport.cboServicePack.text(), "");
}

TEST_F(Initialize, TheDaysListStartsAtItsEmptyEntry) {
    EXPECT_EQ(entries(frmMain().options.cboAutoRegFileDel),
              (std::vector<std::string>{"", "10", "20", "30", "50", "100"}));
    EXPECT_EQ(frmMain().options.cboAutoRegFileDel.text(), "");
}

TEST_F(Initialize, OnlyTheScanPageIsVisibleAndItsLabelsAreEmpty) {
    EXPECT_EQ(shownPages(), "Frame1 ");
    EXPECT_EQ(frmMain().scan.lblScanBericht.caption(), "");
    EXPECT_EQ(frmMain().scan.lblScanProzent.caption(), "");
    EXPECT_EQ(frmMain().scan.lblScanTxt.caption(), "");
}

TEST_F(Initialize, TheAnimationIsSwitchedOffWhateverItsSettingSays) {
    AgentLoad = 1;
    EXPECT_FALSE(frmMain().options.cboAgentType.enabled());
    EXPECT_FALSE(frmMain().options.chbLoadAgent.enabled());
    EXPECT_FALSE(frmMain().options.lblAgentType.enabled());
    EXPECT_TRUE(frmMain().options.lblNoAgents.visible());
    EXPECT_EQ(frmMain().options.lblNoAgents.caption(), "Diese Funktion steht nicht zur Verfügung.");
}

TEST_F(Initialize, WithAutoScanTheWindowIsShownAndScans) {
    AutoScan = 1;
    EXPECT_TRUE(frmMain().visible());
    EXPECT_EQ(frmMain().scan.lblScanTxt.caption(), "Scanvorgang erfolgreich abgeschlossen.");
    EXPECT_EQ(frmMain().scan.cmdStart.caption(), "&Start");
}

TEST_F(Initialize, TheTimerMovesTheBarInStepsOfFiveAndStartsOverAtItsEnd) {
    FrmMain& form = frmMain();
    form.tmrTimer.setInterval(50);
    form.tmrTimer.setEnabled(true);
    for (int tick = 1; tick <= 20; ++tick) form.tmrTimer.tick();
    EXPECT_EQ(form.ProgressBar_.value(), 100);
    form.tmrTimer.tick();
    EXPECT_EQ(form.ProgressBar_.value(), 0);
    form.tmrTimer.tick();
    EXPECT_EQ(form.ProgressBar_.value(), 5);
}

}  // namespace
}  // namespace bromvale::testing
