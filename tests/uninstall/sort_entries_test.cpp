// Long lists are sorted by another method than short ones; the order is the same.
#include <algorithm>
#include <random>

#include "scanner/sort.h"
#include "tests/uninstall/programs_fixture.h"

namespace bromvale::testing {
namespace {

// Lines as the page collects them: the user's before the machine's, several values a key, some twice.
Texts entries(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    Texts lines;
    while (lines.size() < count) {
        const char* hive = lines.size() < count / 3 ? "-2147483647" : "-2147483646";
        std::string key;
        key.append(hive).append("[").append(kUninstall).append("\\");
        key.push_back("aAzZ\xE4\xC4{_"[random() % 8]);
        key.append(std::to_string(random() % 500)).append("]");
        for (const char* name : {"DisplayName=x", "UninstallString=y", "@="}) {
            lines.push_back(key);
            lines.back().append(name);
        }
    }
    lines.resize(count);
    return lines;
}

TEST(SortEntries, LongAndShortListsAreSortedAlike) {
    for (const std::size_t count : {1u, 2u, 255u, 256u, 257u, 258u, 1000u}) {
        for (unsigned seed = 1; seed <= 3; ++seed) {
            Texts sorted = entries(count, seed);
            Texts exchanged = sorted;
            Sortiere(sorted);
            static_cast<void>(sortByExchange(exchanged));
            EXPECT_EQ(sorted, exchanged) << count << " " << seed;
            EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end()));
        }
    }
}

TEST(SortEntries, CodesAboveSevenBitsComeLast) {
    Texts list{"\xE4", "z"};
    list.resize(300, std::string("m"));
    Sortiere(list);
    EXPECT_EQ(list[298], "z");
    EXPECT_EQ(list[299], "\xE4");
}

}  // namespace
}  // namespace bromvale::testing
