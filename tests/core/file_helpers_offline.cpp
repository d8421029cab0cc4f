#include "core/file_helpers.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

using FileHelpersHandles = testing::TestMachine;

TEST_F(FileHelpersHandles, FileExistsLeavesItsSearchOpenAndFindFileApiClosesIts) {
    writeWholeFile(folder() + "a.dll", "x");
    const std::size_t open = offline::machine().searches.count();
    EXPECT_TRUE(FileExists(folder() + "a.dll"));
    EXPECT_FALSE(FileExists(folder() + "b.dll"));
    EXPECT_EQ(offline::machine().searches.count() - open, 1u);
    std::string path = folder();
    std::vector<FoundEntry> entries;
    FindFileAPI(path, "*", entries);
    EXPECT_EQ(offline::machine().searches.count() - open, 1u);
}

}  // namespace
}  // namespace bromvale
