#include "tests/hives/compared_hives.h"

namespace bromvale::offline {

std::string fileOf(const MadeHive& hive) {
    return bytesOf(hive);
}

MadeHive exampleHive() {
    MadeHive hive;
    hive.securities.push_back(hive.securities.front() + std::string(8, 'x'));
    hive.root.name = u"root";
    MadeKey b;
    b.name = u"B";
    b.className = u"class";
    b.values = {{u"", 1, std::string("T\0\0\0", 4)},
                {u"Short", 4, "abcd"},
                {u"Long", 3, std::string(40'000, 'x')},
                {u"\u0141", 0xFFFF0011u, ""}};
    MadeKey a;
    a.name = u"A\u00e4";
    a.subKeys = {b};
    MadeKey c;
    c.name = u"C";
    MadeKey d;
    d.name = u"D";
    hive.root.subKeys = {a, c, d};
    return hive;
}

std::string changed(const std::function<void(MadeKey& root, MadeKey& a, MadeKey& b)>& change) {
    MadeHive hive = exampleHive();
    change(hive.root, hive.root.subKeys[0], hive.root.subKeys[0].subKeys[0]);
    return fileOf(hive);
}

}  // namespace bromvale::offline
