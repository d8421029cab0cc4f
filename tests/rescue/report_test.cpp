// The forms of the report, exports, and what doesn't go together.
#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;

class ReportForms : public RescueTest {};

constexpr const char* kCheckCsv = R"(
import csv, sys
rows = list(csv.reader(open(sys.argv[1], encoding="utf-8", newline=""), strict=True))
assert rows[0] == "number,key,name,data,kind,reason,file,user,view,hive".split(","), rows[0]
assert all(len(row) == len(rows[0]) for row in rows)
print(len(rows) - 1, rows[1][3])
)";

TEST_F(ReportForms, CsvIsReadByOthers) {
    makeDisk(Generation::Seven);
    const Outcome outcome =
        onDisk({"--user", "all", "--report", "csv", path("report.csv"), "--report", "text", "-"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.out.find("missing file"));
    file("read_csv.py", kCheckCsv);
    ASSERT_EQ(0, std::system(("python3 '" + path("read_csv.py") + "' '" + path("report.csv") + "' >'" +
                              path("csv.txt") + "'")
                                 .c_str()));
    EXPECT_EQ("6 C:\\Weg\\eigen.dll\n", read("csv.txt"));
    EXPECT_NE(std::string::npos, read("report.csv").find("\r\n"));
}

TEST_F(ReportForms, OddCharactersAreEscapedAndPipesGetNoProgress) {
    offline::DiskPlan plan;
    plan.generation = Generation::Seven;
    plan.software = [](offline::MadeHive& software) {
        offline::MadeKey& clsid = offline::keyAt(software.root, u"Classes\\CLSID");
        addClass(clsid, u"{00000000-0000-0000-0000-000000000001}", u"C:\\bootmgr");
        addClass(clsid, u"{00000000-0000-0000-0000-000000000002}", u"C:\\W\"e,g\x1B[31m\\weg.dll");
        addClass(clsid, u"{00000000-0000-0000-0000-000000000003}", u"C:\\bootmgr");
    };
    offline::makeDisk(disk(), plan);
    offline::writeFile(disk() / "bootmgr", "x");
    for (const char* form : {"text", "csv", "json"}) {
        SCOPED_TRACE(form);
        const Outcome outcome = onDisk({"--user", "all", "--report", form, "-"});
        EXPECT_EQ(0, outcome.status);
        EXPECT_EQ(std::string::npos, outcome.out.find('\x1B'));
        EXPECT_NE(std::string::npos, outcome.out.find("weg.dll"));
        EXPECT_EQ(std::string::npos, outcome.err.find('\r'));
        EXPECT_EQ(std::string::npos, outcome.err.find('\x1B'));
    }
}

// A "#" for every four percent that are done, and at the end blanks in the place of all.
TEST_F(ReportForms, ATerminalSeesABar) {
    std::string keys;
    for (int i = 0; i < 3000; ++i)
        keys += "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{" + std::to_string(i) +
                "}\\InprocServer32]\n@=\"x\"\n";
    std::string seen =
        runAtTerminal({"--registry", registry("viele.reg", keys), "--report", "text", path("r.txt")}, "").err;
    const std::string cleared = "\r" + std::string(34, ' ') + "\r";
    ASSERT_TRUE(seen.ends_with(cleared)) << seen;
    seen.resize(seen.size() - cleared.size());
    ASSERT_FALSE(seen.empty());
    int before = 0;
    for (; !seen.empty(); seen.erase(0, 33)) {
        const int done = std::atoi(seen.substr(28, 4).c_str());
        EXPECT_GE(done, before);
        before = done;
        const std::string number = std::to_string(done);
        const auto parts = static_cast<std::size_t>(done / 4);
        EXPECT_EQ("\r[" + std::string(parts, '#') + std::string(25 - parts, '.') + "] " +
                      std::string(3 - number.size(), ' ') + number + "%",
                  seen.substr(0, 33));
    }
    EXPECT_GT(before, 50);
}

TEST_F(ReportForms, AFileThatCantBeWrittenIsSaid) {
    makeDisk(Generation::Seven);
    const Outcome outcome = onDisk({"--user", "all", "--report", "json", path("nicht/da.json")});
    EXPECT_EQ(2, outcome.status);
    EXPECT_NE(std::string::npos, outcome.err.find("cannot be written")) << outcome.err;
}

TEST_F(ReportForms, TheExampleMachineHasOneToo) {
    const Outcome outcome = run({"--report", "json", "-"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.out.find("\"kind\": \"dead link\""));
    EXPECT_NE(std::string::npos, outcome.out.find("\"kind\": \"empty key\""));
    EXPECT_NE(std::string::npos, outcome.out.find("\"kind\": \"stale uninstall entry\""));
}

TEST_F(ReportForms, ExportsAreRegistryFiles) {
    makeDisk(Generation::SevenX64);
    const Outcome one = onDisk(
        {"--user", "jgross", "--export", path("eins.reg"), "HKEY_LOCAL_MACHINE\\System\\CurrentControlSet"});
    EXPECT_EQ(0, one.status) << one.err;
    const std::string key = readRegistry("eins.reg");
    EXPECT_NE(
        std::string::npos,
        key.find("[HKEY_LOCAL_MACHINE\\System\\CurrentControlSet\\Control\\Session Manager\\Environment]\n"))
        << key;
    EXPECT_EQ(std::string::npos, key.find("ControlSet001"));
    const Outcome all = onDisk({"--user", "jgross", "--export", path("alles.reg")});
    EXPECT_EQ(0, all.status) << all.err;
    const std::string text = readRegistry("alles.reg");
    EXPECT_NE(std::string::npos, text.find("[HKEY_LOCAL_MACHINE\\System\\ControlSet001]\n"));
    EXPECT_NE(std::string::npos, text.find("[HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\"));
    EXPECT_EQ(std::string::npos, text.find("CurrentControlSet\\")) << "what stands elsewhere comes once";
    EXPECT_EQ(2, onDisk({"--user", "all", "--export", path("x.reg")}).status);
    EXPECT_EQ(2,
              onDisk({"--user", "jgross", "--export", path("x.reg"), "HKEY_LOCAL_MACHINE\\Nicht da"}).status);
}

TEST_F(ReportForms, WhatDoesNotGoTogetherIsSaid) {
    struct Row {
        std::vector<std::string> arguments;
        const char* error;
    };
    const Row wrong[] = {
        {{"--write"}, "--write removes what --remove names; say which rows"},
        {{"--remove", "all"}, "--remove works on raw hives; give --windows or --hive"},
        {{"--remove", "all", "--write"}, "--write works on raw hives; give --windows or --hive"},
        {{"--log", "x"}, "--log belongs behind the --hive whose log it is"},
        {{"--hive", "Software=x"},
         "'Software=x' is no hive; write HKEY_LOCAL_MACHINE\\Software=FILE, or for a user's classes "
         "HKEY_CURRENT_USER\\Software\\Classes=FILE"},
        {{"--hive", "HKEY_LOCAL_MACHINE\\Software="},
         "'HKEY_LOCAL_MACHINE\\Software=' is no hive; write HKEY_LOCAL_MACHINE\\Software=FILE, or for a "
         "user's classes HKEY_CURRENT_USER\\Software\\Classes=FILE"},
        {{"--hive"}, "--hive wants a value"},
        {{"--windows", ".", "--hive", "HKEY_LOCAL_MACHINE\\Software=x"},
         "--windows finds its hives itself; give --windows or --hive, not both"},
        {{"--report", "xml", "-"}, "unknown form of report 'xml'; there are text, csv and json"},
        {{"--report", "json"}, "--report wants two values"},
        {{"--report=json", "-"}, "unknown option '--report'"},
        {{"--check=1"}, "unknown option '--check'"},
        {{"--undo", "../x", "--windows", "."},
         "'../x' is no stamp of a cleaning; --undo list shows those there are"},
        {{"--undo", "list"}, "--undo wants to know where; give --windows or --hive"},
        {{"--undo", "list", "--windows", ".", "--remove", "1"},
         "--undo and --remove are two things; do one after the other"},
        {{"--undo", "list", "--windows", ".", "--remove", "1", "--write"},
         "--undo and --remove are two things; do one after the other"},
        {{"--undo", "list", "--windows", ".", "--check"},
         "--undo scans nothing; run --report, --check and --export by themselves"},
        {{"--undo", "list", "--windows", ".", "--export", "x"},
         "--undo scans nothing; run --report, --check and --export by themselves"},
        {{"--export", "x", "--report", "csv", "-"},
         "--export scans nothing; run --report, --check and --remove by themselves"},
        {{"--export", "x", "--windows", ".", "--remove", "1"},
         "--export scans nothing; run --report, --check and --remove by themselves"},
        {{"--view", "16"}, "unknown view '16'; there are 64, 32 and both"},
        {{"--view", "32"}, "--view belongs to --windows: it takes the folders of both views from the disk"},
        {{"--yes", "viele"}, "'viele' is no number; --yes wants how many keys go"},
        {{"--yes=7x"}, "'7x' is no number; --yes wants how many keys go"},
        {{"--check", "--script", "-"},
         "--script and --save drive the program's window; raw hives, disks and reports are looked at without "
         "it"},
        {{"--check", "--save", "x"},
         "--script and --save drive the program's window; raw hives, disks and reports are looked at without "
         "it"},
        {{"--export"}, "--export wants a value"},
        {{"--export", "x", "y"}, "unknown option 'y'"},
    };
    for (const Row& row : wrong) {
        const Outcome outcome = run(row.arguments);
        EXPECT_EQ(2, outcome.status) << row.error;
        EXPECT_EQ("", outcome.out) << row.error;
        EXPECT_EQ("bromvale-offline: " + std::string(row.error) + "\nTry --help.\n", outcome.err);
    }
}

TEST_F(ReportForms, WhatIsNotThereIsSaid) {
    const Outcome hive = run({"--hive", "HKEY_LOCAL_MACHINE\\Software=/nicht/da"});
    EXPECT_EQ(2, hive.status);
    EXPECT_EQ("", hive.out);
    EXPECT_EQ("bromvale-offline: open folder \"/nicht\": No such file or directory\n", hive.err);
    const Outcome disk = run({"--windows", "/nicht/da"});
    EXPECT_EQ(2, disk.status);
    EXPECT_EQ("", disk.out);
    EXPECT_EQ(
        "bromvale-offline: /nicht/da can't be read: No such file or directory.\nThe folders and the registry "
        "of Windows lie there.\nGive the folder where the disk is mounted.\n",
        disk.err);
}

}  // namespace
}  // namespace bromvale::testing
