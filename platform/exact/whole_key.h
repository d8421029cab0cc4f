#pragma once
#include <string>
#include <vector>

#include "platform/registry.h"

namespace bromvale {

// Keys read whole: each value with its name, type and bytes, in the order of the registry. Text is as the
// functions hand it out that the reading goes by: UTF-16 (char16_t) or the code page (char).
template <class Char>
struct WholeValue {
    std::basic_string<Char> name;
    DWORD type = 0;
    std::string data;  // texts of the types 1, 2 and 7 in UTF-16LE or the code page
};

template <class Char>
struct WholeKey {
    std::basic_string<Char> path;  // from the key on that was read, "\a\b"; empty for that key itself
    std::vector<WholeValue<Char>> values;
};

// The readers answer false, with `whole` left as far as they came, where anything couldn't be read or changed
// meanwhile. The key must be open for KEY_QUERY_VALUE and KEY_ENUMERATE_SUB_KEYS.

// The NT family: the key alone, by the wide functions, since it can be deleted only without sub keys.
[[nodiscard]] bool readWholeKey(HKEY key, WholeKey<char16_t>& whole);
// The 9x family: the key and all below it, which its deletion takes along.
[[nodiscard]] bool readWholeTree(HKEY key, std::vector<WholeKey<char>>& whole);

}  // namespace bromvale
