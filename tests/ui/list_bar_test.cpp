// The navigation bar: its bars and items, and the keyboard in it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/controls/virtual_keys.h"

namespace bromvale::testing {
namespace {

class ListBarTest : public ::testing::Test {
  protected:
    class BarForm : public Form {
      public:
        BarForm() : Form("bars") {}
        ~BarForm() override { unload(); }
        BarForm(const BarForm&) = delete;
        ListBar bar{this, "bar"};

      protected:
        void design() override {
            setScaleSize(3000, 3000);
            bar.setPlace({0, 0, 1500, 3000});
        }
    };
    void SetUp() override {
        form.load();
        EXPECT_EQ(form.bar.addBar("Eins"), 1);
        form.bar.addItem({"1Item1", "Suche", 0, "Startet"});
        form.bar.addItem({"1Item2", "Sichern", 0, "Sichert"});
        EXPECT_EQ(form.bar.addBar("Zwei"), 2);
        form.bar.addItem({"2Item3", "Ende", 1, "Beendet"});
        form.bar.onItemClick = [this](const ListBar::Item& item) { clicked.push_back(item.key); };
    }
    // Where the keyboard is: the bar, and the item or "-" for the bar's header.
    [[nodiscard]] std::string at() const {
        const ListBar::Part part = form.bar.keyboardPart();
        const std::string item = part.isHeader() ? "-" : form.bar.item(part.bar, part.item).caption;
        return form.bar.bars()[static_cast<std::size_t>(part.bar)].caption + " " + item;
    }
    bool press(int key, bool control = false, bool held = false) {
        return form.bar.userKey(key, control, held);
    }

    BarForm form;
    std::vector<std::string> clicked;
};

TEST_F(ListBarTest, AClickOpensTheItemsBarFirst) {
    EXPECT_EQ(form.bar.openBar(), 0);
    EXPECT_TRUE(form.bar.userItemClick("Ende"));
    EXPECT_EQ(form.bar.openBar(), 1);
    EXPECT_EQ(clicked, std::vector<std::string>{"2Item3"});
}

TEST_F(ListBarTest, ACaptionThatNoItemHasIsNoClick) {
    EXPECT_FALSE(form.bar.userItemClick("ende"));
    EXPECT_TRUE(clicked.empty());
}

TEST_F(ListBarTest, ADisabledBarCannotBeClicked) {
    form.bar.setEnabled(false);
    EXPECT_FALSE(form.bar.userItemClick("Ende"));
    EXPECT_TRUE(clicked.empty());
}

TEST_F(ListBarTest, ABarThatDoesNotExistIsNotOpened) {
    form.bar.setOpenBar(2);
    EXPECT_EQ(form.bar.openBar(), 0);
    form.bar.setOpenBar(-1);
    EXPECT_EQ(form.bar.openBar(), 0);
}

TEST_F(ListBarTest, DownGoesThroughTheItemsOfTheOpenBarAndTheHeadersBehindIt) {
    EXPECT_EQ(at(), "Eins Suche");
    EXPECT_FALSE(form.bar.keyboardShown());
    EXPECT_TRUE(press(kDown));
    EXPECT_EQ(at(), "Eins Sichern");
    EXPECT_TRUE(form.bar.keyboardShown());
    press(kDown);
    EXPECT_EQ(at(), "Zwei -");
    press(kDown);
    EXPECT_EQ(at(), "Zwei -") << "there is nothing below";
    EXPECT_EQ(form.bar.openBar(), 0);
    EXPECT_TRUE(clicked.empty());
}

TEST_F(ListBarTest, UpGoesToTheHeaderOfTheOpenBar) {
    press(kUp);
    EXPECT_EQ(at(), "Eins -");
    press(kUp);
    EXPECT_EQ(at(), "Eins -");
}

TEST_F(ListBarTest, ReturnOnAHeaderOpensItsBarAtTheFirstItem) {
    press(kEnd);
    press(kDown);
    EXPECT_TRUE(press(kReturn));
    EXPECT_EQ(form.bar.openBar(), 1);
    EXPECT_EQ(at(), "Zwei Ende");
    EXPECT_TRUE(clicked.empty());
}

TEST_F(ListBarTest, CtrlWithAnArrowAndThePageKeysOpenTheNeighbour) {
    EXPECT_TRUE(press(kDown, true));
    EXPECT_EQ(at(), "Zwei Ende");
    press(kUp, true);
    EXPECT_EQ(at(), "Eins Suche");
    press(kPageDown);
    press(kPageDown);
    EXPECT_EQ(form.bar.openBar(), 1);
    press(kPageUp);
    press(kPageUp);
    EXPECT_EQ(form.bar.openBar(), 0);
}

TEST_F(ListBarTest, HomeAndEndStayInTheOpenBar) {
    press(kEnd);
    EXPECT_EQ(at(), "Eins Sichern");
    press(kHome);
    EXPECT_EQ(at(), "Eins Suche");
}

TEST_F(ListBarTest, ReturnAndTheSpaceBarPressTheItemOnceItIsShown) {
    EXPECT_FALSE(press(kReturn))
        << "Return belongs to the default button as long as no item shows the keyboard";
    EXPECT_FALSE(press(kSpace));
    press(kHome);
    EXPECT_TRUE(press(kReturn));
    EXPECT_TRUE(press(kSpace));
    EXPECT_EQ(clicked, (std::vector<std::string>{"1Item1", "1Item1"}));
    EXPECT_TRUE(press(kReturn, false, true));
    EXPECT_EQ(clicked.size(), 2u) << "a key that is held down is one order";
}

TEST_F(ListBarTest, AClickBringsTheKeyboardToItsItemWithoutShowingIt) {
    form.bar.userItemClick("Sichern");
    EXPECT_EQ(at(), "Eins Sichern");
    EXPECT_FALSE(form.bar.keyboardShown());
    form.bar.userItemClick("Ende");
    EXPECT_EQ(at(), "Zwei Ende");
}

TEST_F(ListBarTest, APressReachesPartsOfClosedBarsToo) {
    form.bar.userPress({1, 0});
    EXPECT_EQ(form.bar.openBar(), 1);
    EXPECT_EQ(clicked, std::vector<std::string>{"2Item3"});
    form.bar.userPress({0, -1});
    EXPECT_EQ(at(), "Eins Suche");
    for (const ListBar::Part part : {ListBar::Part{2, 0}, {-1, 0}, {0, 2}, {0, -2}}) form.bar.userPress(part);
    form.bar.setEnabled(false);
    form.bar.userPress({0, 0});
    EXPECT_EQ(clicked.size(), 1u);
}

TEST_F(ListBarTest, TheKeyboardGoesToNoPartThatIsNotThere) {
    for (const ListBar::Part part : {ListBar::Part{2, 0}, {-1, 0}, {0, 2}, {0, -2}}) form.bar.userPart(part);
    EXPECT_EQ(at(), "Eins Suche");
    EXPECT_FALSE(form.bar.keyboardShown());
}

TEST_F(ListBarTest, OtherKeysAreNotTheBars) {
    for (const int key : std::initializer_list<int>{kTab, kEscape, kLeft, kRight, 'A'})
        EXPECT_FALSE(press(key)) << key;
    EXPECT_FALSE(form.bar.keyboardShown());
}

TEST(EmptyListBar, TakesItsKeysAndDoesNothing) {
    ListBar bar(nullptr, "bar");
    for (const int key : {kUp, kDown, kPageUp, kPageDown, kHome, kEnd})
        EXPECT_TRUE(bar.userKey(key, false, false));
    EXPECT_EQ(bar.keyboardPart(), (ListBar::Part{0, 0}));
}

}  // namespace
}  // namespace bromvale::testing
