// Tab order, access keys, Return and Escape, and where the focus goes.
#include "tests/ui/sample_form.h"

namespace bromvale::testing {
namespace {

constexpr int kTab = 9;
constexpr int kReturn = 13;
constexpr int kEscape = 27;
constexpr int kUp = 38;
constexpr int kDown = 40;

class KeyboardTest : public ControlsTest {
  protected:
    [[nodiscard]] std::string focused() const { return form.focused() ? form.focused()->name() : "<none>"; }
    std::string tab(bool shift = false) {
        form.userKey(kTab, shift, false);
        return focused();
    }
};

TEST_F(KeyboardTest, TabGoesByTabPositionAndAroundTheEnd) {
    form.first.setFocus();
    EXPECT_EQ(tab(), "second");
    EXPECT_EQ(tab(), "box");
    EXPECT_EQ(tab(), "one");
    EXPECT_EQ(tab(), "line");
    EXPECT_EQ(tab(), "lines");
    EXPECT_EQ(tab(), "choice");
    EXPECT_EQ(tab(), "list");
    EXPECT_EQ(tab(), "first");
}

TEST_F(KeyboardTest, ShiftTabGoesBackwards) {
    form.first.setFocus();
    EXPECT_EQ(tab(true), "list");
    EXPECT_EQ(tab(true), "choice");
}

TEST_F(KeyboardTest, TabSkipsDisabledAndHiddenControls) {
    form.first.setFocus();
    form.second.setEnabled(false);
    form.box.setVisible(false);
    EXPECT_EQ(tab(), "one");
}

TEST_F(KeyboardTest, OnlyTheChosenOptionButtonOfAGroupIsAStop) {
    form.two.setValue(true);
    form.box.setFocus();
    EXPECT_EQ(tab(), "two");
    EXPECT_EQ(tab(), "line");
}

TEST_F(KeyboardTest, ArrowsMoveAndChooseWithinAGroup) {
    form.two.onClick = counting(count);
    form.one.setFocus();
    EXPECT_TRUE(form.userKey(kDown, false, false));
    EXPECT_EQ(focused(), "two");
    EXPECT_TRUE(form.two.value());
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(form.userKey(kUp, false, false));
    EXPECT_TRUE(form.one.value());
    form.line.setFocus();
    EXPECT_FALSE(form.userKey(kDown, false, false)) << "other controls use the arrows themselves";
}

TEST_F(KeyboardTest, AnAccessKeyClicksAButtonAndGivesItTheFocus) {
    form.second.onClick = counting(count);
    EXPECT_TRUE(form.userKey('Z', false, true));
    EXPECT_EQ(count, 1);
    EXPECT_EQ(focused(), "second");
    EXPECT_FALSE(form.userKey('Q', false, true));
}

TEST_F(KeyboardTest, AnAccessKeyTogglesACheckBox) {
    EXPECT_TRUE(form.userKey('K', false, true));
    EXPECT_EQ(form.box.value(), 1);
    EXPECT_TRUE(form.userKey('K', false, true));
    EXPECT_EQ(form.box.value(), 0);
}

TEST_F(KeyboardTest, ALabelsAccessKeyLeadsToTheControlBehindIt) {
    EXPECT_TRUE(form.userKey('T', false, true));
    EXPECT_EQ(focused(), "line");
}

TEST_F(KeyboardTest, AnUmlautIsAnAccessKey) {
    form.second.setCaption("&Übernehmen");
    form.second.onClick = counting(count);
    EXPECT_TRUE(form.userKey(0xDC, false, true));
    EXPECT_EQ(count, 1);
}

TEST_F(KeyboardTest, ADoubledAmpersandMarksNoAccessKey) {
    form.second.setCaption("A && B");
    EXPECT_FALSE(form.userKey(' ', false, true));
    EXPECT_FALSE(form.userKey('B', false, true));
}

TEST_F(KeyboardTest, AnAccessKeyOfSeveralControlsMovesFromOneToTheNextWithoutAClick) {
    form.second.setCaption("&Ende");
    form.first.onClick = counting(count);
    form.second.onClick = counting(count);
    EXPECT_TRUE(form.userKey('E', false, true));
    EXPECT_EQ(focused(), "first");
    EXPECT_TRUE(form.userKey('E', false, true));
    EXPECT_EQ(focused(), "second");
    EXPECT_TRUE(form.userKey('E', false, true));
    EXPECT_EQ(focused(), "first");
    EXPECT_EQ(count, 0);
}

TEST_F(KeyboardTest, AnAccessKeyDoesNotReachADisabledOrHiddenControl) {
    form.second.onClick = counting(count);
    form.second.setEnabled(false);
    EXPECT_FALSE(form.userKey('Z', false, true));
    form.second.setEnabled(true);
    form.front.setVisible(false);
    EXPECT_FALSE(form.userKey('Z', false, true));
    EXPECT_EQ(count, 0);
}

TEST_F(KeyboardTest, ReturnClicksTheDefaultButtonFromAnyControlButAButton) {
    form.first.onClick = counting(count);
    form.line.setFocus();
    EXPECT_TRUE(form.userKey(kReturn, false, false));
    EXPECT_EQ(count, 1);
    EXPECT_EQ(focused(), "line");
}

TEST_F(KeyboardTest, ReturnOnAButtonClicksThatButton) {
    int other = 0;
    form.first.onClick = counting(count);
    form.second.onClick = counting(other);
    form.second.setFocus();
    EXPECT_TRUE(form.userKey(kReturn, false, false));
    EXPECT_EQ(count, 0);
    EXPECT_EQ(other, 1);
}

TEST_F(KeyboardTest, ReturnBelongsToABoxOfSeveralLines) {
    form.first.onClick = counting(count);
    form.lines.setFocus();
    EXPECT_FALSE(form.userKey(kReturn, false, false));
    EXPECT_EQ(count, 0);
}

TEST_F(KeyboardTest, ReturnDoesNothingWhileTheDefaultButtonCannotBeReached) {
    form.first.onClick = counting(count);
    form.line.setFocus();
    form.first.setEnabled(false);
    EXPECT_FALSE(form.userKey(kReturn, false, false));
    EXPECT_EQ(count, 0);
}

TEST_F(KeyboardTest, EscapeClicksTheCancelButtonAlsoFromAnotherButton) {
    form.second.onClick = counting(count);
    form.first.setFocus();
    EXPECT_TRUE(form.userKey(kEscape, false, false));
    EXPECT_EQ(count, 1);
    form.front.setVisible(false);
    EXPECT_FALSE(form.userKey(kEscape, false, false));
    EXPECT_EQ(count, 1);
}

TEST_F(KeyboardTest, AControlThatCannotBeReachedDoesNotTakeTheFocus) {
    form.first.setFocus();
    form.second.setEnabled(false);
    form.second.setFocus();
    EXPECT_EQ(focused(), "first");
    form.elsewhere.setFocus();
    EXPECT_EQ(focused(), "first");
}

TEST_F(KeyboardTest, AControlThatIsDisabledOrHiddenHandsItsFocusOn) {
    form.first.setFocus();
    form.first.setEnabled(false);
    EXPECT_EQ(focused(), "second");
    form.second.setVisible(false);
    EXPECT_EQ(focused(), "box");
    form.front.setVisible(false);
    EXPECT_EQ(focused(), "<none>");
}

TEST_F(KeyboardTest, ShowingAWindowGivesTheFirstControlTheFocus) {
    form.show();
    EXPECT_EQ(focused(), "first");
}

TEST_F(KeyboardTest, TheMenuKeyAndShiftF10OpenTheMenuOfAList) {
    constexpr int kMenuKey = 0x5D;
    constexpr int kF10 = 0x79;
    form.list.setFocus();
    EXPECT_FALSE(form.userKey(kMenuKey, false, false)) << "this list has none";
    form.list.onContextMenu = counting(count);
    EXPECT_TRUE(form.userKey(kMenuKey, false, false));
    EXPECT_TRUE(form.userKey(kF10, true, false));
    EXPECT_EQ(count, 2);
    EXPECT_TRUE(form.userKey(kF10, true, false, true)) << "held down it is one order";
    EXPECT_FALSE(form.userKey(kF10, false, false)) << "F10 alone is the system's";
    EXPECT_EQ(count, 2);
    form.line.setFocus();
    EXPECT_FALSE(form.userKey(kMenuKey, false, false)) << "a text box has the system's own menu";
    EXPECT_EQ(count, 2);
}

TEST_F(KeyboardTest, AListThatCannotBeReachedOpensNoMenu) {
    form.list.onContextMenu = counting(count);
    form.list.setEnabled(false);
    form.list.userContextMenu();
    EXPECT_EQ(count, 0);
}

TEST_F(KeyboardTest, AKeyThatIsHeldDownClicksNothingAndIsUsedUpAllTheSame) {
    form.first.onClick = counting(count);
    form.first.setFocus();
    EXPECT_TRUE(form.userKey(kReturn, false, false, true));
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(form.userKey(kReturn, false, false, false));
    EXPECT_EQ(count, 1);
}

TEST_F(KeyboardTest, AnAccessKeyThatIsHeldDownOnlyMoves) {
    form.second.onClick = counting(count);
    form.second.setCaption("&Zweiter");
    form.first.setFocus();
    EXPECT_TRUE(form.userKey('Z', false, true, true));
    EXPECT_EQ(focused(), "second");
    EXPECT_EQ(count, 0);
}

}  // namespace
}  // namespace bromvale::testing
