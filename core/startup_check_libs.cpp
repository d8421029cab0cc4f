#include "core/startup_check_libs.h"

#include "core/log.h"
#include "core/startup_unload.h"

namespace bromvale {

// The check itself is not there yet: nothing is tested and nothing is registered. It will go through the
// table of components in order, ask the registry for each class, register a file of the system folder whose
// class is missing behind frmLogin, and report a file that is missing too; wininet.dll missing will set
// InternetMissing.
void CheckLibs() {
    const Tags tags{"modLibRegister", "CheckLibs"};
    tags.trace("started");
    unloadForm("frmLogin");
    tags.trace("endet");
}

}  // namespace bromvale
