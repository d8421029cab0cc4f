// A bigger hive from a real one:
//     grown_hive HIVE KEYS NEW     writes it anew with copies of its classes, interfaces and type libraries,
//     under
//                                  identifiers of their own, until it has so many keys
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/image.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {
namespace {

// As Windows lists them: from a size on in parts.
constexpr std::size_t kPartSize = 500;

MadeKey keyFrom(const Hive& hive, Cell cell) {
    const HiveKey node = hive.key(cell);
    MadeKey key;
    key.name = node.name();
    key.lastWritten = node.lastWritten;
    for (const Cell each : hive.values(node)) {
        const HiveValue value = hive.value(each);
        key.values.push_back({value.name(), value.type, hive.data(value)});
    }
    for (const Cell each : hive.subKeys(node)) key.subKeys.push_back(keyFrom(hive, each));
    if (key.subKeys.size() > kPartSize) key.list.partSize = kPartSize;
    return key;
}

std::size_t keysIn(const MadeKey& key) {
    std::size_t count = 1;
    for (const MadeKey& subKey : key.subKeys) count += keysIn(subKey);
    return count;
}

MadeKey* subKeyOf(MadeKey* key, std::u16string_view name) {
    if (key == nullptr) return nullptr;
    for (MadeKey& subKey : key->subKeys) {
        if (subKey.name == name) return &subKey;
    }
    return nullptr;
}

// Another identifier for each: the first eight digits count.
void renumber(std::u16string& identifier, std::size_t number) {
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "B%07zX", number & 0xFFFFFFF);
    for (std::size_t i = 0; i < 8; ++i) identifier[i + 1] = static_cast<char16_t>(digits[i]);
}

void grow(MadeKey& root, std::size_t wanted) {
    std::size_t keys = keysIn(root);
    std::size_t number = 0;
    constexpr std::array<std::u16string_view, 3> kKinds{u"CLSID", u"Interface", u"TypeLib"};
    while (keys < wanted) {
        const std::size_t before = keys;
        for (const std::u16string_view kind : kKinds) {
            MadeKey* const all = subKeyOf(subKeyOf(&root, u"Classes"), kind);
            if (all == nullptr) continue;
            const std::size_t count = all->subKeys.size();
            for (std::size_t i = 0; i < count && keys < wanted; ++i) {
                if (!all->subKeys[i].name.starts_with(u'{') || all->subKeys[i].name.size() < 9) continue;
                MadeKey copy = all->subKeys[i];
                renumber(copy.name, ++number);
                keys += keysIn(copy);
                all->subKeys.push_back(std::move(copy));
            }
            all->list.partSize = kPartSize;
        }
        if (keys == before) return;
    }
}

int run(const char* from, std::size_t keys, const char* to) {
    HiveImage file;
    if (const auto problem = file.open(from)) {
        std::fprintf(stderr, "%s: %s\n", from, problem->c_str());
        return 1;
    }
    MadeHive grown;
    {
        const Hive hive{file.bytes()};
        grown.root = keyFrom(hive, hive.base().root);
    }
    grow(grown.root, keys);
    const std::string bytes = bytesOf(grown);
    std::ofstream out(to, std::ios::binary);
    out << bytes;
    std::printf("%s: %zu keys, %.1f MB\n", to, keysIn(grown.root), static_cast<double>(bytes.size()) / 1e6);
    return out.flush() ? 0 : 1;
}

}  // namespace
}  // namespace bromvale::offline

int main(int count, char** arguments) {
    std::size_t keys = 0;
    if (count != 4 ||
        std::from_chars(arguments[2], arguments[2] + std::strlen(arguments[2]), keys).ec != std::errc())
        return 2;
    return bromvale::offline::run(arguments[1], keys, arguments[3]);
}
