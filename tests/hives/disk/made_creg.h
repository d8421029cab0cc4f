// Registries of Windows 95 to ME for tests, written from a tree.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bromvale::offline {

struct MadeCregValue {
    std::string name;  // in the machine's code page
    std::uint32_t type = 1;
    std::string data;
};

struct MadeCregKey {
    std::string name;
    std::vector<MadeCregValue> values;
    std::vector<MadeCregKey> subKeys;

    // The key of that path below, made where it is missing.
    MadeCregKey& at(const std::string& path);
};

std::string cregBytes(const MadeCregKey& root);
// Where the entry of a key stands in the file, counted as it was written: the root is 0, then each key
// before its sub keys.
std::size_t cregEntry(std::size_t number);

}  // namespace bromvale::offline
