#include "platform/offline/hives/expected_tree.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

// For a message: control characters would reach the terminal.
std::string printable(const std::string& name) {
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F) {
            text += c;
            continue;
        }
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\x%02X", unsigned{byte});
        text += escaped;
    }
    return text;
}

using Names = std::set<std::string>;

std::string differenceOfNames(const std::string& kind, const Names& expected, const Names& gone,
                              const std::vector<std::string>& found) {
    const auto named = [&kind](const std::string& name, const char* what) {
        return "the " + kind + " \"" + printable(name) + "\" " + what;
    };
    for (const std::string& name : found) {
        if (expected.contains(name)) continue;
        return named(name, gone.contains(name) ? "is still there" : "is additional");
    }
    const Names all(found.begin(), found.end());
    for (const std::string& name : expected) {
        if (!all.contains(name)) return named(name, "is missing");
    }
    return "there are not as many " + kind + "s of each name as there should be, or they have another order";
}

}  // namespace

std::string utf8Name(std::u16string_view name) {
    return utf8FromStored(storedFromWide(name));
}

ExpectedTree::ExpectedTree(const Hive& hive, std::span<const Cell> gone)
    : hive_(hive), gone_(gone.begin(), gone.end()) {
    std::ranges::sort(gone_);
    for (const Cell cell : gone_) static_cast<void>(hive.key(cell));
}

bool ExpectedTree::isGone(Cell key) const {
    return !gone_.empty() && std::ranges::binary_search(gone_, key);
}

std::vector<Cell> ExpectedTree::subKeys(const HiveKey& key) const {
    std::vector<Cell> subKeys = hive_.subKeys(key);
    std::erase_if(subKeys, [this](Cell subKey) { return isGone(subKey); });
    return subKeys;
}

std::string ExpectedTree::about(const HiveKey& key, const std::string& what) const {
    std::string path;
    for (HiveKey at = key; at.cell != hive_.base().root; at = hive_.key(at.parent))
        path.insert(0, "\\" + printable(utf8Name(at.name())));
    return (path.empty() ? "\\" : path) + ": " + what;
}

std::string ExpectedTree::aboutSubKeys(const HiveKey& key, const std::vector<std::string>& found,
                                       ReadersName readersName) const {
    Names expected;
    Names gone;
    for (const Cell subKey : hive_.subKeys(key))
        (isGone(subKey) ? gone : expected).insert(readersName(hive_.key(subKey).name()));
    return about(key, differenceOfNames("key", expected, gone, found));
}

std::string ExpectedTree::aboutValues(const HiveKey& key, const std::vector<std::string>& found,
                                      ReadersName readersName) const {
    Names expected;
    for (const Cell value : hive_.values(key)) expected.insert(readersName(hive_.value(value).name()));
    return about(key, differenceOfNames("value", expected, {}, found));
}

std::string ExpectedTree::aboutValue(const HiveKey& key, const HiveValue& value,
                                     const std::string& what) const {
    return about(key, "the value \"" + printable(utf8Name(value.name())) + "\" has " + what);
}

}  // namespace bromvale::offline
