// What a walk over a whole hive takes that knows nothing of registry cleaners:
//     hivex_walk HIVE     opens it by libhivex, reads all keys, names, values and their data; milliseconds
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#ifdef BROMVALE_HIVEX
#include <hivex.h>

namespace bromvale::offline {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Freed = std::unique_ptr<T, Free>;

struct Walked {
    std::size_t keys = 0;
    std::size_t values = 0;
    std::size_t bytes = 0;  // of data
};

void walkValues(hive_h* hive, hive_node_h key, Walked& walked) {
    const Freed<hive_value_h> values(hivex_node_values(hive, key));
    for (const hive_value_h* value = values.get(); value != nullptr && *value != 0; ++value) {
        const Freed<char> name(hivex_value_key(hive, *value));
        hive_type type{};
        std::size_t size = 0;
        const Freed<char> data(hivex_value_value(hive, *value, &type, &size));
        ++walked.values;
        walked.bytes += data == nullptr ? 0 : size;
    }
}

Walked walk(hive_h* hive) {
    Walked walked;
    std::vector<hive_node_h> pending{hivex_root(hive)};
    while (!pending.empty()) {
        const hive_node_h key = pending.back();
        pending.pop_back();
        const Freed<char> name(hivex_node_name(hive, key));
        ++walked.keys;
        walkValues(hive, key, walked);
        const Freed<hive_node_h> subKeys(hivex_node_children(hive, key));
        for (const hive_node_h* subKey = subKeys.get(); subKey != nullptr && *subKey != 0; ++subKey)
            pending.push_back(*subKey);
    }
    return walked;
}

int run(const char* path) {
    const auto start = std::chrono::steady_clock::now();
    hive_h* const hive = hivex_open(path, 0);
    if (hive == nullptr) {
        std::perror(path);
        return 1;
    }
    const Walked walked = walk(hive);
    hivex_close(hive);
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    std::printf("ms=%.0f keys=%zu values=%zu bytes=%zu\n", time.count(), walked.keys, walked.values,
                walked.bytes);
    return 0;
}

}  // namespace
}  // namespace bromvale::offline

int main(int count, char** arguments) {
    return count == 2 ? bromvale::offline::run(arguments[1]) : 2;
}

#else

int main() {
    std::fputs("built without libhivex (package libhivex-dev)\n", stderr);
    return 1;
}

#endif
