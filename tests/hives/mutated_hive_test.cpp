// Damaged hives of every kind: reader, checker and deletion end, with a fault or HiveDamage, and never read
// past the end. Much of it is proven by the sanitizers alone.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "platform/offline/hives/deletion.h"
#include "tests/hives/damaged_hive.h"
#include "tests/hives/hive_faults.h"
#include "tests/hives/hive_rounds.h"
#include "tests/hives/made_hive.h"
#include "tests/hives/tree_walk.h"

namespace bromvale::offline {
namespace {

// Whether all of it can be read.
bool canBeRead(std::string_view bytes) {
    try {
        const Hive hive{HiveBytes(bytes)};
        std::vector<Cell> pending{hive.base().root};
        std::size_t left = hive.base().binsSize / key_node::kName;
        while (!pending.empty()) {
            const HiveKey key = hive.key(pending.back());
            pending.pop_back();
            if (left-- == 0) {
                ADD_FAILURE() << "the walk sees more keys than the hive can hold";
                return false;
            }
            static_cast<void>(hive.classNameBytes(key));
            for (const Cell cell : hive.values(key)) static_cast<void>(hive.data(hive.value(cell)));
            for (const Cell subKey : hive.subKeys(key)) pending.push_back(subKey);
        }
    } catch (const HiveDamage&) {
        return false;
    }
    return true;
}

// Whether the keys can be taken out.
bool canBeDeleted(HiveImage& image, const std::vector<Cell>& keys) {
    try {
        for (const Cell key : keys) static_cast<void>(whyUndeletable(image.bytes(), key));
        deleteKeys(image, keys);
    } catch (const HiveDamage&) {
        return false;
    }
    return true;
}

// What the checker finds whole must be readable, and whole again without some of its keys.
void expectNoSurprise(std::string_view bytes, const std::vector<Cell>& keys) {
    const std::string faults = faultsOf(bytes);
    const bool readable = canBeRead(bytes);
    HiveImage image(bytes);
    const bool deletable = canBeDeleted(image, keys);
    if (!faults.empty()) return;
    EXPECT_TRUE(readable);
    EXPECT_TRUE(deletable);
    EXPECT_EQ("", faultsOf(image.bytes().all()));
}

struct Sample {
    std::string bytes;
    std::vector<Cell> keys;
};

std::vector<Sample> samples() {
    std::vector<MadeHive> hives{exampleHive(3), exampleHive(6)};
    for (std::uint32_t seed = 0; seed < 30; ++seed) hives.push_back(randomHive(seed));
    std::vector<Sample> made;
    for (const MadeHive& hive : hives) {
        Sample& sample = made.emplace_back();
        sample.bytes = bytesOf(hive);
        const Hive reader{HiveBytes(sample.bytes)};
        for (const HiveKey& key : treeOf(reader, reader.base().root)) sample.keys.push_back(key.cell);
        sample.keys.erase(sample.keys.begin());
    }
    return made;
}

class Mutation {
  public:
    explicit Mutation(std::uint32_t seed) : numbers_(seed) {}

    std::uint32_t below(std::size_t limit) {
        return static_cast<std::uint32_t>(numbers_() % static_cast<std::uint32_t>(limit));
    }

    std::string mutated(const Sample& sample) {
        std::string bytes = sample.bytes;
        for (std::uint32_t count = 1 + below(6); count > 0; --count) mutate(bytes, sample);
        if (below(8) != 0) {
            const std::uint32_t checksum = baseBlockChecksum(HiveBytes(bytes));
            std::memcpy(bytes.data() + base_block::kChecksum, &checksum, sizeof checksum);
        }
        return bytes;
    }

  private:
    // Mostly near a key, where most offsets and counts stand.
    std::size_t place(const std::string& bytes, const Sample& sample) {
        if (below(4) == 0) return below(bytes.size() - 4);
        const Cell key = sample.keys[below(sample.keys.size())];
        return std::min(bytes.size() - 4, kBinsStart + key + below(128));
    }

    void mutate(std::string& bytes, const Sample& sample) {
        static constexpr std::uint32_t kNumbers[] = {0,           1,    2,       0x7FFFFFFFu,
                                                     0x80000000u, kNil, 0xFFFFu, 0xFFFFFFF8u};
        const std::size_t at = place(bytes, sample);
        std::uint32_t number = 0;
        switch (below(5)) {
            case 0: bytes[at] = static_cast<char>(below(256)); return;
            case 1: bytes[at] = static_cast<char>(bytes[at] ^ 1 << below(8)); return;
            case 2: number = kNumbers[below(std::size(kNumbers))]; break;
            case 3: number = sample.keys[below(sample.keys.size())]; break;
            // What stands elsewhere: other cells' offsets, signatures, counts.
            default: std::memcpy(&number, bytes.data() + place(bytes, sample) / 4 * 4, sizeof number);
        }
        std::memcpy(bytes.data() + at / 4 * 4, &number, sizeof number);
    }

    std::mt19937 numbers_;
};

TEST(MutatedHive, EndsWithFaultsOrDamage) {
    const std::vector<Sample> all = samples();
    for (std::uint32_t round = 0; round < hiveRounds(2000, 100000) && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        Mutation mutation(round);
        const Sample& sample = all[mutation.below(all.size())];
        std::vector<Cell> keys;
        for (int i = 0; i < 4; ++i) keys.push_back(sample.keys[mutation.below(sample.keys.size())]);
        expectNoSurprise(mutation.mutated(sample), keys);
    }
}

TEST(MutatedHive, EndsWhereTheFileIsCut) {
    for (const Sample& sample : samples()) {
        const std::size_t end = kBinsStart + Hive{HiveBytes(sample.bytes)}.base().binsSize;
        for (std::size_t size = 0; size < end; size += size < kBinsStart ? 128 : kPageSize) {
            SCOPED_TRACE(size);
            const std::string cut = sample.bytes.substr(0, size);
            EXPECT_NE("", faultsOf(cut));
            EXPECT_FALSE(canBeRead(cut));
            HiveImage image(cut);
            EXPECT_FALSE(canBeDeleted(image, sample.keys));
        }
        EXPECT_EQ("", faultsOf(sample.bytes.substr(0, end)));
    }
}

// Lists that hold one thing again and again: a small file that seems to hold billions of keys or bytes.
TEST(MutatedHive, IsNotLargerThanItsFile) {
    MadeHive made;
    made.root.list = {key_list::kOffsets, 1};
    for (char16_t name = u'\u4e00'; name < u'\u4e00' + 600; ++name)
        made.root.subKeys.emplace_back().name = std::u16string(1, name);
    made.root.values = {{.name = u"long", .data = std::string(3 * big_data::kPieceSize, 'l')}};
    DamagedHive hive(bytesOf(made));
    const std::size_t list = hive.list(u"");
    for (std::size_t i = 1; i < 600; ++i) hive.put(list + key_list::kEntries + 4 * i, hive.at(list + 4));
    EXPECT_FALSE(canBeRead(hive.bytes()));
    hive.put(hive.node(u"") + key_node::kSubKeyCount, kNil);
    EXPECT_FALSE(canBeRead(hive.bytes()));
}

}  // namespace
}  // namespace bromvale::offline
