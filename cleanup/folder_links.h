#pragma once
#include <string>
#include <vector>

#include "platform/files.h"

namespace bromvale {

// A folder that is to be emptied, asked entry by entry what may be deleted without leaving it.
class EmptiedFolder {
  public:
    // With its trailing backslash.
    explicit EmptiedFolder(std::string path);

    // False for a link that cannot be told from what it points to: some systems open the target under the
    // link's name whatever they are asked for, so that deleting the link would delete the target. `listed` is
    // the name under which the folder lists the entry, where `name` is its short one.
    [[nodiscard]] bool holds(const std::string& name, const std::string& listed) const;

    // Takes an entry of this name (or short name) that is a link away, and out of an entry that is a folder
    // all links at any depth. True where the shell may then have the entry: where the recycle bin can't take
    // a folder the shell deletes what lies below, and that of several systems goes on behind the links. False
    // where a link stays, where nobody can look, and where nothing is left to be deleted.
    [[nodiscard]] bool takeLinksOut(const std::string& name) const;

  private:
    [[nodiscard]] bool takeLinksOut(const std::string& pattern, bool entries) const;
    // False where a link stays or has been the entry itself; adds to `folders` what must be looked into.
    [[nodiscard]] bool takeLink(const WIN32_FIND_DATAA& found, bool entries,
                                std::vector<std::string>& folders) const;

    std::string path_;
    std::string finalPath_;  // empty where the system doesn't tell
};

}  // namespace bromvale
