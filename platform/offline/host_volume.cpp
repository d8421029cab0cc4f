#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "platform/offline/clock.h"
#include "platform/offline/code_page.h"
#include "platform/offline/volume.h"

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

FileInfo infoOf(std::string name, const struct stat& state) {
    const DWORD kind = isFolder(state) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
    const DWORD locked = (state.st_mode & S_IWUSR) == 0 ? FILE_ATTRIBUTE_READONLY : 0;
    const Milliseconds written =
        static_cast<Milliseconds>(state.st_mtim.tv_sec) * 1000 + state.st_mtim.tv_nsec / 1000000 + kUnixEpoch;
    return {std::move(name), kind | locked, isFolder(state) ? 0 : static_cast<std::uint64_t>(state.st_size),
            written};
}

std::string_view lastName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

// Six letters or digits that hang on the name, "~1", and an extension that is plain and short enough. Empty
// where the program reaches the file by its own name.
std::string shortNameOf(std::string_view name) {
    const std::string ansi = ansiFromUtf8(name);
    if (ansi.find_first_of("\\:*?\"<>|") == std::string::npos && utf8FromAnsi(ansi) == name) return {};
    std::uint32_t hash = 2166136261u;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    std::string result;
    for (int i = 0; i < 6; ++i, hash >>= 5) result += "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567"[hash & 31u];
    result += "~1";
    const std::size_t dot = ansi.rfind('.');
    const std::string extension = dot == std::string::npos ? std::string() : upper(ansi.substr(dot + 1));
    const bool plain =
        extension.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789") == std::string::npos;
    if (plain && !extension.empty() && extension.size() <= 3) result += "." + extension;
    return result;
}

// A link to a folder is a folder that says so; one to a file is like the file.
FileInfo infoAt(const std::string& path, std::string name, const struct stat& state) {
    FileInfo info = infoOf(std::move(name), state);
    if (isFolder(state) && isLink(path)) info.attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    info.shortName = shortNameOf(lastName(path));
    return info;
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
    explicit HostVolume(std::string folder) : folder_(std::move(folder)) {
        while (folder_.size() > 1 && folder_.back() == '/') folder_.pop_back();
    }

    DWORD find(PathNames names, FileInfo* info) override {
        std::string path;
        struct stat state {};
        if (const DWORD error = resolve(names, path, state)) return error;
        if (info != nullptr) *info = infoAt(path, names.empty() ? "" : ansiFromUtf8(lastName(path)), state);
        return 0;
    }

    DWORD list(PathNames folder, std::vector<FileInfo>& entries) override {
        std::string path;
        struct stat state {};
        if (const DWORD error = resolve(folder, path, state)) return error;
        if (!isFolder(state)) return ERROR_DIRECTORY;
        eachEntry(path, [&](const std::string& name) {
            const std::string whole = path + "/" + name;
            if (::stat(whole.c_str(), &state) == 0)
                entries.push_back(infoAt(whole, ansiFromUtf8(name), state));
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
        stored = ansiFromUtf8(name);
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
    DWORD resolve(PathNames names, std::string& path, struct stat& state) const {
        path = folder_;
        for (const std::string_view name : names) path.append("/").append(utf8FromAnsi(name));
        if (::stat(path.c_str(), &state) == 0) return 0;
        path = folder_;
        if (::stat(path.c_str(), &state) != 0) return ERROR_PATH_NOT_FOUND;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (!isFolder(state) || !step(path, names[i], state)) {
                return i + 1 == names.size() && isFolder(state) ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
            }
        }
        return 0;
    }

    static bool step(std::string& path, std::string_view name, struct stat& state) {
        std::string next = path + "/" + utf8FromAnsi(name);
        struct stat found {};
        if (::stat(next.c_str(), &found) != 0) {
            const bool matched = eachEntry(path, [&](const std::string& entry) {
                if (!equalNoCase(ansiFromUtf8(entry), name) && !equalNoCase(shortNameOf(entry), name))
                    return false;
                next = path + "/" + entry;
                return ::stat(next.c_str(), &found) == 0;
            });
            if (!matched) return false;
        }
        path = next;
        state = found;
        return true;
    }

    DWORD pathOfNew(PathNames names, std::string& path) const {
        struct stat state {};
        if (const DWORD error = resolve(names.first(names.size() - 1), path, state)) return error;
        path.append("/").append(utf8FromAnsi(names.back()));
        return 0;
    }

    std::string folder_;
};

}  // namespace

std::unique_ptr<Volume> makeHostVolume(std::string folder) {
    return std::make_unique<HostVolume>(std::move(folder));
}

}  // namespace bromvale::offline
