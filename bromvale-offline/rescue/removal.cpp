#include "bromvale-offline/rescue/removal.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>

#include "bromvale-offline/rescue/chosen_rows.h"
#include "bromvale-offline/rescue/export.h"
#include "bromvale-offline/rescue/rescue.h"
#include "bromvale-offline/rescue/undo.h"
#include "bromvale-offline/set_up.h"
#include "platform/offline/locale/code_page.h"

namespace bromvale::offline {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

// Keys ----------------------------------------------------------------------------------------

// What the program removes when it is told to remove these rows.
struct Announced {
    std::map<std::size_t, std::set<Cell>> cells;  // by index into Sources::hives
    std::vector<std::u16string> paths;            // all, also those that come from no hive
    std::string completeCopy;                     // the program's own
};

// What lies on the disk may have changed between two scans, and with it which row is which.
void requireSameRows(const Findings& findings, std::size_t run, const ScanResult& again) {
    for (std::size_t i = 0; i < findings.rows.size(); ++i) {
        const auto& [foundIn, place] = findings.foundIn[i];
        if (foundIn != run) continue;
        const FoundRow& then = findings.rows[i];
        const FoundRow* const now = place < again.rows.size() ? &again.rows[place] : nullptr;
        if (now == nullptr || now->key != then.key || now->valueName != then.valueName ||
            now->place != then.place)
            throw RescueStop{kFailed, "the disk was changed while it was looked at; nothing was written"};
    }
}

Announced announce(const Findings& findings, const Options& options, const std::vector<bool>& chosen) {
    Announced announced;
    for (std::size_t run = 0; run < findings.runs.size(); ++run) {
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < findings.rows.size(); ++i) {
            if (chosen[i] && findings.foundIn[i].run == run) places.push_back(findings.foundIn[i].place);
        }
        if (places.empty()) continue;
        const ScanResult result = removeIn(findings.runs[run], options, places);
        if (!result.failure.empty()) throw RescueStop{kFailed, result.failure};
        requireSameRows(findings, run, result);
        for (std::size_t i = 0; i < result.removed.size(); ++i)
            announced.cells[findings.runs[run].hives[i]].insert(result.removed[i].begin(),
                                                                result.removed[i].end());
        announced.paths.insert(announced.paths.end(), result.removedPaths.begin(), result.removedPaths.end());
        announced.completeCopy = result.completeCopy;
    }
    return announced;
}

bool liesBelow(const Hive& hive, Cell cell, const std::set<Cell>& others) {
    for (HiveKey key = hive.key(cell); key.cell != hive.base().root;) {
        key = hive.key(key.parent);
        if (others.contains(key.cell)) return true;
    }
    return false;
}

struct Going {
    std::vector<HiveToClean> hives;
    std::size_t keys = 0;  // those below others included
};

HiveToClean toClean(const SourceHive& source, const std::set<Cell>& cells, std::size_t& keys) {
    const Hive& hive = source.loaded.hive->hive();
    HiveToClean going;
    going.path = source.loaded.path;
    going.shown = source.loaded.print;
    for (std::size_t i = 0; i < source.loaded.logs.size(); ++i)
        going.logs.push_back(
            {source.loaded.logs[i].name, source.loaded.logs[i].path, source.loaded.logPrints[i]});
    going.mandatoryProfile = source.mandatory;
    std::vector<Cell> topmost;
    for (const Cell cell : cells) {
        if (liesBelow(hive, cell, cells)) continue;
        going.keys.push_back({cell, utf8Of(source.liveKey + pathIn(hive, cell))});
        topmost.push_back(cell);
    }
    std::ranges::sort(going.keys, {}, &AnnouncedKey::path);
    for (const AnnouncedKey& key : going.keys) {
        const std::size_t count = countKeys(hive, key.cell);
        const std::string below = count > 1 ? " and " + std::to_string(count - 1) + " below it" : "";
        std::printf("  %s%s\n", shownText(key.path).c_str(), below.c_str());
        keys += count;
    }
    going.completeCopy = completeCopyOf(source, topmost);
    return going;
}

Going showWhatGoes(const Announced& announced, const Sources& sources) {
    Going going;
    for (const auto& [index, cells] : announced.cells) {
        if (cells.empty()) continue;
        std::printf("%s\n", shownText(sources.hives[index].loaded.path).c_str());
        going.hives.push_back(toClean(sources.hives[index], cells, going.keys));
    }
    std::fflush(stdout);
    return going;
}

void addLinkRefusals(const Announced& announced, const Sources& sources, std::vector<Refusal>& refusals) {
    for (const auto& [index, cells] : announced.cells) {
        if (sources.hives[index].isLink && !cells.empty())
            refusals.push_back(refusal(RefusalKind::NotAFile, sources.hives[index].loaded.path,
                                       "The hive stands in its place as a symbolic link"));
    }
}

// A key stays that has others below it, as Windows has it.
void sayWhatStays(const Findings& findings, const Sources& sources, const Announced& announced,
                  const std::vector<bool>& chosen) {
    std::size_t inNoHive = 0;
    std::size_t withOthers = 0;
    for (std::size_t i = 0; i < findings.rows.size(); ++i) {
        if (!chosen[i]) continue;
        const FoundRow& row = findings.rows[i];
        const std::vector<std::size_t>& hives = findings.runs[findings.foundIn[i].run].hives;
        if (row.hive >= hives.size()) {
            ++inNoHive;
            continue;
        }
        const auto cells = announced.cells.find(hives[row.hive]);
        const bool goes =
            cells != announced.cells.end() &&
            (cells->second.contains(row.place) ||
             liesBelow(sources.hives[cells->first].loaded.hive->hive(), row.place, cells->second));
        if (!goes) ++withOthers;
    }
    if (inNoHive > 0)
        sayLine(std::to_string(inNoHive) + " of the rows are of keys that are in no raw hive; they stay");
    if (withOthers > 0)
        sayLine(std::to_string(withOthers) +
                " of the rows are of keys with others below them that were not chosen; they stay");
}

// Windows 9x ----------------------------------------------------------------------------------

std::string stampOf(const Options& options) {
    const SYSTEMTIME now = timeOf(options);
    char text[64];
    std::snprintf(text, sizeof text, "%04u-%02u-%02u_%02u-%02u-%02u", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    return text;
}

// What is the current user's there is that of whoever enters the file.
void requireOneUser(const Findings& findings, const std::vector<bool>& chosen) {
    const std::string* user = nullptr;
    for (std::size_t i = 0; i < findings.rows.size(); ++i) {
        const ReportRow& row = findings.rows[i];
        if (!chosen[i] || row.user.empty()) continue;
        if (user != nullptr && *user != row.user)
            throw RescueStop{
                kWrongUse,
                "the keys are of several users, and a registry file changes those of the user who "
                "enters it; take them out for one after the other with --user"};
        user = &row.user;
    }
}

// Nobody but the machine's own registry editor writes such a registry.
int writeFilesFor9x(const Announced& announced, const std::string& stamp) {
    std::string text = "REGEDIT4\r\n\r\n";
    for (const std::u16string& path : announced.paths) {
        // It would end the line, and what stands behind it would be a command of its own.
        if (std::ranges::any_of(path, [](char16_t unit) { return unit < u' '; }))
            throw RescueStop{kWrongUse,
                             utf8Of(path) + ": no registry file can tell such a name; leave it out"};
    }
    for (const std::u16string& path : announced.paths) text += "[-" + ansiFromUtf16(path) + "]\r\n\r\n";
    const std::string removal = "Bromvale-" + stamp + "-entfernen.reg";
    const std::string copy = "Bromvale-" + stamp + "-zurueck.reg";
    writeNewFile(copy, announced.completeCopy);
    writeNewFile(removal, text);
    sayLine(std::to_string(announced.paths.size()) + " keys: " + removal +
            " removes them when the machine's registry editor is told to enter it, " + copy +
            " brings them back");
    return 0;
}

// The question --------------------------------------------------------------------------------

// The number of keys must be typed, so that nobody agrees to more than he has seen.
bool agrees(const Options& options, std::size_t keys) {
    if (options.rescue.yes) {
        if (*options.rescue.yes == keys) return true;
        sayLine(std::to_string(keys) + " keys would go, not " + std::to_string(*options.rescue.yes) +
                "; nothing was written");
        return false;
    }
    if (::isatty(STDIN_FILENO) == 0) {
        sayLine("there is no terminal to ask at; --yes " + std::to_string(keys) + " agrees");
        return false;
    }
    std::fprintf(stderr,
                 "%zu keys go. Type their number to take them out, anything else to leave them: ", keys);
    std::string answer;
    std::getline(std::cin, answer);
    if (answer == std::to_string(keys)) return true;
    sayLine("nothing was written");
    return false;
}

DiskState stateOf(const Sources& sources) {
    if (!sources.disk) return {};
    return {sources.disk->hibernation == Hibernation::Hibernated,
            sources.disk->hibernation == Hibernation::Doubtful};
}

}  // namespace

int removeFrom(const Findings& findings, const Sources& sources, const Options& options) {
    const std::vector<bool> chosen = chosenRows(findings, options.rescue.remove);
    if (sources.is9x()) requireOneUser(findings, chosen);
    const Announced announced = announce(findings, options, chosen);
    if (sources.is9x()) return announced.paths.empty() ? 0 : writeFilesFor9x(announced, stampOf(options));
    Going going = showWhatGoes(announced, sources);
    sayWhatStays(findings, sources, announced, chosen);
    if (going.keys == 0) {
        sayLine("nothing goes");
        return 0;
    }
    sayLine(std::to_string(going.keys) + (going.keys == 1 ? " key goes" : " keys go"));
    if (!options.rescue.write) {
        sayLine("nothing was written; --write takes them out");
        return 0;
    }
    HostFiles files;
    Cleaning cleaning{stampOf(options),
                      stateOf(sources),
                      {options.rescue.notHibernated, options.rescue.loseTransactions},
                      std::move(going.hives)};
    CleaningResult result;
    result.refusals = refusalsOf(files, cleaning);
    addLinkRefusals(announced, sources, result.refusals);
    if (!result.refusals.empty()) {
        result.state = CleaningResult::State::Refused;
        return tellResult(result);
    }
    if (!agrees(options, going.keys)) return kRefused;
    return tellResult(cleanHives(files, cleaning, [](const std::string& path, const std::string& step) {
        sayLine(path + ": " + step);
    }));
}

}  // namespace bromvale::offline
