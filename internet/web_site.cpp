#include "core/routine.h"
#include "internet/web_page.h"
#include "platform/shell.h"
#include "ui/navigation.h"

namespace bromvale {

void CallWebSite() {
    constexpr Routine routine{{"modInternet", "CallWebSite"}};
    routine.started();
    routine.step([] {
        ShellExecuteA(nullptr, nullptr, (webServices() + "/").c_str(), nullptr, nullptr, SW_SHOWMAXIMIZED);
    });
    routine.ended();
}

}  // namespace bromvale
