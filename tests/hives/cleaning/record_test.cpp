// The list of what was done, as text.
#include "platform/offline/hives/cleaning/record.h"

#include <gtest/gtest.h>

namespace bromvale::offline {
namespace {

TEST(CleaningRecordText, ComesBackAndACutOneIsSeen) {
    CleaningRecord record;
    record.stamp = "2026-11-22_09-16-05";
    record.state = CleaningState::Ready;
    record.hive = "NTUSER\n.DAT %";
    record.part = 2;
    record.parts = 3;
    record.old = {4096, 0x0123456789ABCDEFu};
    record.fresh = {8192, 1};
    record.logs = {{"NTUSER\n.DAT %.LOG1", {512, 0xFFFFFFFFFFFFFFFFu}}};
    record.removed = 12;
    record.keys = {"HKEY_CURRENT_USER\\Software\\M\xC3\xBCller: end", "a\r\nend\n"};
    const std::string text = textOfRecord(record);
    EXPECT_EQ(
        "bromvale cleaning 1\nstamp: 2026-11-22_09-16-05\nstate: ready\nhive: NTUSER%0A.DAT %25\npart: 2 of "
        "3\n"
        "old: 4096 0123456789abcdef\nreplayed: 0 0000000000000000\nnew: 8192 0000000000000001\n"
        "present: 0 0000000000000000\nlog: 512 ffffffffffffffff NTUSER%0A.DAT %25.LOG1\nremoved: 12\n"
        "key: HKEY_CURRENT_USER\\Software\\M\xC3\xBCller: end\nkey: a%0D%0Aend%0A\nend\n",
        text);
    const std::optional<CleaningRecord> read = readRecord(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(text, textOfRecord(*read));
    for (std::size_t size = 0; size + 1 < text.size(); ++size)
        EXPECT_FALSE(readRecord(text.substr(0, size))) << size;
    for (const char* const line : {"hive: a/b\n", "hive: ..\n", "log: 1 2 ../x\n", "stamp: a/b\n",
                                   "state: x\n", "log: 1\n", "part: 1\n", "odd: 1\n", "key: %4\n"}) {
        EXPECT_FALSE(readRecord(std::string(text).insert(text.size() - 4, line))) << line;
    }
}

}  // namespace
}  // namespace bromvale::offline
