// The starter ended behind each of its changes, and each of its changes refused: the next start mends all.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <utility>

#include "starter/start.h"
#include "tests/starter/samples.h"

namespace bromvale::starter {
namespace {

struct Case {
    const char* name;
    FakeMachine (*make)();
    bool isAdministrator;
    bool replacesInOneStep;
};

void PrintTo(const Case& each, std::ostream* out) {
    *out << each.name;
}

class Kills : public ::testing::TestWithParam<Case> {
  protected:
    static FakeMachine machine() {
        FakeMachine made = GetParam().make();
        made.isAdministrator = GetParam().isAdministrator;
        made.replacesInOneStep = GetParam().replacesInOneStep;
        return made;
    }

    // Of a whole run in which the program changes its settings.
    static int countChanges() {
        FakeMachine whole = machine();
        whole.program = changeSettings;
        EXPECT_TRUE(start(whole));
        return whole.changes;
    }

    // Ends the starter behind the change; true where the program has changed its settings before.
    static bool runAndKill(FakeMachine& machine, int change) {
        bool hasRun = false;
        machine.program = [&](FakeMachine& now) {
            changeSettings(now);
            hasRun = true;
        };
        machine.changes = 0;
        machine.killAfter = change;
        try {
            start(machine);
        } catch (const Killed&) {
        }
        machine.killAfter = 0;
        return hasRun;
    }

    // The next start, whose program changes nothing.
    static bool mend(FakeMachine& machine) {
        machine.refuse = machine.refuseFrom = 0;
        machine.program = [](FakeMachine&) {};
        return start(machine);
    }

    static std::string fileOf(const FakeMachine& machine) {
        const auto found = machine.files.find(kSettingsFile);
        return found == machine.files.end() ? "" : found->second;
    }

    const FakeMachine::Registry before = machine().registry;
    const std::string oldFile = fileOf(machine());
};

TEST_P(Kills, AStarterThatIsEndedAnywhereIsMendedByTheNextStart) {
    const int last = countChanges();
    EXPECT_GT(last, 30);
    for (int change = 1; change <= last; ++change) {
        FakeMachine now = machine();
        const bool hasRun = runAndKill(now, change);
        EXPECT_TRUE(mend(now)) << change;
        EXPECT_TRUE(before == now.registry) << change;
        EXPECT_EQ(hasRun ? kNewFile : oldFile, fileOf(now)) << change;
        EXPECT_EQ(0u, now.files.count("Einstellungen.lauf")) << change;
    }
}

TEST_P(Kills, SoIsOneThatIsEndedWhileItMends) {
    const int last = countChanges();
    // All pairs where there is time for them.
    const int step = std::getenv("BROMVALE_PROOF") != nullptr ? 1 : 31;
    for (int first = 1; first <= last; first += step) {
        FakeMachine killed = machine();
        const bool hadRun = runAndKill(killed, first);
        for (int second = 1; second <= 2 * last; ++second) {
            FakeMachine now = killed;
            const bool hasRun = runAndKill(now, second) || hadRun;
            if (now.changes < second) break;
            ASSERT_TRUE(mend(now)) << first << ' ' << second;
            ASSERT_TRUE(before == now.registry) << first << ' ' << second;
            ASSERT_EQ(hasRun ? kNewFile : oldFile, fileOf(now)) << first << ' ' << second;
        }
    }
}

TEST_P(Kills, AnotherFolderMendsTheMachineAndKeepsItsOwnSettings) {
    const std::string others = fileText("\"EMail\"=\"anderer@b.de\"\r\n");
    const int last = countChanges();
    for (int change = 1; change <= last; ++change) {
        FakeMachine now = machine();
        runAndKill(now, change);
        const FakeMachine::Files files = std::exchange(now.files, {{kSettingsFile, others}});
        EXPECT_TRUE(mend(now)) << change;
        EXPECT_TRUE(before == now.registry) << change;
        EXPECT_EQ(others, fileOf(now)) << change;
        // The first one comes back: nothing of it is broken.
        now.files = files;
        EXPECT_TRUE(mend(now)) << change;
        EXPECT_TRUE(before == now.registry) << change;
        EXPECT_TRUE(fileOf(now) == oldFile || fileOf(now) == kNewFile) << change;
    }
}

TEST_P(Kills, AChangeThatIsRefusedIsMendedByTheNextStart) {
    const int last = countChanges();
    for (int change = 1; change <= last; ++change) {
        for (const bool isFirstOfAll : {false, true}) {
            FakeMachine now = machine();
            (isFirstOfAll ? now.refuseFrom : now.refuse) = change;
            runAndKill(now, 0);
            EXPECT_TRUE(fileOf(now) == oldFile || fileOf(now) == kNewFile || !now.replacesInOneStep)
                << change;
            EXPECT_TRUE(mend(now)) << change;
            EXPECT_TRUE(before == now.registry) << change;
            EXPECT_TRUE(fileOf(now) == oldFile || fileOf(now) == kNewFile) << change;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Machines, Kills,
                         ::testing::Values(Case{"used", usedMachine, true, true},
                                           Case{"usedWithoutRights", usedMachine, false, true},
                                           Case{"new", newMachine, true, true},
                                           Case{"newWithoutRights", newMachine, false, true},
                                           Case{"usedOldSystem", usedMachine, true, false}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace bromvale::starter
