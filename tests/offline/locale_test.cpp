// What the locales call months and days, and the signs that they write.
#include <gtest/gtest.h>

#include "platform/machine.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::machine;

class LocaleTest : public TestMachine {
  protected:
    static std::string date(WORD month, WORD day, const char* picture) {
        char buffer[64] = "";
        const SYSTEMTIME date{2026, month, 0, day, 0, 0, 0, 0};
        EXPECT_GT(GetDateFormatA(LOCALE_USER_DEFAULT, 0, &date, picture, buffer, sizeof buffer), 0);
        return buffer;
    }
    static std::string months() {
        std::string all;
        for (WORD month = 1; month <= 12; ++month) all += date(month, 1, "MMMM=MMM ");
        return all;
    }
    // From Monday to Sunday.
    static std::string days() {
        std::string all;
        for (WORD day = 2; day <= 8; ++day) all += date(3, day, "dddd=ddd ");
        return all;
    }
    static std::string told(LCTYPE type) {
        char buffer[64] = "";
        EXPECT_GT(GetLocaleInfoA(LOCALE_USER_DEFAULT, type, buffer, sizeof buffer), 0) << type;
        return buffer;
    }
};

TEST_F(LocaleTest, TheGermanOneNamesEachMonthAndDay) {
    EXPECT_EQ(months(),
              "Januar=Jan Februar=Feb März=Mrz April=Apr Mai=Mai Juni=Jun Juli=Jul August=Aug September=Sep "
              "Oktober=Okt November=Nov Dezember=Dez ");
    EXPECT_EQ(days(), "Montag=Mo Dienstag=Di Mittwoch=Mi Donnerstag=Do Freitag=Fr Samstag=Sa Sonntag=So ");
}

TEST_F(LocaleTest, TheEnglishOneNamesEachMonthAndDay) {
    machine().locale = offline::englishLocale();
    EXPECT_EQ(months(),
              "January=Jan February=Feb March=Mar April=Apr May=May June=Jun July=Jul August=Aug "
              "September=Sep October=Oct November=Nov December=Dec ");
    EXPECT_EQ(days(),
              "Monday=Mon Tuesday=Tue Wednesday=Wed Thursday=Thu Friday=Fri Saturday=Sat Sunday=Sun ");
}

TEST_F(LocaleTest, EachTellsItsSigns) {
    struct Row {
        LCTYPE type;
        const char* german;
        const char* english;
    };
    for (const Row& row :
         {Row{LOCALE_SDECIMAL, ",", "."}, Row{LOCALE_STHOUSAND, ".", ","}, Row{LOCALE_SCURRENCY, "\x80", "$"},
          Row{LOCALE_SLIST, ";", ","}, Row{LOCALE_SDATE, ".", "/"}, Row{LOCALE_STIME, ":", ":"},
          Row{LOCALE_S1159, "", "AM"}, Row{LOCALE_S2359, "", "PM"}}) {
        machine().locale = offline::germanLocale();
        EXPECT_EQ(told(row.type), row.german) << row.type;
        machine().locale = offline::englishLocale();
        EXPECT_EQ(told(row.type), row.english) << row.type;
    }
}

TEST_F(LocaleTest, YearsHaveTwoDigitsOrFour) {
    EXPECT_EQ(date(3, 5, "y|yy|yyy|yyyy|yyyyy"), "26|26|2026|2026|2026");
    EXPECT_EQ(date(3, 5, "d|dd|M|MM"), "5|05|3|03");
    EXPECT_EQ(date(3, 5, "gg|g"), "|");
}

// Twelve o'clock is no nought, whichever half of the day it is.
TEST_F(LocaleTest, TheEnglishOneCountsTwelveHours) {
    machine().locale = offline::englishLocale();
    const auto time = [](WORD hour) {
        char buffer[32] = "";
        const SYSTEMTIME time{2026, 3, 0, 1, hour, 5, 7, 0};
        EXPECT_GT(GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &time, nullptr, buffer, sizeof buffer), 0);
        return std::string(buffer);
    };
    EXPECT_EQ(time(0), "12:05:07 AM");
    EXPECT_EQ(time(1), "1:05:07 AM");
    EXPECT_EQ(time(11), "11:05:07 AM");
    EXPECT_EQ(time(12), "12:05:07 PM");
    EXPECT_EQ(time(23), "11:05:07 PM");
}

}  // namespace
}  // namespace bromvale::testing
