// What the controls are called by those who don't see them.
#include <algorithm>

#include "tests/ui/main_form_fixture.h"
#include "tests/ui/sample_form.h"
#include "ui/frm_error.h"

namespace bromvale::testing {
namespace {

std::string nameless(const Form& form) {
    std::string names;
    for (const Control* control : form.controls())
        if (control->takesFocus() && control->spokenName().empty()) names += control->name() + " ";
    return names;
}

using SpokenNames = MainFormTest;

TEST_F(SpokenNames, EveryControlThatTakesTheKeyboardHasOne) {
    EXPECT_EQ(nameless(frmMain()), "");
    frmError().load();
    EXPECT_EQ(nameless(frmError()), "");
}

TEST_F(SpokenNames, AFieldIsNamedByTheLabelBeforeIt) {
    FrmMain& form = frmMain();
    EXPECT_EQ(form.bugReport.txtAppVer.spokenName(), "Version:");
    EXPECT_EQ(form.bugReport.txtErrNr.spokenName(), "Fehlernummer:");
    EXPECT_EQ(form.bugReport.txtErrDesc.spokenName(), "Fehlertext:");
    EXPECT_EQ(form.bugReport.cboErrHow.spokenName(), "Wo trat der Fehler auf?");
    EXPECT_EQ(form.bugReport.txtErrtxt.spokenName(), "Fehlerbeschreibung:");
    EXPECT_EQ(form.bugReport.cboOS.spokenName(), "Betriebssystem:");
    EXPECT_EQ(form.bugReport.cboServicePack.spokenName(), "ServicePack:");
    EXPECT_EQ(form.bugReport.txtEMail.spokenName(), "E-Mail-Adresse:");
    EXPECT_EQ(form.options.txtProxyAdresse.spokenName(), "Adresse:");
    EXPECT_EQ(form.options.txtProxyPort.spokenName(), "Port:");
    EXPECT_EQ(form.options.cboAutoRegFileDel.spokenName(), "Dateien nach");
    EXPECT_EQ(form.options.cboAgentType.spokenName(), "Type:");
    frmError().load();
    EXPECT_EQ(frmError().txtEMail.spokenName(), "E-Mail-Adresse:");
}

TEST_F(SpokenNames, WhatHasNeitherCaptionNorLabelIsGivenOne) {
    FrmMain& form = frmMain();
    EXPECT_EQ(form.Menu.spokenName(), "Navigation");
    EXPECT_EQ(form.ProgressBar_.spokenName(), "Fortschritt");
    EXPECT_EQ(form.StatusBar_.spokenName(), "Statusleiste");
    EXPECT_EQ(form.scan.lvwRegKeys.spokenName(), "Gefundene Fehler");
    EXPECT_EQ(form.backup.lvwBackup.spokenName(), "Sicherungsdateien");
    EXPECT_EQ(form.programs.lvwDeinstall.spokenName(), "Installierte Programme");
    EXPECT_EQ(form.cleanup.lvwOrdnerList.spokenName(), "Zu leerende Ordner");
    frmError().load();
    EXPECT_EQ(frmError().txtDetails.spokenName(), "Einzelheiten");
}

TEST_F(SpokenNames, TheListOfFaultsLiesBeforeTheLabelsThatItCovers) {
    ScanPage& page = frmMain().scan;
    const auto& controls = frmMain().controls();
    const auto at = [&](const Control& control) { return std::ranges::find(controls, &control); };
    for (const Label* label :
         {&page.lblScanBericht, &page.lblScanProzent, &page.lblScanTxt, &page.lblStartText})
        EXPECT_LT(at(page.lvwRegKeys), at(*label)) << label->name();
}

TEST_F(ControlsTest, ACaptionIsSpokenWithoutTheMarkOfItsAccessKey) {
    form.first.setCaption("&Laden && sichern&");
    EXPECT_EQ(form.first.spokenName(), "Laden & sichern");
    EXPECT_EQ(form.line.spokenName(), "") << "no label is right before it";
    form.line.setSpokenName("Zeile");
    EXPECT_EQ(form.line.spokenName(), "Zeile");
}

TEST_F(ControlsTest, ALabelOfAnotherFrameNamesNoField) {
    Label there(&form, "there");
    there.setContainer(&form.back);
    there.setCaption("Dort:");
    TextBox field(&form, "field");
    field.setContainer(&form.front);
    EXPECT_EQ(field.spokenName(), "");
    field.setContainer(&form.back);
    EXPECT_EQ(field.spokenName(), "Dort:");
}

}  // namespace
}  // namespace bromvale::testing
