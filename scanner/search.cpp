#include "scanner/search.h"

#include "base/text.h"
#include "core/registry_layer.h"
#include "core/routine.h"
#include "platform/events.h"
#include "platform/exact/registry.h"

namespace bromvale {

LONG LastRegStatus = ERROR_SUCCESS;

namespace {

std::string_view nameAt(const PackedNames& names, std::size_t place) {
    return names.c_str() + place;
}

HKEY openKey(std::int32_t hive, const std::string& key, REGSAM access) {
    HKEY handle = nullptr;
    LastRegStatus = openExactKey(hiveHandle(hive), key.c_str(), access, handle);
    return LastRegStatus == ERROR_SUCCESS ? handle : nullptr;
}

// Names come with marks where the code page lacks a character, so that no two of them are taken for one and
// each is found again. Any status but 0 is the end, ERROR_MORE_DATA too: a value that doesn't fit hides
// itself and all behind it. That limit is part of what a scan sees.
template <class Enumerate>
PackedNames enumNames(std::int32_t hive, const std::string& key, REGSAM access, Enumerate enumerate) {
    PackedNames names;
    if (const HKEY handle = openKey(hive, key, access); handle != nullptr) {
        for (DWORD index = 0;; ++index) {
            LastRegStatus = enumerate(handle, index, names);
            if (LastRegStatus != ERROR_SUCCESS) break;
            names += '\0';
        }
        RegCloseKey(handle);
    }
    if (names.empty()) names.assign(1, '\0');
    return names;
}

bool contains(std::string_view text, const std::string& upperSought) {
    if (upperSought.empty()) return !text.empty();  // an empty text stands at 1 in any text but the empty one
    return InStr(UCase(text), upperSought) > 0;
}

bool matchesExactly(const SearchSpec& spec, std::string_view data, std::string_view name,
                    std::string_view key) {
    const std::string& sought = spec.SearchText;
    if (data == sought && spec.MatchValueData) return true;
    if (name == sought && spec.MatchValueNames) return true;
    // The whole path counts whatever MatchKeys says; only its last component asks for it.
    return key == sought || (key.substr(key.rfind('\\') + 1) == sought && spec.MatchKeys);
}

bool matchesSomewhere(const SearchSpec& spec, std::string_view data, std::string_view name,
                      std::string_view key) {
    const std::string sought = UCase(spec.SearchText);
    return (spec.MatchValueData && contains(data, sought)) ||
           (spec.MatchValueNames && contains(name, sought)) || (spec.MatchKeys && contains(key, sought));
}

bool matches(const SearchSpec& spec, std::string_view data, std::string_view name, std::string_view key) {
    if (spec.MatchMode == 0) return matchesExactly(spec, data, name, key);
    return spec.MatchMode == 1 && matchesSomewhere(spec, data, name, key);
}

// Lines without bounds can't grow: they get element 0, and what was to be a new line goes there. Whatever was
// collected is lost with it.
struct GiveBounds {
    ScanLines& lines;

    Ending operator()(const Tags& tags, const Failure& /*failure*/) const {
        lines.assign(1, std::string());
        tags.trace("");
        return Ending::Next;
    }
};

void growByOne(ScanLines& lines) {
    if (lines.empty()) raise(9);
    lines.emplace_back();
}

bool isMatch(const SearchSpec& spec, std::string_view name, std::string_view data) {
    if (spec.MatchMode == 1 && spec.SearchText.empty() && spec.MatchKeys)
        return true;  // the path is never empty
    const bool bare = spec.SearchKey.find('\\') == std::string::npos;
    return matches(spec, data, name, bare ? '\\' + spec.SearchKey : spec.SearchKey);
}

// The values part of one key. False when it was left by ScanAbort. Up to its first line failures go to the
// handler that gives the lines bounds; behind it to the caller.
bool addValues(const SearchSpec& spec, ScanLines& lines) {
    const Routine routine{{"modSearch", "FindString"}, GiveBounds{lines}};
    const PackedNames names = EnumValueNames(spec.SearchHive, spec.SearchKey);
    bool armed = true;
    // Wider than the 16-bit number that a count of values would fit: no value is to be left out, and no walk
    // to hang.
    for (std::size_t place = 0; place < names.size();) {
        if (ScanAbort) return false;
        if (armed) {
            routine.step(DoEventsOften);
        } else {
            DoEventsOften();
        }
        const std::string_view name = nameAt(names, place);
        const std::string_view data = QueryStringValue(spec.SearchHive, spec.SearchKey, name.data());
        place += name.size() + 1;
        if (!isMatch(spec, name, data)) continue;
        routine.step([&lines] { growByOne(lines); });
        armed = false;
        ScanLine::write(lines.back(), spec.SearchHive, spec.SearchKey, name, data);
    }
    return true;
}

// A key on the way down, with those of its sub keys that are still to be visited.
struct Level {
    std::size_t keyLength;  // of SearchKey there
    PackedNames subKeys;
    std::size_t next = 0;
};

void goInto(const SearchSpec& spec, std::vector<Level>& levels) {
    if (!spec.Recurse) return;
    PackedNames subKeys = EnumSubKeys(spec.SearchHive, spec.SearchKey);
    if (!nameAt(subKeys, 0).empty()) levels.push_back({spec.SearchKey.size(), std::move(subKeys)});
}

}  // namespace

PackedNames EnumValueNames(std::int32_t hive, const std::string& key) {
    return enumNames(hive, key, KEY_QUERY_VALUE, enumExactValue);
}

PackedNames EnumSubKeys(std::int32_t hive, const std::string& key) {
    return enumNames(hive, key, KEY_ENUMERATE_SUB_KEYS, enumExactKey);
}

// One text for all calls: no event is pumped between a query and the use of what it gave. A query that fails
// leaves the key open: the closing belongs to the road of success alone, and a test counts the handles.
std::string_view QueryStringValue(std::int32_t hive, const std::string& key, const char* name) {
    static std::string text;
    text.clear();
    const HKEY handle = openKey(hive, key, KEY_QUERY_VALUE);
    if (handle == nullptr) return {};
    LastRegStatus = queryExactText(handle, name, text);
    if (LastRegStatus != ERROR_SUCCESS) return {};
    RegCloseKey(handle);
    return text;
}

// The levels lie on the heap and not on the stack: the depth is that of the registry, and there is no limit
// to it. Failures below the first key are dropped, and the walk goes on with the next sub key.
void FindString(SearchSpec& spec, ScanLines& lines) {
    std::vector<Level> levels;
    if (!addValues(spec, lines)) return;
    goInto(spec, levels);
    while (!levels.empty()) {
        Level& level = levels.back();
        spec.SearchKey.resize(level.keyLength);
        if (ScanAbort || level.next >= level.subKeys.size()) {
            levels.pop_back();
            continue;
        }
        quietly(DoEventsOften);
        const std::string_view name = nameAt(level.subKeys, level.next);
        level.next += name.size() + 1;
        if (!spec.SearchKey.empty()) spec.SearchKey += '\\';
        spec.SearchKey += name;
        bool finished = false;
        quietly([&] { finished = addValues(spec, lines); });
        if (finished) goInto(spec, levels);
    }
}

}  // namespace bromvale
