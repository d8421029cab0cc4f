#include "platform/offline/files/drives.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

// The four wildcards of the file systems below FindFirstFileA, which turns the two of DOS into them so that
// old masks keep their meaning: "*." names without extension, "a?.txt" also "a.txt".
constexpr char kAny = '*';
constexpr char kDosStar = '<';  // anything, but not beyond the name's last dot
constexpr char kDosOne = '>';   // one unit, or none before a dot and at the end
constexpr char kDosDot = '"';   // a dot, or none at the end

std::string dosMask(std::string_view mask) {
    if (mask == "*.*") return "*";
    std::string result(mask);
    for (std::size_t i = 0; i < result.size(); ++i) {
        const char c = mask[i];
        const char next = i + 1 < mask.size() ? mask[i + 1] : '\0';
        if (c == '?') result[i] = kDosOne;
        if (c == '.' && (next == '?' || next == '*')) result[i] = kDosDot;
        if (c == '*' && next == '.') result[i] = kDosStar;
    }
    if (mask.ends_with("*.")) result.pop_back();
    return result;
}

bool matches(std::string_view mask, std::string_view name);

bool matchesDosStar(std::string_view mask, std::string_view name) {
    const std::size_t dot = name.rfind('.');
    const std::size_t least = dot == std::string_view::npos ? 0 : name.size() - dot;
    for (;; (void)takeUnit(name)) {
        if (matches(mask, name)) return true;
        if (name.size() == least) return false;
    }
}

bool matchesAny(std::string_view mask, std::string_view name) {
    for (;; (void)takeUnit(name)) {
        if (matches(mask, name)) return true;
        if (name.empty()) return false;
    }
}

bool matches(std::string_view mask, std::string_view name) {
    while (!mask.empty()) {
        const char16_t c = takeUnit(mask);
        switch (c) {
            case kAny: return matchesAny(mask, name);
            case kDosStar: return matchesDosStar(mask, name);
            case kDosOne:
                if (!name.empty() && name.front() != '.') (void)takeUnit(name);
                break;
            case kDosDot:
                if (name.empty()) break;
                if (name.front() != '.') return false;
                name.remove_prefix(1);
                break;
            default:
                if (name.empty() || upperUnit(takeUnit(name)) != upperUnit(c)) return false;
        }
    }
    return name.empty();
}

}  // namespace

bool matchesMask(std::string_view mask, std::string_view name) {
    return matches(dosMask(mask), name);
}

}  // namespace bromvale::offline
