#pragma once

namespace bromvale {

// Asks the web services for the newest version. A greater one is handed to the system's download dialog;
// without an answer the user may have it asked again. Never fails.
void LiveUpdate();

}  // namespace bromvale
