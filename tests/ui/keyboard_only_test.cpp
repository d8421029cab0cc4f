// The pages without a mouse: Tab comes to every control and leaves it.
#include <algorithm>
#include <vector>

#include "platform/controls/virtual_keys.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

class KeyboardOnly : public MainFormTest {
  protected:
    static std::vector<Control*> stops() {
        std::vector<Control*> all;
        std::ranges::copy_if(frmMain().controls(), std::back_inserter(all), &Control::isTabStop);
        return all;
    }
    // Tabs once round, from the bar to the bar; the controls on the way.
    static std::vector<Control*> round(bool backwards) {
        std::vector<Control*> visited;
        frmMain().Menu.setFocus();
        do {
            EXPECT_TRUE(frmMain().userKey(kTab, backwards, false));
            visited.push_back(frmMain().focused());
        } while (frmMain().focused() != &frmMain().Menu && visited.size() < 100);
        return visited;
    }
    static void expectRound(const char* page) {
        const std::vector<Control*> forwards = round(false);
        std::vector<Control*> backwards = round(true);
        EXPECT_TRUE(std::ranges::is_permutation(forwards, stops())) << page;
        // Both ways end at the bar.
        std::reverse(backwards.begin(), backwards.end() - 1);
        EXPECT_EQ(forwards, backwards) << page;
    }
};

TEST_F(KeyboardOnly, TabComesToEveryControlOfEachPageOnceAndBackToTheBar) {
    frmMain().show();
    for (const char* page : {"Registry Scan starten", "Backup", "Programme deinstallieren",
                             "Festplatte aufräumen", "Optionen", "Bug-Report"}) {
        nav(page);
        expectRound(page);
    }
}

TEST_F(KeyboardOnly, EveryPageIsReachedByTheArrowKeysAndReturnInTheBar) {
    frmMain().show();
    ListBar& bar = frmMain().Menu;
    bar.setOpenBar(0);
    bar.userKey(kHome, false, false);
    bar.userKey(kDown, false, false);
    bar.userKey(kReturn, false, false);
    EXPECT_EQ(shownPages(), "Frame2 ");
    bar.userKey(kEnd, false, false);
    bar.userKey(kDown, false, false);
    bar.userKey(kReturn, false, false);
    EXPECT_EQ(bar.openBar(), 1);
    bar.userKey(kReturn, false, false);
    EXPECT_EQ(shownPages(), "Frame4 ");
}

}  // namespace
}  // namespace bromvale::testing
