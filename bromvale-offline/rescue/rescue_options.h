// What the command line asks of raw hives and disks.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "bromvale-offline/rescue/report.h"

namespace bromvale::offline {

enum class WantedView { Default, Only64, Only32, Both };

// Paths of the host and users are UTF-8.
struct RescueOptions {
    struct HiveOption {
        std::u16string key;  // "HKEY_LOCAL_MACHINE\Software"
        std::string file;
        std::vector<std::string> logs;  // none: those that lie beside the file under its name
    };
    struct ReportOption {
        ReportForm form = ReportForm::Text;
        std::string file;  // "-" for standard output
    };
    std::string windows;
    std::string user;
    WantedView view = WantedView::Default;
    std::vector<HiveOption> hives;
    std::vector<ReportOption> reports;
    std::string exportFile;
    std::u16string exportKey;  // empty: all
    std::string remove;        // "all", rows, or a file of rows
    std::optional<std::size_t> yes;
    std::string undo;  // a stamp, or "list"
    bool write = false;
    bool check = false;
    bool force = false;             // an undo of what was changed since
    bool notHibernated = false;     // the user's word against a doubt
    bool loseTransactions = false;  // the user's word about *.regtrans-ms

    [[nodiscard]] bool wanted() const;
};

// Takes the option at `arguments[0]` and its values; how many arguments that were, 0 for one that is not of
// these. `problem` says what is wrong with them.
[[nodiscard]] std::size_t readRescueOption(std::span<char* const> arguments, RescueOptions& options,
                                           std::optional<std::string>& problem);
// What doesn't go together.
[[nodiscard]] std::optional<std::string> checkTogether(const RescueOptions& options);

}  // namespace bromvale::offline
