// Keys taken out of a disk's hives by the tool, and put back.
#include <algorithm>
#include <fstream>

#include "platform/offline/locale/code_page.h"
#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::Generation;

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> besides(const std::filesystem::path& file) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(file.parent_path())) {
        const std::string name = entry.path().filename().string();
        if (name.find(".bromvale-") != std::string::npos) names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

class CleaningTool : public RescueTest {
  protected:
    std::vector<std::string> all(std::vector<std::string> more = {}) {
        std::vector<std::string> arguments{"--user", "all", "--view", "both", "--remove", "all"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }
};

TEST_F(CleaningTool, ShowsWhatGoesAndWritesNothingWithoutWrite) {
    makeDisk(Generation::SevenX64);
    const std::string before = everythingOnDisk();
    const Outcome outcome = onDisk(all());
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_NE(std::string::npos,
              outcome.out.find(
                  "HKEY_USERS\\S-1-5-21-1-2-3-1002_Classes\\CLSID\\{00000000-0000-0000-0000-00000000000E}"))
        << outcome.out;
    EXPECT_NE(std::string::npos, outcome.err.find("nothing was written")) << outcome.err;
    EXPECT_EQ(before, everythingOnDisk());
}

TEST_F(CleaningTool, AWrongNumberStops) {
    makeDisk(Generation::Seven);
    const std::string before = everythingOnDisk();
    EXPECT_EQ(4, onDisk(all({"--write", "--yes", "77"})).status);
    EXPECT_EQ(4, onDisk(all({"--write"})).status);
    EXPECT_EQ(before, everythingOnDisk());
}

TEST_F(CleaningTool, TakesOutProvesAndPutsBack) {
    const offline::MadeDisk made = makeDisk(Generation::SevenX64);
    const std::string software = contentOf(made.software);
    const std::string classes = contentOf(made.users[1].classes);
    const Outcome dry = onDisk(all());
    const std::size_t at = dry.err.rfind(" keys go");
    ASSERT_NE(std::string::npos, at) << dry.err;
    const std::string number =
        dry.err.substr(dry.err.rfind(' ', at - 1) + 1, at - dry.err.rfind(' ', at - 1) - 1);

    const Outcome done = onDisk(all({"--write", "--yes", number}));
    EXPECT_EQ(0, done.status) << done.err;
    EXPECT_NE(software, contentOf(made.software));
    EXPECT_NE(classes, contentOf(made.users[1].classes));
    EXPECT_EQ((std::vector<std::string>{}), rowsOf({"--user", "all", "--view", "both"}));
    EXPECT_EQ(3u, besides(made.software).size());
    const std::string copy = contentOf(made.software.string() + ".bromvale-2026-11-15_07-12-09.reg");
    EXPECT_NE(std::string::npos, copy.find(offline::utf16BytesFromAnsi(
                                     "[HKEY_LOCAL_MACHINE\\Software\\Classes\\Wow6432Node\\CLSID\\")));

    const Outcome list = onDisk({"--undo", "list"});
    EXPECT_EQ(0, list.status) << list.err;
    EXPECT_TRUE(list.out.starts_with("2026-11-15_07-12-09\n")) << list.out;
    const Outcome back = onDisk({"--undo", "2026-11-15_07-12-09"});
    EXPECT_EQ(0, back.status) << back.err;
    EXPECT_NE(std::string::npos, back.err.find("byte for byte")) << back.err;
    EXPECT_TRUE(software == contentOf(made.software));
    EXPECT_TRUE(classes == contentOf(made.users[1].classes));
    EXPECT_EQ(4, onDisk({"--undo", "2026-11-15_07-12-09"}).status);
}

TEST_F(CleaningTool, SingleRowsGo) {
    makeDisk(Generation::Seven);
    const auto rows = rowsOf({"--user", "all"});
    ASSERT_EQ(6u, rows.size());
    file("zeilen.txt",
         "# nur die erste "
         "Klasse\n1\nHKEY_CURRENT_USER\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-00000000000D}\n");
    const Outcome outcome =
        onDisk({"--user", "all", "--remove", path("zeilen.txt"), "--write", "--yes", "2"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    const auto left = rowsOf({"--user", "all"});
    EXPECT_EQ(4u, left.size());
    EXPECT_EQ(2, onDisk({"--user", "all", "--remove", "7"}).status);
    EXPECT_EQ(2, onDisk({"--user", "all", "--remove", "x"}).status);
}

// What has the machine's registry in memory would write its own over everything.
TEST_F(CleaningTool, AHibernatedWindowsIsRefused) {
    makeDisk(Generation::Ten);
    offline::writeFile(disk() / "hiberfil.sys", "hibr" + std::string(8192, '\0'));
    const std::string before = everythingOnDisk();
    const Outcome outcome = onDisk(all({"--write", "--yes", "4"}));
    EXPECT_EQ(4, outcome.status);
    EXPECT_NE(std::string::npos, outcome.err.find("hibernat")) << outcome.err;
    EXPECT_EQ(before, everythingOnDisk());
}

}  // namespace
}  // namespace bromvale::testing
