// UTF-8 that is none, as the offline machine reads it. Wine takes other bytes together as one mistake, and
// gives an answer where Windows documents a refusal.
#include <gtest/gtest.h>

#include <string>

#include "platform/machine.h"

namespace bromvale::testing {
namespace {

// Bytes that begin a character and are cut, or stand alone, count as one mistake each.
TEST(CodePageUtf8, EachMistakeBecomesOneReplacement) {
    struct Row {
        std::string bytes;
        std::u16string units;
    };
    for (const Row& row : {Row{"a\xC3\xBC"
                               "b",
                               u"a\u00FCb"},
                           Row{"\xE2\x82\xAC", u"\u20AC"},
                           Row{"\xF0\x9F\x98\x80", u"\U0001F600"},
                           Row{"\xC3", u"\uFFFD"},
                           Row{"\xC3x", u"\uFFFDx"},
                           Row{"\xE2\x82x", u"\uFFFDx"},
                           Row{"\xE2x", u"\uFFFDx"},
                           Row{"\xF0\x9F\x98", u"\uFFFD"},
                           Row{"\xF0\x9F\x98x", u"\uFFFDx"},
                           Row{"\xF0\x9Fx", u"\uFFFDx"},
                           Row{"\x80", u"\uFFFD"},
                           Row{"\xBF\x80", u"\uFFFD\uFFFD"},
                           Row{"\xC0\xAF", u"\uFFFD\uFFFD"},
                           Row{"\xC1x", u"\uFFFDx"},
                           Row{"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},
                           Row{"\xE0\xA0x", u"\uFFFDx"},
                           Row{"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
                           Row{"\xED\x9Fx", u"\uFFFDx"},
                           Row{"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
                           Row{"\xF0\x90x", u"\uFFFDx"},
                           Row{"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
                           Row{"\xF4\x8Fx", u"\uFFFDx"},
                           Row{"\xF5\x80", u"\uFFFD\uFFFD"},
                           Row{"\xFF", u"\uFFFD"}}) {
        WCHAR wide[8] = {};
        const int size =
            MultiByteToWideChar(CP_UTF8, 0, row.bytes.data(), static_cast<int>(row.bytes.size()), wide, 8);
        EXPECT_EQ(std::u16string(wide, wide + size), row.units) << row.bytes;
        const bool sound = row.units.find(u'\uFFFD') == row.units.npos;
        EXPECT_EQ(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, row.bytes.data(),
                                      static_cast<int>(row.bytes.size()), wide, 8) != 0,
                  sound)
            << row.bytes;
    }
}

TEST(CodePageUtf8, HalvesOfPairsBecomeReplacementsAndNoOtherSignMayBeAskedFor) {
    const WCHAR halves[] = {0xD83D, 'x', 0xDE00, 0xD83D, 0xDE00};
    char bytes[16] = {};
    ASSERT_EQ(WideCharToMultiByte(CP_UTF8, 0, halves, 5, bytes, 16, nullptr, nullptr), 11);
    EXPECT_EQ(std::string(bytes, 11), "\xEF\xBF\xBDx\xEF\xBF\xBD\xF0\x9F\x98\x80");
    BOOL used = FALSE;
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, halves, 5, bytes, 16, nullptr, &used), 0);
    EXPECT_EQ(GetLastError(), 87u);
    SetLastError(0);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, halves, 5, bytes, 16, "?", nullptr), 0);
    EXPECT_EQ(GetLastError(), 87u);
}

TEST(CodePageUtf8, CharactersOfEachLengthGoThereAndBack) {
    const struct {
        std::u16string wide;
        std::string bytes;
    } kRows[] = {{u"\u007F", "\x7F"},
                 {u"\u0080", "\xC2\x80"},
                 {u"\u07A5", "\xDE\xA5"},
                 {u"\u0800", "\xE0\xA0\x80"},
                 {u"\uA95B", "\xEA\xA5\x9B"},
                 {u"\U00010000", "\xF0\x90\x80\x80"},
                 {u"\U0002A95B", "\xF0\xAA\xA5\x9B"},
                 {u"\U0010FFFF", "\xF4\x8F\xBF\xBF"}};
    for (const auto& [wide, bytes] : kRows) {
        char narrow[8] = {};
        WCHAR back[4] = {};
        const auto size = static_cast<int>(wide.size());
        EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, narrow, 8, nullptr, nullptr),
                  static_cast<int>(bytes.size()));
        EXPECT_EQ(narrow, bytes);
        EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, narrow, static_cast<int>(bytes.size()), back, 4), size);
        EXPECT_EQ(back, wide);
    }
}

}  // namespace
}  // namespace bromvale::testing
