// A window's life: design, load, resize, unload.
#include <algorithm>

#include "platform/screen.h"
#include "tests/ui/sample_form.h"

namespace bromvale::testing {
namespace {

using Events = std::vector<std::string>;

TEST(FormLife, LoadingDesignsResizesAndLoadsOnceInThisOrder) {
    SampleForm form;
    EXPECT_FALSE(form.loaded());
    form.load();
    form.load();
    EXPECT_TRUE(form.loaded());
    EXPECT_EQ(form.events, (Events{"design", "resize", "load"}));
    EXPECT_FALSE(form.visible());
}

TEST(FormLife, ShowingLoadsFirst) {
    SampleForm form;
    form.show();
    EXPECT_EQ(form.events, (Events{"design", "resize", "load"}));
    EXPECT_TRUE(form.visible());
    form.show();
    EXPECT_TRUE(form.visible());
}

TEST(FormLife, LoadedFormsStandInTheOrderOfTheirLoading) {
    SampleForm a;
    SampleForm b;
    b.load();
    a.load();
    EXPECT_EQ(loadedForms(), (std::vector<Form*>{&b, &a}));
    b.unload();
    EXPECT_EQ(loadedForms(), (std::vector<Form*>{&a}));
    b.load();
    unloadAllForms();
    EXPECT_TRUE(loadedForms().empty());
}

TEST(FormLife, UnloadingRunsItsHandlerOnceAndHidesTheWindow) {
    SampleForm form;
    form.show();
    form.events.clear();
    form.unload();
    form.unload();
    EXPECT_EQ(form.events, Events{"unload"});
    EXPECT_FALSE(form.loaded());
    EXPECT_FALSE(form.visible());
    EXPECT_EQ(form.focused(), nullptr);
    EXPECT_EQ(form.window(), nullptr);
}

TEST(FormLife, TheNextLoadStartsFromTheDesignAgain) {
    SampleForm form;
    form.load();
    form.first.setCaption("anders");
    form.status.setPanelText(1, "anders");
    form.first.setLeft(900);
    form.unload();
    form.load();
    EXPECT_EQ(form.first.caption(), "&Erster");
    EXPECT_EQ(form.status.panelText(1), "links");
    EXPECT_EQ(form.first.left(), 150);
}

TEST(FormLife, TheCloseBoxUnloads) {
    SampleForm form;
    form.show();
    form.userClose();
    EXPECT_FALSE(form.loaded());
}

class SelfUnloading : public SampleForm {
  public:
    int unloads = 0;

  protected:
    void Form_Unload() override {
        ++unloads;
        unloadAllForms();
    }
};

TEST(FormLife, AHandlerThatUnloadsAllFormsDoesNotRunItselfAgain) {
    SampleForm other;
    SelfUnloading form;
    other.load();
    form.load();
    form.unload();
    EXPECT_EQ(form.unloads, 1);
    EXPECT_FALSE(other.loaded());
    EXPECT_TRUE(loadedForms().empty());
}

TEST(FormLife, TheOuterSizeIsTheInnerOneAndTheFrame) {
    SampleForm form;
    form.load();
    const FrameSize frame = frameSize(BorderStyle::Sizable);
    EXPECT_EQ(form.scaleWidth(), 6000);
    EXPECT_EQ(form.scaleHeight(), 4500);
    EXPECT_EQ(form.width(), 6000 + frame.width);
    EXPECT_EQ(form.height(), 4500 + frame.height);
}

TEST(FormLife, ASizeRunsResizeOnceAndAMoveOrTheSameSizeDoesNot) {
    SampleForm form;
    form.load();
    form.events.clear();
    form.setWidth(form.width() + 1500);
    EXPECT_EQ(form.events, Events{"resize"});
    EXPECT_EQ(form.scaleWidth(), 7500);
    form.setWidth(form.width());
    form.setLeft(form.left() + 150);
    EXPECT_EQ(form.events, Events{"resize"});
}

TEST(FormLife, AStatusBarLiesAlongTheLowerEdge) {
    SampleForm form;
    form.load();
    EXPECT_EQ(form.status.place(), (Place{0, 4245, 6000, 255}));
    form.setPlace({form.left(), form.top(), form.width() + 1500, form.height() + 900});
    EXPECT_EQ(form.status.place(), (Place{0, 5145, 7500, 255}));
}

class AtLeast : public SampleForm {
  public:
    int runs = 0;
    std::vector<int> widths;

  protected:
    void Form_Resize() override {
        ++runs;
        if (width() < 9000) setWidth(9000);
        widths.push_back(width());
    }
};

TEST(FormLife, ASizeAssignedWithinResizeNestsAndEndsStable) {
    AtLeast form;
    form.load();
    EXPECT_EQ(form.runs, 2);
    EXPECT_EQ(form.widths, (std::vector<int>{9000, 9000}));
    form.setWidth(6000);
    EXPECT_EQ(form.width(), 9000);
    EXPECT_EQ(form.scaleWidth(), 9000 - frameSize(BorderStyle::Sizable).width);
}

TEST(FormLife, AMinimisedWindowKeepsItsSizeAndRunsNoResize) {
    SampleForm form;
    form.load();
    form.events.clear();
    const Place before = form.place();
    form.placed({0, 0, 2400, 360}, 0, 0, WindowState::Minimised);
    EXPECT_EQ(form.windowState(), WindowState::Minimised);
    EXPECT_EQ(form.place(), before);
    EXPECT_EQ(form.scaleWidth(), 6000);
    EXPECT_TRUE(form.events.empty());
}

TEST(FormLife, AWindowIsCentredOnTheScreen) {
    SampleForm form;
    form.load();
    form.centreOnScreen();
    EXPECT_EQ(form.left() / 30, (screenWidth() - form.width()) / 2 / 30);
    EXPECT_EQ(form.top() / 30, (screenHeight() - form.height()) / 2 / 30);
}

TEST(FormLife, ControlsAreFoundByTheirExactName) {
    SampleForm form;
    EXPECT_EQ(form.find("second"), &form.second);
    EXPECT_EQ(form.find("Second"), nullptr);
}

}  // namespace
}  // namespace bromvale::testing
