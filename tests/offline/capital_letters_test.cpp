// Capital letters, beside those that the C library of this system knows.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cwctype>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

struct Range {
    char16_t first;
    char16_t last;
};

// Letters whose capitals Windows doesn't know, or to which it would not come back from there: dotless i, long
// s and its like, digraphs in the case of titles, younger letters.
constexpr Range kWithoutCapital[] = {
    {0x00B5, 0x00B5}, {0x0131, 0x0131}, {0x017F, 0x017F}, {0x01C5, 0x01C5}, {0x01C8, 0x01C8},
    {0x01CB, 0x01CB}, {0x01F2, 0x01F2}, {0x025C, 0x025C}, {0x0261, 0x0261}, {0x0265, 0x0266},
    {0x026A, 0x026A}, {0x026C, 0x026C}, {0x0282, 0x0282}, {0x0287, 0x0287}, {0x029D, 0x029E},
    {0x0345, 0x0345}, {0x03C2, 0x03C2}, {0x03D0, 0x03D1}, {0x03D5, 0x03D6}, {0x03F0, 0x03F1},
    {0x03F5, 0x03F5}, {0x10D0, 0x10FF}, {0x13F8, 0x13FD}, {0x1C80, 0x1C88}, {0x1D79, 0x1D79},
    {0x1D7D, 0x1D7D}, {0x1D8E, 0x1D8E}, {0x1E9B, 0x1E9B}, {0x1FBE, 0x1FBE}, {0x2C80, 0xFEFF}};

bool hasNoCapital(char16_t unit) {
    return std::ranges::any_of(kWithoutCapital,
                               [unit](const Range& each) { return unit >= each.first && unit <= each.last; });
}

TEST(CapitalLetters, AreThoseOfTheSystemsLibraryButForAFew) {
    ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
    for (unsigned number = 1; number < 0x10000; ++number) {
        const auto unit = static_cast<char16_t>(number);
        const auto capital = static_cast<char16_t>(std::towupper(static_cast<std::wint_t>(unit)));
        EXPECT_EQ(upperUnit(unit), hasNoCapital(unit) ? unit : capital) << std::hex << number;
    }
}

}  // namespace
}  // namespace bromvale::offline
