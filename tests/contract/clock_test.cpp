// Date and time by pictures of our own: the same in every country but for the names.
#include "platform/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class Clock : public TestMachine {
  protected:
    static constexpr SYSTEMTIME kMorning{2026, 11, 0, 5, 7, 2, 9, 0};
    static constexpr SYSTEMTIME kEvening{2026, 1, 0, 31, 19, 40, 0, 0};
    static constexpr SYSTEMTIME kMidnight{2024, 2, 0, 29, 0, 0, 0, 0};

    static std::string date(const SYSTEMTIME& time, const char* picture) {
        char buffer[128] = "";
        const int length = GetDateFormatA(LOCALE_USER_DEFAULT, 0, &time, picture, buffer, sizeof buffer);
        return length > 0 ? std::string(buffer, static_cast<std::size_t>(length) - 1) : "<failed>";
    }
    static std::string time(const SYSTEMTIME& time, const char* picture, DWORD flags = 0) {
        char buffer[128] = "";
        const int length = GetTimeFormatA(LOCALE_USER_DEFAULT, flags, &time, picture, buffer, sizeof buffer);
        return length > 0 ? std::string(buffer, static_cast<std::size_t>(length) - 1) : "<failed>";
    }
};

TEST_F(Clock, DatePictures) {
    struct Row {
        const char* picture;
        const char* text;
    };
    for (const Row row :
         {Row{"ddMMyyyy", "05112026"}, Row{"dd.MM.yyyy", "05.11.2026"}, Row{"d.M.yy", "5.11.26"},
          Row{"yyyy'-'MM'-'dd", "2026-11-05"}, Row{"'Tag 'd", "Tag 5"}, Row{"dd''MM", "0511"},
          Row{"'d''d' dd", "d'd 05"}, Row{"y", "26"}}) {
        EXPECT_EQ(date(kMorning, row.picture), row.text) << row.picture;
    }
}

TEST_F(Clock, TimePictures) {
    struct Row {
        SYSTEMTIME time;
        const char* picture;
        const char* text;
    };
    const Row rows[] = {
        {kMorning, "HHmmss", "070209"},
        {kMorning, "H:m:s", "7:2:9"},
        {kEvening, "HH':'mm':'ss", "19:40:00"},
        {kEvening, "hh':'mm", "07:40"},
        {kMidnight, "h", "12"},
        {kMidnight, "HH", "00"},
        {kEvening, "'um 'H' Uhr'", "um 19 Uhr"},
    };
    for (const Row& row : rows) EXPECT_EQ(time(row.time, row.picture), row.text) << row.picture;
}

TEST_F(Clock, TheWeekdayComesFromTheCalendar) {
    SYSTEMTIME wrong = kMidnight;
    wrong.wDayOfWeek = 6;
    EXPECT_EQ(date(wrong, "dddd"), date(kMidnight, "dddd"));
    SYSTEMTIME weekBefore = kMidnight;
    weekBefore.wDay = 22;
    EXPECT_EQ(date(weekBefore, "dddd"), date(kMidnight, "dddd"));
    weekBefore.wDay = 23;
    EXPECT_NE(date(weekBefore, "dddd"), date(kMidnight, "dddd"));
}

TEST_F(Clock, SizesCountTheNulAndABufferTooSmallFails) {
    char buffer[16];
    EXPECT_EQ(GetDateFormatA(LOCALE_USER_DEFAULT, 0, &kMorning, "ddMMyyyy", nullptr, 0), 9);
    EXPECT_EQ(GetDateFormatA(LOCALE_USER_DEFAULT, 0, &kMorning, "ddMMyyyy", buffer, 9), 9);
    EXPECT_EQ(GetDateFormatA(LOCALE_USER_DEFAULT, 0, &kMorning, "ddMMyyyy", buffer, 8), 0);
    EXPECT_EQ(GetLastError(), 122u);
}

TEST_F(Clock, TheLocaleTellsItsSigns) {
    char decimal[8] = "";
    char thousand[8] = "";
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, decimal, sizeof decimal), 2);
    EXPECT_GT(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, thousand, sizeof thousand), 0);
    EXPECT_STRNE(decimal, thousand);
    EXPECT_TRUE(std::string(decimal) == "," || std::string(decimal) == ".");
}

TEST_F(Clock, MachineFactsTellTheirLengths) {
    char buffer[256];
    const UINT windows = GetWindowsDirectoryA(buffer, sizeof buffer);
    EXPECT_EQ(std::string(buffer).size(), windows);
    EXPECT_EQ(GetWindowsDirectoryA(buffer, 3), windows + 1);
    const UINT system = GetSystemDirectoryA(buffer, sizeof buffer);
    EXPECT_EQ(std::string(buffer).size(), system);
    const DWORD temporary = GetTempPathA(sizeof buffer, buffer);
    ASSERT_EQ(std::string(buffer).size(), temporary);
    EXPECT_EQ(buffer[temporary - 1], '\\');
    DWORD size = sizeof buffer;
    ASSERT_NE(GetUserNameA(buffer, &size), 0);
    EXPECT_EQ(std::string(buffer).size() + 1, size);  // with it
}

TEST_F(Clock, VersionInfoWantsItsSize) {
    OSVERSIONINFOA info{};
    EXPECT_EQ(GetVersionExA(&info), 0);
    info.dwOSVersionInfoSize = 148;
    EXPECT_NE(GetVersionExA(&info), 0);
    EXPECT_GE(info.dwMajorVersion, 4u);
}

}  // namespace
}  // namespace bromvale::testing
