#pragma once
// A window with one control of each kind, for tests against real windows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/events.h"
#include "platform/screen.h"
#include "platform/win32/windows/common_controls.h"

namespace bromvale::testing {

class SampleForm : public Form {
  public:
    SampleForm() : Form("frmSample") {}
    ImageList imgIcons{this, "imgIcons", 16};
    ListBar Bar{this, "Bar"};
    ProgressBar Progress{this, "Progress"};
    StatusBar Status{this, "Status"};
    Timer tmrTick{this, "tmrTick"};
    Frame fraPage{this, "fraPage"};
    Button cmdOk{this, "cmdOk"};
    Button cmdStop{this, "cmdStop"};
    Button cmdÜbernehmen{this, "cmdÜbernehmen"};
    CheckBox chbMark{this, "chbMark"};
    OptionButton rdoOne{this, "rdoOne"};
    OptionButton rdoTwo{this, "rdoTwo"};
    TextBox txtName{this, "txtName"};
    TextBox txtLines{this, "txtLines"};
    ComboBox cboKind{this, "cboKind"};
    ListView lvwRows{this, "lvwRows"};
    Label lblText{this, "lblText"};
    Line linRule{this, "linRule"};
    Picture imgPicture{this, "imgPicture"};
    MenuItem mnuTop{this, "mnuTop"};
    MenuItem mnuFirst{this, "mnuFirst"};
    MenuItem mnuSecond{this, "mnuSecond"};

    std::vector<float> moves;
    int resizes = 0;
    int unloads = 0;

  protected:
    void design() override {
        setCaption("Muster");
        setScaleSize(9000, 7500);
        Bar.setPlace({150, 150, 1575, 6000});
        if (Bar.bars().empty()) {
            Bar.addBar("Allgemein");
            Bar.addItem({"1", "Backup", 0, "Sicherungen"});
            Bar.addItem({"2", "Hilfe", 1, "Die Hilfe"});
            Bar.addBar("Service");
            Bar.addItem({"3", "Homepage", 2, "Im Netz"});
        }
        put(Bar, 0);
        Status.setPlace({0, 7245, 9000, 255});
        Status.setPanels({{"Status", 5000}, {"", 4000}});
        Progress.setPlace({6000, 7260, 2000, 195});
        fraPage.setPlace({1920, 120, 6900, 6900});
        fraPage.setCaption("Seite");
        inPage(cmdOk, {240, 6300, 1095, 375}, "&Start", 1);
        cmdOk.setDefault(true);
        inPage(cmdStop, {1440, 6300, 1095, 375}, "&Abbrechen", 2);
        cmdStop.setCancel(true);
        inPage(cmdÜbernehmen, {2640, 6300, 1335, 375}, "&Übernehmen", 3);
        inPage(chbMark, {240, 5900, 3000, 255}, "Mar&ke", 4);
        inPage(rdoOne, {240, 5600, 1500, 255}, "Eins", 5);
        inPage(rdoTwo, {2000, 5600, 1500, 255}, "Zwei", 6);
        inPage(txtName, {240, 5200, 3000, 285}, "", 7);
        txtLines.setMultiLine(true);
        inPage(txtLines, {240, 4000, 3000, 1000}, "", 8);
        inPage(cboKind, {240, 3500, 2000, 315}, "", 9);
        lvwRows.setMultiSelect(true);
        lvwRows.setColumns({{"Name", 2000}, {"Wert", 2000}, {"Nummer", 0}});
        inPage(lvwRows, {240, 900, 6000, 2500}, "", 10);
        inPage(lblText, {240, 400, 6000, 255}, "Text", 11);
        linRule.setContainer(&fraPage);
        linRule.setPlace({240, 720, 6000, 0});
        mnuTop.add(mnuFirst);
        mnuTop.add(mnuSecond);
        mnuFirst.setCaption("&Erstes");
        mnuSecond.setCaption("&Zweites");
    }
    void Form_Unload() override { ++unloads; }
    void Form_Resize() override { ++resizes; }
    void Form_MouseMove(float x, float) override { moves.push_back(x); }

  private:
    void put(Control& control, int tab) { control.setTabIndex(tab); }
    void inPage(Control& control, const Place& place, std::string_view caption, int tab) {
        control.setContainer(&fraPage);
        control.setPlace(place);
        control.setCaption(caption);
        control.setTabIndex(tab);
    }
};

class RealWindows : public ::testing::Test {
  protected:
    void SetUp() override {
        form.show();
        DoEvents();
    }
    void TearDown() override { form.unload(); }

    static HWND windowOf(const Control& control) { return control.peer()->window(); }
    static LRESULT send(const Control& control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessageA(windowOf(control), message, wParam, lParam);
    }
    static std::string textOf(const Control& control) {
        char text[500] = {};
        GetWindowTextA(windowOf(control), text, sizeof text);
        return text;
    }
    // The text that a status bar shows, which nothing but its painting brings there.
    std::string panelText(int panel) const {
        char text[500] = {};
        send(form.Status, SB_GETTEXTA, static_cast<WPARAM>(panel - 1), reinterpret_cast<LPARAM>(text));
        return text;
    }
    static void idle() {
        WaitForEvents(0);
        DoEvents();
    }
    // A key as the keyboard sends it: through the queue and the message loop.
    static void press(const Control& control, WPARAM key) {
        PostMessageA(windowOf(control), WM_KEYDOWN, key, 1);
        PostMessageA(windowOf(control), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001u));
        DoEvents();
    }

    SampleForm form;
};

}  // namespace bromvale::testing
