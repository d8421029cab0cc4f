#include "base/text_case.h"

#include <algorithm>

#include "base/system.h"

namespace bromvale {
namespace {

constexpr unsigned kWestern = 1252;

struct Tables {
    unsigned codePage = 0;
    CaseTable upper{};
    CaseTable lower{};

    constexpr void pair(int upperCode, int lowerCode) {
        upper[static_cast<std::size_t>(lowerCode)] = static_cast<char>(upperCode);
        lower[static_cast<std::size_t>(upperCode)] = static_cast<char>(lowerCode);
    }
};

constexpr Tables asciiTables(unsigned codePage) {
    Tables tables;
    tables.codePage = codePage;
    for (std::size_t code = 0; code < 256; ++code)
        tables.upper[code] = tables.lower[code] = static_cast<char>(code);
    for (int code = 'A'; code <= 'Z'; ++code) tables.pair(code, code + 0x20);
    return tables;
}

// Known by heart, so that the usual system is asked nothing.
constexpr Tables westernTables() {
    constexpr int kTimes = 0xD7;  // the signs of multiplication and division stand among the letters
    Tables tables = asciiTables(kWestern);
    for (int code = 0xC0; code <= 0xDE; ++code) {
        if (code != kTimes) tables.pair(code, code + 0x20);
    }
    tables.pair(0x8A, 0x9A);
    tables.pair(0x8C, 0x9C);
    tables.pair(0x8E, 0x9E);
    tables.pair(0x9F, 0xFF);
    return tables;
}

Tables systemTables(unsigned codePage) {
    Tables tables = asciiTables(codePage);
    if (!codePageHasSingleBytes()) return tables;
    for (int code = 0x80; code < 0x100; ++code) {
        const char c = static_cast<char>(code);
        const char small = systemLowerCase(c);
        if (small == c || static_cast<unsigned char>(small) < 0x80 || systemUpperCase(small) != c) continue;
        tables.pair(code, static_cast<unsigned char>(small));
    }
    return tables;
}

const Tables& tables() {
    static Tables current = westernTables();
    if (const unsigned now = systemCodePage(); now != current.codePage)
        current = now == kWestern ? westernTables() : systemTables(now);
    return current;
}

}  // namespace

const CaseTable& upperCaseTable() {
    return tables().upper;
}

const CaseTable& lowerCaseTable() {
    return tables().lower;
}

int compareWithoutCase(std::string_view a, std::string_view b) {
    const CaseTable& lower = lowerCaseTable();
    const auto code = [&lower](char c) {
        return static_cast<int>(static_cast<unsigned char>(lower[static_cast<unsigned char>(c)]));
    };
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (code(a[i]) != code(b[i])) return code(a[i]) - code(b[i]);
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace bromvale
