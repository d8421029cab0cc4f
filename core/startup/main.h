#pragma once

namespace bromvale {

// The program's entry: fills the module-level state, refuses Windows 95, checks the components, then empties
// the folders of liste.txt ("-d") or shows the main window. Returns when the user interface may take over.
void Main();

// Main, then events until no form is loaded. What both the Windows entry and the offline one run.
void runProgram();

}  // namespace bromvale
