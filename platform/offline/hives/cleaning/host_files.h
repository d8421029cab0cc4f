// Every call to the host's files that a cleaning or its undo makes, in one place, so that each of them can be
// seen to fail. Files are named within a folder that is held by a handle: whoever swaps a folder or puts a
// link in a file's place meanwhile is not followed.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bromvale::offline {

// A call has failed; `number` is the system's.
class HostFailure : public std::runtime_error {
  public:
    HostFailure(std::string_view call, const std::string& name, int number);
    int number;
};

// An open file or folder.
class HostHandle {
  public:
    HostHandle() = default;
    explicit HostHandle(int number) : number_(number) {}
    HostHandle(HostHandle&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    HostHandle& operator=(HostHandle&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~HostHandle();
    [[nodiscard]] int number() const { return number_; }

  private:
    int number_ = -1;
};

struct HostSpace {
    std::uint64_t free = 0;  // bytes that we may fill
    bool readOnly = false;
};

class HostFiles {
  public:
    HostFiles();
    HostFiles(const HostFiles&) = delete;
    HostFiles& operator=(const HostFiles&) = delete;
    virtual ~HostFiles() = default;

    // All throw HostFailure.
    HostHandle openFolder(const std::string& path);
    // Links are not followed, and devices not waited for.
    HostHandle openFile(const HostHandle& folder, const std::string& name);
    // A file of that name must not be there.
    HostHandle create(const HostHandle& folder, const std::string& name);
    // How many bytes came; 0 at the end.
    std::size_t read(const HostHandle& file, const std::string& name, char* into, std::size_t size);
    void write(const HostHandle& file, const std::string& name, std::string_view bytes);
    void sync(const HostHandle& handle, const std::string& name);
    // What is there goes in the same instant.
    void rename(const HostHandle& folder, const std::string& from, const std::string& to);
    void link(const HostHandle& folder, const std::string& from, const std::string& to);
    void remove(const HostHandle& folder, const std::string& name);
    // Of the entry itself, not of what it links to; nothing where there is none.
    std::optional<struct stat> state(const HostHandle& folder, const std::string& name);
    std::vector<std::string> names(const HostHandle& folder);
    virtual HostSpace space(const HostHandle& folder);
    bool mayWrite(const HostHandle& folder);
    // False where another one has the lock, which goes with the handle.
    bool lock(const HostHandle& folder);

    void setOwner(const HostHandle& file, const std::string& name, uid_t user, gid_t group);
    void setMode(const HostHandle& file, const std::string& name, mode_t mode);
    void setTimes(const HostHandle& file, const std::string& name, const struct stat& times);
    // Nothing where the file has no such attribute, or the file system none at all.
    std::optional<std::string> attribute(const HostHandle& file, const std::string& attribute);
    std::vector<std::string> attributes(const HostHandle& file);
    void setAttribute(const HostHandle& file, const std::string& attribute, const std::string& value);

    // Who we are; 0 may give files away.
    uid_t user;
    // The most that one call reads or writes.
    std::size_t piece = std::size_t{1} << 22;

  protected:
    // Asked before and after every call: the error that it shall end with, or 0.
    virtual int failureBefore(std::string_view call, const std::string& name);
    virtual int failureAfter(std::string_view call, const std::string& name);

  private:
    long run(std::string_view call, const std::string& name, const std::function<long()>& action);
    long attempt(std::string_view call, const std::string& name, const std::function<long()>& action);
};

}  // namespace bromvale::offline
