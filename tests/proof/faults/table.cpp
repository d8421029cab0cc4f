#include "tests/proof/faults/table.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace bromvale::proof {
namespace {

struct Row {
    std::string_view start;  // of the operation's name
    std::array<long, 5> results;
    std::size_t count;
};

// Access denied 5, missing 2 and 3, invalid handle 6, no memory 8, no more files 18, device 21, shared 32,
// full disk 112, too small 234, end 259, damaged 1117, deleted 1018, cancelled 1223. The longer name first.
constexpr Row kRows[] = {
    {"RegEnum", {5, 234, 1018, 259, 8}, 5},
    {"RegQueryValue", {2, 5, 234, 1018, 8}, 5},
    {"RegQueryInfo", {5, 1018, 8}, 3},
    {"RegOpen", {5, 2, 234, 1018, 8}, 5},
    {"RegCloseKey", {6}, 1},
    {"Reg", {5, 2, 1018, 8}, 4},
    {"CreateFile", {2, 3, 5, 32, 112}, 5},
    {"FindFirstFile", {2, 3, 5, 32, 21}, 5},
    {"FindNextFile", {5, 18, 1117}, 3},
    {"ReadFile", {5, 21, 1117}, 3},
    {"WriteFile", {112, 5, 1117}, 3},
    {"SetEndOfFile", {112, 5}, 2},
    {"SetFilePointer", {6, 87}, 2},
    {"DeleteFile", {2, 3, 5, 32}, 4},
    {"RemoveDirectory", {2, 3, 5, 32, 145}, 5},
    {"CreateDirectory", {3, 5, 112, 183}, 4},
    {"MoveFile", {2, 3, 5, 32, 112}, 5},
    {"OpenFile", {2, 3, 5, 32}, 4},
    {"SHFileOperation", {2, 5, 124, 1223}, 4},
    {"ShellExecute", {0, 2, 5, 31}, 4},
    {"CreateProcess", {2, 3, 5, 8, 193}, 5},
    {"MessageBox", {0}, 1},
    {"Internet", {12029, 12002, 12007, 12030}, 4},
    {"Http", {12150, 12019}, 2},
    {"connect", {10061}, 1},
    {"send", {10054}, 1},
    {"", {5, 8, 87}, 3},
};

}  // namespace

std::span<const long> faultsOf(std::string_view operation) {
    const auto* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                         [&](const Row& each) { return operation.starts_with(each.start); });
    return {row->results.data(), row->count};
}

bool mayLeak(std::string_view operation) {
    // A list of values that can't be read is a list of the default value, and asking for one that isn't there
    // is a query that fails.
    constexpr std::string_view kOperations[] = {"RegQueryValueExA", "RegEnumValueA",      "RegOpenKeyExA",
                                                "RegCloseKey",      "CloseHandle",        "FindClose",
                                                "WriteFile",        "InternetCloseHandle"};
    return std::find(std::begin(kOperations), std::end(kOperations), operation) != std::end(kOperations);
}

}  // namespace bromvale::proof
