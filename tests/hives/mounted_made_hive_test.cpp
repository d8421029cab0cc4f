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

}  // namespace
}  // namespace bromvale::offline
