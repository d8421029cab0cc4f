// What is found on a disk, for whom, in which view, and that looking leaves no trace.
#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;

constexpr const char* kClass =
    "HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-00000000000";
constexpr const char* kOwnClass =
    "HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-00000000000";

// A dead class has two rows, of its library and of itself.
class Expected {
  public:
    void dead(const std::string& classKey, const std::string& file, const std::string& user = "",
              const std::string& view = "") {
        row(classKey + "}\\InprocServer32", file, user, view);
        row(classKey + "}", file, user, view);
    }
    [[nodiscard]] const std::vector<std::string>& rows() const { return rows_; }

  private:
    void row(const std::string& key, const std::string& file, const std::string& user,
             const std::string& view) {
        rows_.push_back(std::to_string(rows_.size() + 1) + " missing file " + key + " -> " + file + " [" +
                        user + "] [" + view + "]");
    }
    std::vector<std::string> rows_;
};

const std::string kFirstUser = "J\xC3\xBCrgen Gro\xC3\x9F";
const std::string kSecondUser = "\xC5\x81ukasz";

class DiskScan : public RescueTest, public ::testing::WithParamInterface<Generation> {};

// "W\xE4g Ł.dll" has a letter that the program's texts can't hold, so it stays unjudged, like what lies
// elsewhere.
TEST_P(DiskScan, FindsWhatIsGoneAndNothingElse) {
    makeDisk(GetParam());
    const bool wide = GetParam() == Generation::SevenX64 || GetParam() >= Generation::Ten;
    const std::string view = wide ? "64" : "";
    const bool classes = GetParam() != Generation::Nt4;
    const std::string before = everythingOnDisk();
    Expected expected;
    if (classes) expected.dead(kOwnClass + std::string("D"), "c:\\weg\\eigen.dll", kFirstUser, view);
    expected.dead(kClass + std::string("2"), "c:\\weg\\weg.dll", "", view);
    EXPECT_EQ(expected.rows(), rowsOf({"--user", kFirstUser}));
    EXPECT_EQ(before, everythingOnDisk());
}

INSTANTIATE_TEST_SUITE_P(Of, DiskScan,
                         ::testing::Values(Generation::Nt4, Generation::W2000, Generation::Xp,
                                           Generation::Vista, Generation::Seven, Generation::SevenX64,
                                           Generation::Ten, Generation::Eleven));

class Disk : public RescueTest {};

TEST_F(Disk, BothViewsAndAllUsersStandOnceEach) {
    makeDisk(Generation::SevenX64);
    Expected expected;
    expected.dead(kOwnClass + std::string("D"), "c:\\weg\\eigen.dll", kFirstUser, "64");
    expected.dead(kClass + std::string("2"), "c:\\weg\\weg.dll", "", "64");
    expected.dead(kOwnClass + std::string("E"), "c:\\weg\\eigen.dll", kSecondUser, "64");
    expected.dead(kClass + std::string("A"), "c:\\weg\\schmal.dll", "", "32");
    EXPECT_EQ(expected.rows(), rowsOf({"--user", "all", "--view", "both"}));
}

TEST_F(Disk, WhatPointsToOtherDrivesIsCountedAndNotJudged) {
    makeDisk(Generation::Seven);
    const Outcome outcome = onDisk({"--user", "S-1-5-21-1-2-3-1001"});
    EXPECT_EQ(0, outcome.status);
    EXPECT_NE(std::string::npos, outcome.out.find("2 Eintr\xC3\xA4ge auf Laufwerken, die nicht da sind\n"))
        << outcome.out;
    EXPECT_EQ(std::string::npos, outcome.out.find("spiel.dll"));
    EXPECT_EQ(std::string::npos, outcome.out.find("netz.dll"));
    std::filesystem::create_directories(folder() / "d");
    const Outcome with = onDisk({"--user", "jgross", "--drive", "D:=" + path("d")});
    EXPECT_NE(std::string::npos, with.out.find("looked for: d:\\spiele\\spiel.dll")) << with.out << with.err;
    EXPECT_NE(std::string::npos, with.out.find("1 Eintrag auf Laufwerken, die nicht da sind\n"));
}

TEST_F(Disk, SeveralUsersMustBeChosenFrom) {
    makeDisk(Generation::Ten);
    for (const char* wrong : {"", "Niemand"}) {
        SCOPED_TRACE(wrong);
        std::vector<std::string> arguments;
        if (*wrong != '\0') arguments = {"--user", wrong};
        const Outcome outcome = onDisk(arguments);
        EXPECT_EQ(2, outcome.status);
        EXPECT_EQ("", outcome.out);
        EXPECT_NE(std::string::npos, outcome.err.find("\xC5\x81ukasz  S-1-5-21-1-2-3-1002")) << outcome.err;
    }
}

TEST_F(Disk, FaultsAreAnExitStatusWhereThatIsAsked) {
    makeDisk(Generation::Xp);
    EXPECT_EQ(3, onDisk({"--user", "all", "--check"}).status);
    EXPECT_EQ(0, onDisk({"--user", "all"}).status);
}

TEST_F(Disk, IsNotThere) {
    std::filesystem::create_directories(disk());
    const Outcome outcome = onDisk({});
    EXPECT_EQ(2, outcome.status);
    EXPECT_NE("", outcome.err);
}

// The user's own settings would make the program remove and close by itself.
TEST_F(Disk, SettingsOfTheDiskPlayNoPart) {
    offline::DiskPlan plan;
    plan.generation = Generation::Seven;
    plan.software = [](offline::MadeHive& software) {
        offline::MadeKey& clsid = offline::keyAt(software.root, u"Classes\\CLSID");
        addClass(clsid, u"{00000000-0000-0000-0000-000000000001}", u"C:\\bootmgr");
        addClass(clsid, u"{00000000-0000-0000-0000-000000000002}", u"C:\\Weg\\weg.dll");
        addClass(clsid, u"{00000000-0000-0000-0000-000000000003}", u"C:\\bootmgr");
    };
    plan.user = [](offline::MadeHive& user, std::size_t) {
        offline::keyAt(user.root, u"Software\\Bromvale").values = {
            offline::textValue(u"1stRun", u"1"), offline::textValue(u"AutoScan", u"1"),
            offline::textValue(u"AutoEntfernen", u"1"), offline::textValue(u"AutoClose", u"1")};
    };
    offline::makeDisk(disk(), plan);
    offline::writeFile(disk() / "bootmgr", "x");
    const std::string before = everythingOnDisk();
    EXPECT_EQ(2u, rowsOf({"--user", "all"}).size());
    EXPECT_EQ(before, everythingOnDisk());
}

// The program's own variables.
TEST_F(Disk, VariablesLeadToTheFoldersOfTheView) {
    static_cast<void>(makeDiskWith([](offline::MadeHive& software) {
        addProgram(software, u"0", u"C:\\bootmgr");
        addProgram(software, u"1", u"%SystemRoot%\\weg.exe");
        addProgram(software, u"2", u"%ProgrammFiles%\\weg.exe");
        addProgram(software, u"z", u"C:\\bootmgr");
        keyAt(software.root, u"Wow6432Node\\Microsoft\\Windows\\CurrentVersion")
            .values.push_back(offline::textValue(u"ProgramFilesDir", u"C:\\Program Files (x86)"));
    }));
    for (const auto& [view, programs] :
         {std::pair("64", "Program Files"), std::pair("32", "Program Files (x86)")}) {
        const std::string paths =
            " missing file HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
        const std::string end = "\\\\weg.exe [] [" + std::string(view) + "]";
        EXPECT_EQ((std::vector<std::string>{"1" + paths + "1 -> C:\\Windows" + end,
                                            "2" + paths + "2 -> C:\\" + programs + end}),
                  rowsOf({"--user", "all", "--view", view}));
    }
}

// Where programs write in another code page, a name that it has is judged.
TEST_F(Disk, TheCodePageIsThatOfTheDisk) {
    for (const char16_t* const page : {u"1252", u"1250"}) {
        offline::DiskPlan plan;
        plan.generation = Generation::Seven;
        plan.software = [](offline::MadeHive& software) {
            addProgram(software, u"a.exe", u"C:\\bootmgr");
            addProgram(software, u"b.exe", u"C:\\\u0141\\weg.exe");
            addProgram(software, u"c.exe", u"C:\\bootmgr");
        };
        plan.system = [&](offline::MadeHive& system) {
            keyAt(system.root, u"ControlSet002\\Control\\Nls\\CodePage").values = {
                offline::textValue(u"ACP", page)};
        };
        std::filesystem::remove_all(disk());
        offline::makeDisk(disk(), plan);
        offline::writeFile(disk() / "bootmgr", "x");
        std::vector<std::string> expected;
        if (page == std::u16string_view(u"1250"))
            expected.emplace_back(
                "1 missing file HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App "
                "Paths\\b.exe -> c:\\\xC5\x82\\weg.exe [] []");
        EXPECT_EQ(expected, rowsOf({"--user", "jgross"}));
    }
}

}  // namespace
}  // namespace bromvale::testing
