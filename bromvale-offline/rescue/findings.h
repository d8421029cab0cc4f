// All scans of a run of the tool, put together.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "bromvale-offline/rescue/report.h"
#include "bromvale-offline/rescue/scan_run.h"
#include "bromvale-offline/rescue/sources.h"

namespace bromvale::offline {

// Where a row was found first.
struct FoundIn {
    std::size_t run = 0;
    std::size_t place = 0;  // its number in that scan's list, from 0
};

struct Findings {
    std::vector<PlannedRun> runs;
    std::vector<ReportRow> rows;   // what views and users share stands once
    std::vector<FoundIn> foundIn;  // for each row
    std::size_t elsewhere = 0;
    std::vector<std::string> sentences;
    std::vector<std::string> warnings;
    bool linksLeftOut = false;  // there are links that can't be judged

    // Takes the rows along.
    [[nodiscard]] Report report(const Sources& sources) &&;
};

// Scans all runs, one after the other. Throws RescueStop where one gives no result.
[[nodiscard]] Findings findAll(const Sources& sources, const Options& options);

// The same run once more, with the removal of rows of its list.
[[nodiscard]] ScanResult removeIn(const PlannedRun& run, const Options& options,
                                  const std::vector<std::size_t>& places);

}  // namespace bromvale::offline
