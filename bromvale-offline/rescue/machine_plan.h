// What the offline machine is made of for one scan of raw hives.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/offline/hives/disk/creg.h"
#include "platform/offline/hives/disk/disk.h"
#include "platform/offline/hives/mounted_hive.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {

struct Mount {
    std::u16string path;
    std::shared_ptr<MountedHive> hive;
    Cell place = kNil;
    bool again = false;  // what it holds is mounted elsewhere, too
    bool alone = false;  // what other hives have there is not seen on the living machine
};

struct CregMount {
    std::u16string path;
    std::shared_ptr<const CregTree> tree;
};

struct MachinePlan {
    std::vector<Mount> mounts;
    std::vector<CregMount> cregs;
    // Folders of the host for drives of the disk, which is looked at and not written: no link leads out of
    // them, and what other drives hold counts as not at hand.
    std::map<char, std::string> drives;
    OsVersion os;
    std::u16string windowsFolder = u"C:\\WINDOWS";
    std::u16string programFiles;  // empty: what the registry says, else C:\Programme
    Halves halves = Halves::None;
    bool classesApart = false;
    UINT codePage = 1252;
    std::u16string user;
    std::u16string profile;
    std::map<std::string, std::u16string> environment;  // names in upper case
    bool isDisk = true;  // false: no raw hive is in it, and drives and folders are those of the other options
};

// The drives, folders and system of a plan for a disk; without one no drive of a folder can be written.
void setUpDisk(const MachinePlan& plan);
// The hives alone. `withThoseAgain` false: what is mounted at two keys is there once.
void mountHives(const MachinePlan& plan, bool withThoseAgain);
// The registry: hives, and what the program needs to start without questions. Call startsScan() before the
// scan.
void mountAll(const MachinePlan& plan);
// Takes away what was there for the start alone, and forgets what was removed up to here.
void startsScan();

}  // namespace bromvale::offline
