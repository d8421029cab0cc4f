#include "platform/offline/files/short_names.h"

#include <algorithm>
#include <cstdint>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr std::string_view kReplaced = "+,;=[]";
constexpr std::string_view kLettersOfHashes = "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567";
constexpr std::size_t kMostOfName = 6;
constexpr std::size_t kMostOfExtension = 3;

struct Parts {
    std::u16string name;
    std::u16string extension;
};

// At the last dot; one at the front begins no extension.
Parts partsOf(std::string_view stored) {
    std::u16string wide = wideFromStored(stored);
    wide.erase(0, std::min(wide.find_first_not_of(u'.'), wide.size()));
    const std::size_t dot = wide.rfind(u'.');
    if (dot == std::u16string::npos) return {wide, {}};
    return {wide.substr(0, dot), wide.substr(dot + 1)};
}

std::u16string usable(std::u16string_view text, std::size_t most) {
    std::u16string result;
    for (const char16_t unit : text) {
        if (unit == u' ' || unit == u'.') continue;
        const bool replaced =
            unit < 0x80 && kReplaced.find(static_cast<char>(unit)) != std::string_view::npos;
        result += replaced ? u'_' : upperUnit(unit);
        if (result.size() == most) break;
    }
    return result;
}

bool holdsOnlyUsable(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), [](char16_t unit) {
        return unit > u' ' && unit != u'.' &&
               (unit >= 0x80 || kReplaced.find(static_cast<char>(unit)) == kReplaced.npos);
    });
}

// Six signs that hang on the whole name.
std::u16string hashOf(std::string_view stored) {
    std::uint32_t hash = 2166136261u;
    for (const char c : stored) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    std::u16string result;
    for (std::size_t i = 0; i < kMostOfName; ++i, hash >>= 5)
        result += static_cast<char16_t>(kLettersOfHashes[hash & 31u]);
    return result;
}

std::u16string asciiOnly(std::u16string_view text) {
    std::u16string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result),
                 [](char16_t unit) { return unit < 0x80; });
    return result;
}

std::string candidate(std::string_view stored, unsigned number) {
    const Parts parts = partsOf(stored);
    const bool plain = isReachableByAnsi(stored);
    std::u16string name = plain ? usable(parts.name, kMostOfName) : hashOf(stored);
    const std::u16string extension =
        usable(plain ? parts.extension : asciiOnly(parts.extension), kMostOfExtension);
    const std::string tail = "~" + std::to_string(number);
    name.resize(std::min(name.size(), kMostOfName + 2 - tail.size()));
    std::string result = storedFromWide(name) + tail;
    if (!extension.empty()) result += "." + storedFromWide(extension);
    return result;
}

}  // namespace

// On code pages with several bytes a character a short name of ASCII is the safe one.
bool isReachableByAnsi(std::string_view stored) {
    if (isAscii(stored)) return true;
    const UINT codePage = textRules().codePage;
    if (codePage != 1252 && codePage != 1250) return false;
    const std::u16string wide = wideFromStored(stored);
    return !ansiFromWide(wide, codePage, false).usedDefault;
}

bool isEightAndThree(std::string_view stored) {
    const Parts parts = partsOf(stored);
    const std::size_t whole = parts.name.size() + parts.extension.size() + (parts.extension.empty() ? 0 : 1);
    return !parts.name.empty() && parts.name.size() <= 8 && parts.extension.size() <= kMostOfExtension &&
           whole == unitCount(stored) && holdsOnlyUsable(parts.name) && holdsOnlyUsable(parts.extension) &&
           isReachableByAnsi(stored);
}

// Windows puts signs of its own behind the first two letters where many names begin alike.
bool mayBeShortNameOf(std::string_view name, std::string_view entry) {
    const std::size_t sign = name.find('~');
    const bool numbered = sign != std::string_view::npos && sign > 0 && sign + 1 < name.size() &&
                          name[sign + 1] >= '0' && name[sign + 1] <= '9';
    if (!numbered || !isEightAndThree(name) || isEightAndThree(entry)) return false;
    const std::u16string start = usable(wideFromStored(name.substr(0, std::min<std::size_t>(sign, 2))), 2);
    const std::u16string other = usable(partsOf(entry).name, start.size());
    const auto same = [](char16_t left, char16_t right) {
        return left == right || left >= 0x80 || right >= 0x80 || left == u'_';
    };
    return start.size() == other.size() && std::equal(start.begin(), start.end(), other.begin(), same);
}

const std::string& ShortNames::of(std::string_view stored, const Taken& taken) {
    static const std::string kNone;
    if (isEightAndThree(stored)) return kNone;
    const auto known = shortNames_.find(stored);
    if (known != shortNames_.end()) return known->second;
    unsigned number = 1;
    std::string made = candidate(stored, number);
    while (longNames_.contains(made) || taken(made)) made = candidate(stored, ++number);
    longNames_.emplace(made, stored);
    return shortNames_.emplace(stored, made).first->second;
}

std::string ShortNames::longNameOf(std::string_view shortName) const {
    const auto found = longNames_.find(upperStored(shortName));
    return found == longNames_.end() ? std::string() : found->second;
}

void ShortNames::forget(std::string_view stored) {
    const auto known = shortNames_.find(stored);
    if (known == shortNames_.end()) return;
    longNames_.erase(known->second);
    shortNames_.erase(known);
}

}  // namespace bromvale::offline
