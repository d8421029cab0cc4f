#include <algorithm>
#include <random>
#include <set>

#include "platform/offline/locale/stored_text.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {
namespace {

constexpr std::size_t kDeepest = 5;

class Maker {
  public:
    Maker(std::uint32_t seed, bool odd) : numbers_(seed), odd_(odd) {}

    MadeHive hive() {
        MadeHive made;
        made.minorVersion = 3 + below(4);
        minor_ = made.minorVersion;
        securities_ = 1 + below(4);
        for (std::size_t i = 1; i < securities_; ++i)
            made.securities.push_back(made.securities.front() + std::string(i * 4, static_cast<char>(i)));
        made.binSize = std::size_t{4096} * (1 + below(3));
        made.freeCellEvery = below(2) == 0 ? 0 : 2 + below(6);
        if (below(3) == 0) made.tail = bytes(1 + below(3000));
        made.firstSequence = made.secondSequence = 1 + below(1000);
        made.clusteringFactor = below(5) == 0 ? 8 : 1;
        if (minor_ >= 5 && below(4) == 0) made.flags = 2;
        left_ = 12 + below(60);
        made.root = key(u"ROOT", 0);
        return made;
    }

  private:
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(numbers_()) % limit; }

    std::string bytes(std::size_t size) {
        std::string made;
        while (made.size() < size) made += static_cast<char>(below(256));
        return made;
    }

    // Letters of one byte, with and without counterparts in upper case, and of two.
    std::u16string name() {
        static constexpr std::u16string_view kPlain = u"abcXYZ019_-{} .";
        static constexpr std::u16string_view kLatin = u"\u00e4\u00d6\u00df\u00ff\u00b5\u00e9";
        static constexpr std::u16string_view kWide = u"\u0141\u0142\u044f\u03a3\u4e2d\u0131";
        const std::uint32_t kind = below(10);
        std::u16string made;
        const std::size_t size = 1 + below(below(20) == 0 ? 120 : 14);
        while (made.size() < size) {
            const std::u16string_view from = below(3) != 0 || kind < 5 ? kPlain : kind < 8 ? kLatin : kWide;
            made += from[below(static_cast<std::uint32_t>(from.size()))];
        }
        if (odd_ && below(10) == 0) made.insert(made.begin() + 1, below(2) == 0 ? u'\0' : u'\xd83d');
        return made;
    }

    MadeValue value(std::u16string valueName) {
        static constexpr std::uint32_t kTypes[] = {0, 1, 2, 3, 4, 5, 7, 11, 0xffff0011u, 0x80000001u};
        MadeValue made;
        made.name = std::move(valueName);
        made.type = kTypes[below(std::size(kTypes))];
        made.wideName = below(6) == 0;
        made.alwaysInCell = below(8) == 0;
        const std::uint32_t size = below(12);
        if (size == 11 && long_++ < 2) {
            made.data = bytes(big_data::kPieceSize - 1 + below(3) + below(3) * big_data::kPieceSize);
        } else {
            made.data = bytes(size < 6 ? size : below(200));
        }
        if (odd_ && below(8) == 0) {
            made.withoutCell = true;
            made.data.clear();
            if (below(2) == 0) made.flags = value_node::kFlagTombstone;
        }
        return made;
    }

    MadeKey key(std::u16string keyName, std::size_t depth) {
        MadeKey made;
        made.name = std::move(keyName);
        made.wideName = below(6) == 0;
        made.lastWritten += below(1u << 30);
        made.security = below(static_cast<std::uint32_t>(securities_));
        if (below(6) == 0) made.className = name();
        made.list = list();
        std::set<std::u16string> taken;
        for (std::uint32_t count = below(5); count > 0; --count) {
            const std::u16string valueName = below(5) == 0 ? std::u16string() : name();
            if (taken.insert(upper(valueName)).second) made.values.push_back(value(valueName));
        }
        addOddFlags(made, depth);
        addSubKeys(made, depth);
        return made;
    }

    MadeList list() {
        MadeList made;
        const std::uint32_t kind = below(minor_ >= 5 ? 4 : 2);
        made.kind = kind == 0 ? key_list::kOffsets : kind == 1 ? key_list::kNames : key_list::kHashes;
        if (below(3) == 0) made.partSize = 1 + below(4);
        return made;
    }

    void addOddFlags(MadeKey& made, std::size_t depth) {
        if (!odd_ || depth == 0 || below(10) != 0) return;
        if (minor_ >= 5 && below(3) == 0) made.layered = static_cast<std::uint8_t>(below(4));
        const std::uint32_t kind = below(3);
        if (kind == 0) made.flags |= key_node::kFlagUndeletable;
        if (kind == 1) made.flags |= key_node::kFlagSymbolicLink;
        if (kind == 2) {
            made.flags |= key_node::kFlagPredefined;
            made.handle = 0x80000002u;
            made.values.clear();
        }
    }

    void addSubKeys(MadeKey& made, std::size_t depth) {
        std::set<std::u16string> taken;
        std::uint32_t count = depth == 0 ? 8 : depth == kDeepest ? 0 : below(7);
        for (; count > 0 && left_ > 0; --count) {
            std::u16string subKeyName = name();
            if (!taken.insert(upper(subKeyName)).second) continue;
            --left_;
            made.subKeys.push_back(key(std::move(subKeyName), depth + 1));
        }
    }

    static std::u16string upper(std::u16string_view text) {
        std::u16string made;
        for (const char16_t unit : text) made += upperUnit(unit);
        return made;
    }

    std::mt19937 numbers_;
    bool odd_;
    std::uint32_t minor_ = 5;
    std::size_t securities_ = 1;
    std::size_t left_ = 0;
    std::size_t long_ = 0;  // values beyond one piece
};

}  // namespace

MadeHive randomHive(std::uint32_t seed) {
    return Maker(seed, seed % 8 == 7).hive();
}

MadeHive randomPlainHive(std::uint32_t seed) {
    return Maker(seed, false).hive();
}

}  // namespace bromvale::offline
