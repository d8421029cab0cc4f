#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/locale/clock.h"
#include "platform/offline/windows_types.h"

namespace bromvale::offline {

class Drives;

// Names from a volume's root on, in the stored form of stored_text.h; empty for the root itself.
using PathNames = std::span<const std::string_view>;

struct FileInfo {
    std::string name;
    DWORD attributes = 0;
    std::uint64_t size = 0;
    Milliseconds written = 0;  // universal time
    std::string shortName{};   // empty where there is none
    std::string target{};      // of a link to a folder: the path that it leads to
};

// An opened file. Results are last-error numbers, 0 for success.
class OpenedFile {
  public:
    virtual ~OpenedFile() = default;
    virtual DWORD read(std::uint64_t position, void* buffer, DWORD size, DWORD& done) = 0;
    virtual DWORD write(std::uint64_t position, const void* bytes, DWORD size) = 0;
    virtual DWORD truncate(std::uint64_t size) = 0;
    virtual std::uint64_t size() = 0;
    virtual Milliseconds written() = 0;
    virtual void setWritten(Milliseconds time) = 0;
};

// A tree of files: a drive or a network share. Names match without case, short names like the others. A link
// on the way is followed, one at a path's end is the entry itself, but for `list`. All results are last-error
// numbers.
class Volume {
  public:
    virtual ~Volume() = default;

    // ERROR_FILE_NOT_FOUND where only the last name is missing, ERROR_PATH_NOT_FOUND where a folder is.
    // `info` (may be null) tells the name in its own case.
    virtual DWORD find(PathNames names, FileInfo* info) = 0;
    // What a folder holds, in any order.
    virtual DWORD list(PathNames folder, std::vector<FileInfo>& entries) = 0;
    // Opens what exists, or makes an empty file.
    virtual DWORD open(PathNames names, bool create, std::unique_ptr<OpenedFile>& file) = 0;
    virtual DWORD makeFolder(PathNames names) = 0;
    // A folder that is a link to another one; `target` is a whole path.
    virtual DWORD linkFolder(PathNames names, std::string_view target) = 0;
    // A folder must be empty; a link goes, and what it leads to stays.
    virtual DWORD remove(PathNames names) = 0;
    // A file, to a name that must be free.
    virtual DWORD move(PathNames from, PathNames to) = 0;
    // A file, or a folder with all below it. `stored` is the name that it has in the bin.
    virtual DWORD recycle(PathNames names, std::string& stored) = 0;
    virtual DWORD setAttributes(PathNames names, DWORD attributes) = 0;
};

inline constexpr DWORD kReading = GENERIC_READ | GENERIC_ALL;
inline constexpr DWORD kWriting = GENERIC_WRITE | GENERIC_ALL;

// What CloseHandle closes: a file, or something without a content (token, mutex, process).
struct KernelObject {
    std::unique_ptr<OpenedFile> file{};
    std::string path{};
    std::string toldPath{};  // of a file: as events tell it
    std::string truePath{};  // past links and short names; a folder's object has this and `path` only
    std::uint64_t position = 0;
    DWORD access = 0;
    DWORD share = 0;
};

// What FindClose closes. The program leaks one for each file that it finds, so a search without wildcards
// keeps nothing.
struct Search {
    std::vector<FileInfo> entries;
    std::size_t next = 0;
};

// Keeps short names where Drives::shortNames says so.
std::unique_ptr<Volume> makeMemoryVolume(const Drives& drives);
// `folder` is a path of the host, UTF-8. Its recycle bin is the folder beside it with ".Papierkorb" behind
// its name, made when something goes there. Until Drives::shortNames says otherwise, what an ANSI path can't
// name has a short name. With the letter of a disk the folder is a disk of Windows: its links are followed
// where they stay in it (inside.h); any other is a file that says that it is a link.
std::unique_ptr<Volume> makeHostVolume(const Drives& drives, std::string folder,
                                       std::optional<char> disk = std::nullopt);

// "name", "name (2)", ... : the first that `taken` does not know.
template <class Taken>
std::string freeName(const std::string& name, const Taken& taken) {
    std::string candidate = name;
    for (int i = 2; taken(candidate); ++i) candidate = name + " (" + std::to_string(i) + ")";
    return candidate;
}

}  // namespace bromvale::offline
