#pragma once
// A small window for tests of the controls: two frames that lie on one another, as the pages of the main
// window do.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "platform/controls.h"

namespace bromvale::testing {

class SampleForm : public Form {
  public:
    SampleForm() : Form("sample") {}
    ~SampleForm() override { unload(); }
    SampleForm(const SampleForm&) = delete;

    Frame front{this, "front"};
    Frame back{this, "back"};
    Button first{this, "first"};
    Button second{this, "second"};
    CheckBox box{this, "box"};
    OptionButton one{this, "one"};
    OptionButton two{this, "two"};
    OptionButton elsewhere{this, "elsewhere"};
    TextBox line{this, "line"};
    TextBox lines{this, "lines"};
    ComboBox choice{this, "choice"};
    Label name{this, "name"};
    ListView list{this, "list"};
    ProgressBar progress{this, "progress"};
    StatusBar status{this, "status"};
    Timer timer{this, "timer"};

    // What happened, in order.
    std::vector<std::string> events;

  protected:
    void design() override {
        events.emplace_back("design");
        setScaleSize(6000, 4500);
        put(front, nullptr, {0, 0, 6000, 4000}, -1);
        put(back, nullptr, {0, 0, 6000, 4000}, -1);
        put(first, &front, {150, 150, 1200, 375}, 1);
        put(second, &front, {1500, 150, 1200, 375}, 2);
        put(box, &front, {150, 600, 1200, 255}, 3);
        put(one, &front, {150, 900, 1200, 255}, 4);
        put(two, &front, {1500, 900, 1200, 255}, 5);
        put(elsewhere, &back, {150, 900, 1200, 255}, 12);
        put(line, &front, {150, 1200, 1200, 285}, 7);
        put(lines, &front, {1500, 1200, 1200, 585}, 8);
        put(choice, &front, {150, 1800, 1200, 315}, 9);
        put(name, &front, {3000, 1200, 1200, 255}, 6);
        put(list, &front, {150, 2200, 5700, 1500}, 10);
        put(progress, nullptr, {3000, 4300, 1000, 150}, -1);
        put(status, nullptr, {0, 4245, 6000, 255}, -1);
        status.setPanels({{"links", 1500}, {"", 1500}, {"rechts", 1500}});
        list.setColumns({{"Name", 1500}, {"Wert", 1500}, {"verborgen", 0}});
        lines.setMultiLine(true);
        back.setVisible(false);
        first.setCaption("&Erster");
        second.setCaption("&Zweiter");
        box.setCaption("&Kasten");
        name.setCaption("&Text:");
        first.setDefault(true);
        second.setCancel(true);
    }
    void Form_Load() override { events.emplace_back("load"); }
    void Form_Unload() override { events.emplace_back("unload"); }
    void Form_Resize() override { events.emplace_back("resize"); }

  private:
    static void put(Control& control, Control* container, const Place& place, int tab) {
        control.setContainer(container);
        control.setPlace(place);
        control.setTabIndex(tab);
    }
};

// Counts the calls of an event.
inline std::function<void()> counting(int& count) {
    return [&count] { ++count; };
}

class ControlsTest : public ::testing::Test {
  protected:
    void SetUp() override { form.load(); }
    SampleForm form;
    int count = 0;
};

}  // namespace bromvale::testing
