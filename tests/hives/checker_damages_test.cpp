// One damage for each thing that the strict checker looks at: that fault alone is found.
#include <gtest/gtest.h>

#include <functional>
#include <span>

#include "platform/offline/hives/checker.h"
#include "tests/hives/damaged_hive.h"
#include "tests/hives/hive_faults.h"

namespace bromvale::offline {
namespace {

struct Damage {
    const char* fault;
    void (*make)(DamagedHive& hive);
    std::uint32_t minorVersion = 5;
};

namespace bb = base_block;
namespace nk = key_node;
namespace vk = value_node;
namespace sk = security_node;
constexpr std::size_t kFirstCell = kBinsStart + bin::kHeaderSize;
constexpr std::size_t kEntries = key_list::kEntries;

const Damage kBaseAndBins[] = {
    {"the file does not begin with \"regf\"", [](DamagedHive& h) { h.put(0, "rogf"); }},
    {"the file is a log and no hive", [](DamagedHive& h) { h.put(bb::kType, 1); }},
    {"the hive's version 1.2 is none of 1.3 to 1.6", [](DamagedHive& h) { h.put(bb::kMinorVersion, 2); }},
    {"the hive's version 2.5 is none of 1.3 to 1.6", [](DamagedHive& h) { h.put(bb::kMajorVersion, 2); }},
    {"the base block names an unknown format", [](DamagedHive& h) { h.put(bb::kFormat, 2); }},
    {"the sequence numbers differ: a change was not finished",
     [](DamagedHive& h) { h.put(bb::kFirstSequence, 2); }},
    {"the hive's bins reach beyond the end of the file", [](DamagedHive& h) { h.cut(h.size() - 1); }},
    {"the size of the bins is no multiple of 4096",
     [](DamagedHive& h) { h.put(bb::kBinsSize, h.at(bb::kBinsSize) - 8); }},
    {"the size of the bins is no multiple of 4096", [](DamagedHive& h) { h.put(bb::kBinsSize, 0); }},
    {"a key lies where no cell begins", [](DamagedHive& h) { h.put(bb::kRoot, kNil); }},
    {"a bin does not begin with \"hbin\"", [](DamagedHive& h) { h.put(kBinsStart, "hbim"); }},
    {"a bin says that it stands elsewhere", [](DamagedHive& h) { h.put(kBinsStart + bin::kOffset, 4096); }},
    {"a bin's size is no multiple of 4096", [](DamagedHive& h) { h.put(kBinsStart + bin::kSize, 4088); }},
    {"a bin's size is no multiple of 4096", [](DamagedHive& h) { h.put(kBinsStart + bin::kSize, 0); }},
    {"a bin reaches beyond the last one's end",
     [](DamagedHive& h) { h.put(kBinsStart + bin::kSize, 0x40000000); }},
    {"a cell's size is no multiple of 8", [](DamagedHive& h) { h.put(kFirstCell, h.at(kFirstCell) + 4); }},
    {"a cell's size is no multiple of 8", [](DamagedHive& h) { h.put(kFirstCell, 0); }},
    {"a cell reaches beyond its bin", [](DamagedHive& h) { h.put(kFirstCell, 0u - 4072); }},
};

const Damage kKeys[] = {
    {"an offset leads to no key", [](DamagedHive& h) { h.put(h.node(u"lf\\a\u00e4"), "nx"); }},
    {"the file ends, or its cell does, before what it is said to hold",
     [](DamagedHive& h) { h.put16(h.node(u"li\\a\u00e4") + nk::kNameSize, 200); }},
    {"the root is not marked as such",
     [](DamagedHive& h) { h.put16(h.node(u"") + nk::kFlags, nk::kFlagOneByteName); }},
    {"a key is marked as root",
     [](DamagedHive& h) { h.put16(h.node(u"lf") + nk::kFlags, nk::kFlagOneByteName | nk::kFlagRoot); }},
    {"a key names another parent than the one that lists it",
     [](DamagedHive& h) { h.put(h.node(u"lf\\a\u00e4") + nk::kParent, h.key(u"lh").cell); }},
    {"a key has no name", [](DamagedHive& h) { h.put16(h.node(u"li\\a\u00e4") + nk::kNameSize, 0); }},
    {"a key's name in UTF-16 has an odd number of bytes",
     [](DamagedHive& h) {
         const std::size_t node = h.node(u"li\\e\u00e4");
         h.put16(node + nk::kFlags, 0);
         h.put16(node + nk::kNameSize, 3);
     }},
    {"a key without a class name has a cell for it",
     [](DamagedHive& h) { h.put(h.node(u"lf") + nk::kClassName, 32); }},
    {"a class name lies in a cell that something else refers to as well",
     [](DamagedHive& h) { h.put(h.node(u"values") + nk::kClassName, h.key(u"").cell); }},
    {"a class name is longer than its cell",
     [](DamagedHive& h) { h.put16(h.node(u"values") + nk::kClassNameSize, 30); }},
    {"a key lies in a cell that something else refers to as well",
     [](DamagedHive& h) { h.put(h.list(u"lf") + kEntries + 32, h.key(u"li\\e\u00e4").cell); }},
    {"a key lies in a cell that is free",
     [](DamagedHive& h) {
         const std::size_t size = h.node(u"li\\a\u00e4") - kCellHeaderSize;
         h.put(size, 0 - h.at(size));
     }},
    {"a key lies where no cell begins", [](DamagedHive& h) { h.put(h.list(u"li") + kEntries, 0xFFFFFFF0u); }},
    {"a key lies where no cell begins",
     [](DamagedHive& h) { h.put(h.list(u"li") + kEntries, h.key(u"li").cell + 4); }},
    {"a cell is in use and nothing refers to it",
     [](DamagedHive& h) {
         h.put(h.node(u"values") + nk::kClassName, kNil);
         h.put16(h.node(u"values") + nk::kClassNameSize, 0);
     }},
};

const Damage kLists[] = {
    {"a key without sub keys has a list of them",
     [](DamagedHive& h) { h.put(h.node(u"lf\\a\u00e4") + nk::kSubKeys, h.key(u"lf").subKeys); }},
    {"a key counts other sub keys than its list holds",
     [](DamagedHive& h) { h.put(h.node(u"lf") + nk::kSubKeyCount, 6); }},
    {"a list of sub keys is empty",
     [](DamagedHive& h) {
         // A fourth part in the place of a class name that goes.
         const Cell name = h.key(u"values").className;
         h.put(h.node(u"values") + nk::kClassName, kNil);
         h.put16(h.node(u"values") + nk::kClassNameSize, 0);
         h.put(h.cell(name), std::string_view("li\0\0", 4));
         h.put16(h.list(u"ri") + key_list::kCount, 4);
         h.put(h.list(u"ri") + kEntries + 12, name);
     }},
    {"a list of sub keys has an unknown signature", [](DamagedHive& h) { h.put(h.list(u"li"), "lx"); }},
    {"a list of lists of sub keys holds another one",
     [](DamagedHive& h) { h.put(h.cell(h.at(h.list(u"ri") + kEntries)), "ri"); }},
    {"a part of a list of sub keys lies in a cell that something else refers to as well",
     [](DamagedHive& h) { h.put(h.list(u"ri") + kEntries, h.at(h.list(u"ri") + kEntries + 4)); }},
    {"a list of sub keys lies in a cell that something else refers to as well",
     [](DamagedHive& h) {
         h.put(h.node(u"lf\\a\u00e4") + nk::kSubKeyCount, 5);
         h.put(h.node(u"lf\\a\u00e4") + nk::kSubKeys, h.key(u"lf").subKeys);
     }},
    {"the file ends, or its cell does, before what it is said to hold",
     [](DamagedHive& h) { h.put16(h.list(u"li") + key_list::kCount, 40); }},
    {"sub keys are not sorted by their names",
     [](DamagedHive& h) { h.swap(h.list(u"li") + kEntries + 8, h.list(u"li") + kEntries + 12); }},
    {"sub keys are not sorted by their names",  // across the parts
     [](DamagedHive& h) { h.swap(h.list(u"ri") + kEntries, h.list(u"ri") + kEntries + 4); }},
    {"sub keys are not sorted by their names",  // two alike but for the case
     [](DamagedHive& h) { h.put(h.node(u"li\\b\u00e4") + nk::kName, "A\xc4"); }},
    {"a hash in a list of sub keys is not that of the name",
     [](DamagedHive& h) { h.put(h.list(u"lh") + kEntries + 12, 4711); }},
    {"a list of sub keys has not the first characters of the name",
     [](DamagedHive& h) { h.put(h.list(u"lf") + kEntries + 12, "x"); }},
    {"a list of sub keys has hashes, which this version does not know",
     [](DamagedHive& h) { h.put(bb::kMinorVersion, 4); }},
    {"a sub key's name is longer than its parent's longest",
     [](DamagedHive& h) { h.put16(h.node(u"lf") + nk::kLongestSubKeyName, 2); }},
};

const Damage kValues[] = {
    {"a key without values has a list of them",
     [](DamagedHive& h) { h.put(h.node(u"lf") + nk::kValues, h.key(u"values").values); }},
    {"a list of values lies in a cell that something else refers to as well",
     [](DamagedHive& h) { h.put(h.node(u"values") + nk::kValues, h.key(u"").cell); }},
    {"the file ends, or its cell does, before what it is said to hold",
     [](DamagedHive& h) { h.put(h.node(u"values") + nk::kValueCount, 50); }},
    {"a value lies in a cell that something else refers to as well",
     [](DamagedHive& h) { h.put(h.cell(h.key(u"values").values), h.valueAt(1).cell); }},
    {"an offset leads to no value", [](DamagedHive& h) { h.put(h.value(0), "vx"); }},
    {"a value's name in UTF-16 has an odd number of bytes",
     [](DamagedHive& h) { h.put16(h.value(2) + vk::kNameSize, 7); }},
    {"a value's name is longer than its key's longest",
     [](DamagedHive& h) { h.put(h.node(u"values") + nk::kLongestValueName, 2); }},
    {"a value's data is longer than its key's longest",
     [](DamagedHive& h) { h.put(h.node(u"values") + nk::kLongestData, 39999); }},
    {"a value's own field holds more than four bytes",
     [](DamagedHive& h) { h.put(h.value(0) + vk::kDataSize, 5 | vk::kDataInside); }},
    {"a value without data has a cell for it", [](DamagedHive& h) { h.put(h.value(3) + vk::kData, 32); }},
    {"a value's data lies where no cell begins", [](DamagedHive& h) { h.put(h.value(1) + vk::kData, 0); }},
    {"data is longer than its cell", [](DamagedHive& h) { h.put(h.value(1) + vk::kDataSize, 40); }},
    {"data is longer than its cell",
     [](DamagedHive& h) {
         h.put(h.node(u"values") + nk::kLongestData, 50000);
         h.put(h.value(4) + vk::kDataSize, 40010);
     },
     3},
    {"long data has no list of pieces", [](DamagedHive& h) { h.put(h.data(4), "dx"); }},
    {"long data has too few pieces or too many",
     [](DamagedHive& h) { h.put(h.value(4) + vk::kDataSize, 32688); }},
    {"data is longer than its cell",
     [](DamagedHive& h) {
         h.put(h.node(u"values") + nk::kLongestData, 50000);
         h.put(h.value(4) + vk::kDataSize, 40010);
     }},
    {"a list of pieces of data lies in a cell that something else refers to as well",
     [](DamagedHive& h) { h.put(h.data(4) + big_data::kPieces, h.key(u"").cell); }},
    {"a piece of data lies in a cell that something else refers to as well",
     [](DamagedHive& h) {
         const std::size_t list = h.cell(h.at(h.data(4) + big_data::kPieces));
         h.put(list, h.at(list + 4));
     }},
};

const Damage kSecurity[] = {
    {"an offset leads to no security", [](DamagedHive& h) { h.put(h.security(u""), "sx"); }},
    {"security lies where no cell begins",
     [](DamagedHive& h) { h.put(h.security(u"") + sk::kNext, h.key(u"").security + 4); }},
    {"security lies in a cell that something else refers to as well",
     [](DamagedHive& h) { h.put(h.security(u"values") + sk::kNext, h.key(u"values").security); }},
    {"the ring of security does not lead back the way it came",
     [](DamagedHive& h) { h.put(h.security(u"values") + sk::kPrevious, h.key(u"values").security); }},
    {"the ring of security does not lead back the way it came",
     [](DamagedHive& h) { h.put(h.security(u"") + sk::kPrevious, h.key(u"").security); }},
    {"a security descriptor is longer than its cell",
     [](DamagedHive& h) { h.put(h.security(u"") + sk::kDescriptorSize, 40); }},
    {"security counts other than the keys that have it",
     [](DamagedHive& h) { h.put(h.security(u"") + sk::kUseCount, 7); }},
    {"a key's security is not in the ring",
     [](DamagedHive& h) {
         h.put(h.node(u"lf") + nk::kSecurity, h.key(u"").cell);
         h.put(h.security(u"") + sk::kUseCount, h.at(h.security(u"") + sk::kUseCount) - 1);
     }},
};

void expectFaults(std::span<const Damage> damages) {
    for (const Damage& damage : damages) {
        DamagedHive hive(bytesOf(exampleHive(damage.minorVersion)));
        ASSERT_EQ("", faultsOf(hive.bytes()));
        damage.make(hive);
        hive.finish();
        EXPECT_EQ(damage.fault + std::string("\n"), faultsOf(hive.bytes()))
            << "damage " << &damage - damages.data();
    }
}

TEST(HiveChecker, FindsEachFaultOfTheBaseBlockAndTheBins) {
    expectFaults(kBaseAndBins);
    DamagedHive hive(bytesOf(exampleHive()));
    hive.put(bb::kChecksum, 0x12345678);
    EXPECT_EQ("the base block's checksum is wrong\n", faultsOf(hive.bytes()));
}

TEST(HiveChecker, FindsEachFaultOfKeys) {
    expectFaults(kKeys);
}

TEST(HiveChecker, FindsEachFaultOfTheirLists) {
    expectFaults(kLists);
}

TEST(HiveChecker, FindsEachFaultOfValues) {
    expectFaults(kValues);
}

TEST(HiveChecker, FindsEachFaultOfSecurity) {
    expectFaults(kSecurity);
}

// Whoever repairs a hive by hand looks there.
TEST(HiveChecker, NamesTheByteOfEachFault) {
    struct Row {
        std::size_t place;
        std::function<void(DamagedHive&)> make;
    };
    const std::string bytes = bytesOf(exampleHive());
    DamagedHive h(bytes);
    const std::size_t second = kBinsStart + h.at(kBinsStart + bin::kSize);
    const std::size_t lists = h.list(u"li") + kEntries;
    const std::size_t free = h.node(u"li\\a\u00e4") - kCellHeaderSize;
    const std::size_t className = h.cell(h.key(u"values").className);
    const Row rows[] = {
        {bb::kFormat, [](DamagedHive& d) { d.put(bb::kFormat, 2); }},
        {bb::kSecondSequence, [](DamagedHive& d) { d.put(bb::kFirstSequence, 2); }},
        {bb::kBinsSize, [](DamagedHive& d) { d.put(bb::kBinsSize, 0); }},
        {second, [=](DamagedHive& d) { d.put(second, "hbim"); }},
        {second, [=](DamagedHive& d) { d.put(second + bin::kOffset, 0); }},
        {second, [=](DamagedHive& d) { d.put(second + bin::kSize, 0); }},
        {second + bin::kHeaderSize, [=](DamagedHive& d) { d.put(second + bin::kHeaderSize, 0); }},
        {free + kCellHeaderSize, [](DamagedHive& d) { d.put(d.node(u"li\\a\u00e4"), "nx"); }},
        {free, [=](DamagedHive& d) { d.put(free, 0 - d.at(free)); }},
        {kBinsStart, [=](DamagedHive& d) { d.put(lists, 0xFFFFFFF0u); }},
        {kBinsStart,
         [=](DamagedHive& d) { d.put(lists, static_cast<std::uint32_t>(d.size() - kBinsStart)); }},
        {h.node(u"li") + kCellHeaderSize,
         [=](DamagedHive& d) { d.put(lists, d.key(u"li").cell + 2 * kCellHeaderSize); }},
        {className - kCellHeaderSize,
         [](DamagedHive& d) {
             d.put(d.node(u"values") + nk::kClassName, kNil);
             d.put16(d.node(u"values") + nk::kClassNameSize, 0);
         }},
        {lists + 8, [=](DamagedHive& d) { d.put(d.node(u"li\\c\u00e4") + nk::kName, "A"); }},
        {h.list(u"lh") + kEntries + 12, [](DamagedHive& d) { d.put(d.list(u"lh") + kEntries + 12, 4711); }},
        {h.list(u"lf") + kEntries + 12, [](DamagedHive& d) { d.put(d.list(u"lf") + kEntries + 12, "x"); }}};
    for (const Row& row : rows) {
        DamagedHive hive(bytes);
        row.make(hive);
        hive.finish();
        const HiveCheck check = checkHive(HiveBytes(hive.bytes()));
        ASSERT_FALSE(check.whole()) << &row - rows;
        EXPECT_EQ(row.place, check.faults[0].place) << &row - rows << ": " << check.faults[0].what;
    }
}

TEST(HiveChecker, CountsKeysAndValues) {
    const HiveCheck check = checkHive(HiveBytes(bytesOf(exampleHive())));
    EXPECT_EQ(26u, check.keys);
    EXPECT_EQ(5u, check.values);
}

TEST(HiveChecker, KeepsAHundredFaultsAndCountsAll) {
    MadeHive hive;
    for (char16_t name = u'\u4e00'; name < u'\u4e00' + 250; ++name)
        hive.root.subKeys.emplace_back().name = std::u16string(1, name);
    hive.root.list.kind = key_list::kOffsets;
    DamagedHive damaged(bytesOf(hive));
    const HiveKey root = damaged.key(u"");
    for (std::size_t i = 0; i < 250; ++i)
        damaged.put(damaged.cell(damaged.at(damaged.list(u"") + kEntries + i * 4)) + nk::kValues, 32);
    const HiveCheck check = checkHive(HiveBytes(damaged.bytes()));
    EXPECT_EQ(250u, check.faultCount);
    EXPECT_EQ(100u, check.faults.size());
    EXPECT_EQ(root.subKeyCount + 1, check.keys);
}

}  // namespace
}  // namespace bromvale::offline
