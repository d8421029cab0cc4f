#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <optional>

#include "platform/offline/files/drives.h"
#include "platform/offline/files/host_file.h"
#include "platform/offline/files/inside.h"
#include "platform/offline/files/short_names.h"
#include "platform/offline/files/volume.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

bool isFolder(const struct stat& state) {
    return S_ISDIR(state.st_mode);
}

bool isLink(const std::string& path) {
    struct stat state {};
    return ::lstat(path.c_str(), &state) == 0 && S_ISLNK(state.st_mode);
}

// A dangling link is a file that says that it is a link.
FileInfo infoOf(std::string name, const struct stat& state) {
    const DWORD dangling = S_ISLNK(state.st_mode) ? FILE_ATTRIBUTE_REPARSE_POINT : 0;
    const DWORD kind = isFolder(state) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE | dangling;
    const DWORD locked = (state.st_mode & S_IWUSR) == 0 ? FILE_ATTRIBUTE_READONLY : 0;
    const bool sized = S_ISREG(state.st_mode);
    return {std::move(name), kind | locked, sized ? static_cast<std::uint64_t>(state.st_size) : 0,
            lastWriteOf(state)};
}

std::string lastName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

class HostVolume : public Volume {
  public:
    HostVolume(const Drives& drives, std::string folder, std::optional<char> disk)
        : drives_(drives), folder_(std::move(folder)) {
        while (folder_.size() > 1 && folder_.back() == '/') folder_.pop_back();
        if (!disk) return;
        inside_.emplace(folder_, *disk);
        if (!inside_->root().empty()) folder_ = inside_->root();
    }

    DWORD find(PathNames names, FileInfo* info) override {
        Entry found;
        if (const DWORD error = resolve(names, found)) return error;
        if (info != nullptr) *info = infoAt(found, names.empty());
        return 0;
    }

    DWORD list(PathNames folder, std::vector<FileInfo>& entries) override {
        Entry found;
        if (const DWORD error = resolve(folder, found)) return error;
        if (!isFolder(found.state)) return ERROR_DIRECTORY;
        eachEntry(found.real, [&](const std::string& name) {
            Entry entry;
            if (look(found.real + "/" + name, entry)) entries.push_back(infoAt(entry, false));
            return false;
        });
        return 0;
    }

    DWORD open(PathNames names, bool create, std::unique_ptr<OpenedFile>& file) override {
        Entry found;
        DWORD error = resolve(names, found);
        const bool missing = error == ERROR_FILE_NOT_FOUND && create;
        if (missing) error = pathOfNew(names, found.path);
        if (error != 0) return error;
        if (!missing && isFolder(found.state)) return ERROR_ACCESS_DENIED;
        if (!missing && found.real.empty()) return ERROR_FILE_NOT_FOUND;
        if (missing) changed();
        const char* path = (missing ? found.path : found.real).c_str();
        int handle = ::open(path, O_RDWR | O_CLOEXEC | (missing ? O_CREAT | O_EXCL : 0), 0666);
        if (handle < 0 && errno == EACCES && !missing) handle = ::open(path, O_RDONLY | O_CLOEXEC);
        if (handle < 0) return outcome(handle);
        file = makeHostFile(drives_.clock, handle);
        return 0;
    }

    DWORD makeFolder(PathNames names) override {
        Entry found;
        if (const DWORD error = resolveMissing(names, found)) return error;
        changed();
        return outcome(::mkdir(found.path.c_str(), 0777));
    }

    // Links are made on the host itself.
    DWORD linkFolder(PathNames, std::string_view) override { return ERROR_NOT_SUPPORTED; }

    DWORD remove(PathNames names) override {
        Entry found;
        if (names.empty()) return ERROR_ACCESS_DENIED;
        if (const DWORD error = resolve(names, found)) return error;
        changed();
        const char* path = found.path.c_str();
        return outcome(isFolder(found.state) && !isLink(found.path) ? ::rmdir(path) : ::unlink(path));
    }

    DWORD move(PathNames from, PathNames to) override {
        Entry found;
        Entry target;
        if (const DWORD error = resolve(from, found)) return error;
        if (const DWORD error = resolveMissing(to, target)) return error;
        changed();
        return outcome(::rename(found.path.c_str(), target.path.c_str()));
    }

    DWORD recycle(PathNames names, std::string& stored) override {
        Entry found;
        if (names.empty()) return ERROR_ACCESS_DENIED;
        if (const DWORD error = resolve(names, found)) return error;
        const std::string bin = folder_ + ".Papierkorb";
        if (::mkdir(bin.c_str(), 0777) != 0 && errno != EEXIST) return outcome(-1);
        const std::string name = freeName(lastName(found.path), [&](const std::string& candidate) {
            return ::lstat((bin + "/" + candidate).c_str(), &found.state) == 0;
        });
        stored = knownName(name);
        changed();
        return outcome(::rename(found.path.c_str(), (bin + "/" + name).c_str()));
    }

    DWORD setAttributes(PathNames names, DWORD attributes) override {
        Entry found;
        if (const DWORD error = resolve(names, found)) return error;
        if (found.real.empty()) return ERROR_FILE_NOT_FOUND;
        const mode_t writable = found.state.st_mode | S_IWUSR;
        const bool locked = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
        return outcome(::chmod(found.real.c_str(), locked ? writable & ~mode_t{0222} : writable));
    }

  private:
    // Calls `visit` with each name until it returns true.
    template <class Visit>
    static bool eachEntry(const std::string& path, const Visit& visit) {
        DIR* folder = ::opendir(path.c_str());
        if (folder == nullptr) return false;
        bool done = false;
        while (const dirent* entry = done ? nullptr : ::readdir(folder)) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..") done = visit(name);
        }
        ::closedir(folder);
        return done;
    }

    struct Entry {
        std::string path;       // of the host
        std::string real;       // where a link leads to; empty where the volume must not know
        struct stat state {};   // of that; of the link itself where it isn't there
        bool leadsOut = false;  // a link to what can't be looked at from here
    };

    bool look(const std::string& path, Entry& found) const {
        found.path = path;
        found.real = path;
        if (!inside_)
            return ::stat(path.c_str(), &found.state) == 0 || ::lstat(path.c_str(), &found.state) == 0;
        if (::lstat(path.c_str(), &found.state) != 0) return false;
        if (!S_ISLNK(found.state.st_mode)) return true;
        InsidePath target = inside_->follow(path.substr(0, path.rfind('/')), lastName(path));
        if (target.found()) found.state = target.status;
        found.leadsOut = target.state == InsidePath::State::Outside;
        found.real = std::move(target.path);
        return true;
    }

    // What exists: as the names are written, or found without case folder by folder.
    DWORD resolve(PathNames names, Entry& found) const {
        std::string whole = folder_;
        for (const std::string_view name : names) whole.append("/").append(hostOfStored(name));
        if (textRules().unicode && !inside_ && look(whole, found)) return 0;
        found.path = found.real = folder_;
        if (::stat(folder_.c_str(), &found.state) != 0) return ERROR_PATH_NOT_FOUND;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const bool inFolder = isFolder(found.state) && !found.real.empty();
            if (found.leadsOut) return ERROR_CANT_ACCESS_FILE;
            if (inFolder && step(found, names[i])) continue;
            if (inFolder && inside_ && mayBeThere(found.real, names[i])) return ERROR_CANT_ACCESS_FILE;
            return i + 1 == names.size() && inFolder ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
        }
        return 0;
    }

    // A name that is free; ERROR_ALREADY_EXISTS where it is not.
    DWORD resolveMissing(PathNames names, Entry& found) {
        const DWORD error = resolve(names, found);
        if (error == 0) return ERROR_ALREADY_EXISTS;
        return error == ERROR_FILE_NOT_FOUND ? pathOfNew(names, found.path) : error;
    }

    // From a folder to its entry.
    bool step(Entry& found, std::string_view name) const {
        const std::string folder = found.real;
        const std::string written = hostOfStored(name);
        Entry next;
        if (inside_ && !isPlainName(written)) return false;
        bool there = look(folder + "/" + written, next);
        if (!there && inside_) {
            const std::optional<std::string> entry = inside_->entryOf(folder, name);
            there = entry && look(folder + "/" + *entry, next);
        }
        if (!there && mayHaveOtherName(name)) {
            there = eachEntry(folder, [&](const std::string& entry) {
                return isOtherName(folder, entry, name) && look(folder + "/" + entry, next);
            });
        }
        if (there) found = std::move(next);
        return there;
    }

    // On a disk of Windows: what this host can't look at, or has under its long name alone, is not missing.
    static bool mayBeThere(const std::string& folder, std::string_view name) {
        struct stat state {};
        const int missing =
            ::lstat((folder + "/" + hostOfStored(name)).c_str(), &state) != 0 ? errno : ENOENT;
        if ((missing != ENOENT && missing != ENOTDIR) || ::access(folder.c_str(), R_OK) != 0) return true;
        return name.find('~') != std::string_view::npos && eachEntry(folder, [&](const std::string& entry) {
                   return mayBeShortNameOf(name, knownName(entry));
               });
    }

    // Without case all names were looked through where the volume is kept inside.
    [[nodiscard]] bool mayHaveOtherName(std::string_view name) const {
        return !inside_ || !textRules().unicode || name.find('~') != std::string_view::npos;
    }

    bool isOtherName(const std::string& folder, const std::string& entry, std::string_view name) const {
        return sameStored(knownName(entry), name) ||
               (name.find('~') != std::string_view::npos && sameStored(shortNameOf(folder, entry), name));
    }

    void changed() {
        if (inside_) inside_->forget();
    }

    std::string shortNameOf(const std::string& folder, const std::string& entry) const {
        const std::string name = knownName(entry);
        if (!drives_.shortNames.value_or(!isReachableByAnsi(name))) return {};
        struct stat state {};
        return shortNames_[folder].of(name, [&](std::string_view candidate) {
            return ::lstat((folder + "/" + std::string(candidate)).c_str(), &state) == 0;
        });
    }

    // A link to a folder is a folder that says so; one to a file is like the file.
    FileInfo infoAt(const Entry& entry, bool root) const {
        const std::string& path = entry.path;
        const std::string name = lastName(path);
        FileInfo info = infoOf(root ? std::string() : knownName(name), entry.state);
        if (root) return info;
        info.shortName = shortNameOf(path.substr(0, path.rfind('/')), name);
        if (isFolder(entry.state) && isLink(path)) {
            info.attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
            info.target = targetOf(entry.real);
        }
        return info;
    }

    // What lies on none of the machine's drives is told as a share that the machine doesn't have.
    [[nodiscard]] std::string targetOf(const std::string& path) const {
        const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.c_str(), nullptr), std::free);
        if (real == nullptr) return {};
        std::string target = drives_.pathOfHost(real.get());
        if (!target.empty()) return target;
        target = "\\\\host" + storedFromUtf8(real.get());
        std::replace(target.begin() + 2, target.end(), '/', '\\');
        return target;
    }

    DWORD pathOfNew(PathNames names, std::string& path) {
        Entry folder;
        if (const DWORD error = resolve(names.first(names.size() - 1), folder)) return error;
        const std::string name = hostOfStored(names.back());
        if (inside_ && !isPlainName(name)) return ERROR_INVALID_NAME;
        path = folder.real + "/" + name;
        return 0;
    }

    const Drives& drives_;
    std::string folder_;
    std::optional<InsideFolder> inside_;
    mutable std::map<std::string, ShortNames> shortNames_;  // by the host's folder
};

}  // namespace

std::unique_ptr<Volume> makeHostVolume(const Drives& drives, std::string folder, std::optional<char> disk) {
    return std::make_unique<HostVolume>(drives, std::move(folder), disk);
}

}  // namespace bromvale::offline
