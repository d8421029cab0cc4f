// Windows 95, 98 and ME: read, and cleaned by way of files for their own registry editor.
#include <fstream>

#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;

class OldWindows : public RescueTest, public ::testing::WithParamInterface<Generation> {
  protected:
    // Of a machine with two programs that are there, and between them one of this name that isn't.
    [[nodiscard]] Outcome removedBeside(const std::string& name) {
        offline::DiskPlan plan;
        plan.generation = GetParam();
        plan.machine = [&](offline::MadeCregKey& machine) {
            const std::string paths = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
            machine.at(paths + "a").values.push_back({"", 1, "C:\\da.exe"});
            machine.at(paths + name).values.push_back({"", 1, "C:\\weg.exe"});
            machine.at(paths + "c").values.push_back({"", 1, "C:\\da.exe"});
        };
        offline::makeDisk(disk(), plan);
        offline::writeFile(disk() / "da.exe", "x");
        const auto here = std::filesystem::current_path();
        std::filesystem::current_path(folder());
        Outcome outcome = onDisk({"--user", "all", "--remove", "all"});
        std::filesystem::current_path(here);
        return outcome;
    }
};

TEST_P(OldWindows, IsReadAndCleanedByItsOwnEditor) {
    offline::DiskPlan plan;
    plan.generation = GetParam();
    plan.machine = [](offline::MadeCregKey& machine) {
        for (const auto& [name, path] :
             {std::pair("ab.exe", "C:\\da.exe"), std::pair("weg.exe", "C:\\Weg\\weg.exe"),
              std::pair("zu.exe", "C:\\da.exe")}) {
            machine.at(std::string("Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\") + name)
                .values.push_back({"", 1, path});
        }
    };
    offline::makeDisk(disk(), plan);
    offline::writeFile(disk() / "da.exe", "x");
    const std::string before = everythingOnDisk();
    const auto rows = rowsOf({"--user", "all"});
    ASSERT_EQ(1u, rows.size());
    EXPECT_NE(std::string::npos, rows[0].find("App Paths\\weg.exe -> c:\\weg\\weg.exe")) << rows[0];
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(folder());
    const Outcome outcome = onDisk({"--user", "all", "--remove", "all"});
    std::filesystem::current_path(here);
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_EQ(
        "REGEDIT4\r\n\r\n[-HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App "
        "Paths\\weg.exe]\r\n\r\n",
        read("Bromvale-2026-11-15_07-12-09-entfernen.reg"));
    EXPECT_NE(std::string::npos,
              read("Bromvale-2026-11-15_07-12-09-zurueck.reg").find("@=\"C:\\\\Weg\\\\weg.exe\""));
    EXPECT_TRUE(outcome.err.ends_with(
        "/user.dat: 3 keys, read only\n" +
        said({"1 keys: Bromvale-2026-11-15_07-12-09-entfernen.reg removes them when the machine's registry "
              "editor is told to enter it, Bromvale-2026-11-15_07-12-09-zurueck.reg brings them back"})))
        << outcome.err;
    EXPECT_EQ(before, everythingOnDisk());
}

// The scan makes no row of it.
TEST_P(OldWindows, NoNameBecomesALineOfTheFile) {
    const Outcome outcome = removedBeside("b]\r\n[-HKEY_LOCAL_MACHINE");
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_TRUE(outcome.err.ends_with("user.dat: 3 keys, read only\n")) << outcome.err;
    for (const char* what : {"entfernen", "zurueck"})
        EXPECT_EQ("<missing>", read(std::string("Bromvale-2026-11-15_07-12-09-") + what + ".reg"));
}

TEST_P(OldWindows, ANameOfSeveralLinesIsRefused) {
    const Outcome outcome = removedBeside("b\r\n[-HKEY_LOCAL_MACHINE");
    EXPECT_EQ(2, outcome.status);
    EXPECT_TRUE(outcome.err.ends_with(
        "App Paths\\b\\x0D\n[-HKEY_LOCAL_MACHINE: no registry file can tell such a name; leave it out\n"))
        << outcome.err;
    EXPECT_EQ("<missing>", read("Bromvale-2026-11-15_07-12-09-entfernen.reg"));
    EXPECT_EQ("<missing>", read("Bromvale-2026-11-15_07-12-09-zurueck.reg"));
}

// The registry editor enters a file for the user who is logged on.
TEST_P(OldWindows, KeysOfSeveralUsersGoOneUserAfterTheOther) {
    offline::DiskPlan plan;
    plan.generation = GetParam();
    offline::MadeDisk made = offline::makeDisk(disk(), plan);
    offline::MadeCregKey users;
    for (const auto& [name, path] : {std::pair("{00000000-0000-0000-0000-000000000001}", "C:\\da.exe"),
                                     std::pair("{00000000-0000-0000-0000-000000000002}", "C:\\Weg\\weg.exe"),
                                     std::pair("{00000000-0000-0000-0000-000000000003}", "C:\\da.exe")}) {
        users.at(std::string("Software\\Classes\\CLSID\\") + name + "\\LocalServer32")
            .values.push_back({"", 1, path});
    }
    for (const auto& user : made.users) offline::writeFile(user.hive, offline::cregBytes(users));
    offline::writeFile(disk() / "da.exe", "x");
    EXPECT_EQ(4u, rowsOf({"--user", "all"}).size());
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(folder());
    const Outcome both = onDisk({"--user", "all", "--remove", "all"});
    const Outcome one = onDisk({"--user", "Anna", "--remove", "all"});
    std::filesystem::current_path(here);
    EXPECT_EQ(2, both.status) << both.err;
    EXPECT_TRUE(
        both.err.ends_with(said({"the keys are of several users, and a registry file changes those of the "
                                 "user who enters it; take them out for one after the other with --user"})))
        << both.err;
    EXPECT_EQ(0, one.status) << one.err;
}

INSTANTIATE_TEST_SUITE_P(Of, OldWindows, ::testing::Values(Generation::W98, Generation::Me));

}  // namespace
}  // namespace bromvale::testing
