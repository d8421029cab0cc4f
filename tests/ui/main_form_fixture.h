#pragma once
#include "core/settings.h"
#include "core/state.h"
#include "tests/support/test_machine.h"
#include "ui/frm_main.h"

namespace bromvale::testing {

// A machine with the program's state filled; the window is made by the test, after its own settings.
class MainFormTest : public TestMachine {
  protected:
    MainFormTest() { fillState(); }

    // Names of the pages that can be seen.
    static std::string shownPages() {
        std::string names;
        for (const Frame* page :
             {&frmMain().scan.Frame1, &frmMain().backup.Frame2, &frmMain().bugReport.Frame3,
              &frmMain().programs.Frame4, &frmMain().options.Frame5, &frmMain().cleanup.Frame7}) {
            if (page->visible()) names += page->name() + " ";
        }
        return names;
    }
    static void nav(std::string_view caption) {
        EXPECT_TRUE(frmMain().Menu.userItemClick(caption)) << caption;
    }
};

}  // namespace bromvale::testing
