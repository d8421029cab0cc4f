#include "tests/hives/made_hive.h"

#include <algorithm>
#include <cstring>

#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/key_names.h"
#include "tests/hives/made_bins.h"

namespace bromvale::offline {
namespace {

bool fitsOneByte(std::u16string_view name) {
    return std::ranges::all_of(name, [](char16_t unit) { return unit < 0x100; });
}

std::string oneByteName(std::u16string_view name) {
    std::string bytes;
    for (const char16_t unit : name) bytes += static_cast<char>(unit);
    return bytes;
}

std::string wideBytes(std::u16string_view text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

// Written here anew, since the product's own is what the made hives try.
std::uint32_t hashOf(std::u16string_view upperName) {
    std::uint32_t hash = 0;
    for (const char16_t unit : upperName) hash = 37 * hash + unit;
    return hash;
}

class Writer {
  public:
    explicit Writer(const MadeHive& hive) : hive_(hive), bins_(hive.binSize, hive.freeCellEvery) {}

    std::string file() {
        writeSecurities();
        const Cell root = writeKey(hive_.root, kNil);
        std::string bins = bins_.take(hive_.lastWritten);
        return baseBlock(root, static_cast<std::uint32_t>(bins.size())) + bins + hive_.tail;
    }

  private:
    struct Listed {
        std::u16string upperName;
        const MadeKey* key = nullptr;
        Cell cell = kNil;
    };

    static std::u16string upper(const std::u16string& name) {
        std::u16string made;
        upperCasedName(wideBytes(name), false, made);
        return made;
    }

    void countUses(const MadeKey& key, std::vector<std::uint32_t>& uses) const {
        ++uses.at(key.security);
        for (const MadeKey& subKey : key.subKeys) countUses(subKey, uses);
    }

    void writeSecurities() {
        namespace at = security_node;
        std::vector<std::uint32_t> uses(hive_.securities.size());
        countUses(hive_.root, uses);
        securities_.assign(uses.size(), kNil);
        std::vector<Cell> ring;
        for (std::size_t i = 0; i < uses.size(); ++i) {
            if (uses[i] == 0) continue;
            const std::string& descriptor = hive_.securities[i];
            securities_[i] = bins_.cell(at::kDescriptor + descriptor.size());
            ring.push_back(securities_[i]);
            bins_.put(securities_[i], 0, at::kSignature);
            bins_.put(securities_[i], at::kUseCount, uses[i]);
            bins_.put(securities_[i], at::kDescriptorSize, static_cast<std::uint32_t>(descriptor.size()));
            bins_.put(securities_[i], at::kDescriptor, descriptor);
        }
        for (std::size_t i = 0; i < ring.size(); ++i) {
            bins_.put(ring[i], at::kNext, ring[(i + 1) % ring.size()]);
            bins_.put(ring[i], at::kPrevious, ring[(i + ring.size() - 1) % ring.size()]);
        }
    }

    Cell writeKey(const MadeKey& key, Cell parent) {
        namespace at = key_node;
        const bool oneByte = !key.wideName && fitsOneByte(key.name);
        const std::string name = oneByte ? oneByteName(key.name) : wideBytes(key.name);
        const Cell cell = bins_.cell(at::kName + name.size());
        const bool root = parent == kNil;
        bins_.put(cell, 0, at::kSignature);
        bins_.put16(cell, at::kFlags,
                    key.flags | (root ? at::kFlagRoot | at::kFlagUndeletable : 0) |
                        (oneByte ? at::kFlagOneByteName : 0));
        bins_.put64(cell, at::kLastWritten, key.lastWritten);
        bins_.put(cell, 13, std::string(1, static_cast<char>(key.layered)));
        bins_.put(cell, at::kParent, root ? 0 : parent);
        bins_.put(cell, 32, kNil);  // sub keys in memory alone
        bins_.put(cell, at::kSecurity, securities_.at(key.security));
        bins_.put16(cell, at::kNameSize, name.size());
        bins_.put16(cell, at::kClassNameSize, key.className.size() * 2);
        bins_.put(cell, at::kName, name);
        bins_.put(cell, at::kClassName, key.className.empty() ? kNil : bins_.cell(wideBytes(key.className)));
        writeValues(key, cell);
        writeSubKeys(key, cell);
        return cell;
    }

    void writeValues(const MadeKey& key, Cell cell) {
        namespace at = key_node;
        std::string list;
        std::size_t longestName = 0;
        std::size_t longestData = 0;
        for (const MadeValue& value : key.values) {
            const Cell made = writeValue(value);
            list.append(reinterpret_cast<const char*>(&made), sizeof made);
            longestName = std::max(longestName, value.name.size() * 2);
            longestData = std::max(longestData, value.data.size());
        }
        const auto count = static_cast<std::uint32_t>(key.values.size());
        bins_.put(cell, at::kValueCount, (key.flags & at::kFlagPredefined) != 0 ? key.handle : count);
        bins_.put(cell, at::kValues, list.empty() ? kNil : bins_.cell(list));
        bins_.put(cell, at::kLongestValueName, static_cast<std::uint32_t>(longestName));
        bins_.put(cell, at::kLongestData, static_cast<std::uint32_t>(longestData));
    }

    Cell writeValue(const MadeValue& value) {
        namespace at = value_node;
        // The value without a name is never marked.
        const bool oneByte = !value.name.empty() && !value.wideName && fitsOneByte(value.name);
        const std::string name = oneByte ? oneByteName(value.name) : wideBytes(value.name);
        const Cell cell = bins_.cell(at::kName + name.size());
        bins_.put(cell, 0, at::kSignature);
        bins_.put16(cell, at::kNameSize, name.size());
        bins_.put(cell, at::kType, value.type);
        bins_.put16(cell, at::kFlags, value.flags | (oneByte ? at::kFlagOneByteName : 0));
        bins_.put(cell, at::kName, name);
        const auto size = static_cast<std::uint32_t>(value.data.size());
        if (value.withoutCell) {
            bins_.put(cell, at::kData, kNil);
        } else if (size == 0 || (size <= 4 && !value.alwaysInCell)) {
            bins_.put(cell, at::kDataSize, size | at::kDataInside);
            bins_.put(cell, at::kData, value.data);
        } else {
            bins_.put(cell, at::kDataSize, size);
            bins_.put(cell, at::kData, writeData(value.data));
        }
        return cell;
    }

    Cell writeData(std::string_view data) {
        if (data.size() <= big_data::kPieceSize || hive_.minorVersion < big_data::kFromMinorVersion)
            return bins_.cell(data);
        std::string pieces;
        for (std::size_t at = 0; at < data.size(); at += big_data::kPieceSize) {
            const Cell piece = bins_.cell(data.substr(at, big_data::kPieceSize));
            pieces.append(reinterpret_cast<const char*>(&piece), sizeof piece);
        }
        const Cell head = bins_.cell(big_data::kPieces + 4);
        bins_.put(head, 0, big_data::kSignature);
        bins_.put16(head, big_data::kCount, pieces.size() / 4);
        bins_.put(head, big_data::kPieces, bins_.cell(pieces));
        return head;
    }

    void writeSubKeys(const MadeKey& key, Cell cell) {
        namespace at = key_node;
        std::vector<Listed> listed;
        std::size_t longestName = 0;
        for (const MadeKey& subKey : key.subKeys) {
            listed.push_back({upper(subKey.name), &subKey, writeKey(subKey, cell)});
            longestName = std::max(longestName, subKey.name.size() * 2);
        }
        std::ranges::sort(listed, {}, &Listed::upperName);
        bins_.put(cell, at::kSubKeyCount, static_cast<std::uint32_t>(listed.size()));
        bins_.put16(cell, at::kLongestSubKeyName, longestName);
        bins_.put(cell, at::kSubKeys, listed.empty() ? kNil : writeList(key.list, listed));
    }

    Cell writeList(const MadeList& list, const std::vector<Listed>& listed) {
        const std::size_t partSize = list.partSize == 0 ? listed.size() : list.partSize;
        std::vector<Cell> parts;
        for (std::size_t at = 0; at < listed.size(); at += partSize) {
            const std::size_t end = std::min(at + partSize, listed.size());
            parts.push_back(writePart(list.kind, {listed.begin() + static_cast<std::ptrdiff_t>(at),
                                                  listed.begin() + static_cast<std::ptrdiff_t>(end)}));
        }
        if (list.partSize == 0) return parts.front();
        const Cell cell = bins_.cell(key_list::kEntries + parts.size() * 4);
        bins_.put(cell, 0, key_list::kLists);
        bins_.put16(cell, key_list::kCount, parts.size());
        for (std::size_t i = 0; i < parts.size(); ++i) bins_.put(cell, key_list::kEntries + i * 4, parts[i]);
        return cell;
    }

    Cell writePart(std::string_view kind, const std::vector<Listed>& listed) {
        const std::size_t entrySize = kind == key_list::kOffsets ? 4 : 8;
        const Cell cell = bins_.cell(key_list::kEntries + listed.size() * entrySize);
        bins_.put(cell, 0, kind);
        bins_.put16(cell, key_list::kCount, listed.size());
        for (std::size_t i = 0; i < listed.size(); ++i) {
            const std::size_t at = key_list::kEntries + i * entrySize;
            bins_.put(cell, at, listed[i].cell);
            const MadeKey& key = *listed[i].key;
            if (kind == key_list::kHashes) bins_.put(cell, at + 4, hashOf(listed[i].upperName));
            if (kind == key_list::kNames && !key.wideName && fitsOneByte(key.name))
                bins_.put(cell, at + 4, oneByteName(key.name.substr(0, 4)));
        }
        return cell;
    }

    [[nodiscard]] std::string baseBlock(Cell root, std::uint32_t binsSize) const {
        namespace at = base_block;
        std::string block(kBinsStart, '\0');
        const auto put = [&block](std::size_t place, auto number) {
            std::memcpy(block.data() + place, &number, sizeof number);
        };
        block.replace(0, 4, at::kSignature);
        put(at::kFirstSequence, hive_.firstSequence);
        put(at::kSecondSequence, hive_.secondSequence);
        put(at::kLastWritten, hive_.lastWritten);
        put(at::kMajorVersion, std::uint32_t{1});
        put(at::kMinorVersion, hive_.minorVersion);
        put(at::kType, at::kTypeHive);
        put(at::kFormat, std::uint32_t{1});
        put(at::kRoot, root);
        put(at::kBinsSize, binsSize);
        put(at::kClusteringFactor, hive_.clusteringFactor);
        put(at::kFlags, hive_.flags);
        const std::uint32_t checksum = baseBlockChecksum(HiveBytes(block));
        put(at::kChecksum, hive_.checksumRight ? checksum : ~checksum);
        return block;
    }

    const MadeHive& hive_;
    MadeBins bins_;
    std::vector<Cell> securities_;
};

}  // namespace

std::string bytesOf(const MadeHive& hive) {
    return Writer(hive).file();
}

Cell cellOf(std::string_view bytes, std::u16string_view path) {
    const Hive hive{HiveBytes(bytes)};
    return hive.find(hive.root(), path);
}

}  // namespace bromvale::offline
