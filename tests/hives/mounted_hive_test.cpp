// A raw hive as a part of the machine's registry.
#include "platform/offline/hives/mounted_hive.h"

#include "platform/offline/machine.h"
#include "platform/offline/reg_files/reg_file.h"
#include "tests/hives/hive_files.h"

namespace bromvale::offline {
namespace {

constexpr const char* kSoftware = "HKEY_LOCAL_MACHINE\\Software";

std::shared_ptr<MountedHive> hiveOf(const std::string& name) {
    return std::make_shared<MountedHive>(HiveImage(realHive(name)));
}

class RealRegistryMountedHive : public HiveFilesTest {
  protected:
    RealRegistryMountedHive() { registry.clear(); }
    Registry& registry = machine().registry;
    void mount(const char* path, const std::shared_ptr<MountedHive>& hive) {
        ASSERT_TRUE(mountHive(registry, path, hive, hive->hive().base().root));
    }
};

TEST_F(RealRegistryMountedHive, IsTakenWhereSomebodyLooks) {
    const auto hive = hiveOf("win7-x86-SOFTWARE");
    mount(kSoftware, hive);
    const std::size_t first = registry.keyCount();
    EXPECT_LT(first, 100u);
    EXPECT_EQ(5502u, registry.subKeys("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID").size());
    EXPECT_GT(registry.keyCount(), first + 5502);
    EXPECT_LT(registry.keyCount(), 60000u);
    EXPECT_EQ("6.1", registry
                         .value("HKEY_LOCAL_MACHINE\\SOFTWARE\\microsoft\\Windows NT\\CurrentVersion",
                                "CurrentVersion")
                         ->data.substr(0, 3));
    EXPECT_EQ(0u, hive->damageCount());
}

// All of it, written as a registry file and read again, is the same registry.
TEST_F(RealRegistryMountedHive, ComesWhole) {
    mount("HKEY_CURRENT_USER", hiveOf("winxp-NTUSER.DAT"));
    mount("HKEY_CURRENT_USER\\Software\\Classes", hiveOf("win81-UsrClass.dat"));
    const std::string file = (folder() / "all.reg").string();
    ASSERT_FALSE(saveRegFile(registry, file));
    // Without the two roots, and with Classes, which stands for one of them.
    EXPECT_EQ(1127u - 1 + 7505, registry.keyCount());
    EXPECT_EQ(5602u + 19987, registry.valueCount());

    Registry read(machine().otherHalf);
    ASSERT_FALSE(loadRegFile(file, read));
    EXPECT_EQ(registry.keyCount(), read.keyCount());
    const std::string again = (folder() / "again.reg").string();
    ASSERT_FALSE(saveRegFile(read, again));
    EXPECT_TRUE(bytesOf(file) == bytesOf(again));
}

// What the machine has already comes before what the hive has.
TEST_F(RealRegistryMountedHive, StandsBesideWhatIsThere) {
    const char* key = "HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{00000000-0000-0000-0000-000000000001}";
    const auto hive = hiveOf("made-li-SOFTWARE");
    registry.setText("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\X", "", "eigen");
    mount(kSoftware, hive);
    EXPECT_EQ(6u, registry.subKeys("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID").size());
    EXPECT_FALSE(registry.exists(key));
    EXPECT_EQ(std::string("eigen\0", 6),
              registry.value("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\X", "")->data);
}

// What goes from the machine is told as places in the hive, the topmost key of each removal alone.
TEST_F(RealRegistryMountedHive, TellsWhatWasRemoved) {
    const auto hive = hiveOf("made-li-SOFTWARE");
    mount(kSoftware, hive);
    registry.createKey("HKEY_LOCAL_MACHINE\\Software\\Eigen");
    const auto classes = registry.subKeys("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID");
    ASSERT_EQ(5u, classes.size());
    EXPECT_TRUE(registry.deleteKey("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\" + classes[0]));
    registry.tree().forgetRemovals();
    EXPECT_TRUE(registry.deleteKey("HKEY_LOCAL_MACHINE\\Software\\Eigen"));
    EXPECT_TRUE(registry.deleteKey("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\" + classes[3]));
    const auto removed = registry.tree().removedFrom(*hive);
    ASSERT_EQ(1u, removed.size());
    EXPECT_EQ(
        hive->hive().find(hive->hive().root(), u"Classes\\CLSID\\" + hive->hive().key(removed[0]).name()),
        removed[0]);
    EXPECT_EQ(2u, registry.tree().removedPaths().size());
    EXPECT_EQ(3u, registry.subKeys("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID").size());
    registry.clear();
    EXPECT_TRUE(registry.tree().removedFrom(*hive).empty());
}

// A name that no function of Windows can be told would name another key: nobody is told of it.
TEST_F(RealRegistryMountedHive, LeavesOutNamesThatNobodyCanTell) {
    const auto hive = hiveOf("hivex-special");
    mount(kSoftware, hive);
    std::vector<std::u16string> names = registry.wideSubKeys(kSoftware);
    for (const auto& name : names) EXPECT_EQ(std::u16string::npos, name.find(u'\0'));
    for (const auto& name : names)
        static_cast<void>(registry.wideValues(u"HKEY_LOCAL_MACHINE\\Software\\" + name));
    EXPECT_GT(hive->unnameable(), 0u);
    EXPECT_EQ(0u, hive->damageCount());
}

TEST_F(RealRegistryMountedHive, RemembersWhatIsDamaged) {
    const auto hive = hiveOf("made-abort");
    mount(kSoftware, hive);
    for (const auto& name : registry.subKeys(kSoftware))
        static_cast<void>(registry.values(std::string(kSoftware) + "\\" + name));
    ASSERT_EQ(1u, hive->damageCount());
    EXPECT_NE(std::string::npos, hive->damages()[0].find("HKEY_LOCAL_MACHINE\\Software\\"));
}

}  // namespace
}  // namespace bromvale::offline
