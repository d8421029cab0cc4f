// The code page 1252, whole: which units Windows turns into which bytes.
#include <gtest/gtest.h>

#include <string>

#include "platform/machine.h"

namespace bromvale::testing {
namespace {

struct Byte {
    char byte = 0;
    BOOL usedDefault = FALSE;
};

Byte byteOf(unsigned unit, DWORD flags = 0) {
    const auto wide = static_cast<WCHAR>(unit);
    Byte result;
    EXPECT_EQ(WideCharToMultiByte(1252, flags, &wide, 1, &result.byte, 1, nullptr, &result.usedDefault), 1);
    return result;
}

unsigned unitOf(unsigned byte) {
    const char text = static_cast<char>(byte);
    WCHAR wide = 0;
    EXPECT_EQ(MultiByteToWideChar(1252, 0, &text, 1, &wide, 1), 1);
    return wide;
}

// FNV-1a.
void add(std::uint32_t& sum, unsigned byte) {
    sum = (sum ^ (byte & 0xFF)) * 16777619u;
}

TEST(CodePage1252, LettersBeyondItBecomeTheNearest) {
    struct Row {
        unsigned unit;
        char byte;
        BOOL usedDefault;
    };
    for (const Row& row :
         {Row{0x0141, 'L', 0},    Row{0x0142, 'l', 0},  Row{0x0119, 'e', 0}, Row{0x015E, 'S', 0},
          Row{0x0416, '?', 1},    Row{0x2010, '-', 0},  Row{0x2011, '-', 0}, Row{0x2024, '\xB7', 0},
          Row{0x2044, '/', 0},    Row{0x2216, '\\', 0}, Row{0x2215, '/', 0}, Row{0x2236, ':', 0},
          Row{0x3000, ' ', 0},    Row{0xFF0E, '.', 0},  Row{0xFF0F, '/', 0}, Row{0xFF1F, '?', 1},
          Row{0xFF3C, '\\', 0},   Row{0x03A9, 'O', 0},  Row{0x0080, '?', 1}, Row{0x0081, '\x81', 0},
          Row{0x20AC, '\x80', 0}, Row{0xD83D, '?', 1},  Row{0xFFFF, '?', 1}}) {
        EXPECT_EQ(byteOf(row.unit).byte, row.byte) << std::hex << row.unit;
        EXPECT_EQ(byteOf(row.unit).usedDefault != 0, row.usedDefault != 0) << std::hex << row.unit;
    }
}

// Sums of all answers, taken from the system's own table.
TEST(CodePage1252, EveryUnitGivesItsByte) {
    std::uint32_t sum = 2166136261u;
    std::uint32_t defaults = 2166136261u;
    std::uint32_t exact = 2166136261u;
    for (unsigned unit = 1; unit < 0x10000; ++unit) {
        const Byte byte = byteOf(unit);
        add(sum, static_cast<unsigned char>(byte.byte));
        add(defaults, byte.usedDefault != 0 ? 1 : 0);
        add(exact, static_cast<unsigned char>(byteOf(unit, WC_NO_BEST_FIT_CHARS).byte));
    }
    EXPECT_EQ(sum, 0xF4C87507u);
    EXPECT_EQ(defaults, 0x0846FCE2u);
    EXPECT_EQ(exact, 0xD3C1109Bu);
}

TEST(CodePage1252, EveryByteGivesItsUnitAndComesBack) {
    std::uint32_t sum = 2166136261u;
    for (unsigned byte = 1; byte < 256; ++byte) {
        const unsigned unit = unitOf(byte);
        add(sum, unit);
        add(sum, unit >> 8);
        EXPECT_EQ(static_cast<unsigned char>(byteOf(unit, WC_NO_BEST_FIT_CHARS).byte), byte);
    }
    EXPECT_EQ(sum, 0xAC557558u);
}

TEST(CodePage1252, APairOfSurrogatesGivesTwoQuestionMarks) {
    const WCHAR pair[] = {0xD83D, 0xDE00};
    char bytes[4] = {};
    EXPECT_EQ(WideCharToMultiByte(1252, 0, pair, 2, bytes, 4, nullptr, nullptr), 2);
    EXPECT_STREQ(bytes, "??");
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, pair, 2, bytes, 4, nullptr, nullptr), 4);
    EXPECT_EQ(std::string(bytes, 4), "\xF0\x9F\x98\x80");
}

TEST(CodePage1252, SizesAndFailuresAreWindows) {
    const WCHAR text[] = {'a', 0x0141, 0};
    char bytes[4] = {};
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr), 3) << "with the NUL";
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, text, 2, bytes, 1, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), 122u);
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, text, 0, bytes, 4, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), 87u);
    WCHAR wide[4] = {};
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "ab", -1, wide, 4), 3);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "x\xFF", 2, wide, 4), 0);
    EXPECT_EQ(GetLastError(), 1113u);
    EXPECT_EQ(GetACP(), 1252u);
    CPINFO info{};
    EXPECT_NE(GetCPInfo(CP_ACP, &info), 0);
    EXPECT_EQ(info.MaxCharSize, 1u);
    EXPECT_NE(GetCPInfo(932, &info), 0);
    EXPECT_EQ(info.MaxCharSize, 2u);
}

TEST(CodePages, SizesBelowNothingAndMissingTextsAreRefused) {
    WCHAR wide[4] = {'a'};
    char bytes[4] = "a";
    struct Row {
        int answer;
        const char* what;
    };
    for (const Row& row :
         {Row{MultiByteToWideChar(CP_ACP, 0, nullptr, 1, wide, 4), "no text"},
          Row{MultiByteToWideChar(CP_ACP, 0, bytes, 0, wide, 4), "nothing of it"},
          Row{MultiByteToWideChar(CP_ACP, 0, bytes, 1, nullptr, 4), "no buffer"},
          Row{MultiByteToWideChar(CP_ACP, 0, bytes, 1, wide, -1), "less than no buffer"},
          Row{WideCharToMultiByte(CP_ACP, 0, nullptr, 1, bytes, 4, nullptr, nullptr), "no wide text"},
          Row{WideCharToMultiByte(CP_ACP, 0, wide, 1, nullptr, 4, nullptr, nullptr), "nowhere to put it"},
          Row{WideCharToMultiByte(CP_ACP, 0, wide, 1, bytes, -1, nullptr, nullptr), "less than nowhere"}})
        EXPECT_EQ(row.answer, 0) << row.what;
}

}  // namespace
}  // namespace bromvale::testing
