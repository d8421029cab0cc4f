#pragma once
#include <span>

namespace bromvale {

class FrmMain;

// One item of the navigation bar. Its caption is not here: item n shows the key of picture n of imgMenu1.
struct NavigationItem {
    const char* bar;
    const char* toolTip;
    void (*open)(FrmMain& form);
};

// Items in the order of their pictures; those of one bar stand together.
[[nodiscard]] std::span<const NavigationItem> navigationItems();

// Opens the web site in the system's browser. As the pages' handlers it is defined in the folder that it
// belongs to: internet/web_site.cpp.
void CallWebSite();

}  // namespace bromvale
