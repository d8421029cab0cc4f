#include "bromvale-offline/rescue/findings.h"

#include <unistd.h>

#include <algorithm>
#include <set>
#include <tuple>

#include "bromvale-offline/set_up.h"

namespace bromvale::offline {
namespace {

constexpr int kBroken = 1;

ScanRun scanRunOf(const PlannedRun& run, const Options& options) {
    ScanRun scan;
    scan.setUp = [&run, &options] {
        setUpMachine(options);
        setUpDisk(run.plan);
        static_cast<void>(loadRegistries(options));
        mountAll(run.plan);
    };
    for (const Mount& mount : run.plan.mounts) {
        if (std::ranges::find(scan.hives, mount.hive) == scan.hives.end()) scan.hives.push_back(mount.hive);
    }
    scan.showProgress = ::isatty(STDERR_FILENO) != 0;
    return scan;
}

std::string runText(const PlannedRun& run) {
    std::string text = run.user.empty() ? "" : "user " + run.user;
    if (!run.view.empty()) text += (text.empty() ? "" : ", ") + run.view + "-bit view";
    return text;
}

// Where a row is on the disk, whatever view and user it was found with.
class Identity {
  public:
    bool isNew(const FoundRow& row, const PlannedRun& run) {
        const bool inHive = row.hive < run.hives.size();
        return seen_
            .emplace(inHive ? run.hives[row.hive] + 1 : 0, inHive ? row.place : 0, inHive ? u"" : row.key,
                     row.valueName, row.data)
            .second;
    }

  private:
    std::set<std::tuple<std::size_t, std::uint32_t, std::u16string, std::u16string, std::u16string>> seen_;
};

void addRows(Findings& findings, const Sources& sources, const ScanResult& result, std::size_t index,
             Identity& identity) {
    const PlannedRun& run = findings.runs[index];
    for (std::size_t i = 0; i < result.rows.size(); ++i) {
        if (!identity.isNew(result.rows[i], run)) continue;
        Finding finding{{result.rows[i], "", run.view, ""}, index, i};
        if (result.rows[i].hive < run.hives.size()) {
            const SourceHive& hive = sources.hives[run.hives[result.rows[i].hive]];
            finding.row.hiveFile = hive.loaded.path;
            if (hive.role == HiveRole::User || hive.role == HiveRole::UserClasses)
                finding.row.user = run.user;
        } else if (finding.row.key.starts_with(u"HKEY_CURRENT_USER")) {
            finding.row.user = run.user;
        }
        findings.rows.push_back(std::move(finding));
    }
}

}  // namespace

Report Findings::report(const Sources& sources) const {
    Report report{windowsText(sources), {}, elsewhere, sentences};
    for (const Finding& finding : rows) report.rows.push_back(finding.row);
    return report;
}

// What points elsewhere is counted in the first scan: the others of the same machine see nearly the same once
// more.
Findings findAll(const Sources& sources, const Options& options) {
    Findings findings;
    findings.runs = plannedRuns(sources, options);
    Identity identity;
    std::set<std::string> warnings;
    for (std::size_t i = 0; i < findings.runs.size(); ++i) {
        const std::string name = runText(findings.runs[i]);
        const ScanResult result = runScan(scanRunOf(findings.runs[i], options));
        if (!result.failure.empty())
            throw RescueStop{kBroken, name + (name.empty() ? "" : ": ") + result.failure};
        addRows(findings, sources, result, i, identity);
        findings.elsewhere = std::max(findings.elsewhere, result.elsewhere);
        findings.sentences.push_back((name.empty() ? "" : name + ": ") + result.report);
        for (const std::string& warning : result.warnings) {
            if (warnings.insert(warning).second) findings.warnings.push_back(warning);
        }
    }
    return findings;
}

ScanResult removeIn(const PlannedRun& run, const Options& options, const std::vector<std::size_t>& places) {
    ScanRun scan = scanRunOf(run, options);
    scan.remove = places;
    return runScan(scan);
}

}  // namespace bromvale::offline
