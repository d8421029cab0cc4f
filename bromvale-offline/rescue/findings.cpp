#include "bromvale-offline/rescue/findings.h"

#include <unistd.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "bromvale-offline/set_up.h"
#include "platform/offline/hives/hive_values.h"

namespace bromvale::offline {
namespace {

constexpr int kBroken = 1;
constexpr const char* kLinksLeftOut =
    "links between classes are not judged: what they lead to may be in what was not read; give all hives";

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

// Tells by their numbers which rows of the findings are the same on the disk, whatever view and user they
// were found with.
class SameOnDisk {
  public:
    explicit SameOnDisk(const Findings& findings) : findings_(findings) {}
    bool operator()(std::size_t left, std::size_t right) const { return identity(left) == identity(right); }
    std::size_t operator()(std::size_t number) const {
        const auto& [hive, place, key, name, data, user] = identity(number);
        std::size_t hash = (hive * 31 + place) * 31 + std::hash<std::string_view>()(user);
        for (const std::u16string_view text : {key, name, data})
            hash = hash * 31 + std::hash<std::u16string_view>()(text);
        return hash;
    }

  private:
    using Text = std::u16string_view;
    [[nodiscard]] std::tuple<std::size_t, std::uint32_t, Text, Text, Text, std::string_view> identity(
        std::size_t number) const {
        const ReportRow& row = findings_.rows[number];
        const PlannedRun& run = findings_.runs[findings_.foundIn[number].run];
        if (row.hive < run.hives.size())
            return {run.hives[row.hive] + 1, row.place, Text(), row.valueName, row.data, ""};
        // Of keys that come from no hive those of the current user are each user's own.
        const bool own = row.key.starts_with(u"HKEY_CURRENT_USER");
        return {0, 0, row.key, row.valueName, row.data, own ? std::string_view(run.user) : ""};
    }

    const Findings& findings_;
};
using RowsOnDisk = std::unordered_set<std::size_t, SameOnDisk, SameOnDisk>;

void nameOrigin(ReportRow& row, const Sources& sources, const PlannedRun& run) {
    row.view = run.view;
    if (row.hive < run.hives.size()) {
        const SourceHive& hive = sources.hives[run.hives[row.hive]];
        row.hiveFile = hive.loaded.path;
        if (hive.role == HiveRole::User || hive.role == HiveRole::UserClasses) row.user = run.user;
    } else if (row.key.starts_with(u"HKEY_CURRENT_USER")) {
        row.user = run.user;
    }
}

// Classes, interfaces and type libraries lead from a user's classes to the machine's. What was not read, or
// not whole, may be what a link leads to.
bool canJudgeLinks(const PlannedRun& run, const ScanResult& result, const Options& options) {
    if (result.damaged) return false;
    if (!run.plan.isDisk || !run.plan.cregs.empty() || !options.registries.empty()) return true;
    return std::ranges::any_of(run.plan.mounts, [](const Mount& mount) {
        constexpr std::u16string_view kClasses = u"HKEY_LOCAL_MACHINE\\Software\\Classes";
        return mount.path.size() <= kClasses.size() &&
               sameName(mount.path, kClasses.substr(0, mount.path.size()));
    });
}

void addRows(Findings& findings, const Sources& sources, std::vector<FoundRow> rows, std::size_t run,
             RowsOnDisk& known, bool links) {
    findings.rows.reserve(findings.rows.size() + rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!links && rows[i].kind == FaultKind::DeadLink) {
            findings.linksLeftOut = true;
            continue;
        }
        findings.rows.push_back({std::move(rows[i]), "", "", ""});
        findings.foundIn.push_back({run, i});
        if (known.insert(findings.rows.size() - 1).second) {
            nameOrigin(findings.rows.back(), sources, findings.runs[run]);
        } else {
            findings.rows.pop_back();
            findings.foundIn.pop_back();
        }
    }
}

}  // namespace

Report Findings::report(const Sources& sources) && {
    return {windowsText(sources), std::move(rows), elsewhere, std::move(sentences)};
}

// What points elsewhere is counted in the first scan: the others of the same machine see nearly the same once
// more.
Findings findAll(const Sources& sources, const Options& options) {
    Findings findings;
    findings.runs = plannedRuns(sources, options);
    RowsOnDisk known(0, SameOnDisk(findings), SameOnDisk(findings));
    std::set<std::string> warnings;
    for (std::size_t i = 0; i < findings.runs.size(); ++i) {
        const std::string name = runText(findings.runs[i]);
        ScanResult result = runScan(scanRunOf(findings.runs[i], options));
        if (!result.failure.empty())
            throw RescueStop{kBroken, name + (name.empty() ? "" : ": ") + result.failure};
        const bool links = canJudgeLinks(findings.runs[i], result, options);
        addRows(findings, sources, std::move(result.rows), i, known, links);
        findings.elsewhere = std::max(findings.elsewhere, result.elsewhere);
        findings.sentences.push_back((name.empty() ? "" : name + ": ") + result.report);
        for (const std::string& warning : result.warnings) {
            if (warnings.insert(warning).second) findings.warnings.push_back(warning);
        }
    }
    if (findings.linksLeftOut) findings.warnings.emplace_back(kLinksLeftOut);
    return findings;
}

ScanResult removeIn(const PlannedRun& run, const Options& options, const std::vector<std::size_t>& places) {
    ScanRun scan = scanRunOf(run, options);
    scan.remove = places;
    return runScan(scan);
}

}  // namespace bromvale::offline
