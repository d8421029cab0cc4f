#include "platform/offline/hives/cleaning/host_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/statvfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace bromvale::offline {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

// What says that there is no such attribute, not that it could not be had.
bool saysNoAttribute(int number) {
    return number == ENODATA || number == ENOTSUP || number == EOPNOTSUPP;
}

}  // namespace

HostFailure::HostFailure(std::string_view call, const std::string& name, int number)
    : std::runtime_error(std::string(call) + " \"" + name + "\": " + std::strerror(number)), number(number) {}

HostHandle::~HostHandle() {
    if (number_ >= 0) ::close(number_);
}

HostFiles::HostFiles() : user(::geteuid()) {}

int HostFiles::failureBefore(std::string_view, const std::string&) {
    return 0;
}

int HostFiles::failureAfter(std::string_view, const std::string&) {
    return 0;
}

// -1 and errno as the system gives them.
long HostFiles::attempt(std::string_view call, const std::string& name, const std::function<long()>& action) {
    int number = failureBefore(call, name);
    long result = -1;
    if (number == 0) {
        do {
            errno = 0;
            result = action();
        } while (result < 0 && errno == EINTR);
        number = result < 0 ? errno : failureAfter(call, name);
    }
    errno = number;
    return number != 0 ? -1 : result;
}

long HostFiles::run(std::string_view call, const std::string& name, const std::function<long()>& action) {
    const long result = attempt(call, name, action);
    if (result < 0) throw HostFailure(call, name, errno);
    return result;
}

HostHandle HostFiles::openFolder(const std::string& path) {
    return HostHandle(static_cast<int>(
        run("open folder", path, [&] { return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); })));
}

HostHandle HostFiles::openFile(const HostHandle& folder, const std::string& name) {
    return HostHandle(static_cast<int>(run("open", name, [&] {
        return ::openat(folder.number(), name.c_str(),
                        O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    })));
}

HostHandle HostFiles::create(const HostHandle& folder, const std::string& name) {
    return HostHandle(static_cast<int>(run("create", name, [&] {
        return ::openat(folder.number(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                        0600);
    })));
}

std::size_t HostFiles::read(const HostHandle& file, const std::string& name, char* into, std::size_t size) {
    return static_cast<std::size_t>(
        run("read", name, [&] { return ::read(file.number(), into, std::min(size, piece)); }));
}

void HostFiles::write(const HostHandle& file, const std::string& name, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view next = bytes.substr(0, piece);
        const long count =
            run("write", name, [&] { return ::write(file.number(), next.data(), next.size()); });
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void HostFiles::sync(const HostHandle& handle, const std::string& name) {
    run("sync", name, [&] { return ::fsync(handle.number()); });
}

void HostFiles::rename(const HostHandle& folder, const std::string& from, const std::string& to) {
    run("rename", from,
        [&] { return ::renameat(folder.number(), from.c_str(), folder.number(), to.c_str()); });
}

void HostFiles::link(const HostHandle& folder, const std::string& from, const std::string& to) {
    run("link", from,
        [&] { return ::linkat(folder.number(), from.c_str(), folder.number(), to.c_str(), 0); });
}

void HostFiles::remove(const HostHandle& folder, const std::string& name) {
    run("remove", name, [&] { return ::unlinkat(folder.number(), name.c_str(), 0); });
}

std::optional<struct stat> HostFiles::state(const HostHandle& folder, const std::string& name) {
    struct stat state {};
    const long result = attempt("look at", name, [&] {
        return ::fstatat(folder.number(), name.c_str(), &state, AT_SYMLINK_NOFOLLOW);
    });
    if (result < 0 && errno == ENOENT) return std::nullopt;
    if (result < 0) throw HostFailure("look at", name, errno);
    return state;
}

std::vector<std::string> HostFiles::names(const HostHandle& folder) {
    const HostHandle own(static_cast<int>(run(
        "list", ".", [&] { return ::openat(folder.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); })));
    const std::unique_ptr<DIR, CloseFolder> entries(::fdopendir(::dup(own.number())));
    if (!entries) throw HostFailure("list", ".", errno);
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = ::readdir(entries.get())) names.emplace_back(entry->d_name);
    if (errno != 0) throw HostFailure("list", ".", errno);
    std::ranges::sort(names);
    return names;
}

HostSpace HostFiles::space(const HostHandle& folder) {
    struct statvfs state {};
    run("ask for space", ".", [&] { return ::fstatvfs(folder.number(), &state); });
    const std::uint64_t blocks = user == 0 ? state.f_bfree : state.f_bavail;
    return {blocks * state.f_frsize, (state.f_flag & ST_RDONLY) != 0};
}

bool HostFiles::mayWrite(const HostHandle& folder) {
    const long result = attempt("ask for access", ".",
                                [&] { return ::faccessat(folder.number(), ".", W_OK | X_OK, AT_EACCESS); });
    return result >= 0;
}

bool HostFiles::lock(const HostHandle& folder) {
    const long result = attempt("lock", ".", [&] { return ::flock(folder.number(), LOCK_EX | LOCK_NB); });
    if (result < 0 && errno == EWOULDBLOCK) return false;
    // A file system without locks is no reason against it: files are created only where none was.
    if (result < 0 && errno != ENOTSUP && errno != ENOSYS && errno != ENOLCK && errno != EINVAL)
        throw HostFailure("lock", ".", errno);
    return true;
}

void HostFiles::setOwner(const HostHandle& file, const std::string& name, uid_t owner, gid_t group) {
    run("give away", name, [&] { return ::fchown(file.number(), owner, group); });
}

void HostFiles::setMode(const HostHandle& file, const std::string& name, mode_t mode) {
    run("set the mode of", name, [&] { return ::fchmod(file.number(), mode & 07777); });
}

void HostFiles::setTimes(const HostHandle& file, const std::string& name, const struct stat& times) {
    const std::array<timespec, 2> both{times.st_atim, times.st_mtim};
    run("set the times of", name, [&] { return ::futimens(file.number(), both.data()); });
}

std::optional<std::string> HostFiles::attribute(const HostHandle& file, const std::string& attribute) {
    std::string value(65536, '\0');
    const long size = attempt("read the attribute", attribute, [&] {
        return ::fgetxattr(file.number(), attribute.c_str(), value.data(), value.size());
    });
    if (size < 0 && saysNoAttribute(errno)) return std::nullopt;
    if (size < 0) throw HostFailure("read the attribute", attribute, errno);
    value.resize(static_cast<std::size_t>(size));
    return value;
}

std::vector<std::string> HostFiles::attributes(const HostHandle& file) {
    std::string list(65536, '\0');
    const long size = attempt("list the attributes", "",
                              [&] { return ::flistxattr(file.number(), list.data(), list.size()); });
    if (size < 0 && saysNoAttribute(errno)) return {};
    if (size < 0) throw HostFailure("list the attributes of", "", errno);
    std::vector<std::string> names;
    std::string_view rest(list.data(), static_cast<std::size_t>(size));
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        names.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return names;
}

void HostFiles::setAttribute(const HostHandle& file, const std::string& attribute, const std::string& value) {
    run("set the attribute", attribute,
        [&] { return ::fsetxattr(file.number(), attribute.c_str(), value.data(), value.size(), 0); });
}

}  // namespace bromvale::offline
