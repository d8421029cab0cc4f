#include "platform/offline/hives/hive.h"

#include <algorithm>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

bool sameUnits(std::u16string_view left, std::u16string_view right) {
    return std::ranges::equal(left, right,
                              [](char16_t a, char16_t b) { return upperUnit(a) == upperUnit(b); });
}

// Where a list's entries stand, and how many there are.
struct KeyList {
    HiveBytes cell;
    std::size_t entrySize = 4;
    std::size_t count = 0;
    bool ofLists = false;

    [[nodiscard]] Cell at(std::size_t index) const {
        return cell.u32(key_list::kEntries + index * entrySize);
    }
};

KeyList readKeyList(HiveBytes cell) {
    const std::string_view signature = cell.text(0, 2);
    KeyList list{cell};
    if (signature == key_list::kNames || signature == key_list::kHashes) {
        list.entrySize = 8;
    } else if (signature == key_list::kLists) {
        list.ofLists = true;
    } else if (signature != key_list::kOffsets) {
        throw HiveDamage(cell.place(), "a list of sub keys has an unknown signature");
    }
    list.count = cell.u16(key_list::kCount);
    static_cast<void>(cell.part(key_list::kEntries, list.count * list.entrySize));
    return list;
}

// With two everywhere a walk would take each level twice as long as the one above it.
bool holdsOneTwice(std::vector<Cell> cells) {
    std::ranges::sort(cells);
    return std::ranges::adjacent_find(cells) != cells.end();
}

}  // namespace

std::uint32_t baseBlockChecksum(HiveBytes file) {
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at < base_block::kChecksum; at += 4) sum ^= file.u32(at);
    if (sum == 0) return 1;
    return sum == 0xFFFFFFFFu ? 0xFFFFFFFEu : sum;
}

BaseBlock readBaseBlock(HiveBytes file) {
    namespace at = base_block;
    if (!file.holds(0, kSectorSize)) throw HiveDamage(file.size(), "the file is shorter than a first sector");
    if (file.text(0, 4) != at::kSignature) throw HiveDamage(0, "the file does not begin with \"regf\"");
    BaseBlock base;
    base.firstSequence = file.u32(at::kFirstSequence);
    base.secondSequence = file.u32(at::kSecondSequence);
    base.lastWritten = file.u64(at::kLastWritten);
    base.major = file.u32(at::kMajorVersion);
    base.minor = file.u32(at::kMinorVersion);
    base.type = file.u32(at::kType);
    base.root = file.u32(at::kRoot);
    base.binsSize = file.u32(at::kBinsSize);
    base.clusteringFactor = file.u32(at::kClusteringFactor);
    base.flags = file.u32(at::kFlags);
    base.checksumRight = file.u32(at::kChecksum) == baseBlockChecksum(file);
    return base;
}

std::u16string hiveName(std::string_view bytes, bool oneByte) {
    std::u16string name;
    if (oneByte) {
        for (const char c : bytes) name += static_cast<char16_t>(static_cast<unsigned char>(c));
        return name;
    }
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = static_cast<unsigned char>(bytes[i + 1]);
        name += static_cast<char16_t>(low | high << 8);
    }
    return name;
}

std::u16string HiveKey::name() const {
    return hiveName(nameBytes, is(key_node::kFlagOneByteName));
}

std::u16string HiveValue::name() const {
    return hiveName(nameBytes, (flags & value_node::kFlagOneByteName) != 0);
}

Hive::Hive(HiveBytes file) : file_(file), base_(readBaseBlock(file)) {
    if (base_.type != base_block::kTypeHive)
        throw HiveDamage(base_block::kType, "the file is a log and no hive");
    if (base_.major != 1 || base_.minor < 3 || base_.minor > 6) {
        throw HiveDamage(base_block::kMajorVersion, "the hive's version " + std::to_string(base_.major) +
                                                        "." + std::to_string(base_.minor) +
                                                        " is none of 1.3 to 1.6");
    }
    if (!file.holds(kBinsStart, base_.binsSize))
        throw HiveDamage(base_block::kBinsSize, "the hive's bins reach beyond the end of the file");
    bins_ = file.part(kBinsStart, base_.binsSize);
}

HiveBytes Hive::cell(Cell cell) const {
    const auto size = static_cast<std::int32_t>(bins_.u32(cell));
    if (cell % 8 != 0 || size >= 0 || size % 8 != 0)
        throw HiveDamage(bins_.place() + cell, "an offset leads to no cell that is in use");
    const auto whole = static_cast<std::size_t>(-static_cast<std::int64_t>(size));
    return bins_.part(cell, whole).part(kCellHeaderSize, whole - kCellHeaderSize);
}

HiveKey Hive::key(Cell cell) const {
    namespace at = key_node;
    const HiveBytes node = this->cell(cell);
    if (node.text(0, 2) != at::kSignature) throw HiveDamage(node.place(), "an offset leads to no key");
    HiveKey key;
    key.cell = cell;
    key.flags = node.u16(at::kFlags);
    key.lastWritten = node.u64(at::kLastWritten);
    key.parent = node.u32(at::kParent);
    key.subKeyCount = node.u32(at::kSubKeyCount);
    key.subKeys = node.u32(at::kSubKeys);
    key.values = node.u32(at::kValues);
    key.security = node.u32(at::kSecurity);
    key.className = node.u32(at::kClassName);
    key.classNameSize = node.u16(at::kClassNameSize);
    key.nameBytes = node.text(at::kName, node.u16(at::kNameSize));
    if (!key.is(at::kFlagPredefined)) key.valueCount = node.u32(at::kValueCount);
    return key;
}

void Hive::addSubKeys(const HiveKey& key, Cell list, bool listsAllowed, std::vector<Cell>& found) const {
    const KeyList entries = readKeyList(cell(list));
    if (entries.ofLists && !listsAllowed)
        throw HiveDamage(entries.cell.place(), "a list of lists of sub keys holds another one");
    for (std::size_t i = 0; i < entries.count; ++i) {
        if (entries.ofLists) {
            addSubKeys(key, entries.at(i), false, found);
            continue;
        }
        const Cell subKey = entries.at(i);
        const HiveBytes node = cell(subKey);
        if (subKey == base_.root || node.text(0, 2) != key_node::kSignature ||
            node.u32(key_node::kParent) != key.cell) {
            throw HiveDamage(node.place(), "a sub key is no key, or belongs to another one");
        }
        if (found.size() == key.subKeyCount)
            throw HiveDamage(entries.cell.place(), "there are more sub keys than their key counts");
        found.push_back(subKey);
    }
}

std::vector<Cell> Hive::subKeys(const HiveKey& key) const {
    std::vector<Cell> found;
    if (key.subKeyCount == 0) return found;
    // A part may be listed again and again, so that a small file seems to hold billions.
    if (key.subKeyCount > bins_.size() / key_node::kName)
        throw HiveDamage(cell(key.cell).place(), "a key counts more sub keys than the hive can hold");
    addSubKeys(key, key.subKeys, true, found);
    if (found.size() != key.subKeyCount)
        throw HiveDamage(cell(key.cell).place(), "there are fewer sub keys than their key counts");
    if (holdsOneTwice(found)) throw HiveDamage(cell(key.cell).place(), "a key lists a sub key twice");
    return found;
}

std::vector<Cell> Hive::values(const HiveKey& key) const {
    std::vector<Cell> found;
    if (key.valueCount == 0) return found;
    const HiveBytes list = cell(key.values);
    static_cast<void>(list.part(0, std::size_t{key.valueCount} * 4));
    found.reserve(key.valueCount);
    for (std::size_t i = 0; i < key.valueCount; ++i) found.push_back(list.u32(i * 4));
    return found;
}

HiveValue Hive::value(Cell cell) const {
    namespace at = value_node;
    const HiveBytes node = this->cell(cell);
    if (node.text(0, 2) != at::kSignature) throw HiveDamage(node.place(), "an offset leads to no value");
    HiveValue value;
    value.cell = cell;
    value.type = node.u32(at::kType);
    value.flags = node.u16(at::kFlags);
    value.nameBytes = node.text(at::kName, node.u16(at::kNameSize));
    const std::uint32_t size = node.u32(at::kDataSize);
    value.inside = (size & at::kDataInside) != 0;
    value.size = size & ~at::kDataInside;
    if (!value.inside) value.data = node.u32(at::kData);
    if (value.inside && value.size > 4)
        throw HiveDamage(node.place(), "a value's own field holds more than four bytes");
    return value;
}

std::string Hive::data(const HiveValue& value) const {
    if (value.inside) return std::string(cell(value.cell).text(value_node::kData, value.size));
    // Length 0 without a cell is what a tombstone has, and a few others.
    if (value.size == 0) return {};
    if (value.size > big_data::kPieceSize && base_.minor >= big_data::kFromMinorVersion)
        return bigData(value);
    return std::string(cell(value.data).text(0, value.size));
}

std::string Hive::bigData(const HiveValue& value) const {
    const HiveBytes head = cell(value.data);
    if (value.size > bins_.size()) throw HiveDamage(head.place(), "long data is longer than the hive");
    if (head.text(0, 2) != big_data::kSignature)
        throw HiveDamage(head.place(), "long data has no list of pieces");
    const std::size_t count = head.u16(big_data::kCount);
    const HiveBytes pieces = cell(head.u32(big_data::kPieces));
    std::string data;
    for (std::size_t i = 0; i < count && data.size() < value.size; ++i) {
        const std::size_t size = std::min<std::size_t>(big_data::kPieceSize, value.size - data.size());
        data += cell(pieces.u32(i * 4)).text(0, size);
    }
    if (data.size() != value.size) throw HiveDamage(head.place(), "long data has too few pieces");
    return data;
}

std::string_view Hive::classNameBytes(const HiveKey& key) const {
    if (key.classNameSize == 0 || key.className == kNil) return {};
    return cell(key.className).text(0, key.classNameSize);
}

Cell Hive::find(const HiveKey& from, std::u16string_view path) const {
    HiveKey key = from;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find(u'\\'), path.size());
        const std::u16string_view name = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (name.empty()) continue;
        const std::vector<Cell> subKeys = this->subKeys(key);
        const auto found = std::ranges::find_if(
            subKeys, [&](Cell subKey) { return sameUnits(this->key(subKey).name(), name); });
        if (found == subKeys.end()) return kNil;
        key = this->key(*found);
    }
    return key.cell;
}

}  // namespace bromvale::offline
