// The icon in the notification area: when it comes and goes, and which of its messages open the menu.
#include <cstdint>
#include <cstring>

#include "platform/offline/machine.h"
#include "platform/screen.h"
#include "tests/ui/main_form_fixture.h"
#include "ui/frm_popup.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class Tray : public MainFormTest {
  protected:
    Tray() { frmMain().show(); }
    // The icon reports this message of the mouse.
    static void report(int message) {
        frmMain().userMouseMove(static_cast<float>(message * twipsPerPixel()), 0);
    }
    static std::size_t menus() { return machine().events.count(EventKind::Menu); }
};

constexpr int kLeftUp = 514;
constexpr int kLeftDouble = 515;
constexpr int kRightDown = 516;
constexpr int kRightUp = 517;
constexpr int kRightDouble = 518;

TEST_F(Tray, TheReleaseOfTheRightButtonOpensTheMenuWithItsBoldEntry) {
    report(kRightUp);
    ASSERT_EQ(menus(), 1u);
    const auto menu = machine().events.of(EventKind::Menu)[0];
    EXPECT_EQ(menu.text,
              "&Zeige Programm | &Scan starten | B&ackup-Bereich | Programme &deinstallieren | Bug-&Report | "
              "&Live-Update | &Optionen | - | &Über | &Beenden");
    EXPECT_EQ(menu.caption, "&Zeige Programm");
}

TEST_F(Tray, ThePopUpWindowComesToTheFrontBeforeTheMenu) {
    EXPECT_EQ(loadedForms().size(), 1u);
    report(kRightUp);
    const auto& all = machine().events.all();
    ASSERT_GE(all.size(), 2u);
    EXPECT_EQ(all[all.size() - 2].kind, EventKind::Foreground);
    EXPECT_EQ(all.back().kind, EventKind::Menu);
    ASSERT_EQ(loadedForms().size(), 2u);
    EXPECT_EQ(loadedForms()[1], &frmPopUp());
    EXPECT_FALSE(frmPopUp().visible());
    EXPECT_EQ(frmPopUp().caption(), "Form1");
    EXPECT_EQ(frmPopUp().scaleWidth(), 1185);
    EXPECT_EQ(frmPopUp().scaleHeight(), 1155);
}

TEST_F(Tray, EveryOtherMessageDoesNothing) {
    for (const int message : {512, 513, kLeftUp, kLeftDouble, kRightDown, kRightDouble, 519, 520, 0, 1})
        report(message);
    EXPECT_EQ(menus(), 0u);
    EXPECT_EQ(machine().events.count(EventKind::Foreground), 0u);
    EXPECT_EQ(shownPages(), "Frame1 ");
    EXPECT_EQ(frmMain().windowState(), WindowState::Normal);
}

TEST_F(Tray, ThePlaceIsComparedInWholePixelsAtAnyScaling) {
    machine().screen.dpi = 144;
    EXPECT_EQ(twipsPerPixel(), 10);
    report(kRightUp);
    EXPECT_EQ(menus(), 1u);
    frmMain().userMouseMove(517.0F * 15, 0);
    frmMain().userMouseMove(5174, 0);
    EXPECT_EQ(menus(), 1u);
}

TEST_F(Tray, ThePlaceIsFoundWhereAPixelIsNoWholeNumberOfTwips) {
    for (const int dpi : {168, 216, 264}) {
        machine().screen.dpi = dpi;
        const std::size_t before = menus();
        report(kRightDown);
        EXPECT_EQ(menus(), before) << dpi;
        report(kRightUp);
        EXPECT_EQ(menus(), before + 1) << dpi;
        report(kRightDouble);
        EXPECT_EQ(menus(), before + 1) << dpi;
    }
}

TEST_F(Tray, TheMenuOpensWhateverIsBetweenTheWindowAndTheUser) {
    frmMain().setWindowState(WindowState::Minimised);
    machine().menuChoices = {"mnuPopUpShowForm"};
    report(kRightUp);
    EXPECT_EQ(menus(), 1u);
    EXPECT_EQ(frmMain().windowState(), WindowState::Minimised);
}

TEST_F(Tray, AChosenEntryRuns) {
    machine().menuChoices = {"mnuPopUpAbout"};
    report(kRightUp);
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Bromvale 1.0.0");
}

TEST_F(Tray, WithoutAChoiceInStoreTheMachinesUserIsAsked) {
    int asked = 0;
    machine().menuChoices = {"Mnu"};
    machine().askForMenuChoice = [&asked] {
        ++asked;
        return std::string("mnuPopUpAbout");
    };
    report(kRightUp);
    EXPECT_EQ(asked, 0);
    EXPECT_TRUE(boxes().empty()) << "no entry has that name";
    report(kRightUp);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(boxes().size(), 1u);
    machine().askForMenuChoice = nullptr;
    report(kRightUp);
    EXPECT_EQ(boxes().size(), 1u) << "nobody chooses";
}

TEST_F(Tray, QuitEndsTheProcessAndTheIconGoes) {
    machine().menuChoices = {"mnuPopUpQuit"};
    EXPECT_THROW(report(kRightUp), offline::ProcessEnded);
    EXPECT_EQ(machine().events.count(EventKind::TrayDelete), 1u);
    EXPECT_EQ(machine().events.count(EventKind::End), 1u);
}

TEST_F(Tray, TheRecordTellsTheSystemWhatItNeeds) {
    const NOTIFYICONDATAA record = machine().lastRequests.trayIcon;
    // The oldest form of the record, up to the tip of 64 characters.
    EXPECT_EQ(record.cbSize, sizeof(void*) == 8 ? 104u : 88u);
    EXPECT_EQ(record.hWnd, frmMain().window());
    EXPECT_EQ(
        record.uID,
        static_cast<UINT>(reinterpret_cast<std::uintptr_t>(loadResourceIcon(frmMain().iconResource(), 32))));
    EXPECT_NE(record.uID, 0u);
    EXPECT_EQ(record.uFlags, 7u);
    EXPECT_EQ(record.uCallbackMessage, 512u);
    EXPECT_EQ(frmMain().imgList.key(4), "TaskbarIcon");
    EXPECT_EQ(record.hIcon, frmMain().imgList.icon(4));
    EXPECT_NE(record.hIcon, frmMain().imgList.icon(3));
    std::string tip = "Bromvale";
    tip += '\0';
    tip.resize(64, ' ');
    EXPECT_EQ(std::string(record.szTip, 64), tip);
}

TEST_F(Tray, TheSameRecordTakesTheIconAway) {
    const NOTIFYICONDATAA added = machine().lastRequests.trayIcon;
    machine().lastRequests.trayIcon = {};
    EXPECT_THROW(frmMain().unload(), offline::ProcessEnded);
    const NOTIFYICONDATAA taken = machine().lastRequests.trayIcon;
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): Windows takes the record byte for byte
    EXPECT_EQ(std::memcmp(&added, &taken, sizeof added), 0);
}

TEST_F(Tray, TheIconIsPutBackWhenTheTaskBarStartsAnew) {
    ASSERT_EQ(machine().events.count(EventKind::TrayAdd), 1u);
    frmMain().userTaskbarCreated();
    const auto added = machine().events.of(EventKind::TrayAdd);
    ASSERT_EQ(added.size(), 2u);
    EXPECT_EQ(added[1].text, added[0].text);
    EXPECT_EQ(added[1].number, 512u);
    EXPECT_EQ(machine().events.count(EventKind::TrayDelete), 0u);
}

TEST_F(Tray, AForegroundThatIsRefusedOpensTheMenuAllTheSame) {
    machine().faults.fail("SetForegroundWindow", 1, 0);
    report(kRightUp);
    EXPECT_EQ(menus(), 1u);
}

TEST_F(Tray, TheUpdateEntryAsksTheHostAndTellsThatItDoesNotAnswer) {
    WebHost = "127.0.0.1:9";  // nobody listens there
    machine().menuChoices = {"mnuPopUpLiveUpdate"};
    answer(IDNO);
    report(kRightUp);
    EXPECT_EQ(shownPages(), "Frame1 ");
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text,
              "Es besteht ein Problem mit Ihrer Internetverbindung.\r\n\r\n"
              "Stellen Sie sicher, das eine Internetverbindung besteht.\r\n\r\n"
              "Soll erneut nach einem Update gesucht werden?");
}

}  // namespace
}  // namespace bromvale::testing
