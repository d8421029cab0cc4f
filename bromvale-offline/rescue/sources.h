// Where the registry of a run comes from: a disk with a Windows, or single hives.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "bromvale-offline/options.h"
#include "bromvale-offline/rescue/hive_status.h"
#include "bromvale-offline/rescue/machine_plan.h"
#include "platform/offline/hives/disk/disk.h"

namespace bromvale::offline {

// One hive of the run with whose it is.
struct SourceHive {
    LoadedHive loaded;
    HiveRole role = HiveRole::Software;
    std::size_t user = 0;  // of a user's hives: index into Sources::users
    std::u16string
        liveKey;  // the key that it is on the living machine: for the complete copy and announcements
    bool mandatory = false;
    bool isLink = false;  // its own name is a link, which is not written through
};

struct SourceUser {
    DiskUser user;
    std::optional<std::size_t> hive;  // indices into Sources::hives
    std::optional<std::size_t> classes;
    std::shared_ptr<const CregTree> creg;  // of Windows 9x, where the user has a profile
};

struct Sources {
    std::optional<WindowsDisk> disk;
    std::vector<SourceHive> hives;
    std::vector<SourceUser> users;  // those that were chosen; none of a machine without users
    std::vector<CregMount> cregs;   // of Windows 9x
    std::vector<std::pair<std::u16string, std::size_t>> mounts;  // of single hives: key and index

    bool whole = true;  // no hive that is there was left out since it can't be read

    [[nodiscard]] bool is9x() const { return disk && !disk->nt; }
};

// What stops the tool, with its exit status.
struct RescueStop {
    int status = 2;
    std::string text;  // UTF-8
};

// Opens everything, and says on standard error how it found each hive. Throws RescueStop.
[[nodiscard]] Sources openSources(const Options& options);

// The machines to be scanned: for each chosen user and each wanted view one.
struct PlannedRun {
    MachinePlan plan;
    std::string view;                // "64", "32" or ""
    std::string user;                // UTF-8; empty for a machine without users
    std::vector<std::size_t> hives;  // indices into Sources::hives, as the plan's mounts have them
};
[[nodiscard]] std::vector<PlannedRun> plannedRuns(const Sources& sources, const Options& options);

// "Windows 7 Professional, 6.1.7601, 64-bit", UTF-8; empty without a disk.
[[nodiscard]] std::string windowsText(const Sources& sources);

// "bromvale-offline: " and the line, to standard error.
void sayLine(const std::string& text);

}  // namespace bromvale::offline
