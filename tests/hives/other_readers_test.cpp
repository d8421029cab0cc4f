// What readers that others wrote see of a hive that keys were taken out of: the hive before without the keys'
// lines.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <sstream>

#include "platform/offline/hives/deletion.h"
#include "platform/offline/hives/hive.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/hive_rounds.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {
namespace {

std::string outputOf(const std::string& command) {
    std::string text;
    std::FILE* const pipe = ::popen((command + " 2>/dev/null").c_str(), "r");
    char buffer[65536];
    for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        text.append(buffer, count);
    EXPECT_EQ(0, ::pclose(pipe)) << command;
    return text;
}

// A path with slashes, "/a/b", of names that no reader writes in another way.
struct NamedKey {
    Cell cell = kNil;
    std::string path;
};

bool isPlain(std::u16string_view name) {
    return std::ranges::all_of(name, [](char16_t c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
    });
}

std::vector<NamedKey> plainKeys(const Hive& hive) {
    std::vector<NamedKey> found;
    std::vector<NamedKey> pending{{hive.base().root, ""}};
    while (!pending.empty()) {
        const NamedKey key = pending.back();
        pending.pop_back();
        for (const Cell cell : hive.subKeys(hive.key(key.cell))) {
            const std::u16string name = hive.key(cell).name();
            if (!isPlain(name)) continue;
            pending.push_back({cell, key.path + "/" + std::string(name.begin(), name.end())});
            if (!whyUndeletable(hive.file(), cell)) found.push_back(pending.back());
        }
    }
    return found;
}

// Names that all readers write alike; the rest of the tree stays as odd as it is.
void nameSimply(MadeKey& key, int& count) {
    for (MadeKey& subKey : key.subKeys) {
        const std::string number = std::to_string(count++);
        subKey.name = u"Key" + std::u16string(number.begin(), number.end());
        nameSimply(subKey, count);
    }
}

bool liesAtOrBelow(std::string_view path, const std::string& key) {
    return path == key || (path.starts_with(key) && path[key.size()] == '/');
}

// One line a key or value: "/path/name,TYPE,...".
std::string reglookup(const std::string& file) {
    return outputOf("reglookup '" + file + "'");
}
std::string withoutLines(const std::string& text, const std::vector<NamedKey>& gone) {
    std::istringstream lines(text);
    std::string kept;
    for (std::string line; std::getline(lines, line);) {
        const std::string_view path = std::string_view(line).substr(0, line.find(','));
        if (std::ranges::none_of(gone, [&](const NamedKey& key) { return liesAtOrBelow(path, key.path); }))
            kept += line + "\n";
    }
    return kept;
}

// Sections: "[\path\name]", values, an empty line.
std::string hivexregedit(const std::string& file) {
    return outputOf("hivexregedit --export '" + file + "' '\\'");
}
std::string withoutSections(const std::string& text, const std::vector<NamedKey>& gone) {
    std::istringstream lines(text);
    std::string kept;
    bool keeps = true;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("[\\") && line.ends_with("]")) {
            std::string path = line.substr(1, line.size() - 2);
            std::ranges::replace(path, '\\', '/');
            keeps = std::ranges::none_of(gone,
                                         [&](const NamedKey& key) { return liesAtOrBelow(path, key.path); });
        }
        if (keeps) kept += line + "\n";
    }
    return kept;
}

class OtherReaders : public HiveFilesTest {
  protected:
    // Takes some keys out and compares. How many that were.
    std::size_t tryOn(const std::string& bytes, std::mt19937& random) {
        HiveImage image(bytes);
        std::vector<NamedKey> gone = plainKeys(Hive(image.bytes()));
        std::ranges::shuffle(gone, random);
        gone.resize(std::min<std::size_t>(gone.size(), 1 + gone.size() / 20));
        std::vector<Cell> cells;
        for (const NamedKey& key : gone) cells.push_back(key.cell);
        const std::string before = write("before", bytes);
        deleteKeys(image, cells);
        const std::string after = write("after", image.bytes().all());
        const std::string seen = reglookup(before);
        EXPECT_FALSE(seen.empty());
        EXPECT_TRUE(withoutLines(seen, gone) == reglookup(after)) << "reglookup";
        const std::string exported = hivexregedit(before);
        EXPECT_FALSE(exported.empty());
        EXPECT_TRUE(withoutSections(exported, gone) == hivexregedit(after)) << "hivexregedit";
        return gone.size();
    }
};

TEST_F(OtherReaders, SeeMadeHivesWithoutTheKeys) {
    std::size_t keys = 0;
    for (std::uint32_t seed = 1; seed <= hiveRounds(12, 1000); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        MadeHive hive = randomPlainHive(seed);
        int count = 0;
        nameSimply(hive.root, count);
        keys += tryOn(bromvale::offline::bytesOf(hive), random);
    }
    EXPECT_GT(keys, 24u);
}

class RealRegistryOtherReaders : public OtherReaders, public ::testing::WithParamInterface<const char*> {};

TEST_P(RealRegistryOtherReaders, SeeItWithoutTheKeys) {
    std::mt19937 random(7);
    EXPECT_GT(tryOn(realHive(GetParam()), random), 0u);
}

INSTANTIATE_TEST_SUITE_P(Of, RealRegistryOtherReaders,
                         ::testing::Values("winxp-NTUSER.DAT", "win81-UsrClass.dat", "made-li-SOFTWARE",
                                           "win7-SYSTEM"));

}  // namespace
}  // namespace bromvale::offline
