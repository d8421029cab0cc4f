#include "platform/offline/code_page.h"
#include "platform/offline/drives.h"

namespace bromvale::offline {
namespace {

// The four wildcards of the file systems below FindFirstFileA, which turns the two of DOS into them so that
// old masks keep their meaning: "*." names without extension, "a?.txt" also "a.txt".
constexpr char kAny = '*';
constexpr char kDosStar = '<';  // anything, but not beyond the name's last dot
constexpr char kDosOne = '>';   // one character, or none before a dot and at the end
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
    const std::size_t most = dot == std::string_view::npos ? name.size() : dot;
    for (std::size_t taken = 0; taken <= most; ++taken) {
        if (matches(mask, name.substr(taken))) return true;
    }
    return false;
}

bool matchesAny(std::string_view mask, std::string_view name) {
    for (std::size_t taken = 0; taken <= name.size(); ++taken) {
        if (matches(mask, name.substr(taken))) return true;
    }
    return false;
}

bool matches(std::string_view mask, std::string_view name) {
    while (!mask.empty()) {
        const char c = mask.front();
        mask.remove_prefix(1);
        switch (c) {
            case kAny: return matchesAny(mask, name);
            case kDosStar: return matchesDosStar(mask, name);
            case kDosOne:
                if (!name.empty() && name.front() != '.') name.remove_prefix(1);
                break;
            case kDosDot:
                if (name.empty()) break;
                if (name.front() != '.') return false;
                name.remove_prefix(1);
                break;
            default:
                if (name.empty() || upper(name.front()) != upper(c)) return false;
                name.remove_prefix(1);
        }
    }
    return name.empty();
}

}  // namespace

bool matchesMask(std::string_view mask, std::string_view name) {
    return matches(dosMask(mask), name);
}

}  // namespace bromvale::offline
