#pragma once
#include <cstdint>
#include <string>

#include "base/function_ref.h"
#include "platform/files.h"

namespace bromvale {

// What a folder lists, with marks in the names where the code page lacks a character (text.h). The
// paths that are given may carry marks, too, and then lead by their true names. On the 9x family these are
// the ANSI functions.

struct FoundEntry {
    std::string name;
    std::string shortName;  // empty where there is none beside the name
    DWORD attributes = 0;
    DWORD reparseTag = 0;
    std::uint64_t size = 0;
    FILETIME written{};

    [[nodiscard]] bool isFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
};

// FindFirstFile and its followers, below the two functions that follow.
class FolderSearch {
  public:
    // A path whose last part may be a mask.
    explicit FolderSearch(const std::string& sought);
    ~FolderSearch();
    FolderSearch(const FolderSearch&) = delete;
    FolderSearch& operator=(const FolderSearch&) = delete;

    // False behind the last entry, and where the search fails.
    [[nodiscard]] bool next(FoundEntry& entry);
    // 0 while there are entries and behind the last one; else the last error of the search. A folder that
    // isn't there and one that can't be opened both give an error, and so does a path that is too long.
    [[nodiscard]] DWORD error() const { return error_; }

  private:
    void begin(const std::string& sought);
    [[nodiscard]] bool read();

    HANDLE search_ = INVALID_HANDLE_VALUE;
    FoundEntry found_;
    bool ready_ = false;  // found_ holds an entry that wasn't handed out
    DWORD error_ = 0;
};

// Hands out what a folder holds, by a path whose last part may be a mask; not the two entries that it has of
// itself and of the one above. False where `visit` answered so, which ends the walk, and where the folder
// can't be listed to its end.
bool walkFolder(const std::string& sought, FunctionRef<bool(const FoundEntry&)> visit);

// The one entry that a path without wildcards names: 0 or the last error.
[[nodiscard]] DWORD findEntry(const std::string& path, FoundEntry& entry);

// Whether the functions that take a path would take this one, whose marks count as one character each:
// MAX_PATH with the NUL. Some cut a longer one, and what is left names another file.
[[nodiscard]] bool fitsPath(const std::string& path);

enum class Links {
    Open,    // a link at the path's end is opened itself, where the system can
    Follow,  // what it points to is opened
};

// Whether the system tells final paths at all: from Windows Vista on.
[[nodiscard]] bool tellsFinalPaths();

// The path that the system arrives at when it opens a file or folder, in the form of its own. Empty where
// that can't be told: it isn't there, it can't be opened, or no such system.
[[nodiscard]] std::u16string finalPath(const std::string& path, Links links);

}  // namespace bromvale
