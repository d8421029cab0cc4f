#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/offline/files/volume.h"
#include "platform/offline/handle_table.h"

namespace bromvale::offline {

inline constexpr DWORD kReading = GENERIC_READ | GENERIC_ALL;
inline constexpr DWORD kWriting = GENERIC_WRITE | GENERIC_ALL;

// What CloseHandle closes: a file, or something without a content (token, mutex, process).
struct KernelObject {
    std::unique_ptr<OpenedFile> file{};
    std::string path{};
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

}  // namespace bromvale::offline
