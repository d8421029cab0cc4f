// Somebody else changes the hive while it is being cleaned.
#include <filesystem>
#include <set>

#include "tests/hives/cleaning/disk.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;
using State = CleaningResult::State;
using CleaningAttackTest = CleaningTest;

// Whatever is done to the files at whatever call: no other file is touched, and what the other one wrote is
// never thrown away.
TEST_F(CleaningAttackTest, SomebodyElseAtWorkInBetween) {
    TroubledFiles counting;
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    ASSERT_EQ(State::Done, cleanHives(counting, cleaningOf({order}), {}).state);
    const std::string grown = before.at("SOFTWARE") + std::string(4096, 'g');
    std::set<std::string> problems;
    for (const bool link : {false, true}) {
        for (int at = 0; at < counting.calls; at += 3) {
            SCOPED_TRACE(at);
            restore(before);
            write("elsewhere", "another file");
            TroubledFiles files;
            files.troubleAt = at;
            bool wasOld = false;
            files.meanwhile = [&] {
                wasOld = bytesOf(order.path) == before.at("SOFTWARE");
                fs::remove(order.path);
                if (link) {
                    fs::create_symlink("elsewhere", order.path);
                } else {
                    write("SOFTWARE", grown);
                }
            };
            const CleaningResult result = cleanHives(files, cleaningOf({order}), {});
            problems.insert(result.problem);
            EXPECT_EQ("another file", bytesOf(path("elsewhere")));
            // Between the last look at it and its replacement nobody can be told from nobody.
            const bool overtaken = result.state == State::Done && wasOld;
            EXPECT_TRUE(overtaken || bytesOf(order.path) == (link ? "another file" : grown));
            if (result.state == State::Unfinished) goOn();
            EXPECT_EQ("another file", bytesOf(path("elsewhere")));
            if (HasFailure()) return;
        }
    }
    EXPECT_TRUE(problems.contains("The hive \"" + order.path +
                                  "\" or one of its logs was changed by another program meanwhile"));
}

}  // namespace
}  // namespace bromvale::offline
