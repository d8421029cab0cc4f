// What the window shows while the installed programs are read, at each record in the log.
#include "tests/support/shown_offline.h"
#include "tests/uninstall/programs_fixture.h"

namespace bromvale::testing {
namespace {

class ProgramsDisplay : public ProgramsTest {
  protected:
    static std::string shown() {
        const bool busy = form().mousePointer() == MousePointer::Hourglass;
        return form().StatusBar_.panelText(1) + " | " + std::to_string(list().count()) + " rows | " +
               std::to_string(form().ProgressBar_.value()) + (busy ? " | busy" : "");
    }
};

TEST_F(ProgramsDisplay, FollowsTheReading) {
    program(HKEY_LOCAL_MACHINE, "A", "Eins", "weg.exe");
    openPage();
    form().ProgressBar_.setValue(7);
    switchTracingOn();
    const std::string reading = ": Daten werden eingelesen... | 0 rows | 7 | busy";
    const Texts expected{
        "started: Status | 1 rows | 7",
        "Scanoptionen 1 festgelegt" + reading,
        "Lesen von 1 beendet" + reading,
        "Scanoptionen 2 festgelegt" + reading,
        "Lesen von 2 beendet" + reading,
        "4 Einträge zu installierten Programmen gefunden: Einen Moment bitte... | 0 rows | 0 | busy",
        "Einträge sortiert: Einen Moment bitte... | 0 rows | 0 | busy",
        "endet: Status | 1 rows | 0"};
    EXPECT_EQ(shownAtRecords(
                  "ShowDeinstall", [] { form().programs.cmdDeinstallRefresh_Click(); }, shown),
              expected);
}

}  // namespace
}  // namespace bromvale::testing
