#pragma once
#include <vector>

#include "platform/controls.h"
#include "ui/rows.h"

namespace bromvale {

class Page;

// The main window as its pages know it: bars, timer, pictures, and which page is seen.
class MainWindow : public Form {
  public:
    ListBar Menu{this, "Menu"};
    ImageList imgMenu1{this, "imgMenu1", 32};
    ImageList imgList{this, "imgList", 16};
    ProgressBar ProgressBar_{this, "ProgressBar"};  // lies over panel 3, so it stands before the status bar
    StatusBar StatusBar_{this, "StatusBar"};
    Timer tmrTimer{this, "tmrTimer"};
    Socket winsock{this, "winsock"};

    // This page and no other is seen.
    void showPage(const Page& page);
    void mnuPopUpLiveUpdate_Click();  // internet/
    [[nodiscard]] InnerSize innerSize() const { return {scaleWidth(), scaleHeight()}; }
    // What it is where the window has its minimum size at least: what the pages hold is laid out in that.
    [[nodiscard]] InnerSize roomyInnerSize() const;
    // In the order of their construction.
    [[nodiscard]] const std::vector<Page*>& pages() const { return pages_; }

  protected:
    MainWindow() : Form("frmMain") {}

  private:
    friend class Page;
    std::vector<Page*> pages_;
};

}  // namespace bromvale
