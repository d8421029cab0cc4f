#pragma once

namespace bromvale {

// True asks every loop of a scan to stop. False before the first scan and while one runs, True behind it.
inline bool ScanAbort = false;

}  // namespace bromvale
