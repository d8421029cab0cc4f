#include "bromvale-offline/rescue/undo.h"

#include <algorithm>
#include <filesystem>

#include "bromvale-offline/rescue/report.h"
#include "bromvale-offline/rescue/rescue.h"
#include "bromvale-offline/rescue/sources.h"
#include "platform/offline/hives/cleaning/recovery.h"
#include "platform/offline/hives/cleaning/undo.h"

namespace bromvale::offline {
namespace {

constexpr int kFailed = 1;

void addFolder(std::vector<std::string>& folders, const std::string& file) {
    std::string folder = std::filesystem::path(file).parent_path().string();
    if (folder.empty()) folder = ".";
    if (std::ranges::find(folders, folder) == folders.end()) folders.push_back(folder);
}

struct Place {
    std::vector<std::string> folders;  // all that have hives
    DiskState disk;
};

Place placeOf(const Options& options) {
    Place place;
    for (const auto& hive : options.rescue.hives) addFolder(place.folders, hive.file);
    if (options.rescue.windows.empty()) return place;
    auto found = findWindows(options.rescue.windows, options.drives);
    if (const DiskProblem* problem = std::get_if<DiskProblem>(&found)) throw RescueStop{2, problem->text()};
    const WindowsDisk& disk = std::get<WindowsDisk>(found);
    for (const FoundHive& hive : disk.hives) addFolder(place.folders, hive.path);
    for (const DiskUser& user : disk.users) {
        if (user.hive) addFolder(place.folders, user.hive->path);
        if (user.classes) addFolder(place.folders, user.classes->path);
    }
    place.disk = {disk.hibernation == Hibernation::Hibernated, disk.hibernation == Hibernation::Doubtful};
    return place;
}

std::string_view stateText(CleaningState state) {
    switch (state) {
        case CleaningState::Done: return "can be undone";
        case CleaningState::Undone: return "was undone";
        case CleaningState::Abandoned: return "was given up: something else changed the hive";
        default: return "was broken off";
    }
}

int listThem(HostFiles& files, const Place& place) {
    const ListedCleanings listed = listCleanings(files, place.folders);
    for (const ListedCleaning& cleaning : listed.cleanings) {
        std::printf("%s\n", cleaning.stamp.c_str());
        for (const ListedHive& hive : cleaning.hives) {
            // What was put back is a copy no more.
            const bool damaged = !hive.copiesWhole && hive.state != CleaningState::Undone;
            std::printf("  %s: %zu keys, %s%s%s\n", shownText(hive.path).c_str(), hive.removed,
                        stateText(hive.state).data(), hive.changedSince ? "; the hive was changed since" : "",
                        damaged ? "; its copies are damaged" : "");
        }
        if (cleaning.hives.size() < cleaning.hivesThen)
            std::printf("  %zu more hives of it lie elsewhere\n", cleaning.hivesThen - cleaning.hives.size());
    }
    for (const std::string& path : listed.unreadable) sayLine(path + ": the list can't be read");
    if (listed.cleanings.empty()) sayLine("there is no cleaning here");
    return 0;
}

CleaningProgress progress() {
    return [](const std::string& path, const std::string& step) { sayLine(path + ": " + step); };
}

}  // namespace

int tellResult(const CleaningResult& result) {
    using State = CleaningResult::State;
    for (const Refusal& refusal : result.refusals) {
        const std::string place = refusal.path.empty() ? "" : refusal.path + ": ";
        sayLine(place + refusal.what + " " + refusal.why + " " + refusal.help);
    }
    if (!result.problem.empty()) sayLine(result.problem);
    switch (result.state) {
        case State::NothingToDo: sayLine("there was nothing to do"); return 0;
        case State::Refused: sayLine("nothing was written"); return kRefused;
        case State::TakenBack: sayLine("everything is as it was"); return kFailed;
        case State::Unfinished:
            sayLine(
                "every hive is whole, the old one or the new one; the next run with --write or --undo goes "
                "on");
            return kFailed;
        case State::Done: break;
    }
    for (const CleanedHive& hive : result.hives) {
        if (!hive.copy.empty()) sayLine("  the hive as it was: " + hive.copy);
        if (!hive.completeCopy.empty()) sayLine("  the keys as a registry file: " + hive.completeCopy);
    }
    return 0;
}

int undo(const Options& options) {
    const Place place = placeOf(options);
    HostFiles files;
    if (options.rescue.undo == "list") return listThem(files, place);
    const CleaningWords words{options.rescue.notHibernated, options.rescue.loseTransactions};
    return tellResult(undoCleaning(files, place.folders, options.rescue.undo, place.disk, words,
                                   options.rescue.force, progress()));
}

int goOnWithUnfinished(const Options& options) {
    if (options.rescue.windows.empty() && options.rescue.hives.empty()) return 0;
    const Place place = placeOf(options);
    HostFiles files;
    for (const UnfinishedCleaning& cleaning : unfinishedCleanings(files, place.folders)) {
        sayLine("the cleaning " + cleaning.stamp + " was broken off: " + cleaning.what);
        if (!options.rescue.write) continue;
        if (place.disk.hibernated || (place.disk.hibernationDoubtful && !options.rescue.notHibernated)) {
            sayLine(
                "this Windows is hibernated, or may be, and would write its own over it; start it and shut "
                "it "
                "down fully");
            return kRefused;
        }
        const CleaningResult result = goOnWithCleaning(files, place.folders, cleaning.stamp, progress());
        if (result.state == CleaningResult::State::TakenBack) {
            sayLine("it is taken back; everything is as it was before it");
        } else if (const int status = tellResult(result)) {
            return status;
        }
    }
    return 0;
}

}  // namespace bromvale::offline
