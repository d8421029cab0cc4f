// The start that opens the main window: help, log, the window's place.
#include <algorithm>

#include "core/text_file.h"
#include "platform/events.h"
#include "platform/exact/text.h"
#include "platform/offline/files/api.h"
#include "tests/startup/startup_fixture.h"
#include "ui/frm_login.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

using StartUp = StartUpTest;

TEST_F(StartUp, TheFirstRunShowsTheHelpOnce) {
    set("1stRun", "1");
    Main();
    const auto help = machine().events.of(offline::EventKind::Help);
    ASSERT_EQ(help.size(), 1u);
    EXPECT_EQ(help[0].text, "Bromvale.chm");
    EXPECT_EQ(help[0].number, 0u);
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "1stRun"), "0");
    EXPECT_EQ(FirstRun, 1);
    EXPECT_EQ(formNames(), Lines{"frmMain"});
}

TEST_F(StartUp, ALaterRunShowsNoHelp) {
    set("1stRun", "0");
    Main();
    EXPECT_EQ(machine().events.count(offline::EventKind::Help), 0u);
}

TEST_F(StartUp, AFreshUserGetsTheHelp) {
    Main();
    EXPECT_EQ(machine().events.count(offline::EventKind::Help), 1u);
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "1stRun"), "0");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(StartUp, TracingIsToldBeforeTheWindowOpens) {
    set("Protokoll", "1");
    Main();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Die Protokollierung ist aktiviert.");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(boxes()[0].style, 64u);
}

TEST_F(StartUp, TheNormalRoadTracesItsWay) {
    set("Protokoll", "1");
    set("1stRun", "1");
    Main();
    Lines lines = logLines();
    const auto checked = std::find(lines.begin(), lines.end(), "modLibRegister; CheckLibs; endet; 0; ");
    ASSERT_NE(checked, lines.end());
    lines.erase(lines.begin(), checked + 1);
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("frmMain; Form_Resize"); });
    EXPECT_EQ(lines, (Lines{
                         "modMain; CheckFirstRun; started; 0; ",
                         "frmMain; Form_Load; started; 0; ",
                         "frmMain; Form_Load; endet; 0; ",
                         "modKeyFunc; SetKeyValue; -2147483647; Software\\Bromvale; 1; 1stRun; 0; 0; ",
                         "modMain; CheckFirstRun; endet; 0; ",
                     }));
}

TEST_F(StartUp, ScreenSaveRestoresAndSavesThePlaceWithCrossedNames) {
    set("ScreenSave", "1");
    set("ScreenX", "300");
    set("ScreenY", "600");
    set("Form_Height", "9000");
    set("Form_Width", "12000");
    Main();
    EXPECT_EQ(frmMain().top(), 300);
    EXPECT_EQ(frmMain().left(), 600);
    EXPECT_EQ(frmMain().height(), 9000);
    EXPECT_EQ(frmMain().width(), 12000);
    frmMain().setTop(150);
    frmMain().setLeft(450);
    frmMain().setHeight(8100);
    frmMain().setWidth(11100);
    machine().terminateReturns = true;
    frmMain().unload();
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "ScreenX"), "150");
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "ScreenY"), "450");
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "Form_Height"), "8100");
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "Form_Width"), "11100");
    EXPECT_EQ(machine().events.count(offline::EventKind::End), 1u);
}

TEST_F(StartUp, WithoutScreenSaveNothingIsRestoredAndNothingSaved) {
    set("ScreenSave", "0");
    set("ScreenX", "300");
    set("ScreenY", "600");
    set("Form_Height", "9000");
    set("Form_Width", "12000");
    Main();
    EXPECT_NE(frmMain().top(), 300);
    EXPECT_NE(frmMain().left(), 600);
    EXPECT_NE(frmMain().height(), 9000);
    EXPECT_NE(frmMain().width(), 12000);
    frmMain().setTop(150);
    machine().terminateReturns = true;
    frmMain().unload();
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "ScreenX"), "300");
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "Form_Width"), "12000");
}

TEST_F(StartUp, AStoredWidthOfTheWholeScreenOpensTheWindowMaximised) {
    set("ScreenSave", "1");
    set("Form_Width", "15360");  // 1024 pixels
    set("Form_Height", "9000");
    Main();
    EXPECT_EQ(frmMain().windowState(), WindowState::Maximised);
}

}  // namespace
}  // namespace bromvale
