#include "base/text_case.h"

#include <gtest/gtest.h>

#include <string>

namespace bromvale::testing {
namespace {

std::string upper(std::string text) {
    for (char& c : text) c = upperCase(c);
    return text;
}

std::string lower(std::string text) {
    for (char& c : text) c = lowerCase(c);
    return text;
}

TEST(TextCase, KnowsTheLettersOfTheCodePage) {
    EXPECT_EQ(upper("abcxyz äöüß éñøþ šœžÿ 09_[]"), "ABCXYZ ÄÖÜß ÉÑØÞ ŠŒŽŸ 09_[]");
    EXPECT_EQ(lower("ABCXYZ ÄÖÜß ÉÑØÞ ŠŒŽŸ 09_[]"), "abcxyz äöüß éñøþ šœžÿ 09_[]");
}

TEST(TextCase, SignsAmongTheLettersStay) {
    EXPECT_EQ(upper("×÷ƒªº"), "×÷ƒªº");
    EXPECT_EQ(lower("×÷ƒªº"), "×÷ƒªº");
}

TEST(TextCase, ComparisonIgnoresCaseAndPutsTheShorterTextFirst) {
    EXPECT_EQ(compareWithoutCase("Größe", "GRÖßE"), 0);
    EXPECT_LT(compareWithoutCase("abc", "ABCD"), 0);
    EXPECT_GT(compareWithoutCase("b", "ABC"), 0);
    EXPECT_LT(compareWithoutCase("", "a"), 0);
    EXPECT_EQ(compareWithoutCase("", ""), 0);
}

}  // namespace
}  // namespace bromvale::testing
