// What the tool says of hives that are not whole, word for word.
#include <algorithm>

#include "tests/hives/made_log.h"
#include "tests/rescue/rescue_test.h"

namespace bromvale::testing {
namespace {

using offline::keyAt;
using offline::MadeHive;
using offline::MadeKey;

class HivesTold : public RescueTest {
  protected:
    static std::string hiveWith(int keys) {
        MadeHive made;
        for (int i = 0; i < keys; ++i)
            keyAt(made.root, u"k" + std::u16string(1, static_cast<char16_t>(u'a' + i)));
        return offline::bytesOf(made);
    }
    static std::string dirty(int keys, std::uint32_t number) {
        std::string bytes = hiveWith(keys);
        offline::setSequence(bytes, number + 1, number);
        return bytes;
    }
    // Of the file "hive".
    std::string saidOf(std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"--hive", "HKEY_LOCAL_MACHINE\\Software=" + path("hive"), "--drive",
                                   "C:=" + folder().string()});
        const Outcome outcome = run(more);
        EXPECT_EQ(0, outcome.status);
        return outcome.err;
    }
};

TEST_F(HivesTold, ADirtyHiveIsReadWithItsLogs) {
    file("hive", dirty(2, 5));
    const std::string none = path("hive") +
                             ": dirty, and none of its logs can be used: what Windows wrote last is missing "
                             "here. It is read as it is and can't be written; there is no log";
    EXPECT_EQ(said({none}), saidOf());
    file("hive.LOG1", offline::newLog(hiveWith(2), 6, {{6, hiveWith(2), hiveWith(3)}}));
    EXPECT_EQ(said({path("hive") + ": dirty, 1 entry of LOG1 (6 to 6), 3 keys before and 4 after"}),
              saidOf());
    file("hive.LOG1",
         offline::newLog(hiveWith(2), 6, {{6, hiveWith(2), hiveWith(3)}, {7, hiveWith(3), hiveWith(5)}}));
    EXPECT_EQ(said({path("hive") + ": dirty, 2 entries of LOG1 (6 to 7), 3 keys before and 6 after"}),
              saidOf());
    EXPECT_EQ(said({none + "; " + path("nicht da.LOG2") + ": No such file or directory"}),
              saidOf({"--log", path("nicht da.LOG2")}))
        << "the given ones alone";
}

TEST_F(HivesTold, WhatIsDamagedIsToldUpToAHundredTimes) {
    for (const int count : {1, 100, 101}) {
        MadeHive made;
        MadeKey& clsid = keyAt(made.root, u"Classes\\CLSID");
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(1000 + i);
            keyAt(clsid, std::u16string(number.begin(), number.end()))
                .values.push_back(offline::textValue(u"", u"x"));
        }
        std::string bytes = offline::bytesOf(made);
        const std::size_t first = bytes.find("vk");
        for (std::size_t at = 0; (at = bytes.find("vk", at)) != std::string::npos; ++at) bytes[at] = 'x';
        file("hive", bytes);
        const std::vector<std::string> lines = linesOf(saidOf());
        ASSERT_EQ(count == 101 ? 102u : static_cast<std::size_t>(count) + 1, lines.size());
        EXPECT_EQ("bromvale-offline: " + path("hive") + ": clean", lines[0]);
        const std::string key = "bromvale-offline: damaged: HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\";
        const std::string why = ": an offset leads to no value (byte ";
        for (int i = 0; i < std::min(count, 100); ++i)
            EXPECT_TRUE(
                lines[static_cast<std::size_t>(i) + 1].starts_with(key + std::to_string(1000 + i) + why))
                << lines[static_cast<std::size_t>(i) + 1];
        EXPECT_TRUE(lines[1].ends_with(why + std::to_string(first) + ")")) << lines[1];
        if (count == 101) {
            EXPECT_EQ("bromvale-offline: 101 keys of this hive are damaged in all", lines.back());
        }
    }
}

TEST_F(HivesTold, NamesThatNobodyCanBeToldAreCounted) {
    MadeHive made;
    MadeKey& clsid = keyAt(made.root, u"Classes\\CLSID");
    MadeKey odd;
    odd.name = std::u16string(u"nul\0nul", 7);
    clsid.subKeys.push_back(odd);
    clsid.values.push_back(offline::textValue(odd.name, u"x"));
    addClass(clsid, u"{00000000-0000-0000-0000-000000000001}", u"C:\\hive");
    file("hive", offline::bytesOf(made));
    const std::string names = "2 keys or values have names that no ";
    EXPECT_EQ(said({names + "function of Windows can be told; they are left alone"}), behindHives(saidOf()));
    EXPECT_EQ(said({names + "registry file can hold; they are left out"}),
              behindHives(saidOf({"--export", path("aus.reg")})));
}

}  // namespace
}  // namespace bromvale::testing
