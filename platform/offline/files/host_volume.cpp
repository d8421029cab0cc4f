#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>

#include "platform/offline/files/drives.h"
#include "platform/offline/files/short_names.h"
#include "platform/offline/files/volume.h"
#include "platform/offline/locale/clock.h"
#include "platform/offline/locale/code_pages.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr Milliseconds kUnixEpoch = 11644473600000;

DWORD lastErrorOf(int number) {
    switch (number) {
        case ENOENT: return ERROR_FILE_NOT_FOUND;
        case ENOTDIR: return ERROR_PATH_NOT_FOUND;
        case EEXIST: return ERROR_ALREADY_EXISTS;
        case ENOTEMPTY: return ERROR_DIR_NOT_EMPTY;
        case ENOSPC:
        case EDQUOT: return ERROR_HANDLE_DISK_FULL;
        case EROFS: return ERROR_WRITE_PROTECT;
        case EMFILE:
        case ENFILE: return ERROR_TOO_MANY_OPEN_FILES;
        case ENAMETOOLONG: return ERROR_FILENAME_EXCED_RANGE;
        case EACCES:
        case EPERM:
        case EISDIR: return ERROR_ACCESS_DENIED;
        default: return ERROR_GEN_FAILURE;
    }
}

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
    const Milliseconds written =
        static_cast<Milliseconds>(state.st_mtim.tv_sec) * 1000 + state.st_mtim.tv_nsec / 1000000 + kUnixEpoch;
    const bool sized = S_ISREG(state.st_mode);
    return {std::move(name), kind | locked, sized ? static_cast<std::uint64_t>(state.st_size) : 0, written};
}

std::string_view lastName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

// What Windows allows in no name: on the host it may stand in one, and is told as a character beyond all code
// pages, as Windows itself does with files of other systems.
constexpr std::string_view kForbidden = "\\:*?\"<>|";
constexpr char16_t kForbiddenPlace = 0xF000;

std::string storedOfHost(std::string_view name) {
    const std::string stored = storedFromUtf8(name);
    if (name.find_first_of(kForbidden) == std::string_view::npos) return stored;
    std::string result;
    for (std::string_view rest = stored; !rest.empty();) {
        const char16_t unit = takeUnit(rest);
        const bool forbidden =
            unit < 0x80 && kForbidden.find(static_cast<char>(unit)) != std::string_view::npos;
        appendUnit(result, forbidden ? static_cast<char16_t>(kForbiddenPlace + unit) : unit);
    }
    return result;
}

std::string hostOfStored(std::string_view stored) {
    if (isAscii(stored)) return std::string(stored);
    std::string result;
    for (std::string_view rest = stored; !rest.empty();) {
        const char16_t unit = takeUnit(rest);
        const bool moved = unit > kForbiddenPlace && unit < kForbiddenPlace + 0x80;
        appendUnit(result, moved ? static_cast<char16_t>(unit - kForbiddenPlace) : unit);
    }
    return utf8FromStored(result);
}

// What the machine calls an entry: the 9x family knows names of its code page only.
std::string knownName(std::string_view hostName) {
    std::string stored = storedOfHost(hostName);
    return textRules().unicode ? stored : withinCodePage(stored);
}

class HostFile : public OpenedFile {
  public:
    explicit HostFile(int file) : file_(file) {}
    // The file's time is the machine's, not the host's, so that its age is what the program sees.
    ~HostFile() override {
        if (dirty_) setWritten(currentClock().now() + currentClock().bias);
        ::close(file_);
    }

    DWORD read(std::uint64_t position, void* buffer, DWORD size, DWORD& done) override {
        const ssize_t count = ::pread(file_, buffer, size, static_cast<off_t>(position));
        done = count < 0 ? 0 : static_cast<DWORD>(count);
        return count < 0 ? lastErrorOf(errno) : 0;
    }
    DWORD write(std::uint64_t position, const void* bytes, DWORD size) override {
        dirty_ = true;
        const char* from = static_cast<const char*>(bytes);
        for (DWORD done = 0; done < size;) {
            const ssize_t count =
                ::pwrite(file_, from + done, size - done, static_cast<off_t>(position + done));
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return lastErrorOf(errno);
            done += static_cast<DWORD>(count);
        }
        return 0;
    }
    DWORD truncate(std::uint64_t size) override {
        dirty_ = true;
        return ::ftruncate(file_, static_cast<off_t>(size)) == 0 ? 0 : lastErrorOf(errno);
    }
    std::uint64_t size() override {
        struct stat state {};
        return ::fstat(file_, &state) == 0 ? static_cast<std::uint64_t>(state.st_size) : 0;
    }
    Milliseconds written() override {
        struct stat state {};
        return ::fstat(file_, &state) == 0 ? infoOf({}, state).written : 0;
    }
    void setWritten(Milliseconds time) override {
        dirty_ = false;
        const Milliseconds unixTime = time - kUnixEpoch;
        const timespec stamp{static_cast<time_t>(unixTime / 1000),
                             static_cast<long>(unixTime % 1000) * 1000000};
        const timespec both[2] = {stamp, stamp};
        (void)::futimens(file_, both);
    }

  private:
    int file_;
    bool dirty_ = false;
};

class HostVolume : public Volume {
  public:
    HostVolume(const Drives& drives, std::string folder) : drives_(drives), folder_(std::move(folder)) {
        while (folder_.size() > 1 && folder_.back() == '/') folder_.pop_back();
    }

    DWORD find(PathNames names, FileInfo* info) override {
        std::string path;
        struct stat state {};
        if (const DWORD error = resolve(names, path, state)) return error;
        if (info != nullptr) *info = infoAt(path, names.empty(), state);
        return 0;
    }

    DWORD list(PathNames folder, std::vector<FileInfo>& entries) override {
        std::string path;
        struct stat state {};
        if (const DWORD error = resolve(folder, path, state)) return error;
        if (!isFolder(state)) return ERROR_DIRECTORY;
        eachEntry(path, [&](const std::string& name) {
            const std::string whole = path + "/" + name;
            if (stateOf(whole, state)) entries.push_back(infoAt(whole, false, state));
            return false;
        });
        return 0;
    }

    DWORD open(PathNames names, bool create, std::unique_ptr<OpenedFile>& file) override {
        std::string path;
        struct stat state {};
        DWORD error = resolve(names, path, state);
        const bool missing = error == ERROR_FILE_NOT_FOUND && create;
        if (missing) error = pathOfNew(names, path);
        if (error != 0) return error;
        if (!missing && isFolder(state)) return ERROR_ACCESS_DENIED;
        int handle = ::open(path.c_str(), O_RDWR | O_CLOEXEC | (missing ? O_CREAT | O_EXCL : 0), 0666);
        if (handle < 0 && errno == EACCES && !missing) handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (handle < 0) return lastErrorOf(errno);
        file = std::make_unique<HostFile>(handle);
        return 0;
    }

    DWORD makeFolder(PathNames names) override {
        std::string path;
        struct stat state {};
        DWORD error = resolve(names, path, state);
        if (error == 0) return ERROR_ALREADY_EXISTS;
        if (error == ERROR_FILE_NOT_FOUND) error = pathOfNew(names, path);
        if (error != 0) return error;
        return ::mkdir(path.c_str(), 0777) == 0 ? 0 : lastErrorOf(errno);
    }

    // Links are made on the host itself.
    DWORD linkFolder(PathNames, std::string_view) override { return ERROR_NOT_SUPPORTED; }

    DWORD remove(PathNames names) override {
        std::string path;
        struct stat state {};
        if (names.empty()) return ERROR_ACCESS_DENIED;
        if (const DWORD error = resolve(names, path, state)) return error;
        const bool realFolder = isFolder(state) && !isLink(path);
        const int result = realFolder ? ::rmdir(path.c_str()) : ::unlink(path.c_str());
        return result == 0 ? 0 : lastErrorOf(errno);
    }

    DWORD move(PathNames from, PathNames to) override {
        std::string path;
        std::string target;
        struct stat state {};
        if (const DWORD error = resolve(from, path, state)) return error;
        const DWORD missing = resolve(to, target, state);
        if (missing != ERROR_FILE_NOT_FOUND) return missing == 0 ? ERROR_ALREADY_EXISTS : missing;
        if (const DWORD error = pathOfNew(to, target)) return error;
        return ::rename(path.c_str(), target.c_str()) == 0 ? 0 : lastErrorOf(errno);
    }

    DWORD recycle(PathNames names, std::string& stored) override {
        std::string path;
        struct stat state {};
        if (names.empty()) return ERROR_ACCESS_DENIED;
        if (const DWORD error = resolve(names, path, state)) return error;
        const std::string bin = folder_ + ".Papierkorb";
        if (::mkdir(bin.c_str(), 0777) != 0 && errno != EEXIST) return lastErrorOf(errno);
        const std::string name = freeName(std::string(lastName(path)), [&](const std::string& candidate) {
            return ::lstat((bin + "/" + candidate).c_str(), &state) == 0;
        });
        stored = knownName(name);
        return ::rename(path.c_str(), (bin + "/" + name).c_str()) == 0 ? 0 : lastErrorOf(errno);
    }

    DWORD setAttributes(PathNames names, DWORD attributes) override {
        std::string path;
        struct stat state {};
        if (const DWORD error = resolve(names, path, state)) return error;
        const mode_t writable = state.st_mode | S_IWUSR;
        const bool locked = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
        return ::chmod(path.c_str(), locked ? writable & ~mode_t{0222} : writable) == 0 ? 0
                                                                                        : lastErrorOf(errno);
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

    // The host path of what exists: as the names are written, or found without case folder by folder.
    DWORD resolve(PathNames names, std::string& path, struct stat& state) {
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
        const std::string name = path.substr(slash + 1);
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
        struct stat state {};
        if (const DWORD error = resolve(names.first(names.size() - 1), path, state)) return error;
        path.append("/").append(hostOfStored(names.back()));
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
