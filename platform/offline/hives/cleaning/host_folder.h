// A folder of the host with hives in it: whole files read, made and moved so that an end of the program at
// any instant leaves each of them old, new or recognisably half-made.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/hives/cleaning/host_files.h"

namespace bromvale::offline {

// Size and hash of a file's bytes: whether it is still what it was.
struct FilePrint {
    std::uint64_t size = 0;
    std::uint64_t hash = 0;
    bool operator==(const FilePrint&) const = default;
};

[[nodiscard]] FilePrint printOf(std::string_view bytes);

// All throw HostFailure.
class HostFolder {
  public:
    HostFolder(HostFiles& files, const std::string& path);

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string pathOf(const std::string& name) const;
    [[nodiscard]] HostFiles& files() const { return files_; }
    [[nodiscard]] const HostHandle& handle() const { return handle_; }

    [[nodiscard]] std::optional<struct stat> state(const std::string& name) const;
    [[nodiscard]] dev_t device() const;
    [[nodiscard]] bool has(const std::string& name) const { return state(name).has_value(); }
    // A plain file with these bytes.
    [[nodiscard]] bool holds(const std::string& name, const FilePrint& print) const;
    [[nodiscard]] std::vector<std::string> names() const { return files_.names(handle_); }
    // Of a plain file; a link or a device is a failure.
    [[nodiscard]] std::string read(const std::string& name) const;

    // A new file, which is on the disk at the return. `like` gives it its owner, mode and extended
    // attributes, the access list and the attributes of NTFS among them; with `times` its times too.
    void create(const std::string& name, std::string_view bytes, const std::string& like = {},
                bool times = false);
    void rename(const std::string& from, const std::string& to) { files_.rename(handle_, from, to); }
    // A second name for the same file, or a copy where the file system has no such names.
    void keepAs(const std::string& name, const std::string& second);
    // Nothing happens where it isn't there.
    void remove(const std::string& name);
    // What was renamed and made is on the disk at the return.
    void sync();
    [[nodiscard]] bool lock() { return files_.lock(handle_); }

  private:
    void makeLike(const HostHandle& file, const std::string& name, const std::string& like, bool times);

    HostFiles& files_;
    std::string path_;
    HostHandle handle_;
};

// The folders of several files, each opened once: a second handle would be locked out by the first.
class HostFolders {
  public:
    explicit HostFolders(HostFiles& files) : files_(files) {}
    HostFolder& at(const std::string& path);
    [[nodiscard]] const std::vector<std::unique_ptr<HostFolder>>& all() const { return folders_; }
    // The first that another one has locked, or nothing.
    [[nodiscard]] const HostFolder* lockAll();

  private:
    HostFiles& files_;
    std::vector<std::unique_ptr<HostFolder>> folders_;
    std::vector<std::pair<std::string, HostFolder*>> paths_;
};

}  // namespace bromvale::offline
