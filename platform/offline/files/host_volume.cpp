#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>

#include "platform/offline/files/drives.h"
#include "platform/offline/files/host_file.h"
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

// Of what a link leads to; of the link itself where that is not there.
bool stateOf(const std::string& path, struct stat& state) {
    return ::stat(path.c_str(), &state) == 0 || ::lstat(path.c_str(), &state) == 0;
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
    HostVolume(const Drives& drives, std::string folder) : drives_(drives), folder_(std::move(folder)) {
        while (folder_.size() > 1 && folder_.back() == '/') folder_.pop_back();
    }

    DWORD find(PathNames names, FileInfo* info) override {
        Entry found;
        if (const DWORD error = resolve(names, found)) return error;
        if (info != nullptr) *info = infoAt(found.path, names.empty(), found.state);
        return 0;
    }

    DWORD list(PathNames folder, std::vector<FileInfo>& entries) override {
        Entry found;
        if (const DWORD error = resolve(folder, found)) return error;
        if (!isFolder(found.state)) return ERROR_DIRECTORY;
        eachEntry(found.path, [&](const std::string& name) {
            const std::string whole = found.path + "/" + name;
            if (stateOf(whole, found.state)) entries.push_back(infoAt(whole, false, found.state));
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
        const char* path = found.path.c_str();
        int handle = ::open(path, O_RDWR | O_CLOEXEC | (missing ? O_CREAT | O_EXCL : 0), 0666);
        if (handle < 0 && errno == EACCES && !missing) handle = ::open(path, O_RDONLY | O_CLOEXEC);
        if (handle < 0) return outcome(handle);
        file = makeHostFile(drives_.clock, handle);
        return 0;
    }

    DWORD makeFolder(PathNames names) override {
        Entry found;
        if (const DWORD error = resolveMissing(names, found)) return error;
        return outcome(::mkdir(found.path.c_str(), 0777));
    }

    // Links are made on the host itself.
    DWORD linkFolder(PathNames, std::string_view) override { return ERROR_NOT_SUPPORTED; }

    DWORD remove(PathNames names) override {
        Entry found;
        if (names.empty()) return ERROR_ACCESS_DENIED;
        if (const DWORD error = resolve(names, found)) return error;
        const char* path = found.path.c_str();
        return outcome(isFolder(found.state) && !isLink(found.path) ? ::rmdir(path) : ::unlink(path));
    }

    DWORD move(PathNames from, PathNames to) override {
        Entry found;
        Entry target;
        if (const DWORD error = resolve(from, found)) return error;
        if (const DWORD error = resolveMissing(to, target)) return error;
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
        return outcome(::rename(found.path.c_str(), (bin + "/" + name).c_str()));
    }

    DWORD setAttributes(PathNames names, DWORD attributes) override {
        Entry found;
        if (const DWORD error = resolve(names, found)) return error;
        const mode_t writable = found.state.st_mode | S_IWUSR;
        const bool locked = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
        return outcome(::chmod(found.path.c_str(), locked ? writable & ~mode_t{0222} : writable));
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
        std::string path;  // of the host
        struct stat state {};
    };

    // What exists: as the names are written, or found without case folder by folder.
    DWORD resolve(PathNames names, Entry& found) {
        auto& [path, state] = found;
        path = folder_;
        for (const std::string_view name : names) path.append("/").append(hostOfStored(name));
        if (textRules().unicode && stateOf(path, state)) return 0;
        path = folder_;
        if (::stat(path.c_str(), &state) != 0) return ERROR_PATH_NOT_FOUND;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (!isFolder(state) || !step(path, names[i], state)) {
                return i + 1 == names.size() && isFolder(state) ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
            }
        }
        return 0;
    }

    // A name that is free; ERROR_ALREADY_EXISTS where it is not.
    DWORD resolveMissing(PathNames names, Entry& found) {
        const DWORD error = resolve(names, found);
        if (error == 0) return ERROR_ALREADY_EXISTS;
        return error == ERROR_FILE_NOT_FOUND ? pathOfNew(names, found.path) : error;
    }

    bool step(std::string& path, std::string_view name, struct stat& state) {
        std::string next = path + "/" + hostOfStored(name);
        if (!stateOf(next, state)) {
            const auto matches = [&](const std::string& entry) {
                return sameStored(knownName(entry), name) || (name.find('~') != std::string_view::npos &&
                                                              sameStored(shortNameOf(path, entry), name));
            };
            const bool matched = eachEntry(path, [&](const std::string& entry) {
                if (!matches(entry)) return false;
                next = path + "/" + entry;
                return stateOf(next, state);
            });
            if (!matched) return false;
        }
        path = next;
        return true;
    }

    std::string shortNameOf(const std::string& folder, const std::string& entry) {
        const std::string name = knownName(entry);
        if (!drives_.shortNames.value_or(!isReachableByAnsi(name))) return {};
        struct stat state {};
        return shortNames_[folder].of(name, [&](std::string_view candidate) {
            return ::lstat((folder + "/" + std::string(candidate)).c_str(), &state) == 0;
        });
    }

    // A link to a folder is a folder that says so; one to a file is like the file.
    FileInfo infoAt(const std::string& path, bool root, const struct stat& state) {
        const std::size_t slash = path.rfind('/');
        const std::string name = lastName(path);
        FileInfo info = infoOf(root ? std::string() : knownName(name), state);
        if (root) return info;
        info.shortName = shortNameOf(path.substr(0, slash), name);
        if (isFolder(state) && isLink(path)) {
            info.attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
            info.target = targetOf(path);
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
        path = folder.path + "/" + hostOfStored(names.back());
        return 0;
    }

    const Drives& drives_;
    std::string folder_;
    std::map<std::string, ShortNames> shortNames_;  // by the host's folder
};

}  // namespace

std::unique_ptr<Volume> makeHostVolume(const Drives& drives, std::string folder) {
    return std::make_unique<HostVolume>(drives, std::move(folder));
}

}  // namespace bromvale::offline
