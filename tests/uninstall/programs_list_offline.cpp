// Failures in the midst of the reading: which of them end the list, and what is told.
#include "base/failure.h"
#include "tests/uninstall/programs_fixture.h"
#include "ui/frm_error.h"

namespace bromvale::testing {
namespace {

// A program of the user and one of the machine. The user's half is read first and takes five pumps; the sixth
// is behind it.
class ProgramsFaultTest : public ProgramsTest {
  protected:
    static constexpr int kBetweenTheHalves = 6;

    ProgramsFaultTest() {
        program(HKEY_CURRENT_USER, "Alpha", "Alpha", "c:\\alpha.exe");
        program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "c:\\beta.exe");
        registerErrorDialog();
    }
    void openWithFailure(std::int32_t number) {
        atPump(kBetweenTheHalves, [number] { raise(number); });
        openPage();
    }
};

TEST_F(ProgramsFaultTest, AnInvalidCallCostsWhatWasReadAndTheReadingGoesOn) {
    openWithFailure(5);
    EXPECT_EQ(names(), Texts{"Beta"});
    EXPECT_EQ(loadedForm("frmError"), nullptr);
}

TEST_F(ProgramsFaultTest, AnyOtherFailureEndsTheListWithTheErrorDialog) {
    openWithFailure(13);
    EXPECT_EQ(names(), Texts{});
    EXPECT_NE(loadedForm("frmError"), nullptr);
    EXPECT_EQ(form().StatusBar_.panelText(1), "Status");
    EXPECT_EQ(form().mousePointer(), MousePointer::Default);
}

}  // namespace
}  // namespace bromvale::testing
