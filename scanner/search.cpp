#include "scanner/search.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/text.h"
#include "core/attempt.h"
#include "core/log.h"
#include "core/registry_layer.h"
#include "platform/events.h"
#include "platform/exact/registry.h"
#include "platform/exact/text.h"
#include "scanner/scan_state.h"

namespace bromvale {

std::int32_t LastRegStatus = 0;

namespace {

constexpr REGSAM kQueryValue = 1;
constexpr REGSAM kEnumerateSubKeys = 8;

// One for all levels: no event is pumped between a query and the use of what it gave.
std::string queriedText;

// Names one behind the other, each ended by a NUL: a list costs one block of memory, and each name is ready
// for the platform. Never empty: a list of nothing holds the one name "".
using PackedNames = std::string;

std::string_view nameAt(const PackedNames& names, std::size_t place) {
    return names.c_str() + place;
}

HKEY openKey(std::int32_t hive, const char* key, REGSAM access) {
    HKEY handle = nullptr;
    LastRegStatus = static_cast<std::int32_t>(openExactKey(hiveHandle(hive), key, access, handle));
    return LastRegStatus == 0 ? handle : nullptr;
}

// Names come with marks where the code page lacks a character, so that no two of them are taken for one and
// each is found again. Any status but 0 is the end, ERROR_MORE_DATA too: a value that doesn't fit hides
// itself and all behind it. That limit is part of what a scan sees.
template <class Enumerate>
void listNames(std::int32_t hive, const char* key, REGSAM access, Enumerate enumerate, PackedNames& names) {
    names.clear();
    if (const HKEY handle = openKey(hive, key, access); handle != nullptr) {
        for (DWORD index = 0;; ++index) {
            LastRegStatus = static_cast<std::int32_t>(enumerate(handle, index, names));
            if (LastRegStatus != 0) break;
            names += '\0';
        }
        RegCloseKey(handle);
    }
    if (names.empty()) names.assign(1, '\0');
}

void listValueNames(std::int32_t hive, const char* key, PackedNames& names) {
    listNames(hive, key, kQueryValue, enumExactValue, names);
}

void listSubKeys(std::int32_t hive, const char* key, PackedNames& names) {
    listNames(hive, key, kEnumerateSubKeys, enumExactKey, names);
}

// The text lives until the next call. A query that fails leaves the key open: the closing belongs to the road
// of success alone, and a test counts the handles.
std::string_view queryText(std::int32_t hive, const char* key, const char* name) {
    queriedText.clear();
    const HKEY handle = openKey(hive, key, kQueryValue);
    if (handle == nullptr) return {};
    LastRegStatus = static_cast<std::int32_t>(queryExactText(handle, name, queriedText));
    if (LastRegStatus != 0) return {};
    RegCloseKey(handle);
    return queriedText;
}

std::vector<std::string> unpacked(const PackedNames& names) {
    std::vector<std::string> result;
    for (std::size_t place = 0; place < names.size(); place += result.back().size() + 1)
        result.emplace_back(nameAt(names, place));
    return result;
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
Ending giveBounds(ScanLines& lines) {
    lines.assign(1, std::string());
    trace("modSearch", "FindString", "");
    return Ending::Next;
}

void growByOne(ScanLines& lines) {
    if (lines.empty()) raise(9);
    lines.emplace_back();
}

// A "]" in a key with marks gets one as well: the line is taken apart at its first "]", and the key would
// look exact where the marks stand behind it.
void appendKey(std::string& line, std::string_view key) {
    if (isExact(key)) {
        line.append(key);
        return;
    }
    for (const char c : key) {
        if (c == ']') {
            appendMark(line, u']');
        } else {
            line += c;
        }
    }
}

void writeLine(std::string& line, const SearchSpec& spec, std::string_view name, std::string_view data) {
    const NumberPart hive(spec.SearchHive);
    const std::string_view slash = spec.SearchKey.find('\\') == std::string::npos ? "\\" : "";
    if (name.empty()) name = "@";
    line.clear();
    line.reserve(hive.text().size() + slash.size() + spec.SearchKey.size() + name.size() + data.size() + 3);
    line.append(hive.text()).append(1, '[').append(slash);
    appendKey(line, spec.SearchKey);
    line.append(1, ']').append(name).append(1, '=').append(data);
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
    const auto onFailure = [&lines](const Failure&) { return giveBounds(lines); };
    PackedNames names;
    listValueNames(spec.SearchHive, spec.SearchKey.c_str(), names);
    bool armed = true;
    // Wider than the 16-bit number that a count of values would fit: no value is to be left out, and no walk
    // to hang.
    for (std::size_t place = 0; place < names.size();) {
        if (ScanAbort) return false;
        if (armed) {
            attempt(onFailure, DoEvents);
        } else {
            DoEvents();
        }
        const std::string_view name = nameAt(names, place);
        const std::string_view data = queryText(spec.SearchHive, spec.SearchKey.c_str(), name.data());
        place += name.size() + 1;
        if (!isMatch(spec, name, data)) continue;
        attempt(onFailure, [&lines] { growByOne(lines); });
        armed = false;
        writeLine(lines.back(), spec, name, data);
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
    PackedNames subKeys;
    listSubKeys(spec.SearchHive, spec.SearchKey.c_str(), subKeys);
    if (!nameAt(subKeys, 0).empty()) levels.push_back({spec.SearchKey.size(), std::move(subKeys)});
}

}  // namespace

std::vector<std::string> EnumValueNames(std::int32_t hive, std::string_view key) {
    PackedNames names;
    listValueNames(hive, std::string(key).c_str(), names);
    return unpacked(names);
}

std::vector<std::string> EnumSubKeys(std::int32_t hive, std::string_view key) {
    PackedNames names;
    listSubKeys(hive, std::string(key).c_str(), names);
    return unpacked(names);
}

std::string QueryStringValue(std::int32_t hive, std::string_view key, std::string_view name) {
    return std::string(queryText(hive, std::string(key).c_str(), std::string(name).c_str()));
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
        attempt(kGoOn, DoEvents);
        const std::string_view name = nameAt(level.subKeys, level.next);
        level.next += name.size() + 1;
        if (!spec.SearchKey.empty()) spec.SearchKey += '\\';
        spec.SearchKey += name;
        bool finished = false;
        attempt(kGoOn, [&] { finished = addValues(spec, lines); });
        if (finished) goInto(spec, levels);
    }
}

}  // namespace bromvale
