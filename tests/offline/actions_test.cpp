// What the actions of a script do to controls, and what they refuse, on a window made for it.
#include "bromvale-offline/script.h"
#include "platform/controls.h"
#include "platform/keys.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::machine;

class ActedForm : public Form {
  public:
    ActedForm() : Form("frmMain") {}
    Button button{this, "cmdButton"};
    CheckBox box{this, "chbBox"};
    OptionButton option{this, "rdoOption"};
    TextBox text{this, "txtText"};
    TextBox locked{this, "txtLocked"};
    ComboBox combo{this, "cboCombo"};
    ListView list{this, "lvwList"};
    MenuItem item{this, "mnuItem"};
    Label label{this, "lblLabel"};
    std::vector<std::string> done;

    void setBorder(BorderStyle style) { setBorderStyle(style); }

  protected:
    void design() override {
        setPlace({0, 0, 6000, 4500});
        locked.setLocked(true);
        combo.addItem("eins");
        combo.addItem("zwei");
        list.setColumns({{"a", 100}, {"b", 0}});
        for (const char* const row : {"x", "y", "z"}) list.add(row, 0);
        button.onClick = [this] { done.emplace_back("button"); };
        box.onClick = [this] { done.push_back("box " + std::to_string(box.value())); };
        combo.onClick = [this] { done.push_back("combo " + combo.text()); };
        list.onColumnClick = [this](int column) { done.push_back("column " + std::to_string(column)); };
        list.onMouseUp = [this](int which) { done.push_back("mouse " + std::to_string(which)); };
        list.onKeyDown = [this](int key) { done.push_back("key " + std::to_string(key)); };
        list.onDblClick = [this] { done.push_back("double " + std::to_string(list.selectedItem())); };
        list.onContextMenu = [this] { done.emplace_back("context"); };
        item.onClick = [this] { done.emplace_back("item"); };
    }
    void Form_MouseMove(float x, float y) override {
        done.push_back("move " + std::to_string(static_cast<int>(x)) + "," +
                       std::to_string(static_cast<int>(y)));
    }
};

class Actions : public TestMachine {
  protected:
    Actions() {
        form_.load();
        form_.show();
    }
    ~Actions() override { form_.unload(); }
    // Empty where it could be done.
    static std::string refusalOf(std::string_view word, std::string_view rest) {
        try {
            offline::Transcript transcript;
            offline::doAction(word, rest, transcript);
        } catch (const offline::ScriptError& error) {
            return error.text;
        }
        return {};
    }
    std::string doneBy(std::string_view word, std::string_view rest) {
        form_.done.clear();
        EXPECT_EQ(refusalOf(word, rest), "") << word;
        std::string all;
        for (const std::string& each : form_.done) all += (all.empty() ? "" : "; ") + each;
        return all;
    }
    ActedForm form_;
};

TEST_F(Actions, DoWhatTheUserWouldDo) {
    EXPECT_EQ(doneBy("click", "cmdButton"), "button");
    EXPECT_EQ(doneBy("click", "chbBox"), "box 1");
    EXPECT_EQ(doneBy("check", "chbBox 1"), "");
    EXPECT_EQ(doneBy("check", "chbBox 0"), "box 0");
    EXPECT_EQ(doneBy("check", "chbBox 1"), "box 1");
    EXPECT_EQ(doneBy("click", "rdoOption"), "");
    EXPECT_TRUE(form_.option.value());
    EXPECT_EQ(doneBy("text", "txtText a\\nb"), "");
    EXPECT_EQ(form_.text.text(), "a\r\nb");
    EXPECT_EQ(doneBy("text", "cboCombo a\\nb"), "");
    EXPECT_EQ(form_.combo.text(), "a\\nb");
    EXPECT_EQ(doneBy("choose", "cboCombo zwei"), "combo zwei");
    EXPECT_EQ(doneBy("select", "lvwList 2"), "");
    EXPECT_EQ(form_.list.selectedItem(), 2);
    EXPECT_EQ(doneBy("column", "lvwList 1"), "column 1");
    EXPECT_EQ(doneBy("doubleclick", "lvwList 3"), "double 3");
    EXPECT_EQ(doneBy("mouseup", "lvwList left"), "mouse 1");
    EXPECT_EQ(doneBy("mouseup", "lvwList right"), "mouse 2");
    EXPECT_EQ(doneBy("mouseup", "lvwList middle"), "mouse 4");
    EXPECT_EQ(doneBy("menu", "mnuItem"), "item");
    EXPECT_EQ(doneBy("tray", "left"), "move 7710,0");
    EXPECT_EQ(doneBy("tray", "right"), "move 7755,0");
    EXPECT_EQ(doneBy("tray", "double"), "move 7725,0");
    EXPECT_EQ(doneBy("resize", "3000 2000"), "");
    EXPECT_EQ(form_.width(), 3000);
    EXPECT_EQ(form_.height(), 2000);
}

TEST_F(Actions, KeysGoToTheControlOrToItsWindow) {
    EXPECT_EQ(doneBy("key", "lvwList F4"), "key 115");
    EXPECT_EQ(form_.focused(), &form_.list);
    EXPECT_EQ(doneBy("key", "lvwList Tab"), "");
    EXPECT_EQ(doneBy("key", "lvwList Shift+F4"), "");
    EXPECT_EQ(doneBy("key", "lvwList Alt+F4"), "");
    EXPECT_EQ(doneBy("key", "cmdButton Return"), "button");
    EXPECT_EQ(doneBy("key", "lvwList Escape"), "");
    EXPECT_EQ(doneBy("key", "lvwList Menu"), "context");
}

TEST_F(Actions, WaitingPassesTimeInSteps) {
    const auto before = machine().clock.elapsed();
    EXPECT_EQ(doneBy("wait", "0.025"), "");
    EXPECT_EQ(machine().clock.elapsed() - before, 30);
    EXPECT_EQ(doneBy("wait", "0"), "");
    EXPECT_EQ(machine().clock.elapsed() - before, 30);
}

TEST_F(Actions, WhatIsAnsweredLaterIsKept) {
    EXPECT_EQ(doneBy("answer", "nein"), "");
    EXPECT_EQ(doneBy("browse", "C:\\a b"), "");
    EXPECT_EQ(doneBy("save", "C:\\a b.zip"), "");
    EXPECT_EQ(machine().answers.back(), 7);
    EXPECT_EQ(machine().folders.back().view(), u"C:\\a b");
    EXPECT_EQ(machine().savePaths.back(), "C:\\a b.zip");
}

struct Refused {
    const char* word;
    const char* rest;
    const char* text;
};

TEST_F(Actions, RefuseWhatNoUserCanDo) {
    const Refused rows[] = {
        {"click", "lblLabel", "lblLabel is a label, not a button"},
        {"text", "cmdButton x", "cmdButton is a button, not a text box"},
        {"text", "txtLocked x", "txtLocked is locked"},
        {"choose", "cboCombo drei", "cboCombo has no entry 'drei'"},
        {"choose", "cboCombo", "cboCombo has no entry ''"},
        {"choose", "txtText x", "txtText is a text box, not a combo box"},
        {"select", "lvwList 1-2", "lvwList takes one row only"},
        {"select", "lvwList 1 4", "there is no row 4, the list has 3"},
        {"column", "lvwList 0", "no such column"},
        {"column", "lvwList 3", "no such column"},
        {"column", "lvwList 2", "the column is hidden"},
        {"key", "cmdButton Taste", "unknown key 'Taste'"},
        {"key", "cmdNix F4", "cmdNix does not exist"},
        {"menu", "cmdButton", "cmdButton is a button, not a menu"},
        {"nav", "Hilfe", "the navigation bar has no icon 'Hilfe'"},
        {"close", "frmNix", "frmNix is not there"},
        {"huepfe", "", "unknown action 'huepfe'"},
    };
    for (const Refused& row : rows) EXPECT_EQ(refusalOf(row.word, row.rest), row.text);
}

TEST_F(Actions, RefuseWhatIsOutOfReach) {
    const auto refusals = [&] {
        return refusalOf("click", "cmdButton") + "|" + refusalOf("menu", "mnuItem");
    };
    form_.button.setEnabled(false);
    form_.item.setEnabled(false);
    EXPECT_EQ(refusals(), "cmdButton is disabled|mnuItem is disabled");
    form_.button.setEnabled(true);
    form_.item.setEnabled(true);
    form_.button.setVisible(false);
    form_.item.setVisible(false);
    EXPECT_EQ(refusals(), "cmdButton is hidden|mnuItem is hidden");
    form_.button.setVisible(true);
    form_.setVisible(false);
    EXPECT_EQ(refusalOf("click", "cmdButton"), "cmdButton is on a hidden window");
    EXPECT_EQ(refusalOf("close", "frmMain"), "frmMain is not there");
    form_.unload();
    EXPECT_EQ(refusalOf("tray", "left"), "no window is there");
    EXPECT_EQ(refusalOf("resize", "1 1"), "no window is there");
}

TEST_F(Actions, RefuseToResizeOrCloseWhatCannotBe) {
    EXPECT_EQ(refusalOf("resize", "-1 0"), "a size is not negative");
    EXPECT_EQ(refusalOf("resize", "0 -1"), "a size is not negative");
    EXPECT_EQ(refusalOf("resize", "0 0"), "");
    form_.setWindowState(WindowState::Minimised);
    EXPECT_EQ(refusalOf("resize", "100 100"), "the window is not in its normal state");
    form_.setWindowState(WindowState::Normal);
    form_.setBorder(BorderStyle::FixedDialog);
    EXPECT_EQ(refusalOf("resize", "100 100"), "the window cannot be resized");
    form_.setBorder(BorderStyle::FixedNoControls);
    EXPECT_EQ(refusalOf("close", ""), "frmMain has no close box");
    form_.setBorder(BorderStyle::FixedDialog);
    EXPECT_EQ(refusalOf("close", ""), "");
    EXPECT_FALSE(form_.loaded());
}

}  // namespace
}  // namespace bromvale::testing
