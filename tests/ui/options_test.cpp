// The options page: what each control stores, what depends on what, and when the program learns of it.
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

class Options : public MainFormTest {
  protected:
    static FrmMain& form() { return frmMain(); }
    void openPage() { nav("Optionen"); }
    std::string stored(std::string_view setting) {
        return stringValue(HKEY_CURRENT_USER, kSettingsKey, setting);
    }
    void set(std::string_view setting, std::string_view text) {
        setString(HKEY_CURRENT_USER, kSettingsKey, setting, text);
    }
};

struct BoxRow {
    CheckBox OptionsPage::*box;
    const char* setting;
    std::int16_t* variable;
};

const BoxRow kBoxes[] = {
    {&OptionsPage::chbScreenSave, "ScreenSave", &ScreenSave},
    {&OptionsPage::chbAutoScan, "AutoScan", &AutoScan},
    {&OptionsPage::chbAutoEntfernen, "AutoEntfernen", &AutoEntfernen},
    {&OptionsPage::chbAutoClose, "AutoClose", &AutoClose},
    {&OptionsPage::chbRebootAfterDelete, "RebootAfterDelete", &RebootAfterDelete},
    {&OptionsPage::chbRebootAfterEntry, "RebootAfterEntry", &RebootAfterEntry},
    {&OptionsPage::chbAutoFileDelAfterReentry, "AutoFileDelAfterReentry", &AutoFileDelAfterReentry},
    {&OptionsPage::chbAutoRegFileDel, "AutoRegFileDel", &AutoRegFileDel},
    {&OptionsPage::chbProtokoll, "Protokoll", &Protokoll},
};

TEST_F(Options, EachBoxStoresItsValueAtOnceAndTheProgramLearnsOfItByTheApplyButton) {
    openPage();
    for (const BoxRow& row : kBoxes) {
        CheckBox& box = form().options.*row.box;
        EXPECT_FALSE(form().options.cmdÜbernehmen.enabled()) << row.setting;
        box.userClick();
        EXPECT_EQ(box.value(), 1) << row.setting;
        EXPECT_EQ(stored(row.setting), "1") << row.setting;
        EXPECT_EQ(*row.variable, 0) << row.setting;
        EXPECT_TRUE(form().options.cmdÜbernehmen.enabled()) << row.setting;
        form().options.cmdÜbernehmen.userClick();
        EXPECT_EQ(*row.variable, 1) << row.setting;
        EXPECT_FALSE(form().options.cmdÜbernehmen.enabled()) << row.setting;
        box.userClick();
        EXPECT_EQ(stored(row.setting), "0") << row.setting;
        EXPECT_EQ(*row.variable, 1) << row.setting;
        // What one box forces upon another is another test's; begin each row alike.
        for (const BoxRow& other : kBoxes) (form().options.*other.box).setValue(0);
        form().options.cmdÜbernehmen.userClick();
        EXPECT_EQ(*row.variable, 0) << row.setting;
    }
}

TEST_F(Options, LeavingThePageWithoutApplyingKeepsTheOldValuesInTheProgram) {
    openPage();
    form().options.chbAutoScan.userClick();
    nav("Backup");
    EXPECT_EQ(stored("AutoScan"), "1");
    EXPECT_EQ(AutoScan, 0);
    ReadAppSwitch();
    EXPECT_EQ(AutoScan, 1);
}

TEST_F(Options, OpeningThePageShowsWhatTheProgramKnowsAndStoresItAgain) {
    openPage();
    form().options.chbAutoScan.userClick();
    nav("Backup");
    openPage();
    EXPECT_EQ(form().options.chbAutoScan.value(), 0);
    EXPECT_EQ(stored("AutoScan"), "0");
}

TEST_F(Options, OpeningThePageLoadsEveryControl) {
    form();  // before AutoScan, which would have it scan and end
    for (const BoxRow& row : kBoxes) {
        if (row.variable != &Protokoll) *row.variable = 1;
    }
    AgentType = "Merlin";
    AgentLoad = 1;
    DelAfterDays = 30;
    Proxy = 1;
    ProxyAdresse = "10.0.0.1";
    ProxyPort = 8080;
    openPage();
    EXPECT_EQ(shownPages(), "Frame5 ");
    for (const BoxRow& row : kBoxes)
        EXPECT_EQ((form().options.*row.box).value(), *row.variable) << row.setting;
    EXPECT_EQ(form().options.cboAgentType.text(), "Merlin");
    EXPECT_EQ(form().options.chbLoadAgent.value(), 1);
    EXPECT_EQ(form().options.cboAutoRegFileDel.text(), "30");
    EXPECT_FALSE(form().options.rdoINet1.value());
    EXPECT_TRUE(form().options.rdoINet2.value());
    EXPECT_EQ(form().options.txtProxyAdresse.text(), "10.0.0.1");
    EXPECT_EQ(form().options.txtProxyPort.text(), "8080");
    EXPECT_EQ(form().mousePointer(), MousePointer::Default);
    EXPECT_FALSE(form().options.chbLoadAgent.enabled());
    EXPECT_FALSE(form().options.cboAgentType.enabled());
}

TEST_F(Options, TheTraysEntryLeavesTheApplyButtonAsTheLoadingLeftIt) {
    AutoScan = 1;
    form().mnuPopUpOptionen.userChoose();
    EXPECT_EQ(shownPages(), "Frame5 ");
    EXPECT_TRUE(form().options.cmdÜbernehmen.enabled());
    form().options.cmdÜbernehmen.userClick();
    form().mnuPopUpOptionen.userChoose();
    EXPECT_FALSE(form().options.cmdÜbernehmen.enabled());
}

TEST_F(Options, TheApplyButtonIsDisabledAtTheStart) {
    EXPECT_FALSE(form().options.cmdÜbernehmen.enabled());
}

// --- what depends on what ---

TEST_F(Options, ARestartAfterTheRemovalForcesClosingAndRemoval) {
    openPage();
    form().options.chbRebootAfterDelete.userClick();
    EXPECT_EQ(form().options.chbAutoClose.value(), 1);
    EXPECT_FALSE(form().options.chbAutoClose.enabled());
    EXPECT_EQ(form().options.chbAutoEntfernen.value(), 1);
    EXPECT_FALSE(form().options.chbAutoEntfernen.enabled());
    for (const char* setting : {"RebootAfterDelete", "AutoClose", "AutoEntfernen"})
        EXPECT_EQ(stored(setting), "1") << setting;
}

TEST_F(Options, WithoutTheRestartClosingIsFreeAgainAndStaysCheckedAndRemovalFollowsIt) {
    openPage();
    form().options.chbRebootAfterDelete.userClick();
    form().options.chbRebootAfterDelete.userClick();
    EXPECT_EQ(stored("RebootAfterDelete"), "0");
    EXPECT_EQ(form().options.chbAutoClose.value(), 1);
    EXPECT_TRUE(form().options.chbAutoClose.enabled());
    EXPECT_EQ(form().options.chbAutoEntfernen.value(), 1);
    EXPECT_FALSE(form().options.chbAutoEntfernen.enabled());
    form().options.chbAutoClose.userClick();
    EXPECT_EQ(form().options.chbAutoEntfernen.value(), 1);
    EXPECT_TRUE(form().options.chbAutoEntfernen.enabled());
    EXPECT_EQ(stored("AutoClose"), "0");
    EXPECT_EQ(stored("AutoEntfernen"), "1");
}

TEST_F(Options, ClosingForcesRemovalThatWasCheckedBefore) {
    openPage();
    form().options.chbAutoEntfernen.userClick();
    set("AutoEntfernen", "anders");
    form().options.chbAutoClose.userClick();
    EXPECT_EQ(stored("AutoEntfernen"), "1");
    EXPECT_FALSE(form().options.chbAutoEntfernen.enabled());
}

// Closing is loaded before removal, so that a removal that is off in the settings ends off, but disabled.
TEST_F(Options, TheLoadingMayUndoWhatClosingForced) {
    AutoClose = 1;
    AutoEntfernen = 0;
    openPage();
    EXPECT_EQ(form().options.chbAutoEntfernen.value(), 0);
    EXPECT_FALSE(form().options.chbAutoEntfernen.enabled());
    EXPECT_EQ(stored("AutoEntfernen"), "0");
}

TEST_F(Options, TheLoadingOfTheRestartForcesClosingBehindItsOwnLoading) {
    RebootAfterDelete = 1;
    openPage();
    EXPECT_EQ(form().options.chbAutoClose.value(), 1);
    EXPECT_EQ(form().options.chbAutoEntfernen.value(), 1);
    EXPECT_EQ(stored("AutoClose"), "1");
    EXPECT_EQ(AutoClose, 0);
}

TEST_F(Options, DeletionByAgeFreesTheNumberOfDaysAndItsWords) {
    openPage();
    for (Control* control : {static_cast<Control*>(&form().options.cboAutoRegFileDel),
                             static_cast<Control*>(&form().options.lblAutoRegFileDel1),
                             static_cast<Control*>(&form().options.lblAutoRegFileDel2)}) {
        EXPECT_FALSE(control->enabled()) << control->name();
        form().options.chbAutoRegFileDel.setValue(1);
        EXPECT_TRUE(control->enabled()) << control->name();
        form().options.chbAutoRegFileDel.setValue(0);
        EXPECT_FALSE(control->enabled()) << control->name();
    }
    EXPECT_EQ(form().options.cboAutoRegFileDel.text(), "50");
    EXPECT_EQ(stored("DelAfterDays"), "50");
}

TEST_F(Options, TheNumberOfDaysIsStoredWhenItIsChosenAndWhenItIsTyped) {
    openPage();
    form().options.chbAutoRegFileDel.userClick();
    form().options.cmdÜbernehmen.userClick();
    form().options.cboAutoRegFileDel.userChoose(2);
    EXPECT_EQ(stored("DelAfterDays"), "20");
    EXPECT_EQ(DelAfterDays, 50);
    EXPECT_TRUE(form().options.cmdÜbernehmen.enabled());
    form().options.cmdÜbernehmen.userClick();
    EXPECT_EQ(DelAfterDays, 20);
    form().options.cboAutoRegFileDel.userText("7");
    EXPECT_EQ(stored("DelAfterDays"), "7");
    EXPECT_TRUE(form().options.cmdÜbernehmen.enabled());
    form().options.cboAutoRegFileDel.userChoose(0);
    EXPECT_EQ(stored("DelAfterDays"), "");
    form().options.cboAutoRegFileDel.userText("viele");
    EXPECT_EQ(stored("DelAfterDays"), "viele");
    form().options.cmdÜbernehmen.userClick();
    EXPECT_EQ(DelAfterDays, 20);
}

TEST_F(Options, ADaysNumberOfZeroIsShownAsItIs) {
    DelAfterDays = 0;
    openPage();
    EXPECT_EQ(form().options.cboAutoRegFileDel.text(), "0");
}

// --- the proxy ---

TEST_F(Options, WithoutAProxyItsFieldsAreGreyedAndKeepWhatIsStored) {
    set("ProxyAdresse", "10.0.0.1");
    set("ProxyPort", "3128");
    set("Proxy", "1");
    ReadAppSwitch();
    openPage();
    form().options.rdoINet1.userClick();
    EXPECT_EQ(stored("Proxy"), "0");
    EXPECT_EQ(stored("ProxyAdresse"), "10.0.0.1");
    EXPECT_EQ(stored("ProxyPort"), "3128");
    EXPECT_FALSE(form().options.rdoINet2.value());
    for (Control* control : {static_cast<Control*>(&form().options.txtProxyAdresse),
                             static_cast<Control*>(&form().options.txtProxyPort),
                             static_cast<Control*>(&form().options.lblProxyAdresse),
                             static_cast<Control*>(&form().options.lblProxyport)}) {
        EXPECT_FALSE(control->enabled()) << control->name();
    }
    EXPECT_TRUE(form().options.cmdÜbernehmen.enabled());
    form().options.rdoINet2.userClick();
    EXPECT_EQ(stored("Proxy"), "1");
    EXPECT_TRUE(form().options.txtProxyAdresse.enabled());
    EXPECT_TRUE(form().options.txtProxyPort.enabled());
    EXPECT_TRUE(form().options.lblProxyAdresse.enabled());
    EXPECT_TRUE(form().options.lblProxyport.enabled());
    EXPECT_EQ(form().options.txtProxyPort.text(), "3128");
}

TEST_F(Options, AnotherProxySwitchThanZeroAndOneLeavesBothButtons) {
    Proxy = 2;
    openPage();
    EXPECT_FALSE(form().options.rdoINet1.value());
    EXPECT_FALSE(form().options.rdoINet2.value());
    Proxy = 0;
    openPage();
    Proxy = 2;
    openPage();
    EXPECT_TRUE(form().options.rdoINet1.value());
}

class ProxyFields : public Options {
  protected:
    ProxyFields() {
        Proxy = 1;
        openPage();
    }
    // The user has typed this into the box.
    void type(std::string_view port) { form().options.txtProxyPort.userText(port); }
};

TEST_F(ProxyFields, TheAddressIsStoredAtEachChangeAsItStands) {
    for (const char* text : {"p", "proxy.example", "", " nicht geprüft ; "}) {
        form().options.txtProxyAdresse.userText(text);
        EXPECT_EQ(stored("ProxyAdresse"), text);
    }
    EXPECT_TRUE(form().options.cmdÜbernehmen.enabled());
    EXPECT_EQ(ProxyAdresse, "0.0.0.0");
}

TEST_F(ProxyFields, APortWithALetterIsToldAndBecomes80) {
    type("3128");
    type("3128a");
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Der Proxyport besteht nur aus einer Zahl. z.B. 80");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
#ifndef _WIN32
    EXPECT_EQ(boxes()[0].style, 64u);
#endif
    EXPECT_EQ(form().options.txtProxyPort.text(), "80");
    EXPECT_EQ(stored("ProxyPort"), "80");
    EXPECT_EQ(form().focused(), &form().options.txtProxyPort);
}

TEST_F(ProxyFields, ThePort0AndAnEmptyOneBecome80WithoutAWord) {
    for (const char* text : {"0", ""}) {
        type("3128");
        type(text);
        EXPECT_EQ(form().options.txtProxyPort.text(), "80") << text;
        EXPECT_EQ(stored("ProxyPort"), "80") << text;
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ProxyFields, EveryTextThatCountsAsANumberIsStoredAsItStands) {
    for (const char* text :
         {"8080", "00", "-5", "1,5", "1e3", "99999", " 7 ", "80-", "(80)", "8e1", "80,5"}) {
        type(text);
        EXPECT_EQ(stored("ProxyPort"), text);
        EXPECT_EQ(form().options.txtProxyPort.text(), text);
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ProxyFields, APortBeyondTheProgramsNumbersIsStoredAndKeepsTheOldOneInTheProgram) {
    type("99999");
    form().options.cmdÜbernehmen.userClick();
    EXPECT_EQ(ProxyPort, 80);
    EXPECT_EQ(stored("ProxyPort"), "99999");
    type("1,5");
    form().options.cmdÜbernehmen.userClick();
    EXPECT_EQ(ProxyPort, 2);
}

TEST_F(ProxyFields, APortOfZeroInTheProgramIsShownAs80) {
    ProxyPort = 0;
    openPage();
    EXPECT_EQ(form().options.txtProxyPort.text(), "80");
    EXPECT_EQ(stored("ProxyPort"), "80");
    EXPECT_TRUE(boxes().empty());
}

}  // namespace
}  // namespace bromvale::testing
