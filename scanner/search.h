#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale {

// Registry entries as text, one line a value: hive handle in signed decimal, "[", key, "]", name, "=", data.
// Nothing is escaped; what the code page lacks has its marks (platform/exact/text.h). An empty name stands as
// "@", data that is no string as nothing. Element 0 is the caller's placeholder and stays empty; entries
// start at 1.
using ScanLines = std::vector<std::string>;

// What FindString looks for, and where it stands. One record serves the whole walk: SearchKey changes on the
// way down and is put back on the way up.
struct SearchSpec {
    std::string SearchText;  // empty: every entry
    std::string SearchKey;
    std::int32_t SearchHive = 0;
    std::int32_t MatchMode = 1;  // 0 exact, 1 substring without case, any other adds nothing
    bool Recurse = true;
    bool MatchKeys = true;
    bool MatchValueNames = true;
    bool MatchValueData = true;
};

// Status of the latest registry call made here.
extern std::int32_t LastRegStatus;

// Adds the lines of a sub tree: for a key all its values in the order of enumeration, then each sub key with
// all below it. A key without values (or one that can't be read) gives one line with "@" and no data. Stops
// when ScanAbort is True; pumps events before each value and each sub key. `lines` without any element gets
// element 0 first, and the first line lands there.
void FindString(SearchSpec& spec, ScanLines& lines);

// Keys and names come and are given with their marks. At least one element, "" where there is nothing. Values
// whose data is longer than 256 bytes, or whose name has 255 characters or more, end the list.
[[nodiscard]] std::vector<std::string> EnumValueNames(std::int32_t hive, std::string_view key);
[[nodiscard]] std::vector<std::string> EnumSubKeys(std::int32_t hive, std::string_view key);
// Text of a REG_SZ or REG_EXPAND_SZ (unexpanded), empty for other types and where it can't be read.
[[nodiscard]] std::string QueryStringValue(std::int32_t hive, std::string_view key, std::string_view name);

}  // namespace bromvale
