// Reads a hive of Windows NT to 11, without changing it and without any library. Everything that the file
// says is checked where it is used (bytes.h); what can't be is a HiveDamage. What else a whole hive must
// fulfil is the checker's business (checker.h), replaying its logs that of replay.h.
//
// A name comes as the UTF-16 that Windows shows; data as the bytes that it holds, texts in UTF-16LE.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/hives/bytes.h"
#include "platform/offline/hives/layout.h"

namespace bromvale::offline {

// What the first sector says of a hive or a log.
struct BaseBlock {
    std::uint32_t firstSequence = 0;
    std::uint32_t secondSequence = 0;
    std::uint64_t lastWritten = 0;  // FILETIME
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t type = 0;
    Cell root = kNil;
    std::uint32_t binsSize = 0;
    std::uint32_t clusteringFactor = 1;
    std::uint32_t flags = 0;
    bool checksumRight = false;

    [[nodiscard]] bool dirty() const { return !checksumRight || firstSequence != secondSequence; }
};

// HiveDamage where the file has no such sector or doesn't begin with "regf".
[[nodiscard]] BaseBlock readBaseBlock(HiveBytes file);
// Of the first 508 bytes, as it stands behind them.
[[nodiscard]] std::uint32_t baseBlockChecksum(HiveBytes file);

struct HiveKey {
    Cell cell = kNil;
    std::uint16_t flags = 0;
    std::uint64_t lastWritten = 0;  // FILETIME
    Cell parent = kNil;
    std::uint32_t subKeyCount = 0;
    Cell subKeys = kNil;
    std::uint32_t valueCount = 0;  // 0 for a predefined handle, whose field holds something else
    Cell values = kNil;
    Cell security = kNil;
    Cell className = kNil;
    std::uint16_t classNameSize = 0;  // bytes
    std::string_view nameBytes;

    [[nodiscard]] bool is(std::uint16_t flag) const { return (flags & flag) != 0; }
    [[nodiscard]] std::u16string name() const;
};

struct HiveValue {
    Cell cell = kNil;
    std::uint32_t type = 0;
    std::uint32_t size = 0;  // bytes of data
    Cell data = kNil;        // no cell where the data stands inside
    bool inside = false;
    std::uint16_t flags = 0;
    std::string_view nameBytes;

    [[nodiscard]] std::u16string name() const;
};

// One byte a character is Latin-1, not Windows-1252; else UTF-16, an odd last byte dropped.
[[nodiscard]] std::u16string hiveName(std::string_view bytes, bool oneByte);

class Hive {
  public:
    // HiveDamage where the base block isn't that of a hive of version 1.3 to 1.6, or its bins reach beyond
    // the file. The bytes must outlive the hive.
    explicit Hive(HiveBytes file);

    [[nodiscard]] const BaseBlock& base() const { return base_; }
    [[nodiscard]] HiveBytes file() const { return file_; }
    // The content of a cell that is in use, without its size.
    [[nodiscard]] HiveBytes cell(Cell cell) const;

    [[nodiscard]] HiveKey root() const { return key(base_.root); }
    [[nodiscard]] HiveKey key(Cell cell) const;
    // In the file's order. HiveDamage also where a sub key names another parent or is the root: so no walk
    // downward ends in a circle.
    [[nodiscard]] std::vector<Cell> subKeys(const HiveKey& key) const;
    [[nodiscard]] std::vector<Cell> values(const HiveKey& key) const;
    [[nodiscard]] HiveValue value(Cell cell) const;
    [[nodiscard]] std::string data(const HiveValue& value) const;
    // UTF-16LE.
    [[nodiscard]] std::string_view classNameBytes(const HiveKey& key) const;
    // The sub key of that name, without case; kNil where there is none. `path` may hold several, with
    // backslashes.
    [[nodiscard]] Cell find(const HiveKey& from, std::u16string_view path) const;

  private:
    void addSubKeys(const HiveKey& key, Cell list, bool listsAllowed, std::vector<Cell>& found) const;
    [[nodiscard]] std::string bigData(const HiveValue& value) const;

    HiveBytes file_;
    HiveBytes bins_;
    BaseBlock base_;
};

}  // namespace bromvale::offline
