#include "bromvale-offline/rescue/removal.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <set>

#include "bromvale-offline/rescue/export.h"
#include "bromvale-offline/rescue/rescue.h"
#include "bromvale-offline/rescue/undo.h"
#include "bromvale-offline/set_up.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/utf8.h"

namespace bromvale::offline {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

// Rows ----------------------------------------------------------------------------------------

struct Chosen {
    std::vector<bool> rows;
    void add(std::size_t number) {
        if (number == 0 || number > rows.size())
            throw RescueStop{kWrongUse, "there is no row " + std::to_string(number) + "; the report has " +
                                            std::to_string(rows.size())};
        rows[number - 1] = true;
    }
};

bool readNumber(std::string_view& text, std::size_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc();
}

// "7" or "3-5".
bool chooseRange(Chosen& chosen, std::string_view text) {
    std::size_t first = 0;
    std::size_t last = 0;
    if (!readNumber(text, first)) return false;
    last = first;
    if (text.starts_with('-')) {
        text.remove_prefix(1);
        if (!readNumber(text, last)) return false;
    }
    if (!text.empty() || last < first) return false;
    for (std::size_t number = first; number <= last; ++number) chosen.add(number);
    return true;
}

// Parted by commas and blanks.
bool chooseRanges(Chosen& chosen, std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(", \t"), text.size());
        if (end > 0 && !chooseRange(chosen, text.substr(0, end))) return false;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
}

void chooseKey(Chosen& chosen, const Findings& findings, const std::string& line) {
    const std::u16string key = wideFromUtf8(line).text;
    bool found = false;
    for (std::size_t i = 0; i < findings.rows.size(); ++i) {
        if (findings.rows[i].key != key) continue;
        chosen.rows[i] = true;
        found = true;
    }
    if (!found) throw RescueStop{kWrongUse, "no row has the key " + line};
}

// A line a row: a number, a range, or a key as the report has it; "#" begins a remark.
void chooseByFile(Chosen& chosen, const Findings& findings, const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw RescueStop{kWrongUse,
                         "'" + path + "' is neither all, nor rows as 1,3-5, nor a file that can be read"};
    std::string line;
    while (std::getline(file, line)) {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
        if (line.empty() || line.starts_with('#')) continue;
        if (line.starts_with("HKEY_")) {
            chooseKey(chosen, findings, line);
        } else if (!chooseRanges(chosen, line)) {
            throw RescueStop{kWrongUse, path + ": '" + line + "' is no row"};
        }
    }
}

std::vector<bool> chosenRows(const Findings& findings, const std::string& option) {
    Chosen chosen{std::vector<bool>(findings.rows.size(), option == "all")};
    if (option == "all") return chosen.rows;
    const bool numbers = option.find_first_not_of("0123456789,- ") == std::string::npos;
    if (numbers ? !chooseRanges(chosen, option) : false)
        throw RescueStop{kWrongUse, "'" + option + "' are no rows; write 1,3-5"};
    if (!numbers) chooseByFile(chosen, findings, option);
    return chosen.rows;
}

// Keys ----------------------------------------------------------------------------------------

// What the program removes when it is told to remove these rows.
struct Announced {
    std::map<std::size_t, std::set<Cell>> cells;  // by index into Sources::hives
    std::vector<std::u16string> paths;            // all, also those that come from no hive
    std::string completeCopy;                     // the program's own
};

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
        std::printf("  %s%s\n", key.path.c_str(), below.c_str());
        keys += count;
    }
    going.completeCopy = completeCopyOf(source, topmost);
    return going;
}

Going showWhatGoes(const Announced& announced, const Sources& sources) {
    Going going;
    for (const auto& [index, cells] : announced.cells) {
        if (cells.empty()) continue;
        std::printf("%s\n", sources.hives[index].loaded.path.c_str());
        going.hives.push_back(toClean(sources.hives[index], cells, going.keys));
    }
    std::fflush(stdout);
    return going;
}

// Windows 9x ----------------------------------------------------------------------------------

std::string stampOf(const Options& options) {
    const SYSTEMTIME now = timeOf(options);
    char text[64];
    std::snprintf(text, sizeof text, "%04u-%02u-%02u_%02u-%02u-%02u", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    return text;
}

// Nobody but the machine's own registry editor writes such a registry.
int writeFilesFor9x(const Announced& announced, const std::string& stamp) {
    std::string text = "REGEDIT4\r\n\r\n";
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
    const Announced announced = announce(findings, options, chosenRows(findings, options.rescue.remove));
    if (sources.is9x()) return announced.paths.empty() ? 0 : writeFilesFor9x(announced, stampOf(options));
    Going going = showWhatGoes(announced, sources);
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
