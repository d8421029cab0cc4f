// What goes between the process that reads a registry of Windows 95 to ME and the one that asked for it.
#include <gtest/gtest.h>

#include "platform/offline/hives/bytes.h"
#include "platform/offline/hives/disk/creg_parts.h"

namespace bromvale::offline {
namespace {

CregTree example() {
    CregTree tree;
    tree.keys = 3;
    tree.values = 2;
    CregKey& key = tree.root.subKeys.emplace_back();
    key.name = u"F\u00E4rber \u0141";
    key.values.push_back({u"", 1, "Standard"});
    key.values.push_back({u"Bytes", 0xFFFFFFFF, std::string("\0\xFF\n", 3)});
    tree.root.subKeys.emplace_back().name = u"leer";
    return tree;
}

TEST(CregAnswer, ATreeComesWhole) {
    const CregAnswer answer = answerIn(bytesOf(example()));
    ASSERT_TRUE(std::holds_alternative<CregTree>(answer));
    const auto& tree = std::get<CregTree>(answer);
    EXPECT_EQ(tree.keys, 3u);
    EXPECT_EQ(tree.values, 2u);
    ASSERT_EQ(tree.root.subKeys.size(), 2u);
    const CregKey& key = tree.root.subKeys[0];
    EXPECT_EQ(key.name, u"F\u00E4rber \u0141");
    ASSERT_EQ(key.values.size(), 2u);
    EXPECT_EQ(key.values[0].name, u"");
    EXPECT_EQ(key.values[0].data, "Standard");
    EXPECT_EQ(key.values[1].name, u"Bytes");
    EXPECT_EQ(key.values[1].type, 0xFFFFFFFFu);
    EXPECT_EQ(key.values[1].data, std::string("\0\xFF\n", 3));
    EXPECT_EQ(tree.root.subKeys[1].name, u"leer");
}

TEST(CregAnswer, AProblemComesAsItIs) {
    const CregAnswer answer = answerIn(bytesOf(std::string("it can't be opened")));
    ASSERT_TRUE(std::holds_alternative<std::string>(answer));
    EXPECT_EQ(std::get<std::string>(answer), "it can't be opened");
}

TEST(CregAnswer, ACutOneIsNone) {
    const std::string bytes = bytesOf(example());
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_THROW(static_cast<void>(answerIn(bytes.substr(0, size))), HiveDamage) << size;
}

}  // namespace
}  // namespace bromvale::offline
