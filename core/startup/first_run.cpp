#include "core/startup/first_run.h"

#include "core/handling.h"
#include "core/registry_layer.h"
#include "platform/help.h"
#include "ui/frm_main.h"

namespace bromvale {

void CheckFirstRun() {
    const Tags tags{"modMain", "CheckFirstRun"};
    const auto onFailure = reportAndGoOn(tags);
    tags.trace("started");
    // The first use of the window loads it.
    attempt(onFailure, [] { HtmlHelpA(frmMain().window(), "Bromvale.chm", 0, 0); });
    attempt(onFailure, [] { SetKeyValue(kHiveCurrentUser, kSettingsKey, "1stRun", "0", REG_SZ, kSetValue); });
    tags.trace("endet");
}

}  // namespace bromvale
