// When a label's new text is told to those who don't see it.
#include "platform/controls/announcements.h"
#include "tests/ui/main_form_fixture.h"
#include "tests/ui/sample_form.h"

namespace bromvale::testing {
namespace {

class AnnouncementsTest : public ControlsTest {
  protected:
    void SetUp() override {
        ControlsTest::SetUp();
        form.name.setCaption("Text");
        other.setCaption("Anderer");
    }
    [[nodiscard]] std::string told(unsigned now) {
        const Label* const label = announcements.next(now);
        return label ? label->caption() : "";
    }
    Label other{&form, "other"};
    Announcements announcements;
};

TEST_F(AnnouncementsTest, TheFirstIsToldAtOnceAndTheNextASecondLater) {
    announcements.changed(form.name);
    EXPECT_EQ(told(5000), "Text");
    EXPECT_FALSE(announcements.waiting());
    announcements.changed(form.name);
    EXPECT_EQ(told(5999), "");
    EXPECT_TRUE(announcements.waiting());
    EXPECT_EQ(told(6000), "Text");
}

TEST_F(AnnouncementsTest, OneOfAllLabelsIsToldASecond) {
    announcements.changed(form.name);
    announcements.changed(other);
    EXPECT_EQ(told(0), "Text");
    EXPECT_EQ(told(999), "");
    EXPECT_EQ(told(1000), "Anderer");
    EXPECT_EQ(told(2000), "");
}

TEST_F(AnnouncementsTest, ALabelThatChangesAgainWaitsBehindTheOthersAndIsToldOnce) {
    announcements.changed(form.name);
    announcements.changed(other);
    announcements.changed(form.name);
    EXPECT_EQ(told(0), "Anderer");
    EXPECT_EQ(told(1000), "Text");
    EXPECT_EQ(told(2000), "");
}

TEST_F(AnnouncementsTest, TheClockMayWrapRound) {
    announcements.changed(form.name);
    EXPECT_EQ(told(0xFFFFFF00u), "Text");
    announcements.changed(form.name);
    EXPECT_EQ(told(0x2E7u), "");
    EXPECT_EQ(told(0x2E8u), "Text");
}

TEST_F(AnnouncementsTest, WhatIsHiddenEmptyOrGoneIsNotTold) {
    announcements.changed(form.name);
    announcements.changed(other);
    form.front.setVisible(false);
    other.setCaption("");
    EXPECT_EQ(told(0), "");
    EXPECT_FALSE(announcements.waiting());
    form.front.setVisible(true);
    announcements.changed(form.name);
    announcements.forget(form.name);
    EXPECT_EQ(told(0), "");
}

TEST_F(MainFormTest, TheLabelsOfTheScanAreToldAndNoOthers) {
    std::string names;
    for (Control* control : frmMain().controls()) {
        const Label* const label = as<Label>(control);
        if (label && label->announced()) names += label->name() + " ";
    }
    EXPECT_EQ(names, "lblScanBericht lblScanProzent lblScanTxt ");
}

}  // namespace
}  // namespace bromvale::testing
