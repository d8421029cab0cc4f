#include "core/startup/first_run.h"

#include "core/routine.h"
#include "core/settings.h"
#include "platform/shell.h"
#include "ui/frm_main.h"

namespace bromvale {

void CheckFirstRun() {
    constexpr Routine routine{{"modMain", "CheckFirstRun"}};
    routine.started();
    // The first use of the window loads it.
    routine.step([] { HtmlHelpA(frmMain().window(), "Bromvale.chm", 0, 0); });
    routine.step([] { storeSetting(FirstRun, "0"); });
    routine.ended();
}

}  // namespace bromvale
