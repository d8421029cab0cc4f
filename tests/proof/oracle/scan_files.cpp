// Whether a file is there: what FindFirstFile answers to a path that came through the code page exactly.
#include <algorithm>

#include "tests/proof/oracle/scan.h"

namespace bromvale::proof {
namespace {

constexpr std::size_t kLongest = 259;
constexpr View kWild = u"*?";

bool matches(View mask, View name) {
    if (mask.empty()) return name.empty();
    if (mask.front() == u'*')
        return matches(mask.substr(1), name) || (!name.empty() && matches(mask, name.substr(1)));
    // A question mark is any character, or none before a dot and at the end.
    if (mask.front() == u'?' && (name.empty() || name.front() == u'.')) return matches(mask.substr(1), name);
    if (name.empty() || (mask.front() != u'?' && lower(mask.front()) != lower(name.front()))) return false;
    return matches(mask.substr(1), name.substr(1));
}

const Entry* follow(const Model& model, const Entry* entry, int depth = 0) {
    if (entry == nullptr || entry->kind == EntryKind::DanglingLink || depth > 8) return nullptr;
    if (entry->kind != EntryKind::LinkToFolder) return entry->kind == EntryKind::Folder ? entry : nullptr;
    return follow(model, model.drive.find(View(entry->target).substr(3)), depth + 1);
}

// Names from the root on, with "." and ".." taken out as the system does it, without looking.
std::vector<Text> namesOf(View path) {
    std::vector<Text> names;
    for (const Text& name : split(path)) {
        if (name == u".") continue;
        if (name == u"..") {
            if (!names.empty()) names.pop_back();
        } else {
            names.push_back(name);
        }
    }
    if (!names.empty()) {
        Text& last = names.back();
        while (!last.empty() && (last.back() == u'.' || last.back() == u' ')) last.pop_back();
        if (last.empty()) names.pop_back();
    }
    return names;
}

bool leadsSomewhere(const Model& model, const std::vector<Text>& names, bool toFile) {
    const Entry* folder = &model.drive;
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
        if (names[i].find_first_of(kWild) != Text::npos) return false;
        folder = follow(model, folder->find(names[i]));
        if (folder == nullptr) return false;
    }
    const bool wild = names.back().find_first_of(kWild) != Text::npos;
    return std::any_of(folder->entries.begin(), folder->entries.end(), [&](const Entry& entry) {
        return (wild ? matches(names.back(), entry.name) : equalNoCase(names.back(), entry.name)) &&
               (!toFile || entry.kind == EntryKind::File);
    });
}

bool leadsSomewhere(const Model& model, View path, bool toFile) {
    Text whole(path);
    std::replace(whole.begin(), whole.end(), u'/', u'\\');
    if (whole.size() < 3 || whole.size() > kLongest || whole.starts_with(u"\\\\") || whole.back() == u'\\')
        return false;
    if (lower(whole[0]) != u'c' || whole[1] != u':' || whole[2] != u'\\') return false;
    const View rest = View(whole).substr(3);
    if (rest.find_first_of(u":<>|\"") != View::npos) return false;
    std::vector<Text> names = namesOf(rest);
    if (names.empty()) return false;
    const System& system = model.system;
    const bool halves = system.sixtyFour && names.size() > 2 && equalNoCase(names[0], u"windows") &&
                        equalNoCase(names[1], u"system32");
    if (leadsSomewhere(model, names, toFile)) return true;
    if (!halves) return false;
    names[1] = u"SysWOW64";
    return leadsSomewhere(model, names, toFile);
}

}  // namespace

bool fileExists(const Model& model, View path) {
    return leadsSomewhere(model, path, false);
}

bool isFile(const Model& model, View path) {
    return leadsSomewhere(model, path, true);
}

}  // namespace bromvale::proof
