// What the tests' own writer of hives writes, read by the reader.
#include "tests/hives/made_hive.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "platform/offline/hives/hive.h"

namespace bromvale::offline {
namespace {

void expectSame(const Hive& hive, const MadeKey& made, const HiveKey& key);

void expectSameValues(const Hive& hive, const MadeKey& made, const HiveKey& key) {
    const std::vector<Cell> values = hive.values(key);
    ASSERT_EQ(made.values.size(), values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const HiveValue value = hive.value(values[i]);
        EXPECT_EQ(made.values[i].name, value.name());
        EXPECT_EQ(made.values[i].type, value.type);
        EXPECT_EQ(made.values[i].data, hive.data(value));
    }
}

void expectSame(const Hive& hive, const MadeKey& made, const HiveKey& key) {
    EXPECT_EQ(made.name, key.name());
    EXPECT_EQ(made.lastWritten, key.lastWritten);
    EXPECT_EQ(made.className, hiveName(hive.classNameBytes(key), false));
    EXPECT_EQ(made.flags, key.flags & (made.flags | key_node::kFlagSymbolicLink));
    expectSameValues(hive, made, key);
    std::map<std::u16string, const MadeKey*> byName;
    for (const MadeKey& subKey : made.subKeys) byName[subKey.name] = &subKey;
    const std::vector<Cell> subKeys = hive.subKeys(key);
    ASSERT_EQ(made.subKeys.size(), subKeys.size());
    for (const Cell cell : subKeys) {
        const HiveKey subKey = hive.key(cell);
        ASSERT_TRUE(byName.contains(subKey.name()));
        expectSame(hive, *byName[subKey.name()], subKey);
    }
}

TEST(MadeHive, HoldsTheTreeThatWasGiven) {
    for (std::uint32_t seed = 0; seed < 64; ++seed) {
        SCOPED_TRACE(seed);
        const MadeHive made = randomHive(seed);
        const std::string bytes = bytesOf(made);
        const Hive hive{HiveBytes(bytes)};
        EXPECT_FALSE(hive.base().dirty());
        EXPECT_EQ(made.minorVersion, hive.base().minor);
        expectSame(hive, made.root, hive.root());
        ASSERT_EQ(bytes, bytesOf(randomHive(seed)));
    }
}

// What occurs in a file, by words.
void collectKinds(const Hive& hive, const HiveKey& key, std::set<std::string>& kinds) {
    kinds.insert("1." + std::to_string(hive.base().minor));
    kinds.insert(key.is(key_node::kFlagOneByteName) ? "name of one byte" : "name of two bytes");
    if (key.classNameSize != 0) kinds.insert("class name");
    if (key.is(key_node::kFlagUndeletable) && key.cell != hive.base().root) kinds.insert("undeletable");
    if (key.is(key_node::kFlagSymbolicLink)) kinds.insert("link");
    if (key.is(key_node::kFlagPredefined)) kinds.insert("predefined");
    if (key.subKeyCount != 0) {
        const HiveBytes list = hive.cell(key.subKeys);
        std::string kind(list.text(0, 2));
        if (kind == "ri") kind += " of " + std::string(hive.cell(list.u32(key_list::kEntries)).text(0, 2));
        kinds.insert(kind);
    }
    for (const Cell cell : hive.values(key)) {
        const HiveValue value = hive.value(cell);
        if (value.inside) kinds.insert("inside");
        if (!value.inside && value.size == 0) kinds.insert("no cell");
        if (!value.inside && value.size != 0) kinds.insert("cell");
        if (value.size > big_data::kPieceSize)
            kinds.insert(hive.base().minor < big_data::kFromMinorVersion ? "long cell" : "big data");
        if ((value.flags & value_node::kFlagTombstone) != 0) kinds.insert("tombstone");
        if (value.type > 0xFFFF) kinds.insert("odd type");
    }
    for (const Cell cell : hive.subKeys(key)) collectKinds(hive, hive.key(cell), kinds);
}

TEST(MadeHive, HasEveryKindByChance) {
    std::set<std::string> kinds;
    for (std::uint32_t seed = 0; seed < 64; ++seed) {
        const std::string bytes = bytesOf(randomHive(seed));
        const Hive hive{HiveBytes(bytes)};
        collectKinds(hive, hive.root(), kinds);
    }
    EXPECT_EQ((std::set<std::string>{"1.3",
                                     "1.4",
                                     "1.5",
                                     "1.6",
                                     "big data",
                                     "cell",
                                     "class name",
                                     "inside",
                                     "lf",
                                     "lh",
                                     "li",
                                     "link",
                                     "long cell",
                                     "name of one byte",
                                     "name of two bytes",
                                     "no cell",
                                     "odd type",
                                     "predefined",
                                     "ri of lf",
                                     "ri of lh",
                                     "ri of li",
                                     "tombstone",
                                     "undeletable"}),
              kinds);
}

}  // namespace
}  // namespace bromvale::offline
