#include "platform/offline/files/host_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/offline/locale/code_page.h"
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

class HostFile : public OpenedFile {
  public:
    HostFile(const Clock& clock, int file) : clock_(clock), file_(file) {}
    ~HostFile() override {
        if (dirty_) setWritten(clock_.universalNow());
        ::close(file_);
    }

    DWORD read(std::uint64_t position, void* buffer, DWORD size, DWORD& done) override {
        const ssize_t count = ::pread(file_, buffer, size, static_cast<off_t>(position));
        if (count < 0) return lastErrorOf(errno);
        done = static_cast<DWORD>(count);
        return 0;
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
        return outcome(::ftruncate(file_, static_cast<off_t>(size)));
    }
    std::uint64_t size() override {
        struct stat state {};
        return ::fstat(file_, &state) == 0 ? static_cast<std::uint64_t>(state.st_size) : 0;
    }
    Milliseconds written() override {
        struct stat state {};
        return ::fstat(file_, &state) == 0 ? lastWriteOf(state) : 0;
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
    const Clock& clock_;
    int file_;
    bool dirty_ = false;
};

// What Windows allows in no name: on the host it may stand in one, and is told as a character beyond all code
// pages, as Windows itself does with files of other systems.
constexpr std::string_view kForbidden = "\\:*?\"<>|";
constexpr char16_t kForbiddenPlace = 0xF000;

std::string storedOfHost(std::string_view name) {
    std::string stored = storedFromUtf8(name);
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

}  // namespace

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

std::string knownName(std::string_view hostName) {
    std::string stored = storedOfHost(hostName);
    return textRules().unicode ? stored : withinCodePage(stored);
}

DWORD outcome(int result) {
    return result == 0 ? 0 : lastErrorOf(errno);
}

Milliseconds lastWriteOf(const struct stat& state) {
    return static_cast<Milliseconds>(state.st_mtim.tv_sec) * 1000 + state.st_mtim.tv_nsec / 1000000 +
           kUnixEpoch;
}

std::unique_ptr<OpenedFile> makeHostFile(const Clock& clock, int file) {
    return std::make_unique<HostFile>(clock, file);
}

}  // namespace bromvale::offline
