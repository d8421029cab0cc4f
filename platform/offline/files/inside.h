// Paths below a folder of the host that stands for a disk of Windows: names without case, links followed
// where they stay in the folder and never out of it. Links of Windows come as the mounting program shows
// them: relative ones, ones with the whole path of the host, or with a drive's letter.
#pragma once

#include <sys/stat.h>

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::offline {

struct InsidePath {
    enum class State {
        Found,
        Missing,   // the last name; or what the last link leads to
        NoFolder,  // one of the names before, or it is no folder
        Outside,   // a link leads out of the folder, or to what the mounting program can't tell
        Circle     // of links, or more of them than Windows would follow
    };
    State state = State::Missing;
    std::string path;  // of the host, without links below the root; empty unless found
    struct stat status {};

    [[nodiscard]] bool found() const { return state == State::Found; }
    [[nodiscard]] bool isFolder() const { return found() && S_ISDIR(status.st_mode); }
    [[nodiscard]] bool isFile() const { return found() && S_ISREG(status.st_mode); }
};

class InsideFolder {
  public:
    // `root` in UTF-8, may itself be a link; `letter` is the drive's for which the folder stands.
    explicit InsideFolder(const std::string& root, char letter = 'C');

    // Empty where the root is not there.
    [[nodiscard]] const std::string& root() const { return root_; }
    [[nodiscard]] char letter() const { return letter_; }
    void setLetter(char letter) { letter_ = letter; }

    // From `folder` on, a path of the host in the root and without links (that of another find). `names`
    // in the stored form of stored_text.h; "." and ".." are gone through as links are.
    [[nodiscard]] InsidePath find(const std::string& folder, std::span<const std::string_view> names) const;
    // A path of Windows, stored, separated by backslashes or slashes, without a drive.
    [[nodiscard]] InsidePath find(const std::string& folder, std::string_view path) const;
    // What a link in `folder` leads to.
    [[nodiscard]] InsidePath follow(const std::string& folder, const std::string& link) const;

    // The name that an entry of the folder has: as written, else the first without case in the order of
    // the host's bytes. Nothing where there is none.
    [[nodiscard]] std::optional<std::string> entryOf(const std::string& folder, std::string_view name) const;
    // The names of all entries, in that order. No time of the folder changes where the host allows it.
    [[nodiscard]] static std::vector<std::string> entries(const std::string& folder);
    // What the folders hold is remembered until then.
    void forget() { known_.clear(); }

  private:
    struct Walk;
    bool take(Walk& walk, const std::string& name) const;
    bool takeLink(Walk& walk, const std::string& link) const;

    std::string root_;
    char letter_;
    // By folder: upper-cased stored name to the host's.
    mutable std::map<std::string, std::map<std::string, std::string>> known_;
};

// Names one entry of a folder of the host and nothing above or below it.
[[nodiscard]] bool isPlainName(std::string_view hostName);

// The host's path of a path of Windows, with or without a drive ("\Users\Anna", "C:\Users"), below `root`;
// the letter is not looked at. Nothing where it isn't there, or lies outside.
[[nodiscard]] std::optional<std::string> hostPathInside(const std::string& root,
                                                        std::u16string_view windowsPath);

}  // namespace bromvale::offline
