#include "scanner/sort.h"

#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

using SortTest = ScanTest;

TEST_F(SortTest, TextsAreSortedInPlaceByCharacterCodeAndGivenBack) {
    Texts list{"b", "a", "B", "", "ä", "A", "aa"};
    EXPECT_EQ(&Sortiere(list), &list);
    EXPECT_EQ(list, (Texts{"", "A", "B", "a", "aa", "b", "ä"}));
}

TEST_F(SortTest, OneElementTakesNoPassASortedListOneAReversedOneAllButOne) {
    Texts one{"x"};
    EXPECT_EQ(sortByExchange(one), 0);
    Texts sorted{"a", "b", "c", "d", "e"};
    EXPECT_EQ(sortByExchange(sorted), 1);
    Texts withEqualOnes{"a", "b", "b", "c"};
    EXPECT_EQ(sortByExchange(withEqualOnes), 1);
    Texts reversed{"e", "d", "c", "b", "a"};
    EXPECT_EQ(sortByExchange(reversed), 4);
    EXPECT_EQ(reversed, sorted);
}

TEST_F(SortTest, AListWithoutElementsIsReportedAndStays) {
    Texts none;
    Sortiere(none);
    EXPECT_EQ(none, Texts{});
    EXPECT_EQ(logLines(), (Texts{"modSort; Sortiere; ; 9; Index außerhalb des gültigen Bereichs"}));
}

}  // namespace
}  // namespace bromvale::testing
