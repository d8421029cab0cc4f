#pragma once
#include "core/routine.h"
#include "repair/removal_obstacles.h"
#include "ui/scan_page.h"

namespace bromvale {

// What the button of the scan page runs under, in each of its roles.
inline constexpr Routine kStartButton{{"frmMain", "cmdStart_Click"}};

// One scan with its report and what follows it. A scan may be started inside another one.
void runScan(ScanPage& page);

// The button's two roles, told apart by its caption alone.
void pressStart(ScanPage& page, WishedBy who);

// Asks for the end of the program: the window's end is the end of the process, where nothing holds it up.
void closeWindow(ScanPage& page);
// Where the setting AutoClose says so.
void closeIfWished(ScanPage& page);

}  // namespace bromvale
