#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/numbers.h"

namespace bromvale {
namespace {

template <class Statement>
int failureNumber(const Statement& statement) {
    try {
        statement();
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

int failureOfInt16(std::string_view text) {
    return failureNumber([&] { static_cast<void>(toInt16(text)); });
}

TEST(RuntimeNumbers, WholeNumbersInTexts) {
    EXPECT_EQ(toInt16("0"), 0);
    EXPECT_EQ(toInt16("-1"), -1);
    EXPECT_EQ(toInt16("+12"), 12);
    EXPECT_EQ(toInt16(" 7 "), 7);
    EXPECT_EQ(toInt16("\t7"), 7);
    EXPECT_EQ(toInt16("007"), 7);
    EXPECT_EQ(toInt16("1E2"), 100);
    EXPECT_EQ(toInt16("1e+2"), 100);
    EXPECT_EQ(toInt16("500E-2"), 5);
    EXPECT_EQ(toInt32("2147483647"), 2147483647);
    EXPECT_EQ(toInt32("-2147483646"), -2147483646);
}

TEST(RuntimeNumbers, TheBoundsOf16BitsPassAndOneMoreIsFailure6) {
    EXPECT_EQ(toInt16("32767"), 32767);
    EXPECT_EQ(toInt16("-32768"), -32768);
    EXPECT_EQ(failureOfInt16("32768"), 6);
    EXPECT_EQ(failureOfInt16("-32769"), 6);
    EXPECT_EQ(failureOfInt16("1E400"), 6);
}

TEST(RuntimeNumbers, TheBoundsOf32BitsAndOfAByte) {
    EXPECT_EQ(failureNumber([] { static_cast<void>(toInt32("2147483648")); }), 6);
    EXPECT_EQ(toByte("255"), 255);
    EXPECT_EQ(failureNumber([] { static_cast<void>(toByte("256")); }), 6);
    EXPECT_EQ(failureNumber([] { static_cast<void>(toByte("-1")); }), 6);
}

TEST(RuntimeNumbers, ATextWithoutANumberIsFailure13) {
    for (const std::string_view text :
         {"", " ", "abc", "1a", "1 2", "--1", "E2", "1E", "&H", "&HG", "-", "\x80"}) {
        EXPECT_EQ(failureOfInt16(text), 13) << '"' << text << '"';
        EXPECT_FALSE(isNumeric(text)) << '"' << text << '"';
    }
    EXPECT_EQ(failureOfInt16(std::string_view("80\0", 3)), 13);
}

TEST(RuntimeNumbers, HexadecimalAndOctalTextsAreBitPatterns) {
    EXPECT_EQ(toInt16("&H10"), 16);
    EXPECT_EQ(toInt16("&h7fff"), 32767);
    EXPECT_EQ(toInt16("&HFFFF"), -1);
    EXPECT_EQ(failureOfInt16("&H10000"), 6);
    EXPECT_EQ(toInt16("&O17"), 15);
    EXPECT_EQ(failureOfInt16("&O18"), 13);
    EXPECT_TRUE(isNumeric("&H10"));
}

TEST(RuntimeNumbers, NarrowingOutOfRangeIsFailure6) {
    EXPECT_EQ(narrowInt16(32767), 32767);
    EXPECT_EQ(narrowInt16(-32768), -32768);
    EXPECT_EQ(failureNumber([] { static_cast<void>(narrowInt16(32768)); }), 6);
    EXPECT_EQ(narrowInt32(-2147483648LL), -2147483647 - 1);
    EXPECT_EQ(failureNumber([] { static_cast<void>(narrowInt32(2147483648LL)); }), 6);
}

TEST(RuntimeNumbers, RoundingTakesTheEvenNeighbourOfAHalf) {
    EXPECT_EQ(roundHalfEven(0.125, 2), 0.12);
    EXPECT_EQ(roundHalfEven(0.375, 2), 0.38);
    EXPECT_EQ(roundHalfEven(-0.125, 2), -0.12);
    EXPECT_EQ(roundHalfEven(2.5, 0), 2);
    EXPECT_EQ(roundHalfEven(3.5, 0), 4);
    EXPECT_EQ(roundHalfEven(-0.5, 0), 0);
    EXPECT_EQ(roundHalfEven(1.005, 2), 1);
    EXPECT_EQ(roundHalfEven(1.7699115044247788, 2), 1.77);
    EXPECT_EQ(roundHalfEven(33.333333333333336, 2), 33.33);
    EXPECT_EQ(roundHalfEven(66.66666666666667, 2), 66.67);
    EXPECT_EQ(roundHalfEven(100, 2), 100);
}

TEST(RuntimeNumbers, DivisionByZeroIsFailure11AndZeroByZeroFailure6) {
    EXPECT_EQ(divide(1, 4), 0.25);
    EXPECT_EQ(failureNumber([] { static_cast<void>(divide(1, 0)); }), 11);
    EXPECT_EQ(failureNumber([] { static_cast<void>(divide(0, 0)); }), 6);
    EXPECT_EQ(divide(0, 3), 0);
}

TEST(RuntimeNumbers, AWholeNumberIsShownWithoutDecimals) {
    EXPECT_EQ(numberText(0), "0");
    EXPECT_EQ(numberText(5), "5");
    EXPECT_EQ(numberText(-5), "-5");
    EXPECT_EQ(numberText(-0.0), "0");
    EXPECT_EQ(numberText(123456789012345.0), "123456789012345");
    EXPECT_EQ(numberText(1e15), "1E+15");
}

}  // namespace
}  // namespace bromvale
