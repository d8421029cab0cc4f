// The order of rows is the list view's own on Windows; the offline machine gives the same.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/text_order.h"

namespace bromvale {
namespace {

int sign(int value) {
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

struct Pair {
    std::string_view name;
    std::string_view first;
    std::string_view second;
    int order;
};

constexpr Pair kPairs[] = {
    {"CaseDoesNotCount", "PROGRAMM", "programm", 0},
    {"CaseOfUmlautsDoesNotCount", "ÄRZTE", "ärzte", 0},
    {"AnUmlautStandsBesideItsLetter", "Äpfel", "Birne", -1},
    {"ThePlainLetterComesBeforeTheUmlaut", "apfel", "äpfel", -1},
    {"AMarkCountsLessThanALaterLetter", "äpfel", "apfelz", -1},
    {"AShortTextComesBeforeALongerOne", "abc", "abcd", -1},
    {"EmptyComesFirst", "", "a", -1},
    {"EmptyIsEqualToEmpty", "", "", 0},
    {"SignsComeBeforeDigits", "[x", "1x", -1},
    {"DigitsComeBeforeLetters", "9x", "ax", -1},
    {"DigitsAreNotNumbers", "10", "9", -1},
    {"AHyphenCountsOnlyAtLast", "co-op", "coop", 1},
    {"AHyphenDoesNotHideALetter", "co-op", "coz", -1},
    {"SharpSIsTwoLetters", "Straße", "Strasz", -1},
    {"AParentKeyComesBehindItsSubKey", "[K\\{A}\\Sub]", "[K\\{A}]", -1},
    {"AtSignComesBeforeQuotedNamesOfLetters", "@", "a", -1},
    {"QuotesComeBeforeTheAtSign", "\"Name\"", "@", -1},
};

class TextOrder : public ::testing::TestWithParam<Pair> {};

TEST_P(TextOrder, IsTheListsOwnInBothDirections) {
    const Pair& pair = GetParam();
    EXPECT_EQ(sign(compareTexts(pair.first, pair.second)), pair.order);
    EXPECT_EQ(sign(compareTexts(pair.second, pair.first)), -pair.order);
}

TEST_P(TextOrder, IsThatOfTheKeys) {
    const Pair& pair = GetParam();
    EXPECT_EQ(sign(orderKey(pair.first).compare(orderKey(pair.second))), pair.order);
    EXPECT_EQ(sign(orderKey(pair.second).compare(orderKey(pair.first))), -pair.order);
}

// All pairs of the texts above, and each as one part of a longer text.
TEST(TextOrderOfKeys, IsThatOfTheTexts) {
    std::vector<std::string> texts;
    for (const Pair& pair : kPairs) {
        for (const std::string_view text : {pair.first, pair.second}) {
            texts.emplace_back(text);
            texts.push_back("[HKEY_LOCAL_MACHINE\\Software\\" + std::string(text) + "\\{0-1}]");
        }
    }
    for (const std::string& a : texts) {
        for (const std::string& b : texts)
            EXPECT_EQ(sign(orderKey(a).compare(orderKey(b))), sign(compareTexts(a, b))) << a << " and " << b;
    }
}

INSTANTIATE_TEST_SUITE_P(Pairs, TextOrder, ::testing::ValuesIn(kPairs),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace bromvale
