#pragma once
#include <cstddef>
#include <string>

namespace bromvale::testing {

// A registry of a used system's size and shape, the same in each run: some 56,000 keys with 67,000 values,
// most of them interfaces and classes, up to eight levels deep, with texts, paths, numbers and bytes of the
// types and in the shares that such a system has, keys without any value, and the odd names that are found
// there. Most of its files are on no machine.
struct FullRegistry {
    std::string file;  // as the registry editor exports it, version 5.00
    std::size_t keys = 0;
    std::size_t values = 0;
    std::size_t keysWithoutValue = 0;
};

FullRegistry makeFullRegistry();

}  // namespace bromvale::testing
