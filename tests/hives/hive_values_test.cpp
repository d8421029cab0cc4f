// Single values, as those ask for them who look for something particular.
#include "platform/offline/hives/hive_values.h"

#include <gtest/gtest.h>

#include "platform/offline/hives/deletion.h"
#include "tests/hives/hive_faults.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {
namespace {

std::string utf16(std::u16string_view text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

class HiveValues : public ::testing::Test {
  protected:
    HiveValues() {
        MadeHive made;
        made.root.subKeys.resize(1);
        made.root.subKeys[0].name = u"Key";
        made.root.subKeys[0].values = {
            {u"Text", 1, utf16(u"Wort")},
            {u"Expand", 2, utf16(std::u16string_view(u"%x%\0rest", 8))},
            {u"Lines", 7, utf16(u"Wort")},
            {u"Longest", 1, utf16(std::u16string(32768, u'x'))},
            {u"Longer", 1, utf16(std::u16string(32769, u'x'))},
            {u"Number", 4, std::string("\x2A\1\0\0", 4)},
            {u"Short", 4, std::string("\x2A\0\0", 3)},
            {u"Long", 4, std::string("\x2A\0\0\0\0", 5)},
            {u"Bytes", 3, std::string("\x2A\0\0\0", 4)},
        };
        bytes_ = bytesOf(made);
    }
    [[nodiscard]] std::optional<std::u16string> text(std::u16string_view name) const {
        return textAt(Hive{HiveBytes(bytes_)}, u"Key", name);
    }
    [[nodiscard]] std::optional<std::uint32_t> number(std::u16string_view name) const {
        return numberAt(Hive{HiveBytes(bytes_)}, u"Key", name);
    }
    std::string bytes_;
};

TEST_F(HiveValues, ATextEndsAtItsFirstNulAndHas64KiBAtMost) {
    EXPECT_EQ(u"Wort", text(u"tEXT"));
    EXPECT_EQ(u"%x%", text(u"Expand"));
    EXPECT_EQ(32768u, text(u"Longest").value_or(u"").size());
    for (const std::u16string_view name : {u"Lines", u"Longer", u"Number", u"Bytes", u"none", u"Tex"})
        EXPECT_EQ(std::nullopt, text(name));
    EXPECT_EQ(std::nullopt, textAt(Hive{HiveBytes(bytes_)}, u"Other", u"Text"));
}

TEST_F(HiveValues, ANumberHasFourBytes) {
    EXPECT_EQ(0x12Au, number(u"NUMBER"));
    for (const std::u16string_view name : {u"Short", u"Long", u"Bytes", u"Text", u"none"})
        EXPECT_EQ(std::nullopt, number(name));
}

TEST_F(HiveValues, AreFoundWithTheirCell) {
    const Hive hive{HiveBytes(bytes_)};
    const auto value = valueAt(hive, u"KEY", u"bytes");
    ASSERT_TRUE(value);
    EXPECT_EQ(u"Bytes", value->name());
    EXPECT_EQ(hive.values(hive.key(cellOf(bytes_, u"Key"))).back(), value->cell);
    EXPECT_FALSE(valueAt(hive, u"", u"Bytes"));
}

// In the value's own field, in a cell, in pieces from 1.4 on: each way begins where the one before ends.
TEST(HiveData, OfEveryLengthIsReadCheckedAndTakenOut) {
    for (const std::uint32_t minor : {3u, 4u, 5u}) {
        MadeHive made;
        made.minorVersion = minor;
        made.root.list.kind = key_list::kNames;
        MadeKey& key = made.root.subKeys.emplace_back();
        key.name = u"Key";
        for (const std::size_t size : {0, 1, 3, 4, 5, 8, 16343, 16344, 16345, 32688, 32689}) {
            MadeValue& value = key.values.emplace_back();
            value.type = 3;
            for (std::size_t i = 0; i < size; ++i) value.data += static_cast<char>(i * 31 + i / 16344);
            value.name = u"v" + std::u16string(1, static_cast<char16_t>(u'a' + key.values.size()));
        }
        const std::string bytes = bytesOf(made);
        EXPECT_EQ("", faultsOf(bytes)) << minor;
        const Hive hive{HiveBytes(bytes)};
        const Cell cell = cellOf(bytes, u"Key");
        const std::vector<Cell> values = hive.values(hive.key(cell));
        ASSERT_EQ(key.values.size(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_TRUE(key.values[i].data == hive.data(hive.value(values[i]))) << minor << " " << i;
        HiveImage image(bytes);
        EXPECT_EQ(1u, deleteKeys(image, {{cell}}));
        EXPECT_EQ("", faultsOf(image.bytes().all())) << minor;
    }
}

}  // namespace
}  // namespace bromvale::offline
