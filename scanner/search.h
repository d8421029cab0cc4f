#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/registry.h"
#include "scanner/scan_line.h"

namespace bromvale {

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

// True asks every loop of a scan to stop. False before the first scan and while one runs, True behind it.
inline bool ScanAbort = false;

// Status of the latest registry call made here; read by tests alone.
extern LONG LastRegStatus;

// Adds the lines of a sub tree: for a key all its values in the order of enumeration, then each sub key with
// all below it. A key without values (or one that can't be read) gives one line with "@" and no data. Stops
// when ScanAbort is True; pumps events before each value and each sub key. `lines` without any element gets
// element 0 first, and the first line lands there.
void FindString(SearchSpec& spec, ScanLines& lines);

// Names one behind the other, each ended by a NUL: a list costs one block of memory, and each name is ready
// for the platform. Never empty: a list of nothing holds the one name "".
using PackedNames = std::string;

// Keys and names come and are given with their marks. Values whose data is longer than 256 bytes, or whose
// name has 255 characters or more, end the list.
[[nodiscard]] PackedNames EnumValueNames(std::int32_t hive, const std::string& key);
[[nodiscard]] PackedNames EnumSubKeys(std::int32_t hive, const std::string& key);
// Text of a REG_SZ or REG_EXPAND_SZ (unexpanded), empty for other types and where it can't be read. It lives
// until the next call.
[[nodiscard]] std::string_view QueryStringValue(std::int32_t hive, const std::string& key, const char* name);

}  // namespace bromvale
