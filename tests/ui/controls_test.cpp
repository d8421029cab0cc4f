// What every control promises: state, and events on assignment once and not when nothing changes.
#include "platform/events.h"
#include "tests/ui/sample_form.h"

namespace bromvale::testing {
namespace {

TEST_F(ControlsTest, AssigningACheckBoxRunsItsClickHandlerOnce) {
    form.box.onClick = counting(count);
    form.box.setValue(1);
    EXPECT_EQ(form.box.value(), 1);
    EXPECT_EQ(count, 1);
}

TEST_F(ControlsTest, AssigningTheSameValueToACheckBoxRunsNothing) {
    form.box.setValue(1);
    form.box.onClick = counting(count);
    form.box.setValue(1);
    EXPECT_EQ(count, 0);
}

TEST_F(ControlsTest, ACheckBoxRunsItsClickHandlerOnAssignmentAlsoWhileDisabled) {
    form.box.onClick = counting(count);
    form.box.setEnabled(false);
    form.box.setValue(1);
    EXPECT_EQ(count, 1);
}

TEST_F(ControlsTest, AClickFlipsACheckBoxAndRunsItsHandler) {
    form.box.onClick = counting(count);
    form.box.userClick();
    EXPECT_EQ(form.box.value(), 1);
    form.box.userClick();
    EXPECT_EQ(form.box.value(), 0);
    EXPECT_EQ(count, 2);
}

TEST_F(ControlsTest, ANumberOtherThanOneClearsACheckBox) {
    form.box.setValue(1);
    form.box.setValue(2);
    EXPECT_EQ(form.box.value(), 0);
    form.box.setValue(-1);
    EXPECT_EQ(form.box.value(), 0);
}

TEST_F(ControlsTest, AClickOnADisabledControlDoesNothing) {
    form.first.onClick = counting(count);
    form.box.onClick = counting(count);
    form.one.onClick = counting(count);
    for (Control* control : {static_cast<Control*>(&form.first), static_cast<Control*>(&form.box),
                             static_cast<Control*>(&form.one)}) {
        control->setEnabled(false);
    }
    form.first.userClick();
    form.box.userClick();
    form.one.userClick();
    EXPECT_EQ(count, 0);
    EXPECT_EQ(form.box.value(), 0);
    EXPECT_FALSE(form.one.value());
}

TEST_F(ControlsTest, AClickOnAControlOfAHiddenOrDisabledFrameDoesNothing) {
    form.first.onClick = counting(count);
    form.front.setVisible(false);
    form.first.userClick();
    form.front.setVisible(true);
    form.front.setEnabled(false);
    form.first.userClick();
    EXPECT_EQ(count, 0);
    form.front.setEnabled(true);
    form.first.userClick();
    EXPECT_EQ(count, 1);
}

TEST_F(ControlsTest, AnOptionButtonSwitchesTheOthersOfItsFrameOff) {
    form.elsewhere.setValue(true);
    form.one.setValue(true);
    form.one.onClick = counting(count);
    form.two.setValue(true);
    EXPECT_FALSE(form.one.value());
    EXPECT_TRUE(form.two.value());
    EXPECT_TRUE(form.elsewhere.value());
    EXPECT_EQ(count, 0) << "switching off runs nothing";
}

TEST_F(ControlsTest, SwitchingAnOptionButtonOnRunsItsHandlerOnce) {
    form.one.onClick = counting(count);
    form.one.setValue(true);
    form.one.setValue(true);
    form.one.userClick();
    EXPECT_EQ(count, 1);
    form.one.setValue(false);
    EXPECT_EQ(count, 1);
}

TEST_F(ControlsTest, AssigningATextRunsTheChangeHandlerOnlyWhenItChanges) {
    form.line.onChange = counting(count);
    form.line.setText("abc");
    form.line.setText("abc");
    EXPECT_EQ(count, 1);
    EXPECT_EQ(form.line.text(), "abc");
}

TEST_F(ControlsTest, TypingIntoALockedOrDisabledBoxDoesNothing) {
    form.line.onChange = counting(count);
    form.line.setLocked(true);
    form.line.userText("abc");
    form.line.setLocked(false);
    form.line.setEnabled(false);
    form.line.userText("abc");
    EXPECT_EQ(count, 0);
    EXPECT_EQ(form.line.text(), "");
    form.line.setEnabled(true);
    form.line.userText("abc");
    EXPECT_EQ(count, 1);
    EXPECT_EQ(form.line.text(), "abc");
}

TEST_F(ControlsTest, AComboBoxKeepsItsEntriesInOrderOrSortedWithoutCase) {
    form.choice.addItem("b");
    form.choice.addItem("a");
    form.choice.addItem("c", 0);
    EXPECT_EQ(form.choice.count(), 3);
    EXPECT_EQ(form.choice.item(0), "c");
    EXPECT_EQ(form.choice.item(1), "b");
    EXPECT_EQ(form.choice.item(2), "a");
    EXPECT_EQ(form.choice.item(3), "");
    form.choice.clearItems();
    form.choice.setSorted(true);
    for (const char* item : {"delta", "Beta", "alpha", "CHARLIE"}) form.choice.addItem(item);
    EXPECT_EQ(form.choice.item(0), "alpha");
    EXPECT_EQ(form.choice.item(1), "Beta");
    EXPECT_EQ(form.choice.item(2), "CHARLIE");
    EXPECT_EQ(form.choice.item(3), "delta");
}

TEST_F(ControlsTest, AnEntryBeyondTheEndOfAComboBoxIsFailure5) {
    form.choice.addItem("a");
    try {
        form.choice.addItem("b", 2);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 5);
    }
    EXPECT_EQ(form.choice.count(), 1);
}

TEST_F(ControlsTest, ChoosingAnEntrySetsTheTextAndRunsTheClickHandlerAfterwards) {
    std::string seen;
    form.choice.onClick = [&] { seen = form.choice.text(); };
    form.choice.onChange = counting(count);
    form.choice.addItem("eins");
    form.choice.addItem("zwei");
    form.choice.userChoose(1);
    EXPECT_EQ(seen, "zwei");
    EXPECT_EQ(count, 0);
    form.choice.userText("frei");
    EXPECT_EQ(count, 1);
    EXPECT_EQ(form.choice.text(), "frei");
}

TEST_F(ControlsTest, ATimerTicksOnlyWhileEnabledWithAnInterval) {
    form.timer.onTimer = counting(count);
    form.timer.tick();
    form.timer.setEnabled(true);
    form.timer.tick();
    form.timer.setInterval(50);
    form.timer.tick();
    EXPECT_EQ(count, 1);
    form.timer.setEnabled(false);
    form.timer.tick();
    EXPECT_EQ(count, 1);
}

TEST_F(ControlsTest, PanelsCountFromOneAndAnyOtherIndexIsFailure35600) {
    form.status.setPanelText(1, "Schritt 1");
    form.status.setPanelWidth(2, 900);
    EXPECT_EQ(form.status.panelText(1), "Schritt 1");
    EXPECT_EQ(form.status.panels()[1].width, 900);
    EXPECT_EQ(form.status.panelText(3), "rechts");
    for (const int panel : {0, 4, -1}) {
        try {
            form.status.setPanelText(panel, "x");
            FAIL() << panel;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number, 35600);
        }
    }
}

TEST_F(ControlsTest, AProgressBarKeepsItsValueWithinItsRange) {
    form.progress.setValue(140);
    EXPECT_EQ(form.progress.value(), 100);
    form.progress.setRange(0, 40);
    EXPECT_EQ(form.progress.value(), 40);
    form.progress.setValue(-3);
    EXPECT_EQ(form.progress.value(), 0);
    form.progress.setRange(0, 0);
    form.progress.setValue(7);
    EXPECT_EQ(form.progress.value(), 0);
}

TEST_F(ControlsTest, AFailureBelowAnEventGoesToTheHandlerForUnhandledOnes) {
    int number = 0;
    setUnhandledFailure([&](const Failure& failure) { number = failure.number; });
    form.first.onClick = [] { raise(13); };
    form.first.userClick();
    EXPECT_EQ(number, 13);
    setUnhandledFailure(nullptr);
    form.first.userClick();  // dropped
}

TEST_F(ControlsTest, AFailureBelowAnAssignmentGoesToTheAssigningRoutine) {
    form.box.onClick = [] { raise(6); };
    EXPECT_THROW(form.box.setValue(1), Failure);
}

}  // namespace
}  // namespace bromvale::testing
