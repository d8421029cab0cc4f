#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/routine.h"
#include "scanner/entry.h"

namespace bromvale {

// Registry entries as text, one line a value: hive handle in signed decimal, "[", key, "]", name, "=", data.
// Nothing is escaped; what the code page lacks has its marks (platform/exact/text.h). An empty name stands as
// "@", data that is no string as nothing. Element 0 is the caller's placeholder and stays empty; entries
// start at 1.
using ScanLines = std::vector<std::string>;

// The entry that a scan is at, with the places of the three signs in its line. One record serves a whole
// scan.
struct LineParts : Entry {
    std::int64_t open = 0;
    std::int64_t close = 0;
    std::int64_t equals = 0;
};

// One line: how it is written and how it is taken apart, as views into it. It is cut at the first "[", "]"
// and "=" wherever they stand. So a "]" in a key cuts it, and a name with "=" loses its tail to the value; a
// "=" in a key gives the name a negative length, which is Failure 5.
class ScanLine {
  public:
    explicit ScanLine(std::string_view text) : text_(text) {}

    // `key` has no "]" at its end.
    static void write(std::string& line, std::int32_t hive, std::string_view key, std::string_view name,
                      std::string_view data);

    // All parts, or a failure.
    [[nodiscard]] Entry entry() const;
    // Each part by itself: one that can't be taken is reported and keeps what it had from the line before. A
    // place beyond 32767 fails (6) and is that of the line before.
    void takeInto(LineParts& parts, const Routine<>& routine) const;

  private:
    std::string_view text_;
};

}  // namespace bromvale
