// The navigation bar's items and the pages that they show.
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

constexpr const char* kRunKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

using Navigation = MainFormTest;

TEST_F(Navigation, EachPageItemShowsItsPageAlone) {
    nav("Backup");
    EXPECT_EQ(shownPages(), "Frame2 ");
    nav("Programme deinstallieren");
    EXPECT_EQ(shownPages(), "Frame4 ");
    nav("Festplatte aufräumen");
    EXPECT_EQ(shownPages(), "Frame7 ");
    nav("Optionen");
    EXPECT_EQ(shownPages(), "Frame5 ");
    nav("Bug-Report");
    EXPECT_EQ(shownPages(), "Frame3 ");
    nav("Registry Scan starten");
    EXPECT_EQ(shownPages(), "Frame1 ");
}

TEST_F(Navigation, GoingToTheScanPageStartsNoScan) {
    nav("Registry Scan starten");
    EXPECT_EQ(frmMain().scan.lblScanTxt.caption(), "");
    EXPECT_EQ(frmMain().mousePointer(), MousePointer::Default);
}

TEST_F(Navigation, GoingToTheScanPageDuringAScanShowsTheHourglass) {
    FrmMain& form = frmMain();
    form.scan.cmdStart.setEnabled(false);
    nav("Backup");
    EXPECT_EQ(form.mousePointer(), MousePointer::Default);
    nav("Registry Scan starten");
    EXPECT_EQ(shownPages(), "Frame1 ");
    EXPECT_EQ(form.mousePointer(), MousePointer::Hourglass);
    EXPECT_EQ(form.scan.lblScanTxt.caption(), "");
}

TEST_F(Navigation, EveryChangeToAnotherPageClearsTheHourglass) {
    for (const char* item :
         {"Backup", "Programme deinstallieren", "Festplatte aufräumen", "Optionen", "Bug-Report"}) {
        frmMain().setMousePointer(MousePointer::Hourglass);
        nav(item);
        EXPECT_EQ(frmMain().mousePointer(), MousePointer::Default) << item;
    }
}

TEST_F(Navigation, SwitchingPagesDuringAScanWorksInsideIt) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{1}", "", "eins");
    bool seen = false;
    atPump(2, [&] {
        seen = true;
        EXPECT_FALSE(frmMain().scan.cmdStart.enabled());
        nav("Backup");
        EXPECT_EQ(shownPages(), "Frame2 ");
        EXPECT_EQ(frmMain().mousePointer(), MousePointer::Default);
        nav("Registry Scan starten");
        EXPECT_EQ(frmMain().mousePointer(), MousePointer::Hourglass);
    });
    frmMain().scan.cmdStart.userClick();
    EXPECT_TRUE(seen);
    EXPECT_TRUE(frmMain().scan.cmdStart.enabled());
    EXPECT_EQ(frmMain().mousePointer(), MousePointer::Default);
}

TEST_F(Navigation, TheCleanupPageLeavesItsBoxAloneWithoutARunValue) {
    makeKey(HKEY_LOCAL_MACHINE, kRunKey);
    frmMain().cleanup.chbTempFilesDel.setValue(1);
    nav("Festplatte aufräumen");
    EXPECT_EQ(frmMain().cleanup.chbTempFilesDel.value(), 1);
    frmMain().cleanup.chbTempFilesDel.setValue(0);
    nav("Festplatte aufräumen");
    EXPECT_EQ(frmMain().cleanup.chbTempFilesDel.value(), 0);
}

TEST_F(Navigation, TheCleanupPageChecksItsBoxForARunValue) {
    setString(HKEY_LOCAL_MACHINE, kRunKey, "Bromvale", "C:\\Programme\\Bromvale\\Bromvale.exe -d");
    nav("Festplatte aufräumen");
    EXPECT_EQ(frmMain().cleanup.chbTempFilesDel.value(), 1);
}

TEST_F(Navigation, TheCleanupPageChecksDeletionForGoodByItsSettingAndNeverClearsIt) {
    nav("Festplatte aufräumen");
    EXPECT_EQ(frmMain().cleanup.chbDelFilePermanent.value(), 0);
    DelFilePermanent = 1;
    nav("Festplatte aufräumen");
    EXPECT_EQ(frmMain().cleanup.chbDelFilePermanent.value(), 1);
    DelFilePermanent = 0;
    nav("Festplatte aufräumen");
    EXPECT_EQ(frmMain().cleanup.chbDelFilePermanent.value(), 1);
}

TEST_F(Navigation, TheOptionsItemLeavesTheApplyButtonDisabled) {
    frmMain().options.cmdÜbernehmen.setEnabled(true);
    nav("Optionen");
    EXPECT_FALSE(frmMain().options.cmdÜbernehmen.enabled());
}

TEST_F(Navigation, TheBugReportPageTakesTheAddressAndGivesTheErrorNumberTheFocus) {
    EMail = "a@b.de";
    frmMain().bugReport.txtErrDesc.setText("bleibt");
    nav("Bug-Report");
    EXPECT_EQ(frmMain().bugReport.txtEMail.text(), "a@b.de");
    EXPECT_EQ(frmMain().bugReport.txtErrDesc.text(), "bleibt");
    EXPECT_EQ(frmMain().focused(), &frmMain().bugReport.txtErrNr);
}

TEST_F(Navigation, WithoutTheInternetComponentTheBugReportItemOnlyTellsSo) {
    InternetMissing = true;
    nav("Bug-Report");
    EXPECT_EQ(shownPages(), "Frame1 ");
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
#ifndef _WIN32
    EXPECT_EQ(boxes()[0].style, 64u);
#endif
    EXPECT_EQ(boxes()[0].text,
              "Eine Funktion des Microsoft Internet Explorer arbeitet nicht korrekt.\r"
              "Installieren Sie diesen neu, um den Bug-Report nutzen zu können.");
}

TEST_F(Navigation, ACaptionThatIsNoPicturesKeyDoesNothing) {
    frmMain().Menu_ItemClick({"1Item2", "backup", 1, ""});
    frmMain().Menu_ItemClick({"1Item2", "", 1, ""});
    EXPECT_EQ(shownPages(), "Frame1 ");
}

TEST_F(Navigation, TheCaptionDecidesAndNotTheKey) {
    frmMain().Menu_ItemClick({"3Item11", "Backup", 10, ""});
    EXPECT_EQ(shownPages(), "Frame2 ");
}

TEST_F(Navigation, TheStartButtonAnswersReturnOnItsPageOnly) {
    nav("Backup");
    frmMain().backup.lvwBackup.setFocus();
    EXPECT_FALSE(frmMain().userKey(13, false, false));
    EXPECT_FALSE(frmMain().userKey(27, false, false));
    EXPECT_EQ(frmMain().scan.lblScanTxt.caption(), "");
    EXPECT_EQ(frmMain().scan.cmdStart.caption(), "&Start");
}

}  // namespace
}  // namespace bromvale::testing
