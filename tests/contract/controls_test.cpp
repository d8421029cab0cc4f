// Events on assignment: the same, once, with and without a real window behind the control.
#include "platform/controls.h"
#include "platform/events.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class SmallForm : public Form {
  public:
    SmallForm() : Form("frmSmall") {}
    CheckBox box{this, "chbBox"};
    TextBox text{this, "txtText"};
    ComboBox combo{this, "cboCombo"};
    OptionButton first{this, "rdoFirst"};
    OptionButton second{this, "rdoSecond"};
    Button button{this, "cmdButton"};
    Timer timer{this, "tmrTimer"};
    int resized = 0;

  protected:
    void design() override {
        setPlace({0, 0, 6000, 4500});
        box.setPlace({120, 120, 1500, 300});
        text.setPlace({120, 480, 1500, 300});
        combo.setPlace({120, 840, 1500, 300});
        first.setPlace({120, 1200, 1500, 300});
        second.setPlace({120, 1560, 1500, 300});
        button.setPlace({120, 1920, 1500, 300});
    }
    void Form_Resize() override { ++resized; }
};

class Controls : public TestMachine {
  protected:
    Controls() {
        form_.load();
        form_.show();
        DoEvents();
    }
    ~Controls() override { form_.unload(); }
    SmallForm form_;
};

TEST_F(Controls, ACheckBoxSetFromCodeRunsItsHandlerOnce) {
    int clicks = 0;
    form_.box.onClick = [&] { ++clicks; };
    form_.box.setValue(1);
    DoEvents();
    EXPECT_EQ(clicks, 1);
    form_.box.setValue(1);
    DoEvents();
    EXPECT_EQ(clicks, 1);
    form_.box.setValue(0);
    DoEvents();
    EXPECT_EQ(clicks, 2);
}

TEST_F(Controls, ATextBoxSetFromCodeRunsItsHandlerOnce) {
    std::vector<std::string> seen;
    form_.text.onChange = [&] { seen.push_back(form_.text.text()); };
    form_.text.setText("Größe");
    form_.text.setText("Größe");
    form_.text.setText("");
    DoEvents();
    EXPECT_EQ(seen, (std::vector<std::string>{"Größe", ""}));
}

TEST_F(Controls, AComboBoxSetFromCodeChangesAndIsNotClicked) {
    int changes = 0;
    int clicks = 0;
    form_.combo.onChange = [&] { ++changes; };
    form_.combo.onClick = [&] { ++clicks; };
    form_.combo.addItem("eins");
    form_.combo.setText("eins");
    DoEvents();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(clicks, 0);
}

TEST_F(Controls, SwitchingAnOptionOnSwitchesTheOtherOffAndRunsOneHandler) {
    std::vector<std::string> clicked;
    form_.first.onClick = [&] { clicked.emplace_back("first"); };
    form_.second.onClick = [&] { clicked.emplace_back("second"); };
    form_.first.setValue(true);
    form_.second.setValue(true);
    DoEvents();
    EXPECT_FALSE(form_.first.value());
    EXPECT_TRUE(form_.second.value());
    EXPECT_EQ(clicked, (std::vector<std::string>{"first", "second"}));
}

TEST_F(Controls, ADisabledButtonIsNotClicked) {
    int clicks = 0;
    form_.button.onClick = [&] { ++clicks; };
    form_.button.setEnabled(false);
    form_.button.userClick();
    EXPECT_EQ(clicks, 0);
    form_.button.setEnabled(true);
    form_.button.userClick();
    EXPECT_EQ(clicks, 1);
}

TEST_F(Controls, ATimerTicksWhenItsTimeIsOver) {
    int ticks = 0;
    form_.timer.onTimer = [&] { ++ticks; };
    form_.timer.setInterval(50);
    form_.timer.setEnabled(true);
    DoEvents();
    EXPECT_EQ(ticks, 0);
    for (int i = 0; i < 40 && ticks == 0; ++i) {
        WaitForEvents(10);
        DoEvents();
    }
    EXPECT_EQ(ticks, 1);
    form_.timer.setEnabled(false);
    for (int i = 0; i < 10; ++i) {
        WaitForEvents(10);
        DoEvents();
    }
    EXPECT_EQ(ticks, 1);
}

TEST_F(Controls, ATimerThatWasMissedTicksOnceAndAgainAfterItsTime) {
    int ticks = 0;
    form_.timer.onTimer = [&] { ++ticks; };
    form_.timer.setInterval(200);
    form_.timer.setEnabled(true);
    DoEvents();
    WaitForEvents(700);
    // A wait may end early, at any event.
    for (int i = 0; i < 100 && ticks == 0; ++i) {
        DoEvents();
        WaitForEvents(10);
    }
    for (int i = 0; i < 3; ++i) DoEvents();
    EXPECT_EQ(ticks, 1);
}

TEST_F(Controls, TimersOfOneIntervalTickEachAtItsTime) {
    std::string ticks;
    const auto wait = [] {
        WaitForEvents(10);
        DoEvents();
    };
    SmallForm other;
    other.load();
    form_.timer.onTimer = [&] { ticks += 'a'; };
    other.timer.onTimer = [&] { ticks += 'b'; };
    form_.timer.setInterval(400);
    form_.timer.setEnabled(true);
    DoEvents();
    for (int i = 0; i < 4; ++i) wait();
    other.timer.setInterval(400);
    other.timer.setEnabled(true);
    DoEvents();
    for (int i = 0; i < 200 && ticks.empty(); ++i) wait();
    EXPECT_EQ(ticks, "a");
    form_.timer.setEnabled(false);
    for (int i = 0; i < 200 && ticks.size() < 2; ++i) wait();
    EXPECT_EQ(ticks, "ab");
    other.unload();
}

TEST_F(Controls, AnotherIntervalCountsFromItsAssignment) {
    int ticks = 0;
    form_.timer.onTimer = [&] { ++ticks; };
    form_.timer.setInterval(60'000);
    form_.timer.setEnabled(true);
    DoEvents();
    form_.timer.setInterval(50);
    DoEvents();
    EXPECT_EQ(ticks, 0);
    for (int i = 0; i < 100 && ticks == 0; ++i) {
        WaitForEvents(10);
        DoEvents();
    }
    EXPECT_EQ(ticks, 1);
}

TEST_F(Controls, ALoopThatServesEventsOftenServesThemSoon) {
    int ticks = 0;
    form_.timer.onTimer = [&] { ++ticks; };
    form_.timer.setInterval(50);
    form_.timer.setEnabled(true);
    // An event that waits ends each wait at once.
    for (int i = 0; i < 200'000 && ticks == 0; ++i) {
        WaitForEvents(10);
        DoEventsOften();
    }
    EXPECT_EQ(ticks, 1);
}

// Whatever is looked for: who acts between two entries of a scan acts between all of them.
TEST_F(Controls, TheObserverSeesEachServingOfEvents) {
    int seen = 0;
    setPumpObserver([&] { ++seen; });
    for (int i = 0; i < 100; ++i) DoEventsOften();
    DoEvents();
    setPumpObserver({});
    EXPECT_EQ(seen, 101);
}

TEST_F(Controls, AnotherSizeRunsTheResizeHandlerOnce) {
    const int before = form_.resized;
    form_.setPlace({0, 0, 7500, 6000});
    DoEvents();
    EXPECT_EQ(form_.resized, before + 1);
    form_.setPlace({300, 300, 7500, 6000});
    DoEvents();
    EXPECT_EQ(form_.resized, before + 1);
}

}  // namespace
}  // namespace bromvale::testing
