// The report list: order, sorting, selection, removal.
#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "tests/ui/sample_form.h"

namespace bromvale::testing {
namespace {

class ListViewTest : public ControlsTest {
  protected:
    void SetUp() override {
        ControlsTest::SetUp();
        form.list.setMultiSelect(true);
    }
    void fill(std::initializer_list<std::string_view> names) {
        for (const std::string_view name : names) form.list.add(name, 1);
    }
    [[nodiscard]] std::string order() const {
        std::string all;
        for (int row = 1; row <= form.list.count(); ++row) all += form.list.item(row).text() + " ";
        return all;
    }
    [[nodiscard]] std::string selected() const {
        std::string all;
        for (int row = 1; row <= form.list.count(); ++row) {
            if (form.list.item(row).selected()) all += form.list.item(row).text() + " ";
        }
        return all;
    }
};

TEST_F(ListViewTest, RowsStandInTheOrderOfInsertionUntilSortingIsAskedFor) {
    fill({"b", "c", "a"});
    EXPECT_FALSE(form.list.sorted());
    EXPECT_EQ(order(), "b c a ");
}

TEST_F(ListViewTest, AssigningTheSortKeySortsByThatColumnWithoutCase) {
    form.list.add({"eins", "Zebra"}, 1);
    form.list.add({"zwei", "apfel"}, 1);
    form.list.add({"drei", "Birne"}, 1);
    form.list.setSortKey(1);
    EXPECT_EQ(order(), "zwei drei eins ");
}

TEST_F(ListViewTest, UmlautsSortWithoutCaseToo) {
    fill({"Ä2", "ä1", "Ä3"});
    form.list.setSortKey(0);
    EXPECT_EQ(order(), "ä1 Ä2 Ä3 ");
}

TEST_F(ListViewTest, EqualRowsKeepTheirOrderInBothDirections) {
    form.list.add({"eins", "x"}, 1);
    form.list.add({"zwei", "X"}, 1);
    form.list.add({"drei", "a"}, 1);
    form.list.setSortKey(1);
    EXPECT_EQ(order(), "drei eins zwei ");
    form.list.setSortOrder(SortOrder::Descending);
    EXPECT_EQ(order(), "eins zwei drei ");
}

TEST_F(ListViewTest, ARowAddedToASortedListGoesToItsPlace) {
    fill({"b", "d"});
    form.list.setSorted(true);
    fill({"c", "a"});
    EXPECT_EQ(order(), "a b c d ");
    form.list.item(1).setText("e");
    EXPECT_EQ(order(), "b c d e ");
}

TEST_F(ListViewTest, SwitchingSortingOffKeepsTheOrderOfTheMoment) {
    fill({"b", "a"});
    form.list.setSorted(true);
    form.list.setSorted(false);
    fill({"0"});
    EXPECT_EQ(order(), "a b 0 ");
}

TEST_F(ListViewTest, ARowsAddressStaysWhileTheListIsSorted) {
    ListItem& c = form.list.add("c", 1);
    fill({"b", "a"});
    form.list.setSortKey(0);
    EXPECT_EQ(order(), "a b c ");
    EXPECT_EQ(&form.list.item(3), &c);
    c.setSubItem(2, "drei");
    EXPECT_EQ(form.list.item(3).subItem(2), "drei");
    EXPECT_EQ(form.list.item(3).subItem(1), "");
    EXPECT_EQ(form.list.item(3).subItem(9), "");
}

TEST_F(ListViewTest, ARowOutOfRangeIsFailure35600) {
    fill({"a"});
    for (const int row : {0, 2, -1}) {
        try {
            form.list.remove(row);
            FAIL() << row;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number, 35600);
        }
    }
    EXPECT_EQ(form.list.count(), 1);
}

TEST_F(ListViewTest, RemovingARowLeavesTheOthersWithTheirSelection) {
    fill({"a", "b", "c", "d"});
    form.list.userSelect({2, 4});
    form.list.remove(2);
    EXPECT_EQ(order(), "a c d ");
    EXPECT_EQ(selected(), "d ");
    EXPECT_EQ(form.list.selectedItem(), 3);
}

TEST_F(ListViewTest, TheFocusOfARemovedRowGoesToTheOneThatMovesUpOrToTheLast) {
    fill({"a", "b", "c"});
    form.list.userSelect({2});
    form.list.remove(2);
    EXPECT_EQ(form.list.selectedItem(), 2);
    form.list.remove(2);
    EXPECT_EQ(form.list.selectedItem(), 1);
    form.list.remove(1);
    EXPECT_EQ(form.list.selectedItem(), 0);
}

// Rows are added, marked, sorted and looked at in between: the list says the same as one that is kept beside
// it.
TEST_F(ListViewTest, RowsThatGoFromAnyPlaceLeaveTheOthersInTheirOrder) {
    std::mt19937 chance(7);
    const auto below = [&](std::size_t most) { return static_cast<std::size_t>(chance() % most); };
    std::vector<std::string> expected;
    for (int step = 0; step < 2000; ++step) {
        const std::size_t deed = below(40);
        if (expected.size() < 5 || deed < 8) {
            for (std::size_t i = below(24); i > 0; --i) {
                expected.push_back(std::to_string(step) + "." + std::to_string(i));
                form.list.add(expected.back(), 1);
            }
        } else if (deed < 36) {
            const std::size_t at = below(expected.size());
            // As the removal of marked rows does: some that stand one behind another, and some further on.
            for (std::size_t i = 0; i < 3 && at + i < expected.size(); ++i) {
                form.list.remove(static_cast<int>(at + i + 1));
                expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(at + i));
            }
        } else if (deed < 38) {
            const std::size_t at = below(expected.size());
            form.list.userSelect({static_cast<int>(at + 1)});
            ASSERT_EQ(form.list.selectedItem(), static_cast<int>(at + 1)) << step;
        } else if (deed == 38) {
            form.list.setSortOrder(SortOrder::Ascending);
            form.list.setSortOrder(SortOrder::Descending);
            std::sort(expected.begin(), expected.end(), std::greater<>());
            ASSERT_EQ(form.list.item(1).text(), expected.front()) << step;
            form.list.setSorted(false);
        } else {
            form.list.clear();
            expected.clear();
        }
        std::string all;
        for (const std::string& name : expected) all += name + " ";
        ASSERT_EQ(order(), all) << step;
    }
}

TEST_F(ListViewTest, ClearingForgetsRowsAndFocus) {
    fill({"a", "b"});
    form.list.userSelect({1, 2});
    form.list.clear();
    EXPECT_EQ(form.list.count(), 0);
    EXPECT_EQ(form.list.selectedItem(), 0);
    fill({"c"});
    EXPECT_EQ(selected(), "");
}

TEST_F(ListViewTest, TheUserMarksExactlyTheGivenRowsAndTheLastHasTheFocus) {
    fill({"a", "b", "c"});
    form.list.userSelect({1, 2});
    form.list.userSelect({3, 1});
    EXPECT_EQ(selected(), "a c ");
    EXPECT_EQ(form.list.selectedItem(), 1);
    form.list.userSelect({});
    EXPECT_EQ(selected(), "");
}

TEST_F(ListViewTest, SelectionFollowsItsRowsThroughASort) {
    fill({"c", "a", "b"});
    form.list.userSelect({1});
    form.list.setSortKey(0);
    EXPECT_EQ(selected(), "c ");
    EXPECT_EQ(form.list.selectedItem(), 3);
}

TEST_F(ListViewTest, AListOfSingleSelectionHasOneMarkedRow) {
    form.list.setMultiSelect(false);
    fill({"a", "b", "c"});
    form.list.userSelect({1, 3});
    EXPECT_EQ(selected(), "c ");
    form.list.item(2).setSelected(true);
    EXPECT_EQ(selected(), "b ");
}

TEST_F(ListViewTest, AClickOnAColumnHeaderTellsItsNumberFromOne) {
    int column = 0;
    form.list.onColumnClick = [&](int clicked) { column = clicked; };
    form.list.userColumnClick(2);
    EXPECT_EQ(column, 2);
}

TEST_F(ListViewTest, AHiddenColumnHasNoHeaderToClickOn) {
    form.list.onColumnClick = [&](int) { ++count; };
    form.list.userColumnClick(3);
    form.list.userColumnClick(0);
    form.list.userColumnClick(4);
    EXPECT_EQ(count, 0);
}

TEST_F(ListViewTest, AHiddenListHearsNothing) {
    form.list.onColumnClick = [&](int) { ++count; };
    form.list.onKeyDown = [&](int) { ++count; };
    form.list.onMouseUp = [&](int) { ++count; };
    form.list.onDblClick = counting(count);
    fill({"a"});
    form.list.setVisible(false);
    form.list.userColumnClick(1);
    form.list.userKeyDown(115);
    form.list.userMouseUp(2);
    form.list.userDoubleClick();
    form.list.userSelect({1});
    EXPECT_EQ(count, 0);
    EXPECT_EQ(selected(), "");
    form.list.setVisible(true);
    form.list.userKeyDown(115);
    form.list.userMouseUp(2);
    form.list.userDoubleClick();
    EXPECT_EQ(count, 3);
}

}  // namespace
}  // namespace bromvale::testing
