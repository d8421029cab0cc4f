// Files and keys that were not meant must stay as they are.
#include <sys/stat.h>

#include <cstdlib>

#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;
using offline::keyAt;
using offline::MadeHive;
using offline::MadeKey;

class WrongTarget : public RescueTest {};

TEST_F(WrongTarget, AReportGoesIntoDevicesAndThroughLinks) {
    makeDisk(Generation::Seven);
    const std::string pipe = path("pipe");
    ASSERT_EQ(0, ::mkfifo(pipe.c_str(), 0600));
    file("ziel.txt", "alt");
    std::filesystem::create_symlink("ziel.txt", folder() / "link.txt");
    ASSERT_EQ(0, std::system(("timeout 20 cat '" + pipe + "' >'" + path("aus-pipe.txt") + "' &").c_str()));
    const Outcome outcome = onDisk({"--user", "all", "--report", "text", pipe, "--report", "text",
                                    path("link.txt"), "--report", "csv", "/dev/stdout"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_TRUE(std::filesystem::is_symlink(folder() / "link.txt"));
    EXPECT_NE(std::string::npos, read("ziel.txt").find("missing file"));
    EXPECT_TRUE(outcome.out.starts_with("number,key,")) << outcome.out;
}

TEST_F(WrongTarget, AFullDeviceIsAnError) {
    makeDisk(Generation::Seven);
    EXPECT_EQ(2, onDisk({"--user", "all", "--report", "text", "/dev/full"}).status);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(WrongTarget, NoReportOrExportReplacesAHive) {
    const offline::MadeDisk made = makeDisk(Generation::Seven);
    const std::string before = everythingOnDisk();
    const std::string software = made.software.string();
    const std::string hive = "HKEY_LOCAL_MACHINE\\Software=" + software;
    EXPECT_EQ(2, onDisk({"--user", "all", "--report", "text", software}).status);
    EXPECT_EQ(2, onDisk({"--user", "jgross", "--export", made.users[1].hive.string()}).status);
    EXPECT_EQ(2, run({"--hive", hive, "--export", software}).status);
    EXPECT_TRUE(before == everythingOnDisk());
}

// A hive whose own name is a link leads to a file that nobody has looked at as a hive's place.
TEST_F(WrongTarget, HivesThatAreLinksAreReadAndNotWritten) {
    const offline::MadeDisk made = makeDisk(Generation::Seven);
    const std::filesystem::path real = disk() / "Sicherung" / "SOFTWARE";
    std::filesystem::create_directories(real.parent_path());
    std::filesystem::rename(made.software, real);
    std::filesystem::create_symlink("../../../Sicherung/SOFTWARE", made.software);
    const std::string before = everythingOnDisk();
    EXPECT_EQ(6u, rowsOf({"--user", "all"}).size());
    const Outcome outcome = onDisk({"--user", "all", "--remove", "all", "--write", "--yes", "6"});
    EXPECT_EQ(4, outcome.status) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.err.find("link")) << outcome.err;
    EXPECT_TRUE(before == everythingOnDisk());
}

TEST_F(WrongTarget, OneHiveAtTwoKeysOrTwoAtOne) {
    const offline::MadeDisk made = makeDisk(Generation::Seven);
    const std::string file = made.software.string();
    std::filesystem::create_symlink(made.software, folder() / "link");
    std::filesystem::create_hard_link(made.software, folder() / "noch einer");
    for (const std::string& second :
         {"HKEY_LOCAL_MACHINE\\Software=" + file, "HKEY_CURRENT_USER=" + file,
          "HKEY_LOCAL_MACHINE\\Neu=" + path("link"), "HKEY_LOCAL_MACHINE\\Neu=" + path("noch einer"),
          "hkey_local_machine\\SOFTWARE=" + made.system.string()}) {
        SCOPED_TRACE(second);
        const Outcome outcome = run({"--hive", "HKEY_LOCAL_MACHINE\\Software=" + file, "--hive", second});
        EXPECT_EQ(2, outcome.status) << outcome.err;
        EXPECT_NE("", outcome.err);
    }
}

TEST_F(WrongTarget, WhatIsNoHive) {
    file("leer", "");
    ASSERT_EQ(0, ::mkfifo(path("pipe").c_str(), 0600));
    for (const std::string& odd : {path("leer"), path("pipe"), folder().string(), std::string("/dev/zero"),
                                   std::string("/dev/null"), path("nicht da")}) {
        SCOPED_TRACE(odd);
        const Outcome outcome = run({"--hive", "HKEY_LOCAL_MACHINE\\Software=" + odd});
        EXPECT_EQ(2, outcome.status);
        EXPECT_NE(std::string::npos, outcome.err.find(odd)) << outcome.err;
        EXPECT_EQ(std::string::npos, outcome.err.find("Invalid argument")) << outcome.err;
    }
    const offline::MadeDisk made = makeDisk(Generation::Seven);
    const std::string hive = "=" + made.software.string();
    for (const std::string& key :
         {"HKEY_LOCAL_MACHINE\\" + std::string(300, 'x'), std::string("HKEY_CLASSES_ROOT")})
        EXPECT_EQ(2, run({"--hive", key + hive}).status) << key;
}

// What belongs to no view of its own is there when one of both finds it.
TEST_F(WrongTarget, AnUnreadableHiveIsNoCleanBill) {
    offline::MadeDisk made = makeDisk(Generation::Seven);
    offline::writeFile(made.users[0].classes, std::string(8192, 'x'));
    EXPECT_EQ(3, onDisk({"--user", "jgross", "--check"}).status) << "what was found is told";
    std::filesystem::remove_all(disk());
    made = makeDiskWith({}, Generation::Seven);
    EXPECT_EQ(0, onDisk({"--user", "jgross", "--check"}).status);
    offline::writeFile(made.users[0].classes, std::string(8192, 'x'));
    EXPECT_EQ(2, onDisk({"--user", "jgross", "--check"}).status);
}

TEST_F(WrongTarget, AHibernatedWindowsKeepsWhatWasBrokenOff) {
    const offline::MadeDisk made = makeDisk(Generation::Seven);
    ASSERT_EQ(0, onDisk({"--user", "all", "--remove", "all", "--write", "--yes", "6"}).status);
    const std::filesystem::path list = made.software.string() + ".bromvale-2026-11-15_07-12-09.list";
    std::string text = read(std::filesystem::relative(list, folder()).string());
    const std::size_t at = text.find("state: done");
    ASSERT_NE(std::string::npos, at) << text;
    offline::writeFile(list, text.replace(at, 11, "state: ready"));
    // A mark that is known, and one that nobody knows.
    for (const char* const mark : {"hibr", "wake"}) {
        offline::writeFile(disk() / "hiberfil.sys", mark + std::string(8192, '\0'));
        const std::string before = everythingOnDisk();
        const Outcome outcome = onDisk({"--user", "all", "--remove", "all", "--write", "--yes", "6"});
        EXPECT_EQ(4, outcome.status) << outcome.err;
        EXPECT_TRUE(before == everythingOnDisk()) << outcome.err;
    }
    const Outcome sure =
        onDisk({"--user", "all", "--remove", "all", "--write", "--yes", "6", "--not-hibernated"});
    EXPECT_EQ(0, sure.status) << sure.err;
}

TEST_F(WrongTarget, FilesOfRowsWithOddLines) {
    makeDiskWith([](MadeHive& software) {
        addProgram(software, u"a.exe", u"C:\\bootmgr");
        addProgram(software, u"weg", u"C:\\weg.exe");
        addProgram(software, u"weg ", u"C:\\weg2.exe");
        addProgram(software, u"z.exe", u"C:\\bootmgr");
    });
    const std::string key =
        "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\weg";
    file("zeilen.txt", key + " \r\n");
    const Outcome outcome = onDisk({"--user", "all", "--remove", path("zeilen.txt")});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.out.find("\\weg \n")) << outcome.out;
    EXPECT_EQ(std::string::npos, outcome.out.find("\\weg\n")) << outcome.out;
    EXPECT_EQ(2, onDisk({"--user", "all", "--remove", folder().string()}).status);
    EXPECT_EQ(2, onDisk({"--user", "all", "--remove", ","}).status);
    file("leer.txt", "# nichts\n");
    EXPECT_EQ(0, onDisk({"--user", "all", "--remove", path("leer.txt")}).status);
}

TEST_F(WrongTarget, NamesOfTheDiskSendNothingToTheTerminal) {
    offline::DiskPlan plan;
    plan.generation = Generation::Seven;
    plan.software = [](MadeHive& software) {
        addProgram(software, u"a.exe", u"C:\\bootmgr");
        addProgram(software, u"w\x1B[31m\u009B31m\u202Eg.exe", u"C:\\weg.exe");
        addProgram(software, u"z.exe", u"C:\\bootmgr");
        MadeKey& nt = keyAt(software.root, u"Microsoft\\Windows NT\\CurrentVersion");
        std::erase_if(nt.values, [](const auto& value) { return value.name == u"ProductName"; });
        nt.values.push_back(offline::textValue(u"ProductName", u"Win\x1B]0;x\x07 dows"));
        MadeKey& list = keyAt(nt, u"ProfileList\\S-1-5-21-9\x1B[2J");
        list.values.push_back(offline::textValue(u"ProfileImagePath", u"C:\\Users\\Eva\x1B[2J"));
    };
    offline::makeDisk(disk(), plan);
    offline::writeFile(disk() / "bootmgr", "x");
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {}, {"--user", "all"}, {"--user", "all", "--remove", "all"}, {"--user", "x"}}) {
        const Outcome outcome = onDisk(arguments);
        const std::string all = outcome.out + outcome.err;
        EXPECT_EQ(std::string::npos, all.find('\x1B')) << all;
        EXPECT_EQ(std::string::npos, all.find('\x07')) << all;
        EXPECT_EQ(std::string::npos, all.find("\xC2\x9B")) << all;
        EXPECT_EQ(std::string::npos, all.find("\xE2\x80\xAE")) << all;
    }
}

TEST_F(WrongTarget, NothingThatWasAskedIsPassedOver) {
    makeDisk(Generation::Seven);
    const std::string out = path("out");
    for (const auto& arguments :
         std::vector<std::vector<std::string>>{{"--user", "jgross", "--export", out, "--remove", "all"},
                                               {"--user", "jgross", "--export", out, "--report", "json", out},
                                               {"--user", "jgross", "--export", out, "--check"},
                                               {"--undo", "list", "--report", "json", out},
                                               {"--undo", "list", "--export", out},
                                               {"--undo", "list", "--check"}}) {
        EXPECT_EQ(2, onDisk(arguments).status) << arguments[2] << " " << arguments.back();
        EXPECT_FALSE(std::filesystem::exists(out));
    }
    EXPECT_EQ(0, onDisk({"--user", "all", "--remove", "1", "--report", "json", out}).status);
    EXPECT_TRUE(std::filesystem::exists(out)) << "the report of which rows are removed";
}

// A report of exported registries looks as well and writes nothing.
TEST_F(WrongTarget, ReportsOfExportedRegistriesLeaveFoldersAlone) {
    std::filesystem::create_directories(disk() / "Programme");
    const std::string before = everythingOnDisk();
    const std::string reg = registry("a.reg", "[HKEY_CURRENT_USER\\Software\\X]\n\"a\"=\"b\"\n");
    EXPECT_EQ(0,
              run({"--registry", reg, "--drive", "C:=" + disk().string(), "--report", "text", "-"}).status);
    EXPECT_TRUE(before == everythingOnDisk());
}

}  // namespace
}  // namespace bromvale::testing
