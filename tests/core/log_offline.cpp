// Records byte by byte, with the clock and the locale that only the offline machine lets a test set.
#include "core/log.h"
#include "core/state.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

class LogRecords : public testing::TestMachine {
  protected:
    LogRecords() {
        fillState();
        AppVersion = "1.2.2";
    }
    std::string log() { return readWholeFile(folder() + "bromvale.log"); }
};

TEST_F(LogRecords, DateAndTimeInTheGermanForm) {
    offline::machine().clock.set(2002, 11, 15, 7, 10, 20);
    WriteLogStart();
    offline::machine().clock.set(2002, 11, 15, 7, 10, 21);
    switchTracingOn();
    trace("modMain", "Main", "Protokollierung=1");
    trace("modKeyFunc", "ReadAppSwitch", "started");
    trace("modKeyFunc", "ReadAppSwitch", "Proxy=0");
    EXPECT_EQ(log(),
              "15.11.2002 07:10:20; started; Bromvale; 1.2.2; für Windows 98/ME und NT4\r\n"
              "15.11.2002 07:10:21; modMain; Main; Protokollierung=1; 0; \r\n"
              "15.11.2002 07:10:21; modKeyFunc; ReadAppSwitch; started; 0; \r\n"
              "15.11.2002 07:10:21; modKeyFunc; ReadAppSwitch; Proxy=0; 0; \r\n");
}

TEST_F(LogRecords, TheFormMayChangeWithinOneFile) {
    offline::machine().clock.set(2002, 3, 5, 19, 4, 9);
    WriteLog("modMain", "Main", "a", 0, "");
    offline::machine().locale = offline::englishLocale();
    WriteLog("modMain", "Main", "b", 0, "");
    EXPECT_EQ(log(),
              "05.03.2002 19:04:09; modMain; Main; a; 0; \r\n"
              "3/5/2002 7:04:09 PM; modMain; Main; b; 0; \r\n");
}

TEST_F(LogRecords, EachRecordIsOneWriteAndTheFileIsClosedBehindIt) {
    auto& faults = offline::machine().faults;
    faults.startCounting();
    WriteLog("modMain", "Main", "a", 0, "");
    WriteLog("modMain", "Main", "b", 0, "");
    EXPECT_EQ(faults.calls("CreateFileA"), 2u);
    EXPECT_EQ(faults.calls("WriteFile"), 2u);
    EXPECT_EQ(offline::machine().openFiles(), 0u);
}

TEST_F(LogRecords, AFullDiskCostsTheRecordAlone) {
    offline::machine().faults.fail("WriteFile", 1, 112);
    ErrHandle("modMain", "Main", "verloren", 0, "", 48, 0);
    ErrHandle("modMain", "Main", "da", 0, "", 48, 0);
    EXPECT_EQ(logLines(), std::vector<std::string>{"modMain; Main; da; 0; "});
    EXPECT_EQ(offline::machine().openFiles(), 0u);
}

TEST_F(LogRecords, TheStyleOfABoxIsTheReports) {
    ErrHandle("modMain", "Main", "Frage", 0, "", 32, kShow);
    ErrHandle("modMain", "Main", "Hinweis", 0, "", 64, kShow);
    ASSERT_EQ(boxes().size(), 2u);
    EXPECT_EQ(boxes()[0].style, 32u);
    EXPECT_EQ(boxes()[1].style, 64u);
}

}  // namespace
}  // namespace bromvale
