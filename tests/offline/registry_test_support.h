// A registry of the test's own behind the registry functions, and its whole content as text.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "platform/offline/registry/api.h"

namespace bromvale::offline::testing {

using namespace std::string_literals;
using namespace std::string_view_literals;

inline std::string hexOf(std::string_view bytes) {
    std::string result;
    for (const char c : bytes) {
        char two[8];
        std::snprintf(two, sizeof two, "%02x", static_cast<unsigned char>(c));
        result += two;
    }
    return result;
}

// In Windows-1252 where that holds the name exactly, else in the stored form.
inline std::string nameOf(std::string_view stored) {
    const std::string ansi = ansiFromStored(stored);
    return storedFromAnsi(ansi) == stored ? ansi : std::string(stored);
}

inline void dumpBelow(Registry& registry, RegistryKey* key, const std::string& path, std::string& out) {
    for (std::size_t i = 0; i < key->valueCount(); ++i) {
        const auto& value = key->value(i);
        const RegistryData data = value.data();
        const bool wide = isText(value.type()) && !data.narrow;
        out += "  " + nameOf(value.name()) + "|" + std::to_string(value.type()) + "|" +
               (wide ? "wide " : "") + hexOf(data.bytes) + "\n";
    }
    for (std::size_t i = 0; i < key->subKeyCount(); ++i) {
        RegistryKey* subKey = registry.tree().subKey(key, i);
        const std::string subPath = path + "\\" + nameOf(subKey->name());
        out += subPath + "\n";
        dumpBelow(registry, subKey, subPath, out);
    }
}

// One line a key, one indented line a value: name, type, data in hex. For small registries.
inline std::string dump(Registry& registry) {
    std::string out;
    for (std::size_t hive = 1; hive < kHiveCount; ++hive) {
        dumpBelow(registry, registry.root(hive), std::string(hiveName(hive)), out);
    }
    return out;
}

class RegistryTest : public ::testing::Test {
  protected:
    RegistryTest() { reset(); }
    ~RegistryTest() override { reset(); }

    static Registry& registry() { return machine().registry; }

    static HKEY openedKey(HKEY hive, const char* path, REGSAM access = KEY_ALL_ACCESS) {
        HKEY key = nullptr;
        EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(hive, path, 0, access, &key)) << path;
        return key;
    }

  private:
    static void reset() {
        faults().clear();
        registry().clear();
        registry().setNtFamily(true);
    }
};

}  // namespace bromvale::offline::testing
