// Cleanings of hives of real machines, and how long a big one takes.
#include <chrono>
#include <cstdio>

#include "platform/offline/hives/cleaning/undo.h"
#include "platform/offline/hives/deletion.h"
#include "platform/offline/hives/hive.h"
#include "tests/hives/cleaning/disk.h"

namespace bromvale::offline {
namespace {

class RealRegistryCleaning : public CleaningTest {
  protected:
    // Hive and logs as they are, and up to so many keys below the paths; all over the hive without paths.
    HiveToClean placeReal(const std::string& name, const std::vector<std::pair<LogName, std::string>>& logs,
                          const std::vector<std::u16string>& paths, std::size_t most) const {
        HiveToClean order = place("SOFTWARE", realHive(name), logs, {});
        HiveImage image{std::string_view(bytesOf(order.path))};
        std::vector<HiveLog> given;
        for (const auto& [log, bytes] : logs) given.push_back({log, HiveBytes(bytes)});
        static_cast<void>(replayLogs(image, given));
        const Hive hive(image.bytes());
        std::vector<Cell> parents;
        for (const std::u16string& path : paths) parents.push_back(hive.find(hive.root(), path));
        if (paths.empty()) parents = hive.subKeys(hive.root());
        for (const Cell parent : parents) {
            for (const Cell key : hive.subKeys(hive.key(parent))) {
                if (order.keys.size() == most || whyUndeletable(image.bytes(), key)) continue;
                order.keys.push_back({key, "Key " + std::to_string(order.keys.size())});
            }
        }
        return order;
    }
    void expectCleanedAndUndone(const HiveToClean& order) const {
        const FolderState before = state();
        HostFiles files;
        const auto start = std::chrono::steady_clock::now();
        const CleaningResult result = cleanHives(files, cleaningOf({order}), {});
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        ASSERT_EQ("", describe(result));
        std::printf("%zu keys announced, %zu gone, %.2f s\n", order.keys.size(), result.hives[0].removed,
                    time.count());
        expectCleaned(order, before);
        const CleaningResult undone = undoCleaning(files, folders(), kStamp, {}, {}, false, {});
        EXPECT_EQ("", describe(undone));
        for (const auto& [name, bytes] : before) EXPECT_TRUE(bytes == bytesOf(path(name))) << name;
    }
};

TEST_F(RealRegistryCleaning, TwelveThousandKeysOfABigHive) {
    const HiveToClean order =
        placeReal("win7-x86-SOFTWARE", {}, {u"Classes\\CLSID", u"Classes\\Interface"}, 12'000);
    ASSERT_EQ(12'000u, order.keys.size());
    expectCleanedAndUndone(order);
}

TEST_F(RealRegistryCleaning, EveryHiveThatIsWhole) {
    for (const char* const name : {"hivex-special", "made-li-SOFTWARE", "made-size0", "win7-SYSTEM",
                                   "win81-UsrClass.dat", "winxp-NTUSER.DAT"}) {
        SCOPED_TRACE(name);
        const HiveToClean order = placeReal(name, {}, {}, 500);
        if (!order.keys.empty()) expectCleanedAndUndone(order);
        restore({});
    }
}

TEST_F(RealRegistryCleaning, DirtyHivesWithTheirLogs) {
    expectCleanedAndUndone(placeReal("win10-dirty-NTUSER.DAT",
                                     {{LogName::Log1, realHive("win10-dirty-NTUSER.DAT.LOG1")},
                                      {LogName::Log2, realHive("win10-dirty-NTUSER.DAT.LOG2")}},
                                     {}, 300));
    restore({});
    expectCleanedAndUndone(
        placeReal("made-old-NTUSER.DAT", {{LogName::Log1, realHive("made-old-NTUSER.DAT.LOG1")}}, {}, 300));
}

}  // namespace
}  // namespace bromvale::offline
