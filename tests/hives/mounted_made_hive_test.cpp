// A hive of the tests' own as a part of the machine's registry.
#include "platform/offline/hives/mounted_hive.h"

#include "platform/offline/machine.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {
namespace {

using Names = std::vector<std::string>;

class MountedMadeHive : public HiveFilesTest {
  protected:
    MountedMadeHive() {
        registry.clear();
        MadeHive made;
        made.root.values = {{u"Wurzel", 1, std::string("w\0\0\0", 4)}};
        made.root.subKeys.resize(3);
        made.root.subKeys[0].name = u"Alpha";
        made.root.subKeys[0].values = {{u"", 4, std::string("\1\0\0\0", 4)},
                                       {std::u16string(u"n\0l", 3), 1, ""}};
        made.root.subKeys[0].subKeys.resize(1);
        made.root.subKeys[0].subKeys[0].name = u"Tief";
        made.root.subKeys[1].name = u"Beta";
        made.root.subKeys[2].name = u"mit\\Strich";
        hive = std::make_shared<MountedHive>(HiveImage(offline::bytesOf(made)));
    }
    bool mount(const char* path) { return mountHive(registry, path, hive, hive->hive().base().root); }

    Registry& registry = machine().registry;
    std::shared_ptr<MountedHive> hive;
};

TEST_F(MountedMadeHive, HasItsKeysAndValuesWhereItWasPut) {
    ASSERT_TRUE(mount("HKEY_LOCAL_MACHINE\\Software\\Hier"));
    EXPECT_EQ(registry.subKeys("HKEY_LOCAL_MACHINE\\Software\\Hier"), (Names{"Alpha", "Beta"}));
    EXPECT_EQ(registry.subKeys("HKEY_LOCAL_MACHINE\\Software\\Hier\\Alpha"), Names{"Tief"});
    EXPECT_EQ(registry.value("HKEY_LOCAL_MACHINE\\Software\\Hier", "Wurzel")->data, std::string("w\0", 2));
    const auto number = registry.value("HKEY_LOCAL_MACHINE\\Software\\Hier\\Alpha", "");
    EXPECT_EQ(number->type, 4u);
    EXPECT_EQ(number->data, std::string("\1\0\0\0", 4));
    EXPECT_EQ(hive->damageCount(), 0u);
}

TEST_F(MountedMadeHive, CountsWhatNobodyCouldName) {
    ASSERT_TRUE(mount("HKEY_CURRENT_USER"));
    EXPECT_EQ(registry.subKeys("HKEY_CURRENT_USER"), (Names{"Alpha", "Beta"}));
    EXPECT_EQ(registry.values("HKEY_CURRENT_USER\\Alpha").size(), 1u);
    EXPECT_EQ(hive->unnameable(), 2u);
}

TEST_F(MountedMadeHive, PutBelowAnotherOneStandsBesideWhatThatOneHas) {
    ASSERT_TRUE(mount("HKEY_LOCAL_MACHINE\\Software\\Hier"));
    ASSERT_TRUE(mount("HKEY_LOCAL_MACHINE\\Software\\Hier\\Alpha"));
    EXPECT_EQ(registry.subKeys("HKEY_LOCAL_MACHINE\\Software\\Hier\\Alpha"),
              (Names{"Alpha", "Beta", "Tief"}));
    EXPECT_EQ(registry.value("HKEY_LOCAL_MACHINE\\Software\\Hier\\Alpha", "")->type, 4u);
}

TEST_F(MountedMadeHive, StandsNowhereButInAHiveOfTheRegistryAndUnderNamesThatFit) {
    EXPECT_FALSE(mount("HKEY_NIRGENDS\\Software"));
    EXPECT_FALSE(mount(("HKEY_LOCAL_MACHINE\\" + std::string(300, 'x')).c_str()));
    EXPECT_EQ(registry.subKeys("HKEY_LOCAL_MACHINE"), Names{});
}

// What a part of a key can't tell is noted with the key and the byte; the other parts are there.
TEST_F(MountedMadeHive, NotesWhatIsDamagedAndKeepsTheRest) {
    const std::string good(hive->image().bytes().all());
    const auto placeOf = [&](Cell cell) { return hive->hive().cell(cell).place(); };
    const HiveKey alpha = hive->hive().key(cellOf(good, u"Alpha"));
    const auto expect = [&](std::size_t place, std::size_t told, const std::string& what,
                            const Names& subKeys, std::size_t values) {
        SCOPED_TRACE(what);
        std::string bytes = good;
        bytes[place] = 'x';
        registry.clear();
        hive = std::make_shared<MountedHive>(HiveImage(bytes));
        ASSERT_TRUE(mount("HKEY_CURRENT_USER"));
        EXPECT_EQ(registry.subKeys("HKEY_CURRENT_USER\\Alpha"), subKeys);
        EXPECT_EQ(registry.values("HKEY_CURRENT_USER\\Alpha").size(), values);
        EXPECT_EQ(hive->damageCount(), 1u);
        EXPECT_EQ(hive->damages(), Names{what + " (byte " + std::to_string(told) + ")"});
    };
    const std::size_t value = placeOf(hive->hive().values(alpha)[0]);
    expect(value, value, "HKEY_CURRENT_USER\\Alpha: an offset leads to no value", {"Tief"}, 0);
    const std::size_t list = placeOf(alpha.subKeys);
    expect(list, list, "HKEY_CURRENT_USER\\Alpha: a list of sub keys has an unknown signature", {}, 1);
}

TEST_F(MountedMadeHive, ASubKeyWhoseNameCannotBeReadIsMissingAlone) {
    std::string bytes(hive->image().bytes().all());
    const std::size_t node = hive->hive().cell(cellOf(bytes, u"Alpha")).place();
    bytes[node + key_node::kNameSize + 1] = 1;  // longer than its cell
    hive = std::make_shared<MountedHive>(HiveImage(bytes));
    ASSERT_TRUE(mount("HKEY_CURRENT_USER"));
    EXPECT_EQ(registry.subKeys("HKEY_CURRENT_USER"), Names{"Beta"});
    EXPECT_EQ(hive->damageCount(), 1u);
    EXPECT_EQ(
        hive->damages(),
        Names{"HKEY_CURRENT_USER: the file ends, or its cell does, before what it is said to hold (byte " +
              std::to_string(node + key_node::kName) + ")"});
}

TEST_F(MountedMadeHive, KeepsAHundredDamagesAndCountsAll) {
    MadeHive made;
    for (char16_t name = u'\u4e00'; name < u'\u4e00' + 150; ++name) {
        MadeKey& key = made.root.subKeys.emplace_back();
        key.name = std::u16string(1, name);
        key.values = {{u"v", 3, "12345678"}};
    }
    std::string bytes = offline::bytesOf(made);
    const Hive read{HiveBytes(bytes)};
    for (const Cell key : read.subKeys(read.root())) {
        const std::size_t value = read.cell(read.values(read.key(key))[0]).place();
        bytes[value] = 'x';
    }
    hive = std::make_shared<MountedHive>(HiveImage(bytes));
    ASSERT_TRUE(mount("HKEY_CURRENT_USER"));
    for (const std::u16string& name : registry.wideSubKeys("HKEY_CURRENT_USER"))
        EXPECT_TRUE(registry.wideValues(u"HKEY_CURRENT_USER\\" + name).empty());
    EXPECT_EQ(hive->damageCount(), 150u);
    EXPECT_EQ(hive->damages().size(), 100u);
}

TEST_F(MountedMadeHive, HasNamesThatWindowsCanTell) {
    MadeHive made;
    made.root.subKeys.resize(3);
    made.root.subKeys[0].name = std::u16string(255, u'x');
    made.root.subKeys[1].name = std::u16string(256, u'x');
    made.root.subKeys[2].name = std::u16string(u"a\0b", 3);
    made.root.values = {{u"a\\b", 3, "1"}, {u"weg", 3, "1", value_node::kFlagTombstone}};
    hive = std::make_shared<MountedHive>(HiveImage(offline::bytesOf(made)));
    ASSERT_TRUE(mount("HKEY_CURRENT_USER"));
    EXPECT_EQ(registry.subKeys("HKEY_CURRENT_USER"), Names{std::string(255, 'x')});
    EXPECT_EQ(registry.values("HKEY_CURRENT_USER").size(), 1u);
    EXPECT_EQ(hive->unnameable(), 2u);
    EXPECT_EQ(hive->damageCount(), 0u);
}

// A hive's root that is none any more: nobody is told of anything but the damage.
TEST_F(MountedMadeHive, AKeyThatIsNoneIsNotedToo) {
    ASSERT_TRUE(mountHive(registry, "HKEY_CURRENT_USER", hive, hive->hive().base().root + 8));
    EXPECT_TRUE(registry.subKeys("HKEY_CURRENT_USER").empty());
    EXPECT_EQ(hive->damageCount(), 1u);
    EXPECT_TRUE(hive->damages().at(0).starts_with("HKEY_CURRENT_USER: an offset leads to no "));
}

}  // namespace
}  // namespace bromvale::offline
