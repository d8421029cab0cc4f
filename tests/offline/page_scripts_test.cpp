// Each script of tests/scripts drives bromvale-offline; what it prints is compared as a whole.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/offline/tool_run.h"

namespace bromvale::testing {
namespace {

namespace fs = std::filesystem;

const fs::path kScripts = fs::path(BROMVALE_SOURCE_DIR) / "tests" / "scripts";

std::string content(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<std::string> scriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kScripts)) {
        if (entry.path().extension() == ".script") names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class PageScript : public ToolTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(PageScript, PrintsItsTranscript) {
    const fs::path base = kScripts / GetParam();
    std::vector<std::string> arguments{"--script", base.string() + ".script"};
    if (fs::exists(base.string() + ".reg")) {
        arguments.insert(arguments.begin(), {"--registry", base.string() + ".reg"});
    }
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, content(base.string() + ".transcript"));
}

INSTANTIATE_TEST_SUITE_P(Pages, PageScript, ::testing::ValuesIn(scriptNames()),
                         [](const auto& info) { return info.param; });

}  // namespace
}  // namespace bromvale::testing
