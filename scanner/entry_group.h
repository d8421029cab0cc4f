#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bromvale {

// The buffered entries of one registry object, in the order of collection. Indices count from 1; Failure 9
// beyond the end. Texts of removed entries keep their memory for the next ones: an entry of a scan costs no
// allocation here.
//
// Texts are the true ones, with their marks (platform/exact/text.h). An object with a key whose name has
// marks is left alone whole: what the ANSI functions would open in its place is another key or none.
class EntryGroup {
  public:
    [[nodiscard]] int count() const { return static_cast<int>(count_); }
    [[nodiscard]] const std::string& key(int index) const { return at(index).key; }  // with its closing "]"
    [[nodiscard]] const std::string& lowerKey(int index) const { return at(index).lowerKey; }
    [[nodiscard]] const std::string& name(int index) const {
        return at(index).name;
    }  // "@" for the default value
    [[nodiscard]] const std::string& value(int index) const { return at(index).value; }
    [[nodiscard]] std::int32_t hive(int index) const { return at(index).hive; }

    // An entry that can't be kept leaves the object alone, too: what is known of it is not the whole.
    void append(std::string_view key, std::string_view lowerKey, std::string_view name,
                std::string_view value, std::int32_t hive);
    void remove(int index);
    // From the last to the first. The object is forgotten with its last entry.
    void clear();

    [[nodiscard]] bool isLeftAlone() const { return leftAlone_; }

    // Rows of the result list that the object got while it was open, by their columns.
    using Row = std::array<std::string, 4>;
    void remember(Row row) { listed_.push_back(std::move(row)); }
    // Hands them over: they are known no longer.
    [[nodiscard]] std::vector<Row> takeListed() { return std::exchange(listed_, {}); }

  private:
    struct Entry {
        std::string key;
        std::string lowerKey;
        std::string name;
        std::string value;
        std::int32_t hive = 0;
    };
    [[nodiscard]] const Entry& at(int index) const;

    std::vector<Entry> entries_;
    std::size_t count_ = 0;
    bool leftAlone_ = false;
    std::vector<Row> listed_;
};

}  // namespace bromvale
