#pragma once
#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/files/volume.h"
#include "platform/offline/locale/code_page.h"

namespace bromvale::offline {

class OtherHalf;

// Where a path leads.
struct Location {
    Location() = default;
    Location(const Location&) = delete;
    Location& operator=(const Location&) = delete;

    static constexpr std::size_t kMostNames = 132;
    Volume* volume = nullptr;
    bool onHost = false;
    std::array<std::string_view, kMostNames> names;
    std::size_t count = 0;
    char root[2] = {};  // drive letter, upper case; NUL for a share
    std::string_view server;
    std::string_view share;
    std::string path;  // what the names are parts of, where the caller's path was converted

    [[nodiscard]] PathNames all() const { return {names.data(), count}; }
    [[nodiscard]] PathNames parent() const { return {names.data(), count - 1}; }
    // The drive or share without a trailing backslash, and the whole path.
    [[nodiscard]] std::string rootText() const;
    [[nodiscard]] std::string text() const;
};

// The machine's drives and shares. Paths are Windows paths; what is marked so is
// in the stored form of stored_text.h. Behind "\\?\" a path stands for itself: dots and blanks at the end
// of its names belong to them.
class Drives {
  public:
    Drives(const Clock& clock, const OtherHalf& otherHalf) : clock(clock), otherHalf_(otherHalf) {}
    Drives(const Drives&) = delete;
    Drives& operator=(const Drives&) = delete;

    // An empty drive in memory; replaces what the letter stood for.
    void addMemory(char letter);
    // A folder of the host (UTF-8) stands for the drive.
    void addFolder(char letter, const std::string& hostFolder);
    // The same for a disk of Windows: no link in it leads out of the folder.
    void addDisk(char letter, const std::string& hostFolder);
    // An empty share in memory: \\server\share.
    void addShare(std::string_view server, std::string_view share);
    void remove(char letter);
    [[nodiscard]] bool has(char letter) const;

    // 0 or a last-error number: a missing drive or folder, a bad name, an unknown server.
    DWORD locate(const WideText& path, Location& location) const;
    // The same for a path in the stored form, which must outlive `location`.
    DWORD locateReal(std::string_view path, Location& location) const;
    // Where such a path of the program leads, which a 64-bit Windows may redirect.
    DWORD locateStored(std::string_view path, Location& location) const;
    // The path of a file of the host, in the stored form; empty where it lies on no drive.
    [[nodiscard]] std::string pathOfHost(std::string_view hostPath) const;

    // Without fault points and events, for those who set up the machine. Makers make the folders above, too.
    bool makeFolder(const WideText& path);
    bool makeFolders(const Location& location);
    bool writeFile(const WideText& path, std::string_view bytes);
    [[nodiscard]] std::optional<std::string> readFile(const WideText& path) const;
    [[nodiscard]] bool exists(const WideText& path) const;
    // Local time of the last write.
    bool setFileTime(const WideText& path, const SYSTEMTIME& local);
    bool erase(const WideText& path);

    // Makes `link` a folder that leads to another one, which need not be there. In memory only.
    bool linkFolder(const WideText& link, const WideText& target);

    // From now on nothing is made, written or deleted in the folder and below it (ERROR_ACCESS_DENIED); those
    // who set up the machine may.
    void protect(const WideText& folder);
    [[nodiscard]] bool isProtected(const Location& location) const;

    const Clock& clock;

    // Whether entries have names of eight letters and three beside their own. Until it is set, only what the
    // program can't reach by its own name has one, and only on host folders.
    std::optional<bool> shortNames;

    // What drives and shares that are not here hold can't be told: a search for one file there finds it, and
    // is counted. For a machine whose disk is looked at from outside.
    bool othersAreElsewhere = false;
    mutable std::size_t soughtElsewhere = 0;
    // A drive in memory that the program has for itself: beyond this folder (stored) its letter stands for a
    // drive of the disk's machine, which is not here. Empty where there is none.
    std::string ownFolder;
    // Whether the path leads to such a drive or share, or to a device. In the stored form.
    [[nodiscard]] bool isElsewhere(std::string_view path) const;

    // Without a trailing backslash but at a root. In the stored form.
    std::string currentDirectory = "C:\\";

    struct Recycled {
        std::string path;    // where it stood
        std::string stored;  // its name in the bin
    };
    std::vector<Recycled> recycled;

    // The machine's own folders, in the stored form. On a host folder they come into being when something is
    // written below them.
    std::vector<std::string> ownFolders;
    // Makes the folders above `location` that are the machine's own.
    void makeOwnFolders(const Location& location) const;

  private:
    struct Mounted {
        std::unique_ptr<Volume> volume;
        bool onHost = false;
        std::string hostFolder{};  // its real path
    };
    void mount(char letter, Mounted&& mounted);
    void mountFolder(char letter, const std::string& hostFolder, std::optional<char> disk);
    DWORD locateShare(std::string_view path, bool literal, Location& location) const;
    [[nodiscard]] bool isBesidesOwn(std::string_view path) const;
    const OtherHalf& otherHalf_;
    std::array<Mounted, 26> drives_;
    std::vector<std::string> protected_;                  // whole paths in the stored form
    std::map<std::string, Mounted, std::less<>> shares_;  // "SERVER\SHARE"
};

enum class LinkAtEnd { IsMeant, LeadsOn };

// Where a path leads in the end, in the stored form: past the links on the way, with names in their own case
// and short ones made long. Empty where nothing is there.
[[nodiscard]] std::string truePath(const Location& location, LinkAtEnd linkAtEnd);

// Whether a path holds characters of masks; the "?" of the prefix "\\?\" is none.
[[nodiscard]] bool holdsWildcards(std::string_view path);

// Whether `name` matches a mask of FindFirstFileA, both in the stored form.
[[nodiscard]] bool matchesMask(std::string_view mask, std::string_view name);

}  // namespace bromvale::offline
