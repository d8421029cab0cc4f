// Takes keys out of hives on a disk, without fear: whatever happens meanwhile, an end of the program or of
// the power, a full disk, one that fails, each hive is afterwards the old one with its old logs or the whole
// new one, and the next start knows which (recovery.h). The way back is undo.h.
//
// All refusals are asked for all hives before anything is written. Then copies of hive and logs are made
// beside them, the logs replayed into a new file and the keys taken out into a second one; it is proved by
// two readers that this is the old tree without the announced keys. Only when that is done for all hives
// the new ones take the places of the old, each in one instant, and the logs go aside behind them: a new
// hive is clean, and Windows ignores old logs beside it; an old one without its logs would be lost.
//
// The names of the files that lie beside a hive afterwards are in record.h.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/offline/hives/cleaning/host_folder.h"
#include "platform/offline/hives/cleaning/refusals.h"
#include "platform/offline/hives/layout.h"
#include "platform/offline/hives/replay.h"

namespace bromvale::offline {

struct AnnouncedKey {
    Cell cell = kNil;  // in the hive after its replay
    std::string path;  // UTF-8, for messages and the list
};

struct LogToClean {
    LogName name = LogName::Log;
    std::string path;
    FilePrint shown;  // printOf its bytes when the keys were chosen
};

struct HiveToClean {
    std::string path;  // of the host, UTF-8
    FilePrint shown;
    std::vector<LogToClean> logs;  // all that there are, of a clean hive too; in the hive's folder
    std::vector<AnnouncedKey> keys;
    std::string completeCopy;       // bytes of a registry file with these keys; none is made of no bytes
    bool mandatoryProfile = false;  // a name that ends in .MAN says so by itself
};

// What is known of the disk.
struct DiskState {
    bool hibernated = false;           // or started fast
    bool hibernationDoubtful = false;  // hiberfil.sys says neither yes nor no
};

// Words of the user against a refusal.
struct CleaningWords {
    bool notHibernated = false;     // against a doubt alone
    bool loseTransactions = false;  // what waits in *.regtrans-ms
};

struct Cleaning {
    std::string stamp;  // isStamp()
    DiskState disk;
    CleaningWords words;
    std::vector<HiveToClean> hives;
};

// What was just done, with the hive's path: English, without full stop. May throw to stop; that leaves a
// cleaning for the next start.
using CleaningProgress = std::function<void(const std::string& path, const std::string& step)>;

struct CleanedHive {
    std::string path;
    std::size_t removed = 0;  // keys, those below others included
    std::string copy;         // paths of the host
    std::string completeCopy;
    std::string list;
};

struct CleaningResult {
    enum class State {
        NothingToDo,
        Refused,  // nothing was written
        Done,
        TakenBack,   // `problem` has stopped it; everything is as it was
        Unfinished,  // `problem` has stopped it; each hive is whole, old or new, and the next start goes on
    };
    State state = State::NothingToDo;
    std::vector<Refusal> refusals;
    std::string problem;  // English, a sentence without full stop
    std::vector<CleanedHive> hives;
};

// Asks alone.
[[nodiscard]] std::vector<Refusal> refusalsOf(HostFiles& files, const Cleaning& cleaning);

[[nodiscard]] CleaningResult cleanHives(HostFiles& files, const Cleaning& cleaning,
                                        const CleaningProgress& progress);

}  // namespace bromvale::offline
