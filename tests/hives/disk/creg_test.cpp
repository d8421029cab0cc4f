// Registries of Windows 95 to ME: what is read, what damage comes to, and what a machine's registry gets.
#include "platform/offline/hives/disk/creg.h"

#include <csignal>
#include <random>

#include "platform/offline/machine.h"
#include "tests/hives/disk/made_creg.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/hive_rounds.h"

namespace bromvale::offline {
namespace {

class Creg : public HiveFilesTest {
  protected:
    void SetUp() override {
        if (!hasCregReader()) GTEST_SKIP() << "built without libcreg";
    }
    [[nodiscard]] std::variant<CregTree, std::string> read(const std::string& bytes) const {
        return readCreg(write("SYSTEM.DAT", bytes));
    }
    [[nodiscard]] CregTree tree(const std::string& bytes) const {
        const auto result = read(bytes);
        if (const auto* problem = std::get_if<std::string>(&result)) ADD_FAILURE() << *problem;
        return std::holds_alternative<CregTree>(result) ? std::get<CregTree>(result) : CregTree();
    }
    [[nodiscard]] std::string problem(const std::string& bytes) const {
        const auto result = read(bytes);
        return std::holds_alternative<CregTree>(result) ? "none" : std::get<std::string>(result);
    }
};
class RealRegistryCreg : public Creg {};

// An umlaut, a default value, all kinds of texts, and a number.
MadeCregKey example() {
    MadeCregKey root;
    MadeCregKey& key = root.at("Software\\F\xE4rber");
    key.values = {{"", 1, "Standard"},
                  {"Ordner", 2, std::string("%WinDir%\\x\0", 11)},
                  {"Liste", 7, std::string("a\0b\0\0", 5)},
                  {"Zahl", 4, std::string("\x2A\0\0\0", 4)},
                  {"Bytes", 3, std::string("\0\xFF", 2)},
                  {"leer", 1, ""}};
    root.at("Software\\Classes\\.txt").values = {{"", 1, "Textdatei"}};
    root.at("System\\CurrentControlSet");
    return root;
}

void put(std::string& bytes, std::size_t at, std::uint32_t number) {
    bytes.replace(at, 4, std::string(reinterpret_cast<const char*>(&number), 4));
}

std::uint32_t numberAt(const std::string& bytes, std::size_t at) {
    std::uint32_t number = 0;
    bytes.copy(reinterpret_cast<char*>(&number), 4, at);
    return number;
}

TEST_F(Creg, KeysAndValuesComeAsTheFileHasThem) {
    const CregTree read = tree(cregBytes(example()));
    EXPECT_EQ(read.keys, 7u);
    EXPECT_EQ(read.values, 7u);
    const CregKey* const key = read.root.find(u"SOFTWARE\\f\u00E4rber");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->name, u"F\u00E4rber");
    ASSERT_EQ(key->values.size(), 6u);
    EXPECT_EQ(key->values[0].name, u"");
    EXPECT_EQ(key->values[0].data, "Standard");
    EXPECT_EQ(key->values[1].type, 2u);
    EXPECT_EQ(key->values[1].data, std::string("%WinDir%\\x\0", 11));
    EXPECT_EQ(key->value(u"ZAHL")->data, std::string("\x2A\0\0\0", 4));
    EXPECT_EQ(key->value(u"nichts"), nullptr);
    EXPECT_EQ(read.root.find(u"Software\\nichts"), nullptr);
}

TEST_F(Creg, TheRegistryGetsWhatWindowsFunctionsWouldGive) {
    const CregTree read = tree(cregBytes(example()));
    Registry& registry = machine().registry;
    EXPECT_EQ(addCreg(registry, u"HKEY_LOCAL_MACHINE", read.root), 0u);
    const auto data = [&](const char16_t* name) {
        return registry.value(u"HKEY_LOCAL_MACHINE\\Software\\F\u00E4rber", name)
            .value_or(RegistryValue())
            .data;
    };
    EXPECT_EQ(data(u""), std::string("Standard\0", 9));
    EXPECT_EQ(data(u"Ordner"), std::string("%WinDir%\\x\0", 11));
    EXPECT_EQ(data(u"Liste"), std::string("a\0b\0\0", 5));
    EXPECT_EQ(data(u"Zahl"), std::string("\x2A\0\0\0", 4));
    EXPECT_EQ(data(u"Bytes"), std::string("\0\xFF", 2));
    EXPECT_EQ(data(u"leer"), std::string("\0", 1));
    EXPECT_TRUE(registry.exists(u"HKEY_LOCAL_MACHINE\\System\\CurrentControlSet"));
}

TEST_F(Creg, ACircleOfKeysIsRefused) {
    const std::string good = cregBytes(example());
    for (const std::size_t field : {16, 20}) {
        for (std::size_t from = 0; from < 7; ++from) {
            for (std::size_t to = 0; to < 7; ++to) {
                SCOPED_TRACE(std::to_string(field) + " " + std::to_string(from) + " " + std::to_string(to));
                std::string bytes = good;
                const auto target = static_cast<std::uint32_t>(cregEntry(to) - 32);
                if (numberAt(bytes, cregEntry(from) + field) == target) continue;
                put(bytes, cregEntry(from) + field, target);
                static_cast<void>(read(bytes));
            }
        }
    }
    std::string bytes = good;
    put(bytes, cregEntry(2) + 16, static_cast<std::uint32_t>(cregEntry(1) - 32));
    EXPECT_EQ(problem(bytes), "two keys have the same sub key, or a key leads back to itself");
}

// Whose children others wait for, as under some services.
TEST_F(Creg, AProcessThatCannotBeWaitedForIsNoReader) {
    const auto handler = std::signal(SIGCHLD, SIG_IGN);
    const std::string told = problem(cregBytes(example()));
    std::signal(SIGCHLD, handler);
    EXPECT_EQ(told, "the process that read it can't be waited for: No child processes");
}

// The library alone walks without end from such a root.
TEST_F(Creg, AKeyThatBeginsInTheMiddleOfAnotherIsRefused) {
    const std::string good = cregBytes(example());
    for (std::uint32_t into = 1; into < 28; ++into) {
        SCOPED_TRACE(into);
        std::string bytes = good;
        put(bytes, 32 + 8, static_cast<std::uint32_t>(cregEntry(3) - 32) + into);
        EXPECT_NE(problem(bytes), "none");
    }
    std::string bytes = good;
    put(bytes, 32 + 8, static_cast<std::uint32_t>(cregEntry(3) - 32) + 24);
    EXPECT_EQ(problem(bytes), "two keys lie on each other");
}

TEST_F(Creg, WhatIsNoSuchRegistrySaysSo) {
    EXPECT_EQ(problem(""), "the file does not begin with \"CREG\"");
    EXPECT_EQ(problem("regf"), "the file does not begin with \"CREG\"");
    EXPECT_EQ(problem("CREG"), "the file ends, or its cell does, before what it is said to hold");
    EXPECT_EQ(std::get<std::string>(readCreg(folder().string())), "Is a directory");
    EXPECT_EQ(std::get<std::string>(readCreg((folder() / "none").string())), "No such file or directory");
}

// Our words, and the library's own behind them.
TEST_F(Creg, WhatTheLibraryRefusesIsTold) {
    const std::string good = cregBytes(example());
    const auto changed = [&](std::size_t at, char byte) {
        std::string bytes = good;
        bytes[at] = byte;
        return problem(bytes);
    };
    EXPECT_TRUE(changed(16, 0).starts_with("it can't be opened (libcreg_file_open: ")) << changed(16, 0);
    EXPECT_EQ(changed(8, 0), "its root can't be read (no reason is told)");
    const std::string counted = changed(cregEntry(1) - 1, 0);
    EXPECT_TRUE(counted.starts_with("a key's values can't be counted (libcreg_key_get_number_of_values: "))
        << counted;
    EXPECT_TRUE(counted.ends_with(")"));
    EXPECT_EQ(changed(32, 'x'), "the list of keys is missing");
}

MadeCregKey keysInEachOther(std::size_t depth) {
    MadeCregKey root;
    MadeCregKey* key = &root;
    for (; depth > 0; --depth) key = &key->subKeys.emplace_back(MadeCregKey{"k", {}, {}});
    return root;
}

TEST_F(Creg, KeysLieAsDeepInEachOtherAsWindowsAllows) {
    EXPECT_EQ(tree(cregBytes(keysInEachOther(512))).keys, 513u);
    EXPECT_EQ(problem(cregBytes(keysInEachOther(513))), "keys lie deeper in each other than Windows allows");
}

TEST_F(Creg, NamesAreAsLongAsWindowsAllows) {
    const auto named = [](std::size_t size) {
        MadeCregKey root;
        root.at("k").values = {{std::string(size, 'n'), 1, "x"}};
        return cregBytes(root);
    };
    EXPECT_EQ(tree(named(4095)).root.subKeys.at(0).values.at(0).name, std::u16string(4095, u'n'));
    EXPECT_EQ(problem(named(4097)), "a name is longer than Windows allows");
}

TEST_F(Creg, TheRootHasNoNameAndKeysHaveTheirs) {
    const CregTree read = tree(cregBytes(example()));
    EXPECT_EQ(read.root.name, u"");
    EXPECT_EQ(read.root.subKeys.at(0).name, u"Software");
    EXPECT_EQ(read.root.find(u""), &read.root);
    EXPECT_EQ(read.root.find(u"software\\classes"), &read.root.subKeys[0].subKeys.at(1));
}

// Keys without a name or with a backslash, and what lies below them, and values of names that are too long.
TEST(CregRegistry, CountsWhatItCouldNotTake) {
    CregKey root;
    root.subKeys.resize(4);
    root.subKeys[0].subKeys.resize(1);
    root.subKeys[1].name = u"a\\b";
    root.subKeys[2].name = std::u16string(300, u'x');
    root.subKeys[3].name = u"gut";
    root.subKeys[3].subKeys.resize(1);
    root.subKeys[3].values = {{u"", 1, std::string("mit\0", 4)}, {std::u16string(20000, u'v'), 1, "x"}};
    Registry& registry = machine().registry;
    registry.clear();
    EXPECT_EQ(addCreg(registry, u"HKEY_LOCAL_MACHINE", root), 5u);
    EXPECT_EQ(registry.subKeys("HKEY_LOCAL_MACHINE"), std::vector<std::string>{"gut"});
    EXPECT_EQ(registry.value(u"HKEY_LOCAL_MACHINE\\gut", u"")->data, std::string("mit\0", 4));
}

TEST_F(Creg, ACutOrMutatedFileIsReadOrRefused) {
    const std::string good = cregBytes(example());
    for (std::size_t size = 0; size < good.size(); size += size < 512 ? 16 : 256)
        static_cast<void>(read(good.substr(0, size)));
    std::mt19937 numbers(9);
    // The bytes behind the lists are zeros: mutations go where something stands.
    const std::size_t names = cregEntry(7);
    for (std::uint32_t round = hiveRounds(200); round > 0; --round) {
        std::string bytes = good;
        for (unsigned left = 1 + numbers() % 4; left > 0; --left) {
            const std::size_t at = numbers() % 2 == 0 ? numbers() % names : 32 + 4096 + numbers() % 512;
            bytes[at] = static_cast<char>(numbers());
        }
        static_cast<void>(read(bytes));
    }
}

TEST_F(RealRegistryCreg, AllKeysAndValuesAreThere) {
    const CregTree read = tree(realHive("winme-USER.DAT"));
    EXPECT_EQ(read.keys, 788u);
    EXPECT_EQ(read.values, 1518u);
    machine().registry.clear();
    EXPECT_EQ(addCreg(machine().registry, u"HKEY_USERS", read.root), 0u);
    EXPECT_EQ(machine().registry.keyCount(), 787u);
    EXPECT_EQ(machine().registry.valueCount(), 1518u);
    EXPECT_TRUE(machine().registry.exists(u"HKEY_USERS\\.DEFAULT\\Software"));
}

TEST_F(RealRegistryCreg, ACutOrMutatedFileIsReadOrRefused) {
    const std::string good = realHive("winme-USER.DAT");
    EXPECT_NE(problem(good.substr(0, good.size() / 2)), "none");
    for (std::size_t size = 0; size < good.size(); size += 4096)
        EXPECT_NE(problem(good.substr(0, size)), "none") << size;
    std::mt19937 numbers(11);
    for (std::uint32_t round = hiveRounds(1000) / 100; round > 0; --round) {
        std::string bytes = good;
        for (unsigned left = 1 + numbers() % 8; left > 0; --left)
            bytes[numbers() % bytes.size()] = static_cast<char>(numbers());
        static_cast<void>(read(bytes));
    }
}

}  // namespace
}  // namespace bromvale::offline
