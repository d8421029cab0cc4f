#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "core/routine.h"

namespace bromvale {

// What became of a key before its deletion.
enum class KeyCopy {
    NoKey,       // there is none
    Whole,       // its record is with the operating system
    Unreadable,  // not all of it could be read
    NoForm,      // the file has no way to hold all of it
};

// The file beside an undo file: each key as it is before it goes, every value with its type and bytes, and on
// the 9x family what lies below it. In the form of the system's registry editor, version 5.00 in UTF-16LE
// from Windows 2000 on and REGEDIT4 before.
class CompleteCopy {
  public:
    // With the stamp of the undo file. The file is made with the first key that is there.
    explicit CompleteCopy(std::string_view stamp);
    ~CompleteCopy();
    CompleteCopy(const CompleteCopy&) = delete;
    CompleteCopy& operator=(const CompleteCopy&) = delete;

    // Writes the key's record. Failures of the file are raised (core/text_file.h); no part of a record stays
    // in it then.
    [[nodiscard]] KeyCopy save(std::int32_t hive, std::string_view subKey);

  private:
    void write(std::string_view record);

    std::string stamp_;
    std::string record_;  // keeps its memory from key to key
    int file_ = 0;
};

// Deletes a key that was saved so. One that is not whole in the copy stays; it is named in the log and, with
// kShow, in the error dialog.
void deleteCopied(KeyCopy copy, const Tags& tags, std::int32_t hive, std::string_view subKey,
                  std::int16_t show);

// The handler of what is written to the backup folder. A missing folder is made and the failing statement
// repeated; a failure of that goes to the caller. Any other failure is shown and ends the routine's work.
Ending onBackupFailure(const Tags& tags, const Failure& failure);

// One key that goes without an undo file: its copy has a file of its own, with the stamp of now. Where the
// key can't be copied it stays, and the error dialog tells it.
void copyAndDelete(const Tags& tags, std::int32_t hive, std::string_view subKey);

}  // namespace bromvale
