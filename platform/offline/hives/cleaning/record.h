// What was done to a hive, in a file beside it: the list from which an undo, or the next start after an end
// in the middle, knows the way. Text in UTF-8, a line a fact, "name: value"; the last line is "end", so that
// a list that was cut is seen:
//
//   bromvale cleaning 1
//   stamp: 2026-11-22_09-16-05
//   state: begun | ready | done | undoing | undone | abandoned
//   hive: SOFTWARE                         the hive's name in this folder
//   part: 1 of 3                           hives of the same cleaning
//   old: SIZE HASH                         the hive as it was; HASH in hexadecimal digits
//   replayed: SIZE HASH                    with its logs
//   new: SIZE HASH                         without the keys
//   present: SIZE HASH                     what an undo found
//   forced: yes                            the undo was told to take back what was changed since
//   log: SIZE HASH SOFTWARE.LOG1           a line each
//   removed: 12                            keys, those below others included
//   key: HKEY_LOCAL_MACHINE\Software\...   a line each; control characters and % as %XX
//   end
//
// The files of the cleaning STAMP of a hive NAME, all in its folder:
//
//   NAME.bromvale-STAMP            the hive as it was
//   NAME.LOG1.bromvale-STAMP       its log as it was: a copy at first, then the log itself
//   NAME.bromvale-STAMP.list       this list
//   NAME.bromvale-STAMP.reg        the complete copy of the keys
//   NAME.bromvale-STAMP.replayed, .new, .aside, .list.new      half-made; none is left at the end
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/hives/cleaning/host_folder.h"

namespace bromvale::offline {

enum class CleaningState {
    Begun,     // files are being made; the hive is as it was
    Ready,     // the new hive is made and proved; perhaps it is in its place
    Done,      // the new hive is in its place, the logs are aside
    Undoing,   // the old ones are on their way back
    Undone,    // they are back
    Abandoned  // the hive was changed by another one meanwhile; the copies of its old state were kept
};

struct RecordedLog {
    std::string name;
    FilePrint print;
};

struct CleaningRecord {
    std::string stamp;
    CleaningState state = CleaningState::Begun;
    std::string hive;
    std::size_t part = 1;
    std::size_t parts = 1;
    FilePrint old;
    FilePrint replayed;
    FilePrint fresh;    // "new"
    FilePrint present;  // while it is being undone
    bool forced = false;
    std::vector<RecordedLog> logs;
    std::size_t removed = 0;
    std::vector<std::string> keys;

    [[nodiscard]] std::string hiveCopy() const;
    [[nodiscard]] std::string completeCopy() const { return hiveCopy() + ".reg"; }
    [[nodiscard]] std::string list() const { return hiveCopy() + ".list"; }
    [[nodiscard]] std::string replayedHive() const { return hiveCopy() + ".replayed"; }
    [[nodiscard]] std::string newHive() const { return hiveCopy() + ".new"; }
    // The name of a file's copy.
    [[nodiscard]] std::string copyOf(const std::string& file) const;
    [[nodiscard]] std::string asideOf(const std::string& file) const { return copyOf(file) + ".aside"; }
    // Whether the next start has something to go on with.
    [[nodiscard]] bool unfinished() const;
};

// Letters, digits, "-" and "_" alone, at most 64: part of file names.
[[nodiscard]] bool isStamp(std::string_view stamp);

[[nodiscard]] std::string_view nameOfState(CleaningState state);
[[nodiscard]] std::string textOfRecord(const CleaningRecord& record);
// Nothing where a line is missing or can't be.
[[nodiscard]] std::optional<CleaningRecord> readRecord(std::string_view text);

// The list takes the place of the one before in one instant, and is on the disk at the return.
void storeRecord(HostFolder& folder, const CleaningRecord& record);

struct FoundRecords {
    std::vector<CleaningRecord> records;  // by stamp, then by hive
    std::vector<std::string> unreadable;  // names of lists
    std::vector<std::string> halfMade;    // names of lists that were being written when the program ended
};

// Of one folder. Lists that don't lie under the name that they tell are unreadable. Throws HostFailure.
[[nodiscard]] FoundRecords findRecords(const HostFolder& folder);

}  // namespace bromvale::offline
