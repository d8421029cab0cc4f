// How much is in a hive, by a walk that reads every value's data.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/offline/hives/hive.h"

namespace bromvale::offline {

struct Counts {
    std::size_t keys = 0;
    std::size_t values = 0;
    bool operator==(const Counts&) const = default;
};

inline Counts countsOf(const Hive& hive) {
    Counts counts;
    std::vector<Cell> waiting{hive.base().root};
    while (!waiting.empty()) {
        const HiveKey key = hive.key(waiting.back());
        waiting.pop_back();
        ++counts.keys;
        for (const Cell value : hive.values(key)) {
            static_cast<void>(hive.data(hive.value(value)));
            ++counts.values;
        }
        for (const Cell subKey : hive.subKeys(key)) waiting.push_back(subKey);
    }
    return counts;
}

}  // namespace bromvale::offline
