#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/text.h"

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

TEST(RuntimeText, LeftTakesAtMostWhatIsThere) {
    EXPECT_EQ(Left("Schlüssel", 0), "");
    EXPECT_EQ(Left("Schlüssel", 6), "Schlüs");
    EXPECT_EQ(Left("Schlüssel", 99), "Schlüssel");
}

TEST(RuntimeText, ANegativeLengthIsFailure5) {
    EXPECT_EQ(failureNumber([] { static_cast<void>(Left("abc", -1)); }), 5);
    EXPECT_EQ(failureNumber([] { static_cast<void>(Right("abc", -1)); }), 5);
    EXPECT_EQ(failureNumber([] { static_cast<void>(Mid("abc", 1, -1)); }), 5);
}

TEST(RuntimeText, RightTakesTheEnd) {
    EXPECT_EQ(Right("abc", 0), "");
    EXPECT_EQ(Right("abc", 2), "bc");
    EXPECT_EQ(Right("abc", 4), "abc");
    EXPECT_EQ(Right("", 1), "");
}

TEST(RuntimeText, MidCountsFromOne) {
    EXPECT_EQ(Mid("abcdef", 1, 2), "ab");
    EXPECT_EQ(Mid("abcdef", 3), "cdef");
    EXPECT_EQ(Mid("abcdef", 6, 9), "f");
    EXPECT_EQ(Mid("abcdef", 7), "");
    EXPECT_EQ(Mid("abcdef", 700, 3), "");
    EXPECT_EQ(Mid("", 1), "");
}

TEST(RuntimeText, MidBelowTheFirstPositionIsFailure5) {
    EXPECT_EQ(failureNumber([] { static_cast<void>(Mid("abc", 0)); }), 5);
    EXPECT_EQ(failureNumber([] { static_cast<void>(Mid("abc", -2, 1)); }), 5);
}

TEST(RuntimeText, InStrGivesThePositionFromOneOrZero) {
    EXPECT_EQ(InStr("abcabc", "c"), 3);
    EXPECT_EQ(InStr("abcabc", "abc"), 1);
    EXPECT_EQ(InStr("abcabc", "C"), 0);
    EXPECT_EQ(InStr("abc", "abcd"), 0);
}

TEST(RuntimeText, InStrFindsTheEmptyTextAtOneUnlessAllIsEmpty) {
    EXPECT_EQ(InStr("abc", ""), 1);
    EXPECT_EQ(InStr("", ""), 0);
    EXPECT_EQ(InStr("", "a"), 0);
}

TEST(RuntimeText, ReplaceGoesOnBehindWhatItPutIn) {
    EXPECT_EQ(Replace("a\\b\\c", "\\", "\\\\"), "a\\\\b\\\\c");
    EXPECT_EQ(Replace("aaa", "aa", "b"), "ba");
    EXPECT_EQ(Replace("abc", "", "x"), "abc");
    EXPECT_EQ(Replace("abc", "b", ""), "ac");
    EXPECT_EQ(Replace("", "a", "b"), "");
}

TEST(RuntimeText, CaseFollowsTheCodePage) {
    EXPECT_EQ(LCase("ÄÖÜ ABCXYZ ÀÞ ŠŒŽŸ ß×÷"), "äöü abcxyz àþ šœžÿ ß×÷");
    EXPECT_EQ(UCase("äöü abcxyz àþ šœžÿ ß×÷"), "ÄÖÜ ABCXYZ ÀÞ ŠŒŽŸ ß×÷");
    EXPECT_EQ(LCase("@[`{ 019 ƒµ€"), "@[`{ 019 ƒµ€");
    EXPECT_EQ(UCase("@[`{ 019 ƒµ€"), "@[`{ 019 ƒµ€");
}

TEST(RuntimeText, LowerInPlaceKeepsTheLength) {
    std::string text = "C:\\PROGRAMME\\ÜBUNG.DLL";
    lowerInPlace(text);
    EXPECT_EQ(text, "c:\\programme\\übung.dll");
}

TEST(RuntimeText, WithBackslashAddsOneOnlyWhereNoneStands) {
    EXPECT_EQ(withBackslash("C:\\Temp"), "C:\\Temp\\");
    EXPECT_EQ(withBackslash("C:\\"), "C:\\");
    EXPECT_EQ(withBackslash(""), "\\");
}

}  // namespace
}  // namespace bromvale
