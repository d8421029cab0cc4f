// The order of the signs that are neither letters nor digits: all of them, and none is passed over.
#include <gtest/gtest.h>

#include <string>

#include "base/text_order.h"
#include "platform/machine.h"

namespace bromvale {
namespace {

// Bytes of Windows-1252. The last five have no character there.
constexpr std::string_view kInOrder =
    " \t\n\v\f\r!\"#$%&()*,./:;?@[\\]^_`{|}~\xA1\xA6\xA8\xAF\xB4\xB8\xBF\x91\x92\x82\x93\x94\x84\x8B\x9B"
    "\xA2\xA3\xA4\xA5\x80+<=>\xB1\xAB\xBB\xD7\xF7\xA7\xA9\xAC\xAE\xB0\xB5\xB6\xB7\x85\x86\x87\x95\x89"
    "\x81\x8D\x8F\x90\x9D";

TEST(TextOrderOfSigns, EachComesBehindTheOneBeforeAndBeforeAllDigits) {
    for (std::size_t i = 0; i < kInOrder.size(); ++i) {
        const std::string sign(1, kInOrder[i]);
        EXPECT_LT(compareTexts(sign + "z", "0"), 0) << i;
        if (i > 0) {
            EXPECT_GT(compareTexts(sign, std::string(1, kInOrder[i - 1])), 0) << i;
        }
    }
}

TEST(TextOrderOfSigns, ABlankThatJoinsComesBehindThePlainOneAtTheSamePlace) {
    EXPECT_LT(compareTexts(" ", "\xA0"), 0);
    EXPECT_GT(compareTexts(" b",
                           "\xA0"
                           "a"),
              0);
    EXPECT_LT(compareTexts("\xA0", "\t"), 0);
}

TEST(TextOrderOfSigns, LettersComeBehindThemInTheOrderOfTheAlphabetAndWithoutTheirCase) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    EXPECT_LT(compareTexts("9z", "a"), 0);
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const std::string small(1, letters[i]);
        const std::string capital(1, static_cast<char>(letters[i] - 'a' + 'A'));
        EXPECT_EQ(compareTexts(small, capital), 0) << small;
        if (i == 0) continue;
        EXPECT_LT(compareTexts(std::string(1, letters[i - 1]) + "z", small + "a"), 0) << small;
    }
}

// Plain, then with marks; each letter with its capital, which is equal.
constexpr std::string_view kMarked[] = {
    "0\xBC\xBD\xBE", "1\xB9", "2\xB2",    "3\xB3", "aªáàâäãå", "cç",    "dð",  "eéèêë", "f\x83",
    "iíìîï",         "nñ",    "oºóòôöõø", "sš",    "tþ\x99",   "uúùûü", "yýÿ", "zž"};

TEST(TextOrderOfSigns, MarkedLettersFollowThePlainOneInTheirOrder) {
    for (const std::string_view letters : kMarked) {
        for (std::size_t i = 1; i < letters.size(); ++i) {
            const std::string before(1, letters[i - 1]);
            const std::string letter(1, letters[i]);
            EXPECT_LT(compareTexts(before, letter), 0) << letters << i;
            EXPECT_GT(compareTexts(before + "b", letter + "a"), 0) << letters << i;
        }
        for (const char letter : letters) {
            std::string capital(1, letter);
            CharUpperBuffA(capital.data(), 1);
            EXPECT_EQ(compareTexts(std::string(1, letter), capital), 0) << letter;
        }
    }
}

TEST(TextOrderOfSigns, LigaturesStandWhereTheirLettersStand) {
    EXPECT_EQ(compareTexts("æÆ", "aeae"), 0);
    EXPECT_EQ(compareTexts("\x9C\x8C", "oeoe"), 0);
    EXPECT_EQ(compareTexts("ß", "ss"), 0);
}

struct Page {
    UINT number;
    UINT longest;  // bytes of a character
    std::string leads;
};

TEST(CodePageFacts, AreThoseOfThePage) {
    const Page pages[] = {{1252, 1, {}}, {1250, 1, {}}, {932, 2, "\x81\x9F\xE0\xFC"}, {CP_UTF8, 4, {}}};
    for (const Page& page : pages) {
        CPINFO info{};
        ASSERT_NE(GetCPInfo(page.number, &info), 0) << page.number;
        EXPECT_EQ(info.MaxCharSize, page.longest) << page.number;
        EXPECT_EQ(info.DefaultChar[0], '?') << page.number;
        EXPECT_EQ(info.DefaultChar[1], 0) << page.number;
        std::string leads(std::begin(info.LeadByte), std::end(info.LeadByte));
        leads.resize(page.leads.size());
        EXPECT_EQ(leads, page.leads) << page.number;
        EXPECT_EQ(info.LeadByte[page.leads.size()], 0) << page.number;
    }
    CPINFO info{};
    EXPECT_EQ(GetCPInfo(47, &info), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(GetCPInfo(1252, nullptr), 0);
}

}  // namespace
}  // namespace bromvale
