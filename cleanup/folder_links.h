#pragma once
#include <string>
#include <vector>

#include "platform/exact/files.h"

namespace bromvale {

// A folder that is to be emptied, asked entry by entry what may be deleted without leaving it. What can't be
// found out is no permission: not which path the system arrives at, and not what a sub folder holds.
class EmptiedFolder {
  public:
    // With its trailing backslash.
    explicit EmptiedFolder(std::string path);

    // Whether `name` leads to the entry that the folder lists as `listed`, and to nothing else: false for a
    // link that can't be told from what it points to (some systems open the target under the link's name
    // whatever they are asked for, so that deleting the link would delete the target), for an entry in whose
    // place something else was put, and for a path that is too long. Systems that tell no final paths are
    // taken at their word.
    [[nodiscard]] bool holds(const std::string& name, const std::string& listed) const;

    enum class Finding {
        Clear,   // the shell may have it
        Gone,    // a link, which went; or it had vanished
        Unsure,  // a link that stays, or something that can't be looked into
    };
    // Takes an entry away that is a link, and out of an entry that is a folder all links at any depth: where
    // the recycle bin can't take a folder the shell deletes what lies below, and that of several systems goes
    // on behind the links.
    [[nodiscard]] Finding takeLinksOut(const std::string& name, const std::string& listed) const;

  private:
    struct SubFolder {
        std::string name;
        std::string listed;
    };
    EmptiedFolder(std::string path, std::u16string finalPath);
    [[nodiscard]] EmptiedFolder sub(const SubFolder& folder) const;
    [[nodiscard]] bool takeAllLinksOut() const;
    // False where something can't be told; adds to `folders` what must be looked into.
    [[nodiscard]] bool takeLink(const FoundEntry& found, std::vector<SubFolder>& folders) const;
    [[nodiscard]] bool isStillFolder(const std::string& name, const std::string& listed) const;
    [[nodiscard]] bool hasVanished(const std::string& listed) const;

    std::string path_;
    std::u16string finalPath_;  // with its backslash; empty where it can't be told
};

}  // namespace bromvale
