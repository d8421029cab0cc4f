#include "platform/exact/whole_key.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/wide.h"

namespace bromvale {
namespace {

// What a key says of itself. The same before and after the reading: nothing was added or taken meanwhile. The
// 9x family keeps no time of the last write.
struct Facts {
    DWORD subKeys = 0;
    DWORD values = 0;
    DWORD longestName = 0;  // without its NUL
    DWORD longestData = 0;  // bytes
    FILETIME written{};

    [[nodiscard]] bool operator==(const Facts& other) const {
        return subKeys == other.subKeys && values == other.values && longestName == other.longestName &&
               longestData == other.longestData && written.dwLowDateTime == other.written.dwLowDateTime &&
               written.dwHighDateTime == other.written.dwHighDateTime;
    }
};

// The functions by kind of text.
LONG askFacts(HKEY key, Facts& facts, char16_t) {
    return wide()->queryInfoKey(key, nullptr, nullptr, nullptr, &facts.subKeys, nullptr, nullptr,
                                &facts.values, &facts.longestName, &facts.longestData, nullptr,
                                &facts.written);
}

LONG askFacts(HKEY key, Facts& facts, char) {
    return RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &facts.subKeys, nullptr, nullptr, &facts.values,
                            &facts.longestName, &facts.longestData, nullptr, &facts.written);
}

LONG enumValue(HKEY key, DWORD index, char16_t* name, DWORD& nameSize, DWORD& type, BYTE* data,
               DWORD& dataSize) {
    return wide()->enumValue(key, index, units(name), &nameSize, nullptr, &type, data, &dataSize);
}

LONG enumValue(HKEY key, DWORD index, char* name, DWORD& nameSize, DWORD& type, BYTE* data, DWORD& dataSize) {
    return RegEnumValueA(key, index, name, &nameSize, nullptr, &type, data, &dataSize);
}

// A buffer that is never smaller than `Least`, whatever a key says of its longest name or data. Nearly all
// are no longer than that and need no memory of their own: thousands of keys are read one after the other.
template <class Char, DWORD Least>
class Buffer {
  public:
    explicit Buffer(DWORD size) : size_(std::max(size, Least)), more_(size > Least ? size : 0, Char()) {}
    [[nodiscard]] DWORD size() const { return size_; }
    [[nodiscard]] Char* data() { return more_.empty() ? usual_.data() : more_.data(); }

  private:
    DWORD size_;
    std::array<Char, Least> usual_;  // bare on purpose: what is read of it was written before
    std::basic_string<Char> more_;
};

template <class Char>
bool readValues(HKEY key, const Facts& facts, std::vector<WholeValue<Char>>& values) {
    Buffer<Char, 512> name(facts.longestName + 2);
    Buffer<char, 4096> data(facts.longestData + 2);
    values.reserve(facts.values);
    for (DWORD index = 0;; ++index) {
        DWORD nameSize = name.size();
        DWORD dataSize = data.size();
        DWORD type = 0;
        const LONG status = enumValue(key, index, name.data(), nameSize, type,
                                      reinterpret_cast<BYTE*>(data.data()), dataSize);
        if (status == ERROR_NO_MORE_ITEMS) return index == facts.values;
        if (status != ERROR_SUCCESS || nameSize > name.size() || dataSize > data.size()) return false;
        values.push_back({{name.data(), nameSize}, type, {data.data(), dataSize}});
    }
}

template <class Char>
bool readOne(HKEY key, Facts& facts, WholeKey<Char>& whole) {
    Facts after;
    return askFacts(key, facts, Char()) == ERROR_SUCCESS && readValues(key, facts, whole.values) &&
           askFacts(key, after, Char()) == ERROR_SUCCESS && after == facts;
}

constexpr DWORD kKeyNameBytes = 512;  // names have at most 255 characters

// A key on the way down, opened by the walk.
struct Level {
    HKEY key;
    DWORD subKeys;
    DWORD next;
    std::string path;
};

// Closes what a walk has opened, below the key that it was given.
class OpenLevels {
  public:
    OpenLevels() = default;
    OpenLevels(const OpenLevels&) = delete;
    OpenLevels& operator=(const OpenLevels&) = delete;
    ~OpenLevels() {
        while (!levels_.empty()) leave();
    }
    void enter(Level level) { levels_.push_back(std::move(level)); }
    void leave() {
        if (levels_.size() > 1) static_cast<void>(RegCloseKey(levels_.back().key));
        levels_.pop_back();
    }
    [[nodiscard]] bool empty() const { return levels_.empty(); }
    [[nodiscard]] Level& last() { return levels_.back(); }

  private:
    std::vector<Level> levels_;
};

bool readLevel(Level& level, std::vector<WholeKey<char>>& whole) {
    Facts facts;
    whole.push_back({level.path, {}});
    if (!readOne(level.key, facts, whole.back())) return false;
    level.subKeys = facts.subKeys;
    return true;
}

bool openNext(const Level& level, Level& below) {
    std::string name(kKeyNameBytes, '\0');
    if (RegEnumKeyA(level.key, level.next, name.data(), kKeyNameBytes) != ERROR_SUCCESS) return false;
    name.resize(name.find('\0'));
    below.path = level.path + "\\" + name;
    return RegOpenKeyExA(level.key, name.c_str(), 0, KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS, &below.key) ==
           ERROR_SUCCESS;
}

// No sub key behind those that the key had when it was read.
bool hasNoMore(const Level& level) {
    std::string name(kKeyNameBytes, '\0');
    return RegEnumKeyA(level.key, level.subKeys, name.data(), kKeyNameBytes) == ERROR_NO_MORE_ITEMS;
}

}  // namespace

bool readWholeKey(HKEY key, WholeKey<char16_t>& whole) {
    Facts facts;
    return wide() != nullptr && readOne(key, facts, whole);
}

// Without recursion: the registry's depth must not be the stack's.
bool readWholeTree(HKEY key, std::vector<WholeKey<char>>& whole) {
    OpenLevels levels;
    levels.enter({key, 0, 0, {}});
    if (!readLevel(levels.last(), whole)) return false;
    while (!levels.empty()) {
        Level& level = levels.last();
        if (level.next == level.subKeys) {
            if (!hasNoMore(level)) return false;
            levels.leave();
            continue;
        }
        Level below{};
        if (!openNext(level, below)) return false;
        ++level.next;
        levels.enter(std::move(below));
        if (!readLevel(levels.last(), whole)) return false;
    }
    return true;
}

}  // namespace bromvale
