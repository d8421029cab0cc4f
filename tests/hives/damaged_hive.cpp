#include "tests/hives/damaged_hive.h"

namespace bromvale::offline {

MadeHive exampleHive(std::uint32_t minorVersion) {
    MadeHive hive;
    hive.minorVersion = minorVersion;
    hive.securities.push_back(hive.securities.front() + "second");
    hive.root.name = u"ROOT";
    const auto addKeys = [&hive](std::u16string name, MadeList list) {
        MadeKey key;
        key.name = std::move(name);
        key.list = list;
        for (const char16_t letter : {u'a', u'b', u'c', u'd', u'e'}) {
            key.subKeys.emplace_back().name = std::u16string(1, letter) + u"\u00e4";
        }
        hive.root.subKeys.push_back(std::move(key));
    };
    hive.root.list.kind = key_list::kOffsets;
    addKeys(u"lf", {key_list::kNames});
    if (minorVersion >= 5) addKeys(u"lh", {key_list::kHashes});
    addKeys(u"li", {key_list::kOffsets});
    addKeys(u"ri", {key_list::kOffsets, 2});
    MadeKey values;
    values.name = u"values";
    values.className = u"class";
    values.security = 1;
    values.values = {{.name = u"inside", .data = "abcd"},
                     {.name = u"cell", .data = "abcdefgh"},
                     {.name = u"wide\u0142", .data = "abcdefgh"},
                     {.name = u"none", .withoutCell = true},
                     {.name = u"long", .data = std::string(40000, 'l')}};
    hive.root.subKeys.push_back(std::move(values));
    return hive;
}

}  // namespace bromvale::offline
