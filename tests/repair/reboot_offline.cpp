// The restart of Windows: the right for it, and what happens without.
#include "platform/offline/machine.h"
#include "repair/reboot.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class RebootTest : public TestMachine {
  protected:
    // "kind text number answer" of the events of a restart, in their order.
    static std::vector<std::string> restart() {
        std::vector<std::string> told;
        RebootSystem();
        for (const offline::Event& event : machine().events.all())
            told.push_back((event.kind == EventKind::Privilege ? "right " : "restart ") + event.text + " " +
                           std::to_string(event.number) + " " + std::to_string(event.answer));
        return told;
    }
};

TEST_F(RebootTest, OnTheNtFamilyTheRightIsSwitchedOnFirst) {
    EXPECT_EQ(restart(), (std::vector<std::string>{"right SeShutdownPrivilege 2 0", "restart  6 0"}));
}

TEST_F(RebootTest, OnThe9xFamilyNoRightIsAskedFor) {
    machine().setOs(*offline::osByName("Windows 98"));
    machine().faults.startCounting();
    EXPECT_EQ(restart(), std::vector<std::string>{"restart  6 0"});
    EXPECT_EQ(machine().faults.calls("OpenProcessToken"), 0u);
}

TEST_F(RebootTest, WithoutTheRightNothingRestartsAndNothingIsTold) {
    machine().shutdownPrivilege = false;
    EXPECT_EQ(restart(), std::vector<std::string>{});
}

}  // namespace
}  // namespace bromvale::testing
