// Numbers by the user's locale, which only the offline machine lets a test choose.
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/numbers.h"
#include "platform/offline/machine.h"

namespace bromvale {
namespace {

int failureOfInt16(std::string_view text) {
    try {
        static_cast<void>(toInt16(text));
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

TEST(NumbersByLocale, HalvesInTextsGoToTheEvenNeighbour) {
    EXPECT_EQ(toInt16("2,5"), 2);
    EXPECT_EQ(toInt16("3,5"), 4);
    EXPECT_EQ(toInt16("-0,5"), 0);
    EXPECT_EQ(toInt16("-1,5"), -2);
    EXPECT_EQ(toInt16(",7"), 1);
    EXPECT_EQ(toInt16("7,"), 7);
    EXPECT_EQ(toInt16("1,25E2"), 125);
    EXPECT_EQ(toInt16("32767,4"), 32767);
    EXPECT_EQ(failureOfInt16("32767,5"), 6);
    EXPECT_EQ(failureOfInt16(","), 13);
    EXPECT_EQ(failureOfInt16("1,2,3"), 13);
}

TEST(NumbersByLocale, TheThousandsSignIsPassedOver) {
    EXPECT_EQ(toInt16("1.234"), 1234);
    EXPECT_EQ(toInt16("2.5"), 25);
    EXPECT_EQ(failureOfInt16(".5"), 13);
    EXPECT_EQ(toInt16("1..234."), 1234);
    EXPECT_EQ(toInt16("1,2.3"), 1) << "behind the decimal sign, too";
}

TEST(NumbersByLocale, SignsMayStandBehindAndParenthesesAreAMinus) {
    for (const char* text : {"80-", "80 -", "(80)", " ( 80 ) ", "-(80)", "(-80)", "(80)-", "- 80", "+80-"})
        EXPECT_EQ(toInt16(text), -80) << text;
    for (const char* text : {"80+", "80 +", "+ 80", "\t80\t", "\u00A080\r\n"})
        EXPECT_EQ(toInt16(text), 80) << text;
    for (const char* text : {"-80-", "(80", "80)", "((80))", "()", "80--", "- -80", "8-0", "8 0"})
        EXPECT_EQ(failureOfInt16(text), 13) << text;
}

TEST(NumbersByLocale, TheCurrencyMayStandOnEitherSide) {
    for (const char* text : {"80 €", "80€", "€80", "€ 80", "€80€"}) EXPECT_EQ(toInt16(text), 80) << text;
    for (const char* text : {"-80 €", "80- €", "80 € -", "€-80", "(80 €)", "(80) €"})
        EXPECT_EQ(toInt16(text), -80) << text;
    for (const char* text : {"€", "80 $", "€€80", "8€0", "&H80€", "80 EUR"})
        EXPECT_EQ(failureOfInt16(text), 13) << text;
    offline::machine().locale = offline::englishLocale();
    EXPECT_EQ(toInt16("$1,080"), 1080);
    EXPECT_EQ(failureOfInt16("80€"), 13);
}

TEST(NumbersByLocale, EnglishSigns) {
    offline::machine().locale = offline::englishLocale();
    EXPECT_EQ(toInt16("2.5"), 2);
    EXPECT_EQ(toInt16("1,234"), 1234);
    EXPECT_EQ(numberText(1.77), "1.77");
}

TEST(NumbersByLocale, DecimalsFollowTheDecimalSign) {
    EXPECT_EQ(numberText(1.77), "1,77");
    EXPECT_EQ(numberText(0.5), "0,5");
    EXPECT_EQ(numberText(-0.25), "-0,25");
    EXPECT_EQ(numberText(1464.84375), "1464,84375");
    EXPECT_EQ(numberText(0.9765625), "0,9765625");
    EXPECT_EQ(numberText(1.0 / 3), "0,333333333333333");
    EXPECT_EQ(numberText(0.1 + 0.2), "0,3");
    EXPECT_EQ(numberText(1.5e20), "1,5E+20");
}

}  // namespace
}  // namespace bromvale
