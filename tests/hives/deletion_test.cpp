// Keys taken out of hives: afterwards the strict checker has nothing to say, and the tree is the old one less
// these keys.
#include "platform/offline/hives/deletion.h"

#include <functional>
#include <random>

#include "platform/offline/hives/image.h"
#include "tests/hives/damaged_hive.h"
#include "tests/hives/hive_faults.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/hive_rounds.h"
#include "tests/hives/made_hive.h"
#include "tests/hives/tree_walk.h"

namespace bromvale::offline {
namespace {

// Whether each security is still some key's.
bool allSecurityUsed(const Hive& hive) {
    const Cell first = hive.root().security;
    Cell cell = first;
    do {
        const HiveBytes node = hive.cell(cell);
        if (node.u32(security_node::kUseCount) == 0) return false;
        cell = node.u32(security_node::kNext);
    } while (cell != first);
    return true;
}

// Deletes, looks at everything and gives the bytes that are left.
std::string deleteAndCheck(const std::string& bytes, const std::vector<Cell>& keys) {
    const Hive before{HiveBytes(bytes)};
    const CellSet gone = treesOf(before, keys);
    HiveImage image(bytes);
    EXPECT_EQ(gone.size(), deleteKeys(image, keys));
    const Hive after(image.bytes());
    EXPECT_EQ("", faultsOf(image.bytes().all()));
    EXPECT_EQ("", differenceWithout(before, after, gone));
    EXPECT_TRUE(allSecurityUsed(after));
    const std::uint32_t written = keys.empty() ? 0 : 1;
    EXPECT_EQ(before.base().firstSequence + written, after.base().firstSequence);
    EXPECT_EQ(before.base().secondSequence + written, after.base().secondSequence);
    EXPECT_EQ(before.base().lastWritten, after.base().lastWritten);
    const std::size_t tail = kBinsStart + before.base().binsSize;
    EXPECT_EQ(std::string_view(bytes).substr(tail), image.bytes().all().substr(tail));
    return std::string(image.bytes().all());
}

std::string listKind(const Hive& hive, const HiveKey& key) {
    return std::string(hive.cell(key.subKeys).text(0, 2));
}

using KeySet = std::vector<Cell>;

// By chance one in so many, nested ones as well.
KeySet someOf(const std::vector<HiveKey>& keys, std::mt19937& numbers, std::uint32_t oneIn) {
    KeySet some;
    for (std::size_t i = 1; i < keys.size(); ++i) {
        if (numbers() % oneIn == 0) some.push_back(keys[i].cell);
    }
    std::ranges::shuffle(some, numbers);
    return some;
}

// Of each key with sub keys that `wanted` takes, those which `choose` picks.
KeySet childrenOf(const Hive& hive, const std::vector<HiveKey>& keys,
                  const std::function<bool(const HiveKey&)>& wanted,
                  const std::function<KeySet(const KeySet&)>& choose) {
    KeySet chosen;
    for (const HiveKey& key : keys) {
        if (key.subKeyCount == 0 || !wanted(key)) continue;
        const KeySet picked = choose(hive.subKeys(key));
        chosen.insert(chosen.end(), picked.begin(), picked.end());
    }
    return chosen;
}

KeySet all(const KeySet& subKeys) {
    return subKeys;
}
KeySet firstAndLast(const KeySet& subKeys) {
    return {subKeys.front(), subKeys.back()};
}

std::vector<KeySet> setsOfMadeHive(const Hive& hive, std::uint32_t seed) {
    std::mt19937 numbers(seed);
    const std::vector<HiveKey> keys = treeOf(hive, hive.base().root);
    const auto every = [](const HiveKey&) { return true; };
    std::vector<KeySet> sets{{}, someOf(keys, numbers, 10), someOf(keys, numbers, 2)};
    sets.push_back(hive.subKeys(hive.root()));
    sets.push_back(childrenOf(hive, keys, every, [](const KeySet& s) { return KeySet{s.front()}; }));
    sets.push_back(childrenOf(hive, keys, every, [](const KeySet& s) { return KeySet{s.back()}; }));
    sets.push_back(childrenOf(hive, keys, every, [](const KeySet& s) { return KeySet{s[s.size() / 2]}; }));
    sets.push_back(childrenOf(
        hive, keys, [](const HiveKey& key) { return key.subKeyCount > 1; },
        [](const KeySet& s) { return KeySet(s.begin() + 1, s.end()); }));
    return sets;
}

TEST(HiveDeletion, LeavesMadeHivesWholeAndTheOtherKeysAsTheyWere) {
    for (std::uint32_t seed = 0; seed < hiveRounds(60, 1000); ++seed) {
        const std::string bytes = bytesOf(randomHive(seed));
        const Hive hive{HiveBytes(bytes)};
        const std::vector<KeySet> sets = setsOfMadeHive(hive, seed);
        for (std::size_t i = 0; i < sets.size() && !HasFailure(); ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", set " + std::to_string(i));
            deleteAndCheck(bytes, sets[i]);
        }
    }
}

// One key after the other until nothing but the root is left.
TEST(HiveDeletion, CanBeDoneAgainAndAgain) {
    for (std::uint32_t seed = 0; seed < hiveRounds(8, 100); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 numbers(seed);
        std::string bytes = bytesOf(randomHive(seed));
        std::vector<HiveKey> keys;
        while (keys = treeOf(Hive{HiveBytes(bytes)}, Hive{HiveBytes(bytes)}.base().root),
               keys.size() > 1 && !HasFailure()) {
            const Cell key = keys[1 + numbers() % (keys.size() - 1)].cell;
            // The names in `keys` lie in the bytes that change here.
            bytes = deleteAndCheck(bytes, {key});
        }
        EXPECT_EQ(1u, checkHive(HiveBytes(bytes)).keys);
    }
}

class RealRegistryDeletion : public HiveFilesTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(RealRegistryDeletion, LeavesTheHiveWholeAndTheOtherKeysAsTheyWere) {
    const std::string bytes = realHive(GetParam());
    const Hive hive{HiveBytes(bytes)};
    const std::vector<HiveKey> keys = treeOf(hive, hive.base().root);
    std::mt19937 numbers(1);
    deleteAndCheck(bytes, someOf(keys, numbers, 40));
    deleteAndCheck(bytes, hive.subKeys(hive.root()));
    deleteAndCheck(bytes,
                   childrenOf(
                       hive, keys, [&](const HiveKey& key) { return key.subKeyCount > 9; }, firstAndLast));
    for (const char* const kind : {"lf", "lh", "li", "ri"}) {
        SCOPED_TRACE(kind);
        bool found = false;
        const auto oneOfIt = [&](const HiveKey& key) {
            return !found && key.cell != hive.base().root && (found = listKind(hive, key) == kind);
        };
        const KeySet set = childrenOf(hive, keys, oneOfIt, all);
        if (found) deleteAndCheck(bytes, set);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, RealRegistryDeletion,
                         ::testing::Values("hivex-rlenvalue_test_hive", "hivex-special", "made-li-SOFTWARE",
                                           "win7-SYSTEM", "win7-x86-SOFTWARE", "win81-UsrClass.dat",
                                           "winxp-NTUSER.DAT"));

Cell subKeysOf(const std::string& bytes, std::u16string_view path) {
    return Hive{HiveBytes(bytes)}.key(cellOf(bytes, path)).subKeys;
}

std::string list(const std::string& bytes, Cell cell) {
    const HiveBytes content = Hive{HiveBytes(bytes)}.cell(cell);
    return std::string(content.text(0, 2)) + " " + std::to_string(content.u16(key_list::kCount));
}

bool isFree(const std::string& bytes, Cell cell) {
    return static_cast<std::int32_t>(HiveBytes(bytes).u32(kBinsStart + cell)) > 0;
}

TEST(HiveDeletion, TakesEmptyListsAndPartsAway) {
    const std::string bytes = bytesOf(exampleHive());
    const Cell lists = subKeysOf(bytes, u"ri");
    EXPECT_EQ("ri 3", list(bytes, lists));
    // The last part holds nothing else.
    std::string left = deleteAndCheck(bytes, {cellOf(bytes, u"ri\\e\u00e4")});
    EXPECT_EQ("ri 2", list(left, lists));
    left = deleteAndCheck(left, {cellOf(left, u"ri\\b\u00e4"), cellOf(left, u"ri\\a\u00e4")});
    EXPECT_EQ("ri 1", list(left, lists));
    const Cell part = Hive{HiveBytes(left)}.cell(lists).u32(key_list::kEntries);
    EXPECT_EQ("li 2", list(left, part));
    left = deleteAndCheck(left, {cellOf(left, u"ri\\c\u00e4")});
    EXPECT_EQ("li 1", list(left, part));
    left = deleteAndCheck(left, {cellOf(left, u"ri\\d\u00e4")});
    EXPECT_EQ(kNil, subKeysOf(left, u"ri"));
    EXPECT_TRUE(isFree(left, lists));
    EXPECT_TRUE(isFree(left, part));
}

TEST(HiveDeletion, FreesAllThatWasTheKeysOwn) {
    const std::string bytes = bytesOf(exampleHive());
    const Hive hive{HiveBytes(bytes)};
    const HiveKey key = hive.key(cellOf(bytes, u"values"));
    const HiveValue longOne = hive.value(hive.values(key).back());
    const HiveBytes pieces = hive.cell(hive.cell(longOne.data).u32(big_data::kPieces));
    const std::string left = deleteAndCheck(bytes, {key.cell});
    for (const Cell cell : {key.cell, key.values, key.className, longOne.cell, longOne.data, pieces.u32(0),
                            pieces.u32(4), pieces.u32(8)})
        EXPECT_TRUE(isFree(left, cell)) << cell;
    // It was the only one with this security.
    EXPECT_TRUE(isFree(left, key.security));
    const HiveBytes ring = Hive{HiveBytes(left)}.cell(hive.root().security);
    EXPECT_EQ(hive.root().security, ring.u32(security_node::kNext));
    EXPECT_EQ(hive.root().security, ring.u32(security_node::kPrevious));
}

TEST(HiveDeletion, TakesAKeyOnceHoweverOftenItIsNamed) {
    const std::string bytes = bytesOf(exampleHive());
    const Cell above = cellOf(bytes, u"ri");
    const Cell below = cellOf(bytes, u"ri\\c\u00e4");
    deleteAndCheck(bytes, {below, above, below, above});
}

TEST(HiveDeletion, DoesNothingWithoutKeys) {
    const std::string bytes = bytesOf(exampleHive());
    EXPECT_EQ(bytes, deleteAndCheck(bytes, {}));
}

TEST(HiveDeletion, RefusesWhatIsNoKeyOfTheTree) {
    const std::string bytes = bytesOf(exampleHive());
    HiveImage image(bytes);
    const Cell root = cellOf(bytes, u"");
    const Cell security = Hive{HiveBytes(bytes)}.root().security;
    for (const Cell cell : {root, security, kNil, root + 4, Cell{0x7FFFFFF8}})
        EXPECT_THROW(deleteKeys(image, {{cell}}), HiveDamage) << cell;
    EXPECT_EQ(bytes, image.bytes().all());
    const Cell key = cellOf(bytes, u"lf\\a\u00e4");
    deleteKeys(image, {{key}});
    EXPECT_THROW(deleteKeys(image, {{key}}), HiveDamage);
}

// What is told where a key can't be taken, and the byte of the file that it names.
std::string damageOf(DamagedHive& damaged, const std::vector<Cell>& keys) {
    HiveImage image(damaged.bytes());
    try {
        deleteKeys(image, keys);
        return "none";
    } catch (const HiveDamage& damage) {
        return std::to_string(damage.place) + ": " + damage.what();
    }
}

TEST(HiveDeletion, SaysWhatIsWrongWhereAKeyCannotBeTaken) {
    const std::string bytes = bytesOf(exampleHive());
    const Cell key = cellOf(bytes, u"lf\\b\u00e4");
    const auto expect = [&](const char* what, Cell cell,
                            const std::function<std::size_t(DamagedHive&)>& make) {
        DamagedHive hive(bytes);
        const std::size_t place = make(hive);
        EXPECT_EQ(std::to_string(place) + ": " + what, damageOf(hive, {cell}));
    };
    const Cell root = cellOf(bytes, u"");
    expect("the root can't be deleted", root, [&](DamagedHive&) { return kBinsStart + root; });
    expect("a key is not in its parent's list", key, [&](DamagedHive& h) {
        h.put(h.list(u"lf") + key_list::kEntries + 8, cellOf(bytes, u"lf\\a\u00e4"));
        return kBinsStart + cellOf(bytes, u"lf");
    });
    expect("a key is not in its parent's list", key, [&](DamagedHive& h) {
        h.put(h.node(u"lf") + key_node::kSubKeyCount, 0u);
        return kBinsStart + cellOf(bytes, u"lf");
    });
    expect("a list of sub keys has an unknown signature", key, [](DamagedHive& h) {
        const std::size_t place = h.list(u"lf");
        h.put(place, "lx");
        return place;
    });
    expect("security counts fewer keys than have it", key, [](DamagedHive& h) {
        const std::size_t place = h.security(u"");
        h.put(place + security_node::kUseCount, 0u);
        return place;
    });
    expect("security counts fewer keys than have it", key, [](DamagedHive& h) {
        const std::size_t place = h.security(u"");
        h.put(place, "sx");
        return place;
    });
    expect("an offset leads to no cell that is in use", cellOf(bytes, u"values"), [](DamagedHive& h) {
        const std::size_t place = h.security(u"");  // in the ring
        const std::size_t size = place - kCellHeaderSize;
        h.put(h.security(u"values") + security_node::kNext,
              static_cast<std::uint32_t>(size - kBinsStart + 4));
        return size + 4;
    });
}

// Deep enough that a walk that counts wrongly would stop.
TEST(HiveDeletion, AHiveFullOfKeysCanBeAskedAbout) {
    MadeHive hive;
    hive.root.subKeys.resize(1);
    hive.root.subKeys[0].name = u"top";
    for (char16_t name = u'\u4e00'; name < u'\u4e00' + 400; ++name)
        hive.root.subKeys[0].subKeys.emplace_back().name = std::u16string(1, name);
    const std::string bytes = bytesOf(hive);
    EXPECT_EQ(std::nullopt, whyUndeletable(HiveBytes(bytes), cellOf(bytes, u"top")));
}

// Its only sub key is itself.
TEST(HiveDeletion, AKeyThatLeadsBackToItselfIsDamaged) {
    DamagedHive hive(bytesOf(exampleHive()));
    const Cell key = hive.key(u"li").cell;
    const Cell below = hive.key(u"li\\a\u00E4").cell;
    const std::size_t node = hive.node(u"li");
    const std::size_t list = hive.list(u"li") + key_list::kEntries;
    for (std::size_t at = list; at < list + 5 * sizeof(Cell); at += sizeof(Cell)) {
        if (hive.at(at) == below) hive.put(at, key);
    }
    hive.put(node + key_node::kParent, key);
    hive.finish();
    try {
        static_cast<void>(whyUndeletable(HiveBytes(hive.bytes()), key));
        FAIL();
    } catch (const HiveDamage& damage) {
        EXPECT_STREQ(damage.what(), "more keys are listed than the hive can hold");
        EXPECT_EQ(damage.place, kBinsStart + key);
    }
}

std::string whyNot(const std::string& bytes, std::u16string_view path) {
    return whyUndeletable(HiveBytes(bytes), cellOf(bytes, path)).value_or("");
}

TEST(HiveDeletion, TellsWhyAKeyMustStay) {
    MadeHive hive = exampleHive();
    std::vector<MadeKey>& keys = hive.root.subKeys;
    keys[0].flags = key_node::kFlagUndeletable;
    keys[1].flags = key_node::kFlagSymbolicLink;
    keys[2].flags = key_node::kFlagPredefined;
    keys[2].handle = 0x80000002u;
    keys[3].subKeys[2].flags = key_node::kFlagSymbolicLink;
    const std::string bytes = bytesOf(hive);
    ASSERT_EQ("", faultsOf(bytes));
    EXPECT_EQ("it is the hive's root", whyNot(bytes, u""));
    EXPECT_EQ("Windows has marked it as not to be deleted", whyNot(bytes, u"lf"));
    EXPECT_EQ("it is a symbolic link to another key", whyNot(bytes, u"lh"));
    EXPECT_EQ("it stands for a key elsewhere (a predefined handle)", whyNot(bytes, u"li"));
    EXPECT_EQ("it holds the key \"c\xc3\xa4\": it is a symbolic link to another key", whyNot(bytes, u"ri"));
    EXPECT_EQ("", whyNot(bytes, u"ri\\a\u00e4"));
    EXPECT_EQ("", whyNot(bytes, u"values"));
    EXPECT_THROW(static_cast<void>(whyUndeletable(HiveBytes(bytes), kNil)), HiveDamage);
}

}  // namespace
}  // namespace bromvale::offline
