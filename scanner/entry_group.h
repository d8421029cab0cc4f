#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/result_row.h"
#include "scanner/entry.h"

namespace bromvale {

// The buffered entries of one registry object, in the order of collection, and what decides which entry joins
// them. Indices count from 1; Failure 9 beyond the end. Texts of removed entries keep their memory for the
// next ones: an entry of a scan costs no allocation here.
//
// Texts are the true ones, with their marks (platform/exact/text.h). An object with a key whose name has
// marks is left alone whole: what the ANSI functions would open in its place is another key or none.
class EntryGroup {
  public:
    std::string prefix;   // lower-case text that the keys of the open group share
    bool isOpen = false;  // the last entry joined the group; False when it belonged to no object
    // The entry just checked closed the group before and was not buffered: it is to be checked once more.
    bool repeat = false;

    [[nodiscard]] int count() const { return static_cast<int>(count_); }
    // Views that live until the group changes.
    [[nodiscard]] Entry at(int index, std::string_view hiveName = {}) const;
    [[nodiscard]] const std::string& lowerKey(int index) const { return kept(index).lowerKey; }

    // An entry that can't be kept leaves the object alone, too: what is known of it is not the whole.
    void append(const Entry& entry, std::string_view lowerKey);
    void remove(int index);
    // From the last to the first. The object is forgotten with its last entry; prefix and isOpen stay.
    void clear();

    [[nodiscard]] bool isLeftAlone() const { return leftAlone_; }

    // Rows of the result list that the object got while it was open.
    void remember(const ResultRow& row) { listed_.push_back(row); }
    // Hands them over: they are known no longer.
    [[nodiscard]] std::vector<ResultRow> takeListed() { return std::exchange(listed_, {}); }

  private:
    struct Kept {
        std::string key;
        std::string lowerKey;
        std::string name;
        std::string value;
        std::int32_t hive = 0;
    };
    [[nodiscard]] const Kept& kept(int index) const;

    std::vector<Kept> entries_;
    std::size_t count_ = 0;
    bool leftAlone_ = false;
    std::vector<ResultRow> listed_;
};

// The one of the process. Nothing clears it at the start of a scan, so that the last object of one scan is
// judged in the next; a scan that is started inside another one shares it.
[[nodiscard]] EntryGroup& entryGroup();

}  // namespace bromvale
