// Items of the navigation bar that lead out of the program.
#include "base/failure.h"
#include "core/command_start.h"
#include "platform/offline/machine.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

using Navigation = MainFormTest;
using offline::EventKind;
using offline::machine;

TEST_F(Navigation, TheRegistryEditorIsStartedFromTheWindowsFolder) {
    machine().drives.writeFile("C:\\WINDOWS\\Regedit.exe", "MZ");
    nav("Registriereditor starten");
    ASSERT_EQ(machine().events.count(EventKind::Run), 1u);
    EXPECT_EQ(machine().events.of(EventKind::Run)[0].text, "C:\\WINDOWS\\Regedit.exe");
    EXPECT_EQ(machine().lastRequests.startState, 1) << "in a window of its usual size, in front";
}

TEST_F(Navigation, AMissingRegistryEditorIsPassedOver) {
    WinDir = "C:\\ANDERS\\";
    nav("Registriereditor starten");
    EXPECT_EQ(machine().events.count(EventKind::Run), 0u);
    EXPECT_TRUE(boxes().empty());
    EXPECT_TRUE(logLines().empty());
}

TEST_F(Navigation, StartingAMissingProgramIsFailure53) {
    try {
        startCommand("C:\\ANDERS\\Regedit.exe", 1);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 53);
        EXPECT_EQ(failure.description, "Datei nicht gefunden");
    }
}

TEST_F(Navigation, StartingAProgramWithoutAccessIsFailure70) {
    machine().faults.fail("CreateProcessA", 1, ERROR_ACCESS_DENIED);
    try {
        startCommand("C:\\WINDOWS\\Regedit.exe", 1);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 70);
    }
}

TEST_F(Navigation, HelpOpensTheHelpFileWithoutAPath) {
    nav("Hilfe");
    nav("Hilfe");
    const auto shown = machine().events.of(EventKind::Help);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].text, "Bromvale.chm");
    EXPECT_EQ(shown[0].number, 0u);
}

TEST_F(Navigation, QuitEndsTheProcess) {
    frmMain().show();
    EXPECT_THROW(frmMain().Menu.userItemClick("Beenden"), offline::ProcessEnded);
    EXPECT_EQ(machine().events.count(EventKind::End), 1u);
}

}  // namespace
}  // namespace bromvale::testing
