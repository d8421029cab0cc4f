#pragma once

namespace bromvale {

// True asks every loop of a scan to stop. False before the first scan and while one runs, True behind it.
inline bool ScanAbort = false;

// The entry just checked closed a group and was not buffered: phase 2 hands it to the checks once more.
inline bool RepeatEntry = false;

}  // namespace bromvale
