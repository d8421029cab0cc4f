// A folder with hives and logs that are to be cleaned, and files of the host that fail when they are told to.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/offline/hives/cleaning/cleaning.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {

// The program ended here.
struct Killed {};

// Counts the calls, and ends or fails at one of them.
class TroubledFiles : public HostFiles {
  public:
    int calls = 0;
    int troubleAt = -1;    // number of a call, from 0
    int number = 0;        // of the error; 0: the program ends before the call
    bool after = false;    // the error comes although the call has done its work
    bool forever = false;  // all calls fail from then on
    // What to do before that call, in place of an error.
    std::function<void()> meanwhile;
    std::set<std::string> unsynced;  // names of files whose bytes may be lost when the power fails
    int firstReplacement = -1;       // the call that puts the first new hive into its place

  protected:
    int failureBefore(std::string_view call, const std::string& name) override;
    int failureAfter(std::string_view call, const std::string& name) override;

  private:
    [[nodiscard]] bool isTrouble() const;
    std::string writing_;
};

// Names, relative to a folder, and bytes of all files in it; a link as its target behind "->".
using FolderState = std::map<std::string, std::string>;

class CleaningTest : public HiveFilesTest {
  protected:
    using HiveFilesTest::HiveFilesTest;

    static constexpr const char* kStamp = "2026-11-22_09-16-05";

    [[nodiscard]] std::string path(const std::string& name) const { return (folder() / name).string(); }
    [[nodiscard]] FolderState state() const;
    void restore(const FolderState& state) const;
    // The folders in it and itself.
    [[nodiscard]] std::vector<std::string> folders() const;

    // Writes hive and logs; the keys are cells of the replayed hive.
    HiveToClean place(const std::string& name, const std::string& hive,
                      const std::vector<std::pair<LogName, std::string>>& logs,
                      const std::vector<std::u16string>& keys) const;
    // Dirty, with a log that makes all kinds of lists of it, and one that is stale.
    HiveToClean placeDirty(const std::string& name) const;
    // Clean, without logs; seven keys, one of which goes.
    HiveToClean placeClean(const std::string& name) const;
    [[nodiscard]] static Cleaning cleaningOf(std::vector<HiveToClean> hives);
    // What a cleaning must make of the hive that lies there: by what the checker and the comparison say.
    void expectCleaned(const HiveToClean& order, const FolderState& before) const;

    [[nodiscard]] static bool logsGone(const HiveToClean& order);

    // Goes on with everything that is unfinished until nothing is.
    void goOn() const;
};

std::string describe(const CleaningResult& result);

}  // namespace bromvale::offline
