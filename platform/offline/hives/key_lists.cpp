#include "platform/offline/hives/key_lists.h"

#include <algorithm>
#include <string>

namespace bromvale::offline {
namespace {

// Moves the entries that stay together, and frees the list if none does. How many went.
template <class Goes>
TakenOut removeEntries(HiveImage& image, const Hive& hive, Cell cell, std::size_t entrySize, Goes goes) {
    const HiveBytes list = hive.cell(cell);
    const std::size_t count = list.u16(key_list::kCount);
    const std::string_view entries = list.text(key_list::kEntries, count * entrySize);
    std::string staying;
    for (std::size_t at = 0; at < entries.size(); at += entrySize) {
        if (!goes(list.u32(key_list::kEntries + at))) staying += entries.substr(at, entrySize);
    }
    const std::size_t left = staying.size() / entrySize;
    image.write(list.place() + key_list::kEntries, staying);
    image.write16(list.place() + key_list::kCount, static_cast<std::uint16_t>(left));
    if (left == 0) freeCell(image, hive, cell);
    return {count - left, left == 0};
}

bool isOfLists(const Hive& hive, Cell list) {
    return hive.cell(list).text(0, 2) == key_list::kLists;
}

TakenOut takeOutOfPart(HiveImage& image, const Hive& hive, Cell part, std::span<const Cell> keys) {
    const std::string_view signature = hive.cell(part).text(0, 2);
    const bool withHints = signature == key_list::kNames || signature == key_list::kHashes;
    if (!withHints && signature != key_list::kOffsets)
        throw HiveDamage(hive.cell(part).place(), "a list of sub keys has an unknown signature");
    return removeEntries(image, hive, part, withHints ? 8 : 4,
                         [keys](Cell key) { return std::ranges::binary_search(keys, key); });
}

}  // namespace

void freeCell(HiveImage& image, const Hive& hive, Cell cell) {
    const auto size = static_cast<std::uint32_t>(hive.cell(cell).size() + kCellHeaderSize);
    image.write(kBinsStart + cell, size);
}

TakenOut takeOutOfList(HiveImage& image, const Hive& hive, Cell list, std::span<const Cell> keys) {
    if (!isOfLists(hive, list)) return takeOutOfPart(image, hive, list, keys);
    std::size_t count = 0;
    const TakenOut parts = removeEntries(image, hive, list, 4, [&](Cell part) {
        const TakenOut taken = takeOutOfPart(image, hive, part, keys);
        count += taken.count;
        return taken.empty;
    });
    return {count, parts.empty};
}

void freeKeyList(HiveImage& image, const Hive& hive, Cell list) {
    const HiveBytes cell = hive.cell(list);
    if (cell.text(0, 2) == key_list::kLists) {
        for (std::size_t i = 0; i < cell.u16(key_list::kCount); ++i)
            freeCell(image, hive, cell.u32(key_list::kEntries + i * 4));
    }
    freeCell(image, hive, list);
}

}  // namespace bromvale::offline
