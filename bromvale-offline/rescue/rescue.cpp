#include "bromvale-offline/rescue/rescue.h"

#include <cstdio>
#include <utility>

#include "bromvale-offline/rescue/export.h"
#include "bromvale-offline/rescue/findings.h"
#include "bromvale-offline/rescue/removal.h"
#include "bromvale-offline/rescue/undo.h"

namespace bromvale::offline {
namespace {

constexpr int kWrongUse = 2;

void writeReport(const Report& report, const RescueOptions::ReportOption& option) {
    const std::string text = reportText(report, option.form);
    if (option.file == "-") return writeToStandardOutput(text);
    writeNewFile(option.file, text);
}

void writeReports(const Report& report, const RescueOptions& options) {
    if (options.reports.empty()) return writeReport(report, {ReportForm::Text, "-"});
    for (const auto& option : options.reports) writeReport(report, option);
}

void sayWarnings(const Findings& findings, const Sources& sources, const Options& options) {
    for (const std::string& warning : findings.warnings) sayLine(warning);
    if (findings.elsewhere > 0 && !sources.disk && !sources.hives.empty() && options.drives.empty())
        sayLine("no drive is at hand; --drive C:=FOLDER says which folder is drive C");
}

int scanAndReport(const Sources& sources, const Options& options) {
    Findings findings = findAll(sources, options);
    sayWarnings(findings, sources, options);
    if (!options.rescue.remove.empty()) {
        if (!options.rescue.reports.empty()) writeReports(Findings(findings).report(sources), options.rescue);
        return removeFrom(findings, sources, options);
    }
    const Report report = std::move(findings).report(sources);
    writeReports(report, options.rescue);
    if (!options.rescue.check) return 0;
    if (!report.rows.empty()) return kFaultsFound;
    // Of what was not read nobody knows that it is without faults.
    return sources.whole ? 0 : kWrongUse;
}

int rescue(const Options& options) {
    if (!options.rescue.undo.empty()) return undo(options);
    if (const int status = goOnWithUnfinished(options)) return status;
    const Sources sources = openSources(options);
    if (options.rescue.exportFile.empty()) return scanAndReport(sources, options);
    return exportRegistry(sources, options);
}

}  // namespace

int runRescue(const Options& options) {
    try {
        return rescue(options);
    } catch (const RescueStop& stop) {
        sayLine(stop.text);
        return stop.status;
    } catch (const std::exception& failure) {
        sayLine(failure.what());
        return kWrongUse;
    }
}

}  // namespace bromvale::offline
