// What the reader says of a hive that can't be, word for word, and the byte of the file that it names.
#include <gtest/gtest.h>

#include <functional>
#include <span>

#include "tests/hives/damaged_hive.h"

namespace bromvale::offline {
namespace {

namespace nk = key_node;
namespace vk = value_node;

// All of a tree, as a walk through it reads it.
void readAll(const Hive& hive, const HiveKey& key) {
    static_cast<void>(hive.classNameBytes(key));
    for (const Cell value : hive.values(key)) static_cast<void>(hive.data(hive.value(value)));
    for (const Cell subKey : hive.subKeys(key)) readAll(hive, hive.key(subKey));
}

std::string damageOf(std::string_view bytes) {
    try {
        const Hive hive{HiveBytes(bytes)};
        readAll(hive, hive.root());
        return "none";
    } catch (const HiveDamage& damage) {
        return std::to_string(damage.place) + ": " + damage.what();
    }
}

struct Damage {
    const char* what;
    // Does it, and returns the place that must be told.
    std::function<std::size_t(DamagedHive&)> make;
};

const char* const kEnds = "the file ends, or its cell does, before what it is said to hold";

void expectDamages(std::span<const Damage> damages) {
    for (const Damage& damage : damages) {
        DamagedHive hive(bytesOf(exampleHive()));
        ASSERT_EQ("none", damageOf(hive.bytes()));
        const std::size_t place = damage.make(hive);
        EXPECT_EQ(std::to_string(place) + ": " + damage.what, damageOf(hive.bytes()))
            << "damage " << &damage - damages.data();
    }
}

const Damage kFiles[] = {
    {"the file is shorter than a first sector",
     [](DamagedHive& h) {
         const std::size_t place = 511;
         h.cut(511);
         return place;
     }},
    {"the file does not begin with \"regf\"",
     [](DamagedHive& h) {
         const std::size_t place = 0;
         h.put(0, "regg");
         return place;
     }},
    {"the file is a log and no hive",
     [](DamagedHive& h) {
         const std::size_t place = 28;
         h.put(base_block::kType, 1);
         return place;
     }},
    {"the hive's version 2.5 is none of 1.3 to 1.6",
     [](DamagedHive& h) {
         const std::size_t place = 20;
         h.put(base_block::kMajorVersion, 2);
         return place;
     }},
    {"the hive's version 0.5 is none of 1.3 to 1.6",
     [](DamagedHive& h) {
         const std::size_t place = 20;
         h.put(base_block::kMajorVersion, 0u);
         return place;
     }},
    {"the hive's version 1.2 is none of 1.3 to 1.6",
     [](DamagedHive& h) {
         const std::size_t place = 20;
         h.put(base_block::kMinorVersion, 2);
         return place;
     }},
    {"the hive's version 1.7 is none of 1.3 to 1.6",
     [](DamagedHive& h) {
         const std::size_t place = 20;
         h.put(base_block::kMinorVersion, 7);
         return place;
     }},
    {"the hive's bins reach beyond the end of the file",
     [](DamagedHive& h) {
         const std::size_t place = 40;
         h.put(base_block::kBinsSize, h.at(base_block::kBinsSize) + 1);
         return place;
     }},
    {kEnds,
     [](DamagedHive& h) {
         const std::size_t place = kBinsStart + std::size_t{kNil};
         h.put(base_block::kRoot, kNil);
         return place;
     }},
};

const Damage kCells[] = {
    {"an offset leads to no cell that is in use",
     [](DamagedHive& h) {
         h.put(base_block::kRoot, h.at(base_block::kRoot) + 4);
         return kBinsStart + h.at(base_block::kRoot);
     }},
    {"an offset leads to no cell that is in use",
     [](DamagedHive& h) {
         const std::size_t size = h.node(u"") - kCellHeaderSize;
         h.put(size, 0 - h.at(size));  // free
         return size;
     }},
    {"an offset leads to no cell that is in use",
     [](DamagedHive& h) {
         const std::size_t size = h.node(u"") - kCellHeaderSize;
         h.put(size, h.at(size) - 4);
         return size;
     }},
    {"an offset leads to no cell that is in use",
     [](DamagedHive& h) {
         const std::size_t size = h.node(u"") - kCellHeaderSize;
         h.put(size, 0u);
         return size;
     }},
    {kEnds,
     [](DamagedHive& h) {
         const std::size_t size = h.node(u"") - kCellHeaderSize;
         h.put(size, 0u - 0x10000000);
         return size;
     }},
    {"an offset leads to no key",
     [](DamagedHive& h) {
         const std::size_t place = h.node(u"");
         h.put(place, "nx");
         return place;
     }},
    {kEnds,
     [](DamagedHive& h) {
         const std::size_t place = h.node(u"") + 76;
         h.put16(h.node(u"") + nk::kNameSize, 200);
         return place;
     }},
    {kEnds,
     [](DamagedHive& h) {
         h.put16(h.node(u"values") + nk::kClassNameSize, 200);
         return h.cell(h.key(u"values").className);
     }},
};

const Damage kLists[] = {
    {"a list of sub keys has an unknown signature",
     [](DamagedHive& h) {
         const std::size_t place = h.list(u"li");
         h.put(place, "lx");
         return place;
     }},
    {"a list of lists of sub keys holds another one",
     [](DamagedHive& h) {
         const std::size_t part = h.cell(h.at(h.list(u"ri") + key_list::kEntries));
         h.put(part, "ri");
         return part;
     }},
    {kEnds,
     [](DamagedHive& h) {
         const std::size_t place = h.list(u"li") + 4;
         h.put16(h.list(u"li") + key_list::kCount, 7);
         return place;
     }},
    {kEnds,
     [](DamagedHive& h) {
         const std::size_t place = h.list(u"lh") + 4;
         h.put16(h.list(u"lh") + key_list::kCount, 6);
         return place;
     }},
    {"a sub key is no key, or belongs to another one",
     [](DamagedHive& h) {
         const std::size_t place = h.node(u"lf\\b\u00e4");
         h.put(place + nk::kParent, h.key(u"lh").cell);
         return place;
     }},
    {"a sub key is no key, or belongs to another one",
     [](DamagedHive& h) {
         const std::size_t place = h.node(u"lf\\b\u00e4");
         h.put(place, "nx");
         return place;
     }},
    {"a sub key is no key, or belongs to another one",
     [](DamagedHive& h) {
         h.put(h.node(u"") + nk::kParent, h.key(u"lf").cell);
         h.put(h.list(u"lf") + key_list::kEntries, h.key(u"").cell);
         return h.node(u"");
     }},
    {"there are more sub keys than their key counts",
     [](DamagedHive& h) {
         const std::size_t place = h.list(u"lf");
         h.put(h.node(u"lf") + nk::kSubKeyCount, 4);
         return place;
     }},
    {"there are fewer sub keys than their key counts",
     [](DamagedHive& h) {
         const std::size_t place = h.node(u"lf");
         h.put(h.node(u"lf") + nk::kSubKeyCount, 6);
         return place;
     }},
    {"a key counts more sub keys than the hive can hold",
     [](DamagedHive& h) {
         const auto most = static_cast<std::uint32_t>((h.size() - kBinsStart) / nk::kName);
         const std::size_t place = h.node(u"lf");
         h.put(h.node(u"lf") + nk::kSubKeyCount, most + 1);
         return place;
     }},
    {"there are fewer sub keys than their key counts",
     [](DamagedHive& h) {
         const auto most = static_cast<std::uint32_t>((h.size() - kBinsStart) / nk::kName);
         const std::size_t place = h.node(u"lf");
         h.put(h.node(u"lf") + nk::kSubKeyCount, most);
         return place;
     }},
    {"a key lists a sub key twice",
     [](DamagedHive& h) {
         h.put(h.list(u"lf") + key_list::kEntries, h.key(u"lf\\b\u00e4").cell);
         return h.node(u"lf");
     }},
};

const Damage kValues[] = {
    {kEnds,
     [](DamagedHive& h) {
         h.put(h.node(u"values") + nk::kValueCount, 50);
         return h.cell(h.key(u"values").values);
     }},
    {"an offset leads to no value",
     [](DamagedHive& h) {
         const std::size_t place = h.value(0);
         h.put(place, "vx");
         return place;
     }},
    {kEnds,
     [](DamagedHive& h) {
         const std::size_t place = h.value(1) + 20;
         h.put16(h.value(1) + vk::kNameSize, 80);
         return place;
     }},
    {"a value's own field holds more than four bytes",
     [](DamagedHive& h) {
         const std::size_t place = h.value(0);
         h.put(h.value(0) + vk::kDataSize, 5 | vk::kDataInside);
         return place;
     }},
    {kEnds,
     [](DamagedHive& h) {
         const std::size_t place = h.data(1);
         h.put(h.value(1) + vk::kDataSize, 100);
         return place;
     }},
    {"long data has no list of pieces",
     [](DamagedHive& h) {
         const std::size_t place = h.data(4);
         h.put(place, "dx");
         return place;
     }},
    {"long data has too few pieces",
     [](DamagedHive& h) {
         const std::size_t place = h.data(4);
         h.put16(h.data(4) + big_data::kCount, 2);
         return place;
     }},
    {"long data has too few pieces",
     [](DamagedHive& h) {
         const auto bins = static_cast<std::uint32_t>(h.size() - kBinsStart);
         h.put16(h.data(4) + big_data::kCount, 2);
         const std::size_t place = h.data(4);
         h.put(h.value(4) + vk::kDataSize, bins);
         return place;
     }},
    {"long data is longer than the hive",
     [](DamagedHive& h) {
         const auto bins = static_cast<std::uint32_t>(h.size() - kBinsStart);
         const std::size_t place = h.data(4);
         h.put(h.value(4) + vk::kDataSize, bins + 1);
         return place;
     }},
};

TEST(HiveReader, SaysWhatIsWrongWithTheFile) {
    expectDamages(kFiles);
}

TEST(HiveReader, SaysWhatIsWrongWithCellsAndKeys) {
    expectDamages(kCells);
}

TEST(HiveReader, SaysWhatIsWrongWithListsOfSubKeys) {
    expectDamages(kLists);
}

TEST(HiveReader, SaysWhatIsWrongWithValues) {
    expectDamages(kValues);
}

TEST(HiveReader, TakesVersions13To16) {
    for (const std::uint32_t minor : {3u, 4u, 5u, 6u}) {
        const std::string bytes = bytesOf(exampleHive(minor));
        EXPECT_EQ("none", damageOf(bytes)) << minor;
    }
}

TEST(HiveReader, HasAllOfTheBaseBlock) {
    MadeHive made = exampleHive();
    made.firstSequence = 8;
    made.secondSequence = 7;
    made.lastWritten = 0x0123456789ABCDEFu;
    made.flags = 3;
    made.clusteringFactor = 8;
    const std::string bytes = bytesOf(made);
    const BaseBlock base = readBaseBlock(HiveBytes(std::string_view(bytes).substr(0, 512)));
    EXPECT_EQ(8u, base.firstSequence);
    EXPECT_EQ(7u, base.secondSequence);
    EXPECT_EQ(0x0123456789ABCDEFu, base.lastWritten);
    EXPECT_EQ(1u, base.major);
    EXPECT_EQ(5u, base.minor);
    EXPECT_EQ(0u, base.type);
    EXPECT_EQ(HiveBytes(bytes).u32(36), base.root);
    EXPECT_EQ(bytes.size() - kBinsStart, base.binsSize);
    EXPECT_EQ(8u, base.clusteringFactor);
    EXPECT_EQ(3u, base.flags);
    EXPECT_TRUE(base.checksumRight);
    EXPECT_TRUE(base.dirty());
}

// All bits of the words up to it, one over the other; never none or all of them.
TEST(HiveReader, KnowsTheBaseBlocksChecksum) {
    std::string sector(512, '\0');
    const auto checksum = [&sector] { return baseBlockChecksum(HiveBytes(sector)); };
    EXPECT_EQ(1u, checksum());
    sector[0] = 2;
    sector[505] = 4;
    EXPECT_EQ(0x402u, checksum());
    sector[508] = 1;  // its own place
    EXPECT_EQ(0x402u, checksum());
    sector.replace(0, 4, "\xFF\xFF\xFF\xFF");
    sector[505] = 0;
    EXPECT_EQ(0xFFFFFFFEu, checksum());
}

TEST(HiveReader, NamesAreLatin1OrUtf16) {
    EXPECT_EQ(u"A\u00e4\u0080", hiveName("A\xe4\x80", true));
    EXPECT_EQ(u"\u4241\uffee", hiveName("AB\xee\xff", false));
    EXPECT_EQ(u"\u4241", hiveName("ABC", false));
    EXPECT_EQ(u"", hiveName("A", false));
}

TEST(HiveReader, FindsKeysByPathsWithoutCase) {
    const std::string bytes = bytesOf(exampleHive());
    const Hive hive{HiveBytes(bytes)};
    const Cell wanted = cellOf(bytes, u"lf\\b\u00e4");
    for (const std::u16string_view path : {u"lf\\b\u00e4", u"LF\\B\u00c4", u"\\lf\\\\b\u00e4\\"})
        EXPECT_EQ(wanted, hive.find(hive.root(), path));
    EXPECT_EQ(wanted, hive.find(hive.key(cellOf(bytes, u"lf")), u"B\u00e4"));
    EXPECT_EQ(hive.base().root, hive.find(hive.root(), u""));
    for (const std::u16string_view path : {u"lf\\b", u"l", u"lf\\b\u00e4\\c", u"b\u00e4"})
        EXPECT_EQ(kNil, hive.find(hive.root(), path));
}

}  // namespace
}  // namespace bromvale::offline
